! Uniform variates on [-1, 3] from ACORN of order 6 with three digits.
program g05sqf_example
  use zeb, only: g05kff, g05sqf
  implicit none
  integer(kind=8) :: seed(1), state(30), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed(1) = 19
  lstate = 30
  write (*, '(a)') 'g05sqf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(5_8, 2005_8, seed, 1_8, state, lstate, ifail)
  ! six variates
  call g05sqf(6_8, -1.0d0, 3.0d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 1 and variance 1.3333 in theory
  call g05sqf(10000_8, -1.0d0, 3.0d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05sqf(6_8, 3.0d0, -1.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a > b, ifail = ', ifail
end program g05sqf_example
