! Gamma variates with shape 2.5 and scale 2, from MRG32k3a.
program g05sjf_example
  use zeb, only: g05kff, g05sjf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed(1) = 2024
  lstate = 61
  write (*, '(a)') 'g05sjf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! six variates
  call g05sjf(6_8, 2.5d0, 2.0d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 5 and variance 10 in theory
  call g05sjf(10000_8, 2.5d0, 2.0d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05sjf(6_8, 2.5d0, 0.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a zero scale, ifail = ', ifail
end program g05sjf_example
