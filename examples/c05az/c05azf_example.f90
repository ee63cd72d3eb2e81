! A zero by reverse communication from Fortran, with a relative tolerance.
program c05azf_example
  use zeb, only: c05azf
  implicit none
  real(kind=8) :: x, y, fx, c(17)
  integer(kind=8) :: ind, ifail
  write (*, '(a)') 'c05azf example results'
  write (*, '(/a)') '  ind         x                 f(x)'
  x = 1.0d0
  y = 3.0d0
  fx = 0.0d0
  ind = 1
  do
    ifail = -1
    call c05azf(x, y, fx, 1.0d-12, 2_8, c, ind, ifail)
    if (ind == 0) exit
    fx = x**3 - 2.0d0 * x - 5.0d0
    write (*, '(i5, f18.12, es13.4)') ind, x, fx
  end do
  write (*, '(/a, f16.12, a, i0)') 'Zero of x^3 - 2x - 5: x = ', x, ', ifail = ', ifail
end program c05azf_example
