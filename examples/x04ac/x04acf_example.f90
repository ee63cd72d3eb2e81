! Opening a file on a unit, reading its records with the library and with
! READ on the same unit, closing it; and two failures reported noisily.
program x04acf_example
  use zeb, only: x04acf, x04adf, x04bbf
  implicit none
  integer(kind=8), parameter :: nin = 7
  character(len=40) :: rec
  real(kind=8) :: row(3)
  integer(kind=8) :: ifail
  write (*, '(a)') 'x04acf example results'
  ifail = 0
  call x04acf(nin, 'x04ac_example.d', 0_8, ifail)
  call x04bbf(nin, rec, ifail)
  write (*, '(a)') 'Heading: '//trim(rec)
  do
    ifail = 1
    call x04bbf(nin, rec, ifail)
    if (ifail /= 0) exit
    read (rec, *) row
    write (*, '(a, f6.1)') 'Row sum: ', sum(row)
  end do
  write (*, '(a, i0)') 'End of file: ifail = ', ifail
  ifail = 0
  call x04adf(nin, ifail)
  ifail = -1
  call x04acf(nin, 'no_such_file.d', 0_8, ifail)
  ifail = -1
  call x04adf(nin, ifail)
end program x04acf_example
