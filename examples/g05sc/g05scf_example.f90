! Cauchy variates with median 1 and semi-interquartile range 0.5, from Wichmann-Hill I.
program g05scf_example
  use zeb, only: g05kff, g05scf
  implicit none
  integer(kind=8) :: seed(4), state(21), lstate, ifail
  real(kind=8) :: x(10000)
  seed = [1762, 5032, 60387, 123457]
  lstate = 21
  write (*, '(a)') 'g05scf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(2_8, 7_8, seed, 4_8, state, lstate, ifail)
  ! six variates
  call g05scf(6_8, 1.0d0, 0.5d0, state, x, ifail)
  write (*, '(f12.6)') x(1:6)
  ! no mean or variance to estimate, but half of a larger sample
  ! lies in [0.5, 1.5] in theory
  call g05scf(10000_8, 1.0d0, 0.5d0, state, x, ifail)
  write (*, '(a, f8.4)') 'fraction in [0.5, 1.5] ', &
    count(x >= 0.5d0 .and. x <= 1.5d0) / 10000.0d0
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05scf(6_8, 1.0d0, -0.5d0, state, x, ifail)
  write (*, '(a, i0)') 'with a negative semi-interquartile range, ifail = ', ifail
end program g05scf_example
