! Uniform variates on the integers -3 to 12, from Wichmann-Hill II.
program g05tlf_example
  use zeb, only: g05kff, g05tlf
  implicit none
  integer(kind=8) :: seed(4), state(29), lstate, ifail, lr, x(10000)
  real(kind=8) :: query(1), mean, var
  real(kind=8), allocatable :: r(:)
  seed = [4242, 17171, 30303, 6006]
  lstate = 29
  write (*, '(a)') 'g05tlf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(4_8, 0_8, seed, 4_8, state, lstate, ifail)
  ! the length r needs (a query: ifail = -1 and nothing set up), then r set up once
  lr = 0
  ifail = 1
  call g05tlf(0_8, 0_8, -3_8, 12_8, query, lr, state, x, ifail)
  write (*, '(a, i0, a, i0)') 'lr = ', lr, ', ifail = ', ifail
  allocate (r(lr))
  ifail = 0
  call g05tlf(0_8, 0_8, -3_8, 12_8, r, lr, state, x, ifail)
  call g05tlf(1_8, 10_8, -3_8, 12_8, r, lr, state, x, ifail)
  write (*, '(10i4)') x(1:10)
  ! 10000 more from the same r: mean 4.5 and variance 21.25 in theory
  call g05tlf(1_8, 10000_8, -3_8, 12_8, r, lr, state, x, ifail)
  mean = sum(real(x, 8)) / size(x)
  var = sum((real(x, 8) - mean)**2) / (size(x) - 1)
  write (*, '(a, f8.4, a, f8.4)') 'sample mean ', mean, ', sample variance ', var
  ! an argument out of range, with ifail = 1 on entry: a soft failure
  ifail = 1
  call g05tlf(2_8, 10_8, 12_8, -3_8, r, lr, state, x, ifail)
  write (*, '(a, i0)') 'with a > b, ifail = ', ifail
end program g05tlf_example
