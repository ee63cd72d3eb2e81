! Solving A X = B and A^T X = B from Fortran with the factors of f07adf.
program f07aef_example
  use zeb, only: f07adf, f07aef
  implicit none
  integer(kind=8), parameter :: n = 4, nrhs = 2
  real(kind=8) :: a(n, n), b(n, nrhs), c(n, 1)
  integer(kind=8) :: ipiv(n), info, i
  a = reshape([2.0d0, 6.0d0, -4.0d0, 1.0d0, &
               -1.0d0, 2.0d0, 5.0d0, 3.0d0, &
               4.0d0, -3.0d0, 1.0d0, 2.0d0, &
               3.0d0, 1.0d0, 2.0d0, -5.0d0], [n, n])
  b = reshape([24.0d0, 5.0d0, 17.0d0, -7.0d0, 8.0d0, -7.0d0, 9.0d0, -9.0d0], [n, nrhs])
  ! A^T x = c with x = (1, 1, 1, 1).
  c(:, 1) = sum(a, dim=1)
  write (*, '(a)') 'f07aef example results'
  write (*, '(a)') ''
  call f07adf(n, n, a, n, ipiv, info)
  call f07aef('N', n, nrhs, a, n, ipiv, b, n, info)
  write (*, '(a, i0)') 'info = ', info
  write (*, '(a)') 'Solution(s) of A X = B'
  do i = 1, n
    write (*, '(2f10.4)') shown(b(i, :))
  end do
  call f07aef('T', n, 1_8, a, n, ipiv, c, n, info)
  write (*, '(a)') 'Solution of A^T x = c'
  write (*, '(4f10.4)') shown(c(:, 1))
  call f07aef('X', n, 1_8, a, n, ipiv, c, n, info)
  write (*, '(a, i0)') 'trans = X: info = ', info
contains
  ! Values below the printed precision are shown as 0 (their sign depends
  ! on the order of operations of the BLAS kernels).
  elemental function shown(v)
    real(kind=8), intent(in) :: v
    real(kind=8) :: shown
    shown = merge(0.0d0, v, abs(v) < 5.0d-5)
  end function shown
end program f07aef_example
