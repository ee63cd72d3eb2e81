! F variates with 4 and 10 degrees of freedom, from ACORN.
program g05shf_example
  use zeb, only: g05kff, g05shf
  implicit none
  integer(kind=8) :: seed(1), state(34), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed(1) = 314159265
  lstate = 34
  write (*, '(a)') 'g05shf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(5_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! six variates
  call g05shf(6_8, 4.0d0, 10.0d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 1.25 and variance 1.5625 in theory
  call g05shf(10000_8, 4.0d0, 10.0d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05shf(6_8, 4.0d0, 0.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with df2 = 0, ifail = ', ifail
end program g05shf_example
