! A loaded die given by its cumulative table: face 6 three times as likely as each other.
program g05tdf_example
  use zeb, only: g05kff, g05tdf
  implicit none
  integer(kind=8) :: seed(4), state(29), lstate, ifail, lr, x(10000)
  real(kind=8) :: c(6), query(1), mean, var
  real(kind=8), allocatable :: r(:)
  seed = [40404, 50505, 60606, 70707]
  lstate = 29
  write (*, '(a)') 'g05tdf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(4_8, 0_8, seed, 4_8, state, lstate, ifail)
  c = [0.125d0, 0.25d0, 0.375d0, 0.5d0, 0.625d0, 1.0d0]
  ! the length r needs (a query: ifail = -1 and nothing set up), then r set up once
  lr = 0
  ifail = 1
  call g05tdf(0_8, 0_8, c, 6_8, 1_8, 2_8, query, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  allocate (r(lr))
  ifail = 0
  call g05tdf(0_8, 0_8, c, 6_8, 1_8, 2_8, r, lr, state, x, ifail)
  call g05tdf(1_8, 10_8, c, 6_8, 1_8, 2_8, r, lr, state, x, ifail)
  write (*, '(10i4)') x(1:10)
  ! 10000 more throws: mean 4.125 and variance 3.3594 in theory
  call g05tdf(1_8, 10000_8, c, 6_8, 1_8, 2_8, r, lr, state, x, ifail)
  mean = sum(real(x, 8)) / size(x)
  var = sum((real(x, 8) - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! a table ending at 0.9, with ifail = 1 on entry: a soft failure
  c(6) = 0.9d0
  ifail = 1
  call g05tdf(2_8, 10_8, c, 6_8, 1_8, 2_8, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a last entry of 0.9, ifail = ', ifail
end program g05tdf_example
