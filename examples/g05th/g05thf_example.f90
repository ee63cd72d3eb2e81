! Negative binomial variates: failures before the 3rd success of probability 0.4.
program g05thf_example
  use zeb, only: g05kff, g05thf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  integer(kind=8) :: x(8), lr
  real(kind=8) :: r(4096)
  seed(1) = 31
  lstate = 1260
  write (*, '(a)') 'g05thf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! the length r needs (ifail = -1 reports the query), then r set up once
  lr = 0
  ifail = 1
  call g05thf(0_8, 0_8, 3_8, 0.4d0, r, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  ifail = 0
  call g05thf(0_8, 0_8, 3_8, 0.4d0, r, lr, state, x, ifail)
  call g05thf(1_8, 8_8, 3_8, 0.4d0, r, lr, state, x, ifail)
  write (*, '(8i5)') x
  ifail = 1
  call g05thf(2_8, 8_8, 3_8, 0.0d0, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05thf_example
