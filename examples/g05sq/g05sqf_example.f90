! Uniform variates on [-1, 3], by inversion.
program g05sqf_example
  use zeb, only: g05kff, g05sqf
  implicit none
  integer(kind=8) :: seed(4), state(29), lstate, ifail
  real(kind=8) :: x(6)
  seed = [1, 2, 3, 4]
  lstate = 29
  write (*, '(a)') 'g05sqf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(4_8, 0_8, seed, 4_8, state, lstate, ifail)
  call g05sqf(6_8, -1.0d0, 3.0d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05sqf(6_8, 3.0d0, -1.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05sqf_example
