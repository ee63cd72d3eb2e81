! Repeatable initialisation: the state length query, the basic generator
! seeded and drawn, and a noisy soft failure for a state that is too short.
program g05kff_example
  use zeb, only: g05kff, g05saf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: x(5)
  seed(1) = 1762543
  write (*, '(a)') 'g05kff example results'
  write (*, '(a)') ''
  lstate = 0
  ifail = 1
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  write (*, '(a, i0, a, i0)') 'required lstate = ', lstate, ', ifail = ', ifail
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05saf(5_8, state, x, ifail)
  write (*, '(5f10.6)') x
  lstate = 20
  ifail = -1
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
end program g05kff_example
