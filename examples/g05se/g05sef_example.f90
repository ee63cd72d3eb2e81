! Dirichlet vectors, parameters 1, 2 and 3, from Wichmann-Hill I: x(i, :) is vector i.
program g05sef_example
  use zeb, only: g05kff, g05sef
  implicit none
  integer(kind=8) :: seed(1), state(21), lstate, ifail
  real(kind=8) :: a(3), x(4, 3), y(5000, 3)
  integer :: i
  seed(1) = 2718
  lstate = 21
  write (*, '(a)') 'g05sef example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(2_8, 12_8, seed, 1_8, state, lstate, ifail)
  a = [1.0d0, 2.0d0, 3.0d0]
  ! four vectors, each summing to 1
  call g05sef(4_8, 3_8, a, state, x, 4_8, ifail)
  do i = 1, 4
    write (*, '(3f10.6, a, f8.6)') x(i, :), '   sum ', sum(x(i, :))
  end do
  ! 5000 more: the component means are 1/6, 1/3 and 1/2 in theory
  call g05sef(5000_8, 3_8, a, state, y, 5000_8, ifail)
  write (*, '(a, 3f8.4)') 'sample means ', sum(y, dim=1) / 5000
  ! a leading dimension below n, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05sef(4_8, 3_8, a, state, x, 3_8, ifail)
  write (*, '(a, i0)') 'with ldx < n, ifail = ', ifail
end program g05sef_example
