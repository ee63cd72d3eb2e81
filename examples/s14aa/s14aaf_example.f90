! The gamma function from Fortran: values, and a noisy soft failure.
program s14aaf_example
  use zeb, only: s14aaf
  implicit none
  real(kind=8), parameter :: xs(7) = [1.0d0, 1.25d0, 1.5d0, 2.0d0, 10.0d0, -1.5d0, 171.0d0]
  real(kind=8) :: y
  integer(kind=8) :: ifail
  integer :: i
  write (*, '(a)') 's14aaf example results'
  write (*, '(a)') ''
  write (*, '(a)') '     x           gamma(x)'
  do i = 1, size(xs)
    ifail = -1
    y = s14aaf(xs(i), ifail)
    write (*, '(1x, es11.3e2, 1x, es16.8e3, a, i0)') xs(i), y, '  ifail = ', ifail
  end do
end program s14aaf_example
