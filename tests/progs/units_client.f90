! The library and the program share units: a file the library opens on a
! unit is read and written by the program on that unit, and the library's
! records on unit 6 keep their place among the program's own WRITEs.
! Argument: a directory holding data.txt (three lines); out.txt is written.
program units_client
  use zeb, only: x04acf, x04adf, x04bbf, x04baf, x04caf
  implicit none
  character(len=200) :: dir
  character(len=40) :: line
  integer(kind=8) :: ifail
  real(kind=8) :: a(2, 2)
  call get_command_argument(1, dir)

  ifail = 0
  call x04acf(10_8, trim(dir)//'/data.txt', 0_8, ifail)
  read (10, '(a)') line
  write (*, '(a)') 'program read: '//trim(line)
  call x04bbf(10_8, line, ifail)
  write (*, '(a)') 'library read: '//trim(line)
  read (10, '(a)') line
  write (*, '(a)') 'program read: '//trim(line)
  ifail = 1
  call x04bbf(10_8, line, ifail)
  write (*, '(a, i0)') 'at the end: ifail = ', ifail
  ifail = 0
  call x04adf(10_8, ifail)

  call x04acf(11_8, trim(dir)//'/out.txt', 1_8, ifail)
  call x04baf(11_8, 'written by the library')
  write (11, '(a)') 'written by the program'
  close (11)
  call x04acf(11_8, trim(dir)//'/out.txt', 2_8, ifail)
  write (11, '(a)') 'appended by the program'
  call x04adf(11_8, ifail)

  write (*, '(a)') 'program: first'
  call x04baf(6_8, 'library: second')
  write (*, '(a)') 'program: third'
  a = reshape([1.0d0, 2.0d0, 3.0d0, 4.0d0], [2, 2])
  call x04caf('G', 'N', 2_8, 2_8, a, 2_8, 'library: fourth', ifail)
  write (*, '(a)') 'program: fifth'
end program units_client
