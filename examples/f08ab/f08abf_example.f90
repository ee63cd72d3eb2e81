! QR factorisation in the blocked compact form from Fortran (nb = 2).
program f08abf_example
  use zeb, only: f08abf
  implicit none
  integer(kind=8), parameter :: m = 6, n = 4, nb = 2
  real(kind=8) :: a(m, n), t(nb, n), work(nb * n)
  integer(kind=8) :: info, i, j
  a = transpose(reshape([1.0d0, 2.0d0, 0.0d0, 1.0d0, &
                         2.0d0, -1.0d0, 1.0d0, 0.0d0, &
                         0.0d0, 1.0d0, 3.0d0, -1.0d0, &
                         1.0d0, 0.0d0, -1.0d0, 2.0d0, &
                         3.0d0, 1.0d0, 0.0d0, 1.0d0, &
                         -1.0d0, 2.0d0, 1.0d0, 1.0d0], [n, m]))
  write (*, '(a)') 'f08abf example results'
  write (*, '(a)') ''
  call f08abf(m, n, nb, a, m, t, nb, work, info)
  write (*, '(a, i0)') 'info = ', info
  write (*, '(a)') 'R'
  do i = 1, n
    write (*, '(4f10.4)') (merge(shown(a(i, j)), 0.0d0, j >= i), j = 1, n)
  end do
  write (*, '(a)') 'T'
  do i = 1, nb
    write (*, '(4f10.4)') (merge(shown(t(i, j)), 0.0d0, mod(j - 1, nb) + 1 >= i), j = 1, n)
  end do
  call f08abf(m, n, 0_8, a, m, t, nb, work, info)
  write (*, '(a, i0)') 'nb = 0: info = ', info
contains
  ! Values below the printed precision are shown as 0 (their sign depends
  ! on the order of operations of the BLAS kernels).
  elemental function shown(v)
    real(kind=8), intent(in) :: v
    real(kind=8) :: shown
    shown = merge(0.0d0, v, abs(v) < 5.0d-5)
  end function shown
end program f08abf_example
