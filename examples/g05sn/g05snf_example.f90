! Student's t variates with 5 degrees of freedom, from the Mersenne Twister.
program g05snf_example
  use zeb, only: g05kff, g05snf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed(1) = 8675309
  lstate = 1260
  write (*, '(a)') 'g05snf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! six variates
  call g05snf(6_8, 5.0d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 0 and variance 1.6667 in theory
  call g05snf(10000_8, 5.0d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05snf(6_8, -5.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with df = -5, ifail = ', ifail
end program g05snf_example
