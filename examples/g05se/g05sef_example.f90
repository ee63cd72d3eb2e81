! Dirichlet vectors with parameters 1, 2 and 3: x(i, :) is the i-th vector.
program g05sef_example
  use zeb, only: g05kff, g05sef
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  real(kind=8) :: a(3), x(4, 3)
  integer :: i
  seed(1) = 2718
  lstate = 1260
  write (*, '(a)') 'g05sef example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  a = [1.0d0, 2.0d0, 3.0d0]
  call g05sef(4_8, 3_8, a, state, x, 4_8, ifail)
  write (*, '(3f10.6)') (x(i, :), i = 1, 4)
  ifail = 1
  call g05sef(4_8, 3_8, a, state, x, 3_8, ifail)
  write (*, '(a, i0)') 'with ldx < n, ifail = ', ifail
end program g05sef_example
