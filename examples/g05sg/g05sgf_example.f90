! A mixture of two exponentials: mean 1 with weight 0.7, mean 10 with weight 0.3.
program g05sgf_example
  use zeb, only: g05kff, g05sgf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: a(2), wgt(2), x(6)
  seed(1) = 606
  lstate = 61
  write (*, '(a)') 'g05sgf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  a = [1.0d0, 10.0d0]
  wgt = [0.7d0, 0.3d0]
  call g05sgf(6_8, 2_8, a, wgt, state, x, ifail)
  write (*, '(f12.6)') x
  wgt(2) = 0.4d0
  ifail = 1
  call g05sgf(6_8, 2_8, a, wgt, state, x, ifail)
  write (*, '(a, i0)') 'with weights summing to 1.1, ifail = ', ifail
end program g05sgf_example
