! The library's use of the Fortran runtime: record I/O on numbered units, so
! that the library and the caller's own Fortran program share units, and the
! stop of a hard failure.
subroutine zeb_f_write(unit, rec, n, ierr) bind(c, name='zeb_f_write')
  use iso_c_binding, only: c_int64_t, c_char
  implicit none
  integer(c_int64_t), value :: unit, n
  character(kind=c_char), intent(in) :: rec(*)
  integer(c_int64_t), intent(out) :: ierr
  integer :: ios
  integer(c_int64_t) :: i
  write (unit, '(*(a))', iostat=ios) (rec(i), i = 1, n)
  ierr = merge(0, 1, ios == 0)
  flush (unit, iostat=ios)
end subroutine zeb_f_write

! One piece of a record, up to 256 characters, read without advancing past
! the record's end: more = 1 while the record goes on after the piece.
! ierr: 0 read, 1 end of file, 2 read error.
subroutine zeb_f_read_part(unit, part, got, more, ierr) bind(c, name='zeb_f_read_part')
  use iso_c_binding, only: c_int64_t, c_char
  implicit none
  integer(c_int64_t), value :: unit
  character(kind=c_char), intent(out) :: part(256)
  integer(c_int64_t), intent(out) :: got, more, ierr
  character(len=256) :: piece
  integer :: ios, sz, i
  got = 0
  more = 0
  sz = 0
  read (unit, '(a)', advance='no', size=sz, iostat=ios) piece
  if (ios == 0) then
    ierr = 0
    more = 1
  else if (is_iostat_eor(ios)) then
    ierr = 0
  else if (is_iostat_end(ios)) then
    ierr = 1
    return
  else
    ierr = 2
    return
  end if
  do i = 1, sz
    part(i) = piece(i:i)
  end do
  got = sz
end subroutine zeb_f_read_part

! mode 0: read an existing file; 1: write (replace); 2: append.
! unit < 0 on entry: a free unit (1000 or above) is chosen and returned.
subroutine zeb_f_open(unit, name, n, mode, ierr) bind(c, name='zeb_f_open')
  use iso_c_binding, only: c_int64_t, c_char
  implicit none
  integer(c_int64_t), intent(inout) :: unit
  integer(c_int64_t), value :: n, mode
  character(kind=c_char), intent(in) :: name(*)
  integer(c_int64_t), intent(out) :: ierr
  character(len=n) :: fname
  character(len=9) :: st, act, pos
  integer :: ios, u
  logical :: opened
  integer(c_int64_t) :: i
  do i = 1, n
    fname(i:i) = name(i)
  end do
  select case (mode)
  case (0)
    st = 'OLD'; act = 'READ'; pos = 'ASIS'
  case (1)
    st = 'REPLACE'; act = 'READWRITE'; pos = 'ASIS'
  case default
    st = 'UNKNOWN'; act = 'READWRITE'; pos = 'APPEND'
  end select
  if (unit < 0) then
    ! The first unit from 1000 on that is not connected: a unit number the
    ! library's writers accept (negative units mean "write nothing"), and
    ! above those a program usually numbers itself.
    u = 1000
    do
      inquire (unit=u, opened=opened, iostat=ios)
      if (ios == 0 .and. .not. opened) exit
      if (u == huge(u)) exit
      u = u + 1
    end do
    open (unit=u, file=fname, status=st, action=act, position=pos, form='FORMATTED', &
          access='STREAM', iostat=ios)
    if (ios == 0) unit = u
  else
    open (unit=int(unit), file=fname, status=st, action=act, position=pos, &
          form='FORMATTED', access='STREAM', iostat=ios)
  end if
  ierr = merge(0, 1, ios == 0)
end subroutine zeb_f_open

subroutine zeb_f_close(unit, ierr) bind(c, name='zeb_f_close')
  use iso_c_binding, only: c_int64_t
  implicit none
  integer(c_int64_t), value :: unit
  integer(c_int64_t), intent(out) :: ierr
  integer :: ios
  logical :: opened
  inquire (unit=unit, opened=opened, iostat=ios)
  if (ios /= 0 .or. .not. opened) then
    ierr = 1
    return
  end if
  close (unit, iostat=ios)
  ierr = merge(0, 1, ios == 0)
end subroutine zeb_f_close

! The stop of a hard failure: every unit is flushed and closed.
subroutine zeb_f_stop(status) bind(c, name='zeb_f_stop')
  use iso_c_binding, only: c_int64_t
  implicit none
  integer(c_int64_t), value :: status
  call exit(int(status))
end subroutine zeb_f_stop

! The state of a unit: 0 not a usable unit number, 1 a unit that is not
! connected, 2 a unit connected to a file.
subroutine zeb_f_inquire(unit, state) bind(c, name='zeb_f_inquire')
  use iso_c_binding, only: c_int64_t
  implicit none
  integer(c_int64_t), value :: unit
  integer(c_int64_t), intent(out) :: state
  logical :: exists, opened
  integer :: ios
  exists = .false.
  opened = .false.
  inquire (unit=unit, exist=exists, opened=opened, iostat=ios)
  if (ios /= 0) then
    state = 0
  else if (opened) then
    state = 2
  else if (exists) then
    state = 1
  else
    state = 0
  end if
end subroutine zeb_f_inquire

! Writes x with the real edit descriptor form into out(1:n): width returns
! the field width, ierr 1 when form is not a format for one real (or its
! field does not fit in out).
subroutine zeb_f_edit(form, nform, x, out, n, width, ierr) bind(c, name='zeb_f_edit')
  use iso_c_binding, only: c_int64_t, c_char, c_double
  implicit none
  integer(c_int64_t), value :: nform, n
  character(kind=c_char), intent(in) :: form(*)
  real(c_double), value :: x
  character(kind=c_char), intent(out) :: out(*)
  integer(c_int64_t), intent(out) :: width, ierr
  character(len=nform + 6) :: fmt
  character(len=n + 1) :: buf
  integer :: ios, k
  integer(c_int64_t) :: i
  character, parameter :: mark = achar(1)
  width = 0
  ierr = 1
  fmt = '('
  do i = 1, nform
    fmt(i + 1:i + 1) = form(i)
  end do
  fmt(nform + 2:) = ',a)'
  ! The mark written after the value shows where the field ends.
  write (buf, fmt, iostat=ios) x, mark
  if (ios /= 0) return
  k = index(buf, mark)
  if (k < 2) return
  width = k - 1
  do i = 1, width
    out(i) = buf(i:i)
  end do
  ierr = 0
end subroutine zeb_f_edit
