! LU factorisation from Fortran: factors and pivots, a zero pivot, and an
! argument error reported on the error unit.
program f07adf_example
  use zeb, only: f07adf
  implicit none
  integer(kind=8), parameter :: n = 4
  real(kind=8) :: a(n, n), s(3, 3)
  integer(kind=8) :: ipiv(n), info, i, m
  a = reshape([2.0d0, 6.0d0, -4.0d0, 1.0d0, &
               -1.0d0, 2.0d0, 5.0d0, 3.0d0, &
               4.0d0, -3.0d0, 1.0d0, 2.0d0, &
               3.0d0, 1.0d0, 2.0d0, -5.0d0], [n, n])
  write (*, '(a)') 'f07adf example results'
  write (*, '(a)') ''
  call f07adf(n, n, a, n, ipiv, info)
  write (*, '(a, i0)') 'info = ', info
  write (*, '(a)') 'Details of factorization (L below the diagonal, U on and above)'
  do i = 1, n
    write (*, '(4f10.4)') a(i, :)
  end do
  write (*, '(a)') 'Pivot indices'
  write (*, '(4i6)') ipiv
  s = reshape([1.0d0, 2.0d0, 1.0d0, 2.0d0, 4.0d0, 3.0d0, 3.0d0, 6.0d0, 1.0d0], [3, 3])
  call f07adf(3_8, 3_8, s, 3_8, ipiv, info)
  write (*, '(a, i0, a)') 'Singular matrix: info = ', info, ' (U(info, info) is zero)'
  m = -1
  call f07adf(m, n, a, n, ipiv, info)
  write (*, '(a, i0)') 'm = -1: info = ', info
end program f07adf_example
