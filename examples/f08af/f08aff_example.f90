! The orthonormal factor Q from Fortran, and a check that Q^T Q = I.
program f08aff_example
  use zeb, only: f08aef, f08aff
  implicit none
  integer(kind=8), parameter :: m = 6, n = 4, lwork = 64 * n
  real(kind=8) :: a(m, n), tau(n), work(lwork), e(n, n)
  integer(kind=8) :: info, i
  a = transpose(reshape([1.0d0, 2.0d0, 0.0d0, 1.0d0, &
                         2.0d0, -1.0d0, 1.0d0, 0.0d0, &
                         0.0d0, 1.0d0, 3.0d0, -1.0d0, &
                         1.0d0, 0.0d0, -1.0d0, 2.0d0, &
                         3.0d0, 1.0d0, 0.0d0, 1.0d0, &
                         -1.0d0, 2.0d0, 1.0d0, 1.0d0], [n, m]))
  write (*, '(a)') 'f08aff example results'
  write (*, '(a)') ''
  call f08aef(m, n, a, m, tau, work, lwork, info)
  call f08aff(m, n, n, a, m, tau, work, lwork, info)
  write (*, '(a, i0)') 'info = ', info
  write (*, '(a)') 'Q'
  do i = 1, m
    write (*, '(4f10.4)') shown(a(i, :))
  end do
  e = matmul(transpose(a), a)
  do i = 1, n
    e(i, i) = e(i, i) - 1.0d0
  end do
  write (*, '(a, l1)') 'Q^T Q = I to 1e-14: ', maxval(abs(e)) < 1.0d-14
contains
  ! Values below the printed precision are shown as 0 (their sign depends
  ! on the order of operations of the BLAS kernels).
  elemental function shown(v)
    real(kind=8), intent(in) :: v
    real(kind=8) :: shown
    shown = merge(0.0d0, v, abs(v) < 5.0d-5)
  end function shown
end program f08aff_example
