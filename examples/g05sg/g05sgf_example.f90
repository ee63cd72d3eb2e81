! A mixture of exponentials: mean 1 (weight 0.7) and mean 10 (weight 0.3), from MRG32k3a.
program g05sgf_example
  use zeb, only: g05kff, g05sgf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: a(2), wgt(2), x(10000), mean, var
  seed(1) = 606
  lstate = 61
  write (*, '(a)') 'g05sgf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  a = [1.0d0, 10.0d0]
  wgt = [0.7d0, 0.3d0]
  ! six variates
  call g05sgf(6_8, 2_8, a, wgt, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 3.7 and variance 47.71 in theory
  call g05sgf(10000_8, 2_8, a, wgt, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! a zero mean, with ifail = 1 on entry: a soft failure
  a(1) = 0.0d0
  ifail = 1
  call g05sgf(6_8, 2_8, a, wgt, state, x, ifail)
  write (*, '(a, i0)') 'with a zero mean, ifail = ', ifail
end program g05sgf_example
