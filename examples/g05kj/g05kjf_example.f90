! Skip-ahead of the Mersenne Twister by 10^6 draws.
program g05kjf_example
  use zeb, only: g05kff, g05kjf, g05saf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  real(kind=8) :: x(4)
  seed(1) = 2024
  lstate = 1260
  write (*, '(a)') 'g05kjf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05kjf(1000000_8, state, ifail)
  call g05saf(4_8, state, x, ifail)
  write (*, '(4f12.8)') x
end program g05kjf_example
