! Von Mises angles with concentration 2, from MRG32k3a.
program g05srf_example
  use zeb, only: g05kff, g05srf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: x(10000)
  seed(1) = 88
  lstate = 61
  write (*, '(a)') 'g05srf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! six variates
  call g05srf(6_8, 2.0d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! a larger sample: in theory the mean of cos x is I1(2)/I0(2) = 0.6978
  ! and the mean direction 0
  call g05srf(10000_8, 2.0d0, state, x, ifail)
  write (*, '(a, f8.4, a, f8.4)') 'mean of cos x ', sum(cos(x)) / size(x), &
    ', mean direction ', atan2(sum(sin(x)), sum(cos(x)))
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05srf(6_8, -2.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a negative concentration, ifail = ', ifail
end program g05srf_example
