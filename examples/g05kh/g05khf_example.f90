! Leap-frog: two interleaved streams of the basic generator.
program g05khf_example
  use zeb, only: g05kff, g05khf, g05saf
  implicit none
  integer(kind=8) :: seed(1), state(17), lstate, ifail, k
  real(kind=8) :: x(8), y(4)
  seed(1) = 42
  lstate = 17
  write (*, '(a)') 'g05khf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(1_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05saf(8_8, state, x, ifail)
  write (*, '(a, 8f8.4)') 'sequence:', x
  do k = 1, 2
    call g05kff(1_8, 0_8, seed, 1_8, state, lstate, ifail)
    call g05khf(2_8, k, state, ifail)
    call g05saf(4_8, state, y, ifail)
    write (*, '(a, i1, a, 4f8.4)') 'stream ', k, ':', y
  end do
end program g05khf_example
