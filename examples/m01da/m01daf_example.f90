! Ranking a vector of reals from Fortran: ascending ranks of part of a
! vector (ranks run from m1 to m2), equal elements in their order.
program m01daf_example
  use zeb, only: m01daf
  implicit none
  real(kind=8), parameter :: rv(10) = [5.3d0, 2.1d0, 8.7d0, 2.1d0, 0.4d0, 5.3d0, 9.9d0, &
                                       2.1d0, 7.0d0, 3.3d0]
  integer(kind=8) :: irank(10), ifail, i
  write (*, '(a)') 'm01daf example results'
  irank = 0
  ifail = 0
  call m01daf(rv, 3_8, 10_8, 'A', irank, ifail)
  write (*, '(/a)') '   i   rv(i)  rank among rv(3:10)'
  do i = 3, 10
    write (*, '(i4, f8.1, i10)') i, rv(i), irank(i)
  end do
  ifail = -1
  call m01daf(rv, 0_8, 10_8, 'A', irank, ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
end program m01daf_example
