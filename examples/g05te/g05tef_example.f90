! Hypergeometric variates: special items in samples of 10 from 50, 20 special.
program g05tef_example
  use zeb, only: g05kff, g05tef
  implicit none
  integer(kind=8) :: seed(1), state(17), lstate, ifail
  integer(kind=8) :: x(8), lr
  real(kind=8) :: r(4096)
  seed(1) = 77
  lstate = 17
  write (*, '(a)') 'g05tef example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(1_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! the length r needs (ifail = -1 reports the query), then r set up once
  lr = 0
  ifail = 1
  call g05tef(0_8, 0_8, 10_8, 20_8, 50_8, r, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  ifail = 0
  call g05tef(0_8, 0_8, 10_8, 20_8, 50_8, r, lr, state, x, ifail)
  call g05tef(1_8, 8_8, 10_8, 20_8, 50_8, r, lr, state, x, ifail)
  write (*, '(8i5)') x
  ifail = 1
  call g05tef(2_8, 8_8, 60_8, 20_8, 50_8, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05tef_example
