! Uniform deviates from Wichmann-Hill I, set 1.
program g05saf_example
  use zeb, only: g05kff, g05saf
  implicit none
  integer(kind=8) :: seed(4), state(21), lstate, ifail
  real(kind=8) :: x(6)
  seed = [11, 22, 33, 44]
  lstate = 21
  write (*, '(a)') 'g05saf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(2_8, 1_8, seed, 4_8, state, lstate, ifail)
  call g05saf(6_8, state, x, ifail)
  write (*, '(f18.15)') x
end program g05saf_example
