! Multinomial vectors: 50 trials over 3 categories, x(i, :) the i-th vector.
program g05tgf_example
  use zeb, only: g05kff, g05tgf
  implicit none
  integer(kind=8) :: seed(4), state(29), lstate, ifail
  real(kind=8) :: p(3)
  integer(kind=8) :: x(5, 3)
  integer :: i
  seed = [8, 0, 8, 0]
  lstate = 29
  write (*, '(a)') 'g05tgf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(4_8, 0_8, seed, 4_8, state, lstate, ifail)
  p = [0.2d0, 0.3d0, 0.5d0]
  call g05tgf(5_8, 50_8, 3_8, p, state, x, 5_8, ifail)
  write (*, '(3i4)') (x(i, :), i = 1, 5)
  p(3) = 0.6d0
  ifail = 1
  call g05tgf(5_8, 50_8, 3_8, p, state, x, 5_8, ifail)
  write (*, '(a, i0)') 'with probabilities summing to 1.1, ifail = ', ifail
end program g05tgf_example
