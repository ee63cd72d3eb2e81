! Beta variates with shapes 2 and 3, from the Mersenne Twister.
program g05sbf_example
  use zeb, only: g05kff, g05sbf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  real(kind=8) :: x(6)
  seed(1) = 1762543
  lstate = 1260
  write (*, '(a)') 'g05sbf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05sbf(6_8, 2.0d0, 3.0d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05sbf(6_8, 2.0d0, -3.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05sbf_example
