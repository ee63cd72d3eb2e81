! Non-repeatable initialisation of Wichmann-Hill I (set 5); the values
! differ from run to run, so only their range is printed.
program g05kgf_example
  use zeb, only: g05kgf, g05saf
  implicit none
  integer(kind=8) :: state(21), lstate, ifail
  real(kind=8) :: x(1000)
  write (*, '(a)') 'g05kgf example results'
  write (*, '(a)') ''
  lstate = size(state, kind=8)
  ifail = 0
  call g05kgf(2_8, 5_8, state, lstate, ifail)
  call g05saf(1000_8, state, x, ifail)
  write (*, '(a, i0, a, l1)') 'ifail = ', ifail, ', all values in (0, 1): ', &
    all(x > 0.0d0 .and. x < 1.0d0)
end program g05kgf_example
