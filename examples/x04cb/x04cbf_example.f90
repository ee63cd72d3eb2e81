! Printing a matrix with a format of one's own, character labels, a narrow
! line and an indent: the columns come in blocks.
program x04cbf_example
  use zeb, only: x04cbf
  implicit none
  integer(kind=8), parameter :: m = 3, n = 6, lda = 3
  real(kind=8) :: a(lda, n)
  character(len=5), parameter :: rlabs(m) = ['Jan  ', 'Feb  ', 'March']
  character(len=4), parameter :: clabs(n) = ['Mon ', 'Tue ', 'Wed ', 'Thu ', 'Fri ', 'Sat ']
  integer(kind=8) :: i, j, ifail
  do j = 1, n
    do i = 1, m
      a(i, j) = 100.0d0 * i + 1.5d0 * j
    end do
  end do
  write (*, '(a)') 'x04cbf example results'
  write (*, '(a)') ''
  ifail = 0
  call x04cbf('G', 'N', m, n, a, lda, 'F8.2', 'Takings by day:', 'C', rlabs, 'C', clabs, &
              40_8, 2_8, ifail)
  write (*, '(a)') ''
  call x04cbf('U', 'N', m, m, a, lda, '', 'Upper triangle, no labels:', 'N', rlabs, 'N', &
              clabs, 0_8, 0_8, ifail)
  write (*, '(a)') ''
  ifail = -1
  call x04cbf('G', 'N', m, n, a, lda, 'I8', 'An integer format:', 'C', rlabs, 'C', clabs, &
              40_8, 2_8, ifail)
end program x04cbf_example
