! Lognormal variates: exp of a normal with mean 0.5 and variance 0.25.
program g05smf_example
  use zeb, only: g05kff, g05smf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  real(kind=8) :: x(6)
  seed(1) = 99
  lstate = 1260
  write (*, '(a)') 'g05smf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05smf(6_8, 0.5d0, 0.25d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05smf(6_8, 0.5d0, -0.25d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05smf_example
