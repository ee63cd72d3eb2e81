! Printing a general matrix and its lower triangle with a unit diagonal.
program x04caf_example
  use zeb, only: x04caf
  implicit none
  integer(kind=8), parameter :: m = 3, n = 4, lda = 3
  real(kind=8) :: a(lda, n)
  integer(kind=8) :: i, j, ifail
  do j = 1, n
    do i = 1, m
      a(i, j) = real(10 * i + j, kind=8) / 8.0d0
    end do
  end do
  write (*, '(a)') 'x04caf example results'
  write (*, '(a)') ''
  ifail = 0
  call x04caf('General', ' ', m, n, a, lda, 'Example matrix:', ifail)
  write (*, '(a)') ''
  call x04caf('Lower', 'Unit', m, m, a, lda, 'Its lower triangle, unit diagonal:', ifail)
end program x04caf_example
