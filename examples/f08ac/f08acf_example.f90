! Least squares from Fortran with the compact form: f08abf, then Q^T b with
! f08acf, then back substitution with R; Q (Q^T b) gives b back.
program f08acf_example
  use zeb, only: f08abf, f08acf
  implicit none
  integer(kind=8), parameter :: m = 6, n = 4, nb = 2
  real(kind=8) :: a(m, n), t(nb, n), work(nb * m), b(m, 1), b0(m, 1), x(n)
  integer(kind=8) :: info, i
  a = transpose(reshape([1.0d0, 2.0d0, 0.0d0, 1.0d0, &
                         2.0d0, -1.0d0, 1.0d0, 0.0d0, &
                         0.0d0, 1.0d0, 3.0d0, -1.0d0, &
                         1.0d0, 0.0d0, -1.0d0, 2.0d0, &
                         3.0d0, 1.0d0, 0.0d0, 1.0d0, &
                         -1.0d0, 2.0d0, 1.0d0, 1.0d0], [n, m]))
  b(:, 1) = [1.0d0, 2.0d0, 3.0d0, 4.0d0, 5.0d0, 6.0d0]
  b0 = b
  write (*, '(a)') 'f08acf example results'
  write (*, '(a)') ''
  call f08abf(m, n, nb, a, m, t, nb, work, info)
  call f08acf('L', 'T', m, 1_8, n, nb, a, m, t, nb, b, m, work, info)
  write (*, '(a, i0)') 'info = ', info
  do i = n, 1, -1
    x(i) = (b(i, 1) - dot_product(a(i, i + 1:n), x(i + 1:n))) / a(i, i)
  end do
  write (*, '(a)') 'Least-squares solution'
  write (*, '(4f10.4)') x
  write (*, '(a, f10.4)') 'Residual norm', norm2(b(n + 1:m, 1))
  call f08acf('L', 'N', m, 1_8, n, nb, a, m, t, nb, b, m, work, info)
  write (*, '(a, l1)') 'Q (Q^T b) = b: ', maxval(abs(b - b0)) < 1.0d-14
end program f08acf_example
