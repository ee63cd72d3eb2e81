! Poisson variates with mean 6.5, drawn from a reference vector set up once.
program g05tjf_example
  use zeb, only: g05kff, g05tjf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  integer(kind=8) :: x(8), lr
  real(kind=8) :: r(4096)
  seed(1) = 1762543
  lstate = 61
  write (*, '(a)') 'g05tjf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! the length r needs (ifail = -1 reports the query), then r set up once
  lr = 0
  ifail = 1
  call g05tjf(0_8, 0_8, 6.5d0, r, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  ifail = 0
  call g05tjf(0_8, 0_8, 6.5d0, r, lr, state, x, ifail)
  call g05tjf(1_8, 8_8, 6.5d0, r, lr, state, x, ifail)
  write (*, '(8i5)') x
  ifail = 1
  call g05tjf(2_8, 8_8, -6.5d0, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05tjf_example
