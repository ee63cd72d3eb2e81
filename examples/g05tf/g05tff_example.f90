! Logarithmic variates with parameter 0.8.
program g05tff_example
  use zeb, only: g05kff, g05tff
  implicit none
  integer(kind=8) :: seed(4), state(29), lstate, ifail
  integer(kind=8) :: x(8), lr
  real(kind=8) :: r(4096)
  seed = [9, 8, 7, 6]
  lstate = 29
  write (*, '(a)') 'g05tff example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(4_8, 0_8, seed, 4_8, state, lstate, ifail)
  ! the length r needs (ifail = -1 reports the query), then r set up once
  lr = 0
  ifail = 1
  call g05tff(0_8, 0_8, 0.8d0, r, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  ifail = 0
  call g05tff(0_8, 0_8, 0.8d0, r, lr, state, x, ifail)
  call g05tff(1_8, 8_8, 0.8d0, r, lr, state, x, ifail)
  write (*, '(8i5)') x
  ifail = 1
  call g05tff(2_8, 8_8, 1.5d0, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05tff_example
