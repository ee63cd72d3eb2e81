! Multinomial vectors, 50 trials over 3 categories (basic generator): x(i, :) is vector i.
program g05tgf_example
  use zeb, only: g05kff, g05tgf
  implicit none
  integer(kind=8) :: seed(1), state(17), lstate, ifail
  real(kind=8) :: p(3)
  integer(kind=8) :: x(5, 3), y(2000, 3)
  integer :: i
  seed(1) = 50
  lstate = 17
  write (*, '(a)') 'g05tgf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(1_8, 0_8, seed, 1_8, state, lstate, ifail)
  p = [0.2d0, 0.3d0, 0.5d0]
  ! five vectors, each with a total of 50
  call g05tgf(5_8, 50_8, 3_8, p, state, x, 5_8, ifail)
  do i = 1, 5
    write (*, '(3i4, a, i0)') x(i, :), '   total ', sum(x(i, :))
  end do
  ! 2000 more: the mean counts are 10, 15 and 25 in theory
  call g05tgf(2000_8, 50_8, 3_8, p, state, y, 2000_8, ifail)
  write (*, '(a, 3f8.3)') 'sample means ', sum(real(y, 8), dim=1) / 2000
  ! probabilities summing to 1.1, with ifail = 1 on entry: a soft failure
  p(3) = 0.6d0
  ifail = 1
  call g05tgf(5_8, 50_8, 3_8, p, state, x, 5_8, ifail)
  write (*, '(a, i0)') 'with probabilities summing to 1.1, ifail = ', ifail
end program g05tgf_example
