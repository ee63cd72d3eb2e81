! A Fortran program with its own random_number stream: a non-repeatable
! generator initialisation in the middle must leave that stream alone.
program random_nonrep_client
  use zeb, only: g05kgf
  implicit none
  integer :: n
  integer, allocatable :: seed(:)
  real(kind=8) :: a(3), b(3)
  integer(kind=8) :: state(61), lstate, ifail
  call random_seed(size=n)
  allocate (seed(n))
  seed = 12345
  call random_seed(put=seed)
  call random_number(a)
  call random_seed(put=seed)
  call random_number(b(1))
  lstate = 61
  ifail = 0
  call g05kgf(6_8, 0_8, state, lstate, ifail)
  call random_number(b(2:3))
  write (*, '(a, i0, a, l1)') 'ifail = ', ifail, ', stream unchanged: ', all(a == b)
  deallocate (seed)
end program random_nonrep_client
