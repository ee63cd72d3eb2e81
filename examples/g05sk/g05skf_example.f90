! Normal deviates from MRG32k3a: mean and variance of 10000 of them.
program g05skf_example
  use zeb, only: g05kff, g05skf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: x(10000), m, v
  seed(1) = 5
  lstate = 61
  write (*, '(a)') 'g05skf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05skf(10000_8, -2.0d0, 0.5d0, state, x, ifail)
  write (*, '(4f10.5)') x(1:4)
  m = sum(x) / size(x)
  v = sum((x - m)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', m, ', sample variance ', v
end program g05skf_example
