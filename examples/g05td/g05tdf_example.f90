! A loaded die given by its cumulative table: face 6 three times as likely.
program g05tdf_example
  use zeb, only: g05kff, g05tdf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  real(kind=8) :: c(6), r(4096)
  integer(kind=8) :: x(10), lr
  seed(1) = 404
  lstate = 1260
  write (*, '(a)') 'g05tdf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  c = [0.125d0, 0.25d0, 0.375d0, 0.5d0, 0.625d0, 1.0d0]
  lr = 4096
  call g05tdf(2_8, 10_8, c, 6_8, 1_8, 2_8, r, lr, state, x, ifail)
  write (*, '(10i3)') x
  c(6) = 0.9d0
  ifail = 1
  call g05tdf(2_8, 10_8, c, 6_8, 1_8, 2_8, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a last entry of 0.9, ifail = ', ifail
end program g05tdf_example
