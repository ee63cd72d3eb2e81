! Binomial variates: 20 trials with probability 0.35.
program g05taf_example
  use zeb, only: g05kff, g05taf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  integer(kind=8) :: x(8), lr
  real(kind=8) :: r(4096)
  seed(1) = 1234
  lstate = 1260
  write (*, '(a)') 'g05taf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! the length r needs (ifail = -1 reports the query), then r set up once
  lr = 0
  ifail = 1
  call g05taf(0_8, 0_8, 20_8, 0.35d0, r, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  ifail = 0
  call g05taf(0_8, 0_8, 20_8, 0.35d0, r, lr, state, x, ifail)
  call g05taf(1_8, 8_8, 20_8, 0.35d0, r, lr, state, x, ifail)
  write (*, '(8i5)') x
  ifail = 1
  call g05taf(2_8, 8_8, 20_8, 1.35d0, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05taf_example
