! Uniform variates on the integers -5 to 5.
program g05tlf_example
  use zeb, only: g05kff, g05tlf
  implicit none
  integer(kind=8) :: seed(4), state(21), lstate, ifail
  integer(kind=8) :: x(8), lr
  real(kind=8) :: r(4096)
  seed = [3, 1, 4, 1]
  lstate = 21
  write (*, '(a)') 'g05tlf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(2_8, 0_8, seed, 4_8, state, lstate, ifail)
  ! the length r needs (ifail = -1 reports the query), then r set up once
  lr = 0
  ifail = 1
  call g05tlf(0_8, 0_8, -5_8, 5_8, r, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  ifail = 0
  call g05tlf(0_8, 0_8, -5_8, 5_8, r, lr, state, x, ifail)
  call g05tlf(1_8, 8_8, -5_8, 5_8, r, lr, state, x, ifail)
  write (*, '(8i5)') x
  ifail = 1
  call g05tlf(2_8, 8_8, 5_8, -5_8, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05tlf_example
