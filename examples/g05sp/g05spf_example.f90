! Triangular variates on [0, 5] with mode 2, from Wichmann-Hill II.
program g05spf_example
  use zeb, only: g05kff, g05spf
  implicit none
  integer(kind=8) :: seed(4), state(29), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed = [54321, 33333, 98765, 24680]
  lstate = 29
  write (*, '(a)') 'g05spf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(4_8, 0_8, seed, 4_8, state, lstate, ifail)
  ! six variates
  call g05spf(6_8, 0.0d0, 2.0d0, 5.0d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 2.3333 and variance 1.0556 in theory
  call g05spf(10000_8, 0.0d0, 2.0d0, 5.0d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05spf(6_8, 0.0d0, 6.0d0, 5.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with the mode above xmax, ifail = ', ifail
end program g05spf_example
