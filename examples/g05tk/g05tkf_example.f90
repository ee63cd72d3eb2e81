! Poisson counts with a daily cycle: hour i has mean 5 + 4 sin(2 pi i/24), from MRG32k3a.
program g05tkf_example
  use zeb, only: g05kff, g05tkf
  implicit none
  integer(kind=8) :: seed(1), state(61), lstate, ifail
  real(kind=8) :: lambda(24)
  real(kind=8), parameter :: pi = 3.141592653589793d0
  integer(kind=8) :: x(24)
  integer :: i
  seed(1) = 123
  lstate = 61
  write (*, '(a)') 'g05tkf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(6_8, 0_8, seed, 1_8, state, lstate, ifail)
  lambda = [(5.0d0 + 4.0d0 * sin(2.0d0 * pi * i / 24.0d0), i = 0, 23)]
  ! one day's counts, hour by hour
  call g05tkf(24_8, lambda, state, x, ifail)
  write (*, '(12i4)') x
  write (*, '(a, i0, a, f0.1)') 'total ', sum(x), ', expected ', sum(lambda)
  ! a negative mean, with ifail = 1 on entry: a soft failure
  lambda(3) = -8.0d0
  ifail = 1
  call g05tkf(24_8, lambda, state, x, ifail)
  write (*, '(a, i0)') 'with a negative mean, ifail = ', ifail
end program g05tkf_example
