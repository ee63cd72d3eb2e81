! A hard failure (ifail = 0) stops the program after its lines.
program hard_gamma
  use zeb, only: s14aaf
  implicit none
  real(kind=8) :: y
  integer(kind=8) :: ifail
  write (*, '(a)') 'before'
  ifail = 0
  y = s14aaf(-2.0d0, ifail)
  write (*, '(a, es12.4)') 'not reached', y
end program hard_gamma
