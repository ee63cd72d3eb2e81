! Lognormal variates: exp(y), y normal (mean 0.5, variance 0.25), from Wichmann-Hill I.
program g05smf_example
  use zeb, only: g05kff, g05smf
  implicit none
  integer(kind=8) :: seed(1), state(21), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed(1) = 271828
  lstate = 21
  write (*, '(a)') 'g05smf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(2_8, 1_8, seed, 1_8, state, lstate, ifail)
  ! six variates
  call g05smf(6_8, 0.5d0, 0.25d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 1.8682 and variance 0.9913 in theory
  call g05smf(10000_8, 0.5d0, 0.25d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05smf(6_8, 0.5d0, -0.25d0, state, x, ifail)
  write (*, '(a, i0)') 'with a negative variance, ifail = ', ifail
end program g05smf_example
