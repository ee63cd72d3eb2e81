! Records written by the library on unit 6 interleave with the program's
! own output; a negative unit writes nothing; the error unit can be moved.
program x04baf_example
  use zeb, only: x04baf, x04aaf, s14aaf
  implicit none
  integer(kind=8) :: nerr, ifail, off
  real(kind=8) :: y
  write (*, '(a)') 'x04baf example results'
  call x04baf(6_8, 'a record from the library, trailing blanks dropped    ')
  write (*, '(a)') 'a record from the program'
  call x04baf(-1_8, 'never written')
  call x04baf(6_8, '')
  ! Failure messages go to the error unit: switch them off, then back on.
  call x04aaf(0_8, nerr)
  write (*, '(a, i0)') 'error unit: ', nerr
  off = -1
  call x04aaf(1_8, off)
  ifail = -1
  y = s14aaf(-1.0d0, ifail)
  write (*, '(a, i0)') 'silent failure, ifail = ', ifail
  call x04aaf(1_8, nerr)
  ifail = -1
  y = s14aaf(-1.0d0, ifail)
end program x04baf_example
