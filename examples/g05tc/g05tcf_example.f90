! Geometric variates: failures before a success of probability 0.25.
program g05tcf_example
  use zeb, only: g05kff, g05tcf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  integer(kind=8) :: x(8), lr
  real(kind=8) :: r(4096)
  seed(1) = 55
  lstate = 61
  write (*, '(a)') 'g05tcf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! the length r needs (ifail = -1 reports the query), then r set up once
  lr = 0
  ifail = 1
  call g05tcf(0_8, 0_8, 0.25d0, r, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  ifail = 0
  call g05tcf(0_8, 0_8, 0.25d0, r, lr, state, x, ifail)
  call g05tcf(1_8, 8_8, 0.25d0, r, lr, state, x, ifail)
  write (*, '(8i5)') x
  ifail = 1
  call g05tcf(2_8, 8_8, 0.0d0, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05tcf_example
