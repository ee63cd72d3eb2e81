! Von Mises angles with concentration 4.
program g05srf_example
  use zeb, only: g05kff, g05srf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  real(kind=8) :: x(6)
  seed(1) = 5
  lstate = 1260
  write (*, '(a)') 'g05srf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05srf(6_8, 4.0d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05srf(6_8, -4.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05srf_example
