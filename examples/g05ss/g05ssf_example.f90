! Weibull variates with shape 1.5 and scale 2.
program g05ssf_example
  use zeb, only: g05kff, g05ssf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: x(6)
  seed(1) = 8
  lstate = 61
  write (*, '(a)') 'g05ssf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05ssf(6_8, 1.5d0, 2.0d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05ssf(6_8, 0.0d0, 2.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05ssf_example
