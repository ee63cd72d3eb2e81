! Skip-ahead by 2^40 draws of MRG32k3a; then a noisy failure for e < 0.
program g05kkf_example
  use zeb, only: g05kff, g05kkf, g05saf
  implicit none
  integer(kind=8) :: seed(6), state(61), lstate, ifail
  real(kind=8) :: x(3)
  seed = 12345
  lstate = 61
  write (*, '(a)') 'g05kkf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 6_8, state, lstate, ifail)
  call g05kkf(40_8, state, ifail)
  call g05saf(3_8, state, x, ifail)
  write (*, '(3f14.10)') x
  ifail = -1
  call g05kkf(-1_8, state, ifail)
end program g05kkf_example
