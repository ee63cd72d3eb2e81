! Logistic variates with mean 3 and spread 0.5.
program g05slf_example
  use zeb, only: g05kff, g05slf
  implicit none
  integer(kind=8) :: seed(4), state(21), lstate, ifail
  real(kind=8) :: x(6)
  seed = [11, 22, 33, 44]
  lstate = 21
  write (*, '(a)') 'g05slf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(2_8, 0_8, seed, 4_8, state, lstate, ifail)
  call g05slf(6_8, 3.0d0, 0.5d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05slf(6_8, 3.0d0, -0.5d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05slf_example
