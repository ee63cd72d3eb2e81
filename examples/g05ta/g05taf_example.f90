! Binomial variates: 20 trials of probability 0.35, from the Mersenne Twister.
program g05taf_example
  use zeb, only: g05kff, g05taf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail, lr, x(10000)
  real(kind=8) :: query(1), mean, var
  real(kind=8), allocatable :: r(:)
  seed(1) = 1234
  lstate = 1260
  write (*, '(a)') 'g05taf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  ! the length r needs (a query: ifail = -1 and nothing set up), then r set up once
  lr = 0
  ifail = 1
  call g05taf(0_8, 0_8, 20_8, 0.35d0, query, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  allocate (r(lr))
  ifail = 0
  call g05taf(0_8, 0_8, 20_8, 0.35d0, r, lr, state, x, ifail)
  call g05taf(1_8, 10_8, 20_8, 0.35d0, r, lr, state, x, ifail)
  write (*, '(10i4)') x(1:10)
  ! 10000 more from the same r: mean 7 and variance 4.55 in theory
  call g05taf(1_8, 10000_8, 20_8, 0.35d0, r, lr, state, x, ifail)
  mean = sum(real(x, 8)) / size(x)
  var = sum((real(x, 8) - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05taf(2_8, 10_8, 20_8, 1.35d0, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with p = 1.35, ifail = ', ifail
end program g05taf_example
