! Equilibration from Fortran: scalings of a badly scaled matrix, and a zero
! column reported through info.
program f07aff_example
  use zeb, only: f07aff
  implicit none
  real(kind=8) :: a(4, 3), z(3, 2), r(4), c(3), rowcnd, colcnd, amax
  integer(kind=8) :: info
  a = reshape([1.0d-8, 4.0d0, 7.0d6, 1.0d0, &
               2.0d-8, 5.0d0, 8.0d6, 0.0d0, &
               3.0d-8, 6.0d2, 9.0d6, 2.0d0], [4, 3])
  z = reshape([1.0d0, 2.0d0, 3.0d0, 0.0d0, 0.0d0, 0.0d0], [3, 2])
  write (*, '(a)') 'f07aff example results'
  write (*, '(a)') ''
  call f07aff(4_8, 3_8, a, 4_8, r, c, rowcnd, colcnd, amax, info)
  write (*, '(a, i0)') 'info = ', info
  write (*, '(a)') 'Row scale factors'
  write (*, '(4es11.2)') r
  write (*, '(a)') 'Column scale factors'
  write (*, '(3es11.2)') c
  write (*, '(a, es9.2, a, es9.2, a, es9.2)') 'rowcnd = ', rowcnd, ', colcnd = ', colcnd, &
      ', amax = ', amax
  call f07aff(3_8, 2_8, z, 3_8, r, c, rowcnd, colcnd, amax, info)
  write (*, '(a, i0, a)') 'Zero column: info = ', info, ' (m + 2)'
end program f07aff_example
