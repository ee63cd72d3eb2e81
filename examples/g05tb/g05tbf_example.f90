! Bernoulli variates with probability 0.3, from ACORN.
program g05tbf_example
  use zeb, only: g05kff, g05tbf
  implicit none
  integer(kind=8) :: seed(1), state(34), lstate, ifail
  integer(kind=8) :: x(10000)
  real(kind=8) :: frac
  seed(1) = 1357
  lstate = 34
  write (*, '(a)') 'g05tbf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(5_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! twenty trials
  call g05tbf(20_8, 0.3d0, state, x, ifail)
  write (*, '(20i2)') x(1:20)
  write (*, '(a, i0)') 'successes in these twenty: ', sum(x(1:20))
  ! a larger sample: the fraction of ones is 0.3 in theory
  call g05tbf(10000_8, 0.3d0, state, x, ifail)
  frac = count(x == 1) / 10000.0d0
  write (*, '(a, f8.4)') 'fraction of ones ', frac
  ! a probability out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05tbf(20_8, -0.3d0, state, x, ifail)
  write (*, '(a, i0)') 'with p = -0.3, ifail = ', ifail
end program g05tbf_example
