! Beta variates with shapes a = 2 and b = 3, from the basic generator.
program g05sbf_example
  use zeb, only: g05kff, g05sbf
  implicit none
  integer(kind=8) :: seed(1), state(17), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed(1) = 1762543
  lstate = 17
  write (*, '(a)') 'g05sbf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(1_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! six variates
  call g05sbf(6_8, 2.0d0, 3.0d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 0.4 and variance 0.04 in theory
  call g05sbf(10000_8, 2.0d0, 3.0d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05sbf(6_8, 2.0d0, -3.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a negative shape b, ifail = ', ifail
end program g05sbf_example
