! Sorting a vector of reals from Fortran: ascending, descending over part
! of the vector, and an illegal order reported with a noisy soft failure.
program m01caf_example
  use zeb, only: m01caf
  implicit none
  real(kind=8) :: rv(16) = [1.3d0, 5.9d0, 4.1d0, 2.3d0, 0.5d0, 5.8d0, 1.3d0, 6.5d0, &
                            2.3d0, 0.5d0, 6.5d0, 9.9d0, 2.1d0, 1.1d0, 1.2d0, 8.6d0]
  integer(kind=8) :: ifail
  write (*, '(a)') 'm01caf example results'
  write (*, '(/a/(8f7.1))') 'Data', rv
  ifail = 0
  call m01caf(rv, 1_8, 16_8, 'A', ifail)
  write (*, '(/a/(8f7.1))') 'Sorted into ascending order', rv
  ifail = 0
  call m01caf(rv, 5_8, 12_8, 'd', ifail)
  write (*, '(/a/(8f7.1))') 'Elements 5 to 12 sorted into descending order', rv
  write (*, '(/a)') 'With order = ''X'':'
  ifail = -1
  call m01caf(rv, 1_8, 16_8, 'X', ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
end program m01caf_example
