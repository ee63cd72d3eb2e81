! Logistic variates with mean 10 and spread 2, from the basic generator.
program g05slf_example
  use zeb, only: g05kff, g05slf
  implicit none
  integer(kind=8) :: seed(1), state(17), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed(1) = 97
  lstate = 17
  write (*, '(a)') 'g05slf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(1_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! six variates
  call g05slf(6_8, 10.0d0, 2.0d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 10 and variance 13.1595 in theory
  call g05slf(10000_8, 10.0d0, 2.0d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05slf(6_8, 10.0d0, -2.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a negative spread, ifail = ', ifail
end program g05slf_example
