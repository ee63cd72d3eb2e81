! Bernoulli variates: 1 with probability 0.3.
program g05tbf_example
  use zeb, only: g05kff, g05tbf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  integer(kind=8) :: x(12)
  seed(1) = 1762543
  lstate = 1260
  write (*, '(a)') 'g05tbf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05tbf(12_8, 0.3d0, state, x, ifail)
  write (*, '(12i3)') x
  ifail = 1
  call g05tbf(12_8, 1.3d0, state, x, ifail)
  write (*, '(a, i0)') 'with p = 1.3, ifail = ', ifail
end program g05tbf_example
