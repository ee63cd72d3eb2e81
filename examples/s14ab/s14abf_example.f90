! ln Gamma(x) from Fortran; a quiet failure (ifail = 1) is checked by hand.
program s14abf_example
  use zeb, only: s14abf
  implicit none
  real(kind=8), parameter :: xs(6) = [0.5d0, 1.5d0, 10.0d0, 1.0d10, 1.0d-20, -1.0d0]
  real(kind=8) :: y
  integer(kind=8) :: ifail
  integer :: i
  write (*, '(a)') 's14abf example results'
  write (*, '(a)') ''
  write (*, '(a)') '     x          ln gamma(x)'
  do i = 1, size(xs)
    ifail = 1
    y = s14abf(xs(i), ifail)
    if (ifail == 0) then
      write (*, '(1x, es11.3e2, 1x, es18.10e3)') xs(i), y
    else
      write (*, '(1x, es11.3e2, a, i0)') xs(i), '   failed with ifail = ', ifail
    end if
  end do
end program s14abf_example
