! Hypergeometric variates: samples of 10 from a lot of 100, 30 defective, from ACORN.
program g05tef_example
  use zeb, only: g05kff, g05tef
  implicit none
  integer(kind=8) :: seed(1), state(38), lstate, ifail, lr, x(10000)
  real(kind=8) :: query(1), mean, var
  real(kind=8), allocatable :: r(:)
  seed(1) = 2468
  lstate = 38
  write (*, '(a)') 'g05tef example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(5_8, 1012_8, seed, 1_8, state, lstate, ifail)
  ! the length r needs (a query: ifail = -1 and nothing set up), then r set up once
  lr = 0
  ifail = 1
  call g05tef(0_8, 0_8, 10_8, 30_8, 100_8, query, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  allocate (r(lr))
  ifail = 0
  call g05tef(0_8, 0_8, 10_8, 30_8, 100_8, r, lr, state, x, ifail)
  call g05tef(1_8, 10_8, 10_8, 30_8, 100_8, r, lr, state, x, ifail)
  write (*, '(10i4)') x(1:10)
  ! 10000 more from the same r: mean 3 and variance 1.9091 in theory
  call g05tef(1_8, 10000_8, 10_8, 30_8, 100_8, r, lr, state, x, ifail)
  mean = sum(real(x, 8)) / size(x)
  var = sum((real(x, 8) - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05tef(2_8, 10_8, 120_8, 30_8, 100_8, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a sample larger than the lot, ifail = ', ifail
end program g05tef_example
