! Chi-squared variates with 4 degrees of freedom.
program g05sdf_example
  use zeb, only: g05kff, g05sdf
  implicit none
  integer(kind=8) :: seed(1), state(17), lstate, ifail
  real(kind=8) :: x(6)
  seed(1) = 13
  lstate = 17
  write (*, '(a)') 'g05sdf example results'
  write (*, '(a)') ''
  ifail = 0
  call g05kff(1_8, 0_8, seed, 1_8, state, lstate, ifail)
  call g05sdf(6_8, 4.0d0, state, x, ifail)
  write (*, '(f12.6)') x
  ifail = 1
  call g05sdf(6_8, 0.0d0, state, x, ifail)
  write (*, '(a, i0)') 'with a bad argument, ifail = ', ifail
end program g05sdf_example
