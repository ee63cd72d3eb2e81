! Exponential variates with mean 2.5, from Wichmann-Hill II.
program g05sff_example
  use zeb, only: g05kff, g05sff
  implicit none
  integer(kind=8) :: seed(4), state(29), lstate, ifail
  real(kind=8) :: x(10000), mean, var
  seed = [20250, 7777, 13579, 86420]
  lstate = 29
  write (*, '(a)') 'g05sff example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(4_8, 0_8, seed, 4_8, state, lstate, ifail)
  ! six variates
  call g05sff(6_8, 2.5d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: mean 2.5 and variance 6.25 in theory
  call g05sff(10000_8, 2.5d0, state, x, ifail)
  mean = sum(x) / size(x)
  var = sum((x - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05sff(6_8, -2.5d0, state, x, ifail)
  write (*, '(a, i0)') 'with a negative mean, ifail = ', ifail
end program g05sff_example
