! F variates with 5 and 12 degrees of freedom.
program g05shf_example
  use zeb, only: g05kff, g05shf
  implicit none
  integer(kind=8) :: seed(1), state(1260), lstate, ifail
  real(kind=8) :: x(6)
  seed(1) = 271828
  lstate = 1260
  write (*, '(a)') 'g05shf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(3_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05shf(6_8, 5.0d0, 12.0d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05shf(6_8, 5.0d0, 0.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05shf_example
