! Poisson variates, each with its own mean.
program g05tkf_example
  use zeb, only: g05kff, g05tkf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: lambda(6)
  integer(kind=8) :: x(6)
  integer :: i
  seed(1) = 123
  lstate = 61
  write (*, '(a)') 'g05tkf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  lambda = [0.5d0, 2.0d0, 8.0d0, 30.0d0, 250.0d0, 1.0d6]
  call g05tkf(6_8, lambda, state, x, ifail)
  write (*, '(f12.1, i10)') (lambda(i), x(i), i = 1, 6)
  lambda(3) = -8.0d0
  ifail = 1
  call g05tkf(6_8, lambda, state, x, ifail)
  write (*, '(a, i0)') 'with a negative mean, ifail = ', ifail
end program g05tkf_example
