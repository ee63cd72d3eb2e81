! Poisson variates with mean 3.5, from Wichmann-Hill I.
program g05tjf_example
  use zeb, only: g05kff, g05tjf
  implicit none
  integer(kind=8) :: seed(4), state(21), lstate, ifail, lr, x(10000)
  real(kind=8) :: query(1), mean, var
  real(kind=8), allocatable :: r(:)
  seed = [28411, 9050, 31337, 70001]
  lstate = 21
  write (*, '(a)') 'g05tjf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(2_8, 100_8, seed, 4_8, state, lstate, ifail)
  ! the length r needs (a query: ifail = -1 and nothing set up), then r set up once
  lr = 0
  ifail = 1
  call g05tjf(0_8, 0_8, 3.5d0, query, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  allocate (r(lr))
  ifail = 0
  call g05tjf(0_8, 0_8, 3.5d0, r, lr, state, x, ifail)
  call g05tjf(1_8, 10_8, 3.5d0, r, lr, state, x, ifail)
  write (*, '(10i4)') x(1:10)
  ! 10000 more from the same r: mean 3.5 and variance 3.5 in theory
  call g05tjf(1_8, 10000_8, 3.5d0, r, lr, state, x, ifail)
  mean = sum(real(x, 8)) / size(x)
  var = sum((real(x, 8) - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05tjf(2_8, 10_8, -1.0d0, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a negative mean, ifail = ', ifail
end program g05tjf_example
