! Triangular variates on [1, 4] with mode 2.
program g05spf_example
  use zeb, only: g05kff, g05spf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: x(6)
  seed(1) = 314159
  lstate = 61
  write (*, '(a)') 'g05spf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05spf(6_8, 1.0d0, 2.0d0, 4.0d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05spf(6_8, 1.0d0, 5.0d0, 4.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05spf_example
