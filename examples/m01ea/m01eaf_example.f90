! Rearranging vectors by ranks from Fortran: readings sorted by time, the
! companion vector carried along by the same ranks.
program m01eaf_example
  use zeb, only: m01daf, m01eaf
  implicit none
  real(kind=8) :: time(8) = [12.5d0, 3.0d0, 7.25d0, 0.5d0, 9.0d0, 3.0d0, 1.75d0, 6.0d0]
  real(kind=8) :: reading(8) = [41.0d0, 12.0d0, 30.5d0, 2.0d0, 35.0d0, 13.5d0, 7.0d0, 24.0d0]
  integer(kind=8) :: irank(8), ifail, i
  write (*, '(a)') 'm01eaf example results'
  ifail = 0
  call m01daf(time, 1_8, 8_8, 'A', irank, ifail)
  call m01eaf(time, 1_8, 8_8, irank, ifail)
  call m01eaf(reading, 1_8, 8_8, irank, ifail)
  write (*, '(/a)') '   time  reading'
  do i = 1, 8
    write (*, '(f7.2, f9.1)') time(i), reading(i)
  end do
  irank(8) = 9
  ifail = -1
  call m01eaf(reading, 1_8, 8_8, irank, ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
end program m01eaf_example
