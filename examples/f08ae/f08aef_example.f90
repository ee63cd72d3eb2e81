! QR factorisation from Fortran: a workspace query, then R of a 6 by 4 matrix.
program f08aef_example
  use zeb, only: f08aef
  implicit none
  integer(kind=8), parameter :: m = 6, n = 4
  real(kind=8) :: a(m, n), tau(n), query(1)
  real(kind=8), allocatable :: work(:)
  integer(kind=8) :: info, lwork, i, j
  a = transpose(reshape([1.0d0, 2.0d0, 0.0d0, 1.0d0, &
                         2.0d0, -1.0d0, 1.0d0, 0.0d0, &
                         0.0d0, 1.0d0, 3.0d0, -1.0d0, &
                         1.0d0, 0.0d0, -1.0d0, 2.0d0, &
                         3.0d0, 1.0d0, 0.0d0, 1.0d0, &
                         -1.0d0, 2.0d0, 1.0d0, 1.0d0], [n, m]))
  write (*, '(a)') 'f08aef example results'
  write (*, '(a)') ''
  call f08aef(m, n, a, m, tau, query, -1_8, info)
  lwork = int(query(1), kind=8)
  allocate (work(lwork))
  call f08aef(m, n, a, m, tau, work, lwork, info)
  write (*, '(a, i0)') 'info = ', info
  write (*, '(a)') 'R'
  do i = 1, n
    write (*, '(4f10.4)') (merge(shown(a(i, j)), 0.0d0, j >= i), j = 1, n)
  end do
  write (*, '(a)') 'tau'
  write (*, '(4f10.4)') tau
  call f08aef(m, n, a, m, tau, work, 1_8, info)
  write (*, '(a, i0)') 'lwork = 1: info = ', info
contains
  ! Values below the printed precision are shown as 0 (their sign depends
  ! on the order of operations of the BLAS kernels).
  elemental function shown(v)
    real(kind=8), intent(in) :: v
    real(kind=8) :: shown
    shown = merge(0.0d0, v, abs(v) < 5.0d-5)
  end function shown
end program f08aef_example
