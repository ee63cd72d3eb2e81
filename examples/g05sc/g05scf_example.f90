! Cauchy variates with median 1 and semi-interquartile range 0.5.
program g05scf_example
  use zeb, only: g05kff, g05scf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: x(6)
  seed(1) = 42
  lstate = 61
  write (*, '(a)') 'g05scf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05scf(6_8, 1.0d0, 0.5d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05scf(6_8, 1.0d0, -0.5d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05scf_example
