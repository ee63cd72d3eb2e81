! A zero of a function from Fortran, and the tolerance-too-small warning.
module c05ayf_example_functions
  implicit none
contains
  function f(x)
    real(kind=8) :: f
    real(kind=8), intent(in) :: x
    f = x * x - 2.0d0
  end function f
end module c05ayf_example_functions

program c05ayf_example
  use zeb, only: c05ayf
  use c05ayf_example_functions, only: f
  implicit none
  real(kind=8) :: x
  integer(kind=8) :: ifail
  write (*, '(a)') 'c05ayf example results'
  ifail = 0
  call c05ayf(0.0d0, 2.0d0, 1.0d-10, 0.0d0, f, x, ifail)
  write (*, '(/a, f16.12)') 'Zero of x^2 - 2: x = ', x
  write (*, '(/a)') 'With eps = 1e-20:'
  ifail = -1
  call c05ayf(0.0d0, 2.0d0, 1.0d-20, 0.0d0, f, x, ifail)
  write (*, '(a, f16.12, a, i0)') 'x = ', x, ', ifail = ', ifail
end program c05ayf_example
