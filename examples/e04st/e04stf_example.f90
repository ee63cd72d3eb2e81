! Hock and Schittkowski's problem 71 from Fortran, with the Hessians of the
! objective and of each constraint given separately (idf = 0, 1, 2) and a
! monitor that prints the iterations' figures.
module e04stf_example_functions
  use iso_c_binding, only: c_ptr
  implicit none
contains
  subroutine objfun(nvar, x, fx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar
    real(kind=8), intent(in) :: x(nvar)
    real(kind=8), intent(out) :: fx
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    fx = x(1)*x(4)*(x(1) + x(2) + x(3)) + x(3)
  end subroutine objfun

  subroutine objgrd(nvar, x, nnzfd, fdx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar, nnzfd
    real(kind=8), intent(in) :: x(nvar)
    real(kind=8), intent(inout) :: fdx(nnzfd)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    fdx = [x(4)*(2*x(1) + x(2) + x(3)), x(1)*x(4), x(1)*x(4) + 1, x(1)*(x(1) + x(2) + x(3))]
  end subroutine objgrd

  subroutine confun(nvar, x, ncnln, gx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar, ncnln
    real(kind=8), intent(in) :: x(nvar)
    real(kind=8), intent(inout) :: gx(ncnln)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    gx = [product(x), sum(x**2)]
  end subroutine confun

  subroutine congrd(nvar, x, nnzgd, gdx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar, nnzgd
    real(kind=8), intent(in) :: x(nvar)
    real(kind=8), intent(inout) :: gdx(nnzgd)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    gdx = [x(2)*x(3)*x(4), x(1)*x(3)*x(4), x(1)*x(2)*x(4), x(1)*x(2)*x(3), 2*x]
  end subroutine congrd

  ! The upper triangles row by row: (1,1) (1,2) (1,3) (1,4) (2,2) ... (4,4).
  subroutine hess(nvar, x, ncnln, idf, sigma, lambda, nnzh, hx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar, ncnln, idf, nnzh
    real(kind=8), intent(in) :: x(nvar), sigma, lambda(ncnln)
    real(kind=8), intent(inout) :: hx(nnzh)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    select case (idf)
    case (0)
      hx = [2*x(4), x(4), x(4), 2*x(1) + x(2) + x(3), 0d0, 0d0, x(1), 0d0, x(1), 0d0]
    case (1)
      hx = [0d0, x(3)*x(4), x(2)*x(4), x(2)*x(3), 0d0, x(1)*x(4), x(1)*x(3), 0d0, x(1)*x(2), 0d0]
    case default
      hx = [2d0, 0d0, 0d0, 0d0, 2d0, 0d0, 0d0, 2d0, 0d0, 2d0]
    end select
  end subroutine hess

  subroutine monit(nvar, x, inform, rinfo, stats, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar
    real(kind=8), intent(in) :: x(nvar), rinfo(100), stats(100)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    write (*, '(a, i3, a, f12.6, a, es8.1)') '  iteration', int(stats(1)), '  objective', &
        rinfo(1), '  violation', rinfo(2)
  end subroutine monit
end module e04stf_example_functions

program e04stf_example
  use iso_c_binding, only: c_ptr, c_null_ptr
  use zeb
  use e04stf_example_functions
  implicit none
  integer(kind=8), parameter :: nvar = 4, ncnln = 2, nnzu = 2*(nvar + ncnln)
  type(c_ptr) :: handle
  integer(kind=8) :: ifail, idf, j, iuser(1), irowh(10), icolh(10)
  real(kind=8) :: x(nvar), u(nnzu), rinfo(100), stats(100), ruser(1)

  write (*, '(a)') 'e04stf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, nvar, ifail)
  call e04rgf(handle, nvar, [1_8, 2_8, 3_8, 4_8], ifail)
  call e04rhf(handle, nvar, [1d0, 1d0, 1d0, 1d0], [5d0, 5d0, 5d0, 5d0], ifail)
  call e04rkf(handle, ncnln, [25d0, 40d0], [1d20, 40d0], 8_8, [1_8, 1_8, 1_8, 1_8, 2_8, 2_8, &
              2_8, 2_8], [1_8, 2_8, 3_8, 4_8, 1_8, 2_8, 3_8, 4_8], ifail)
  irowh = [1, 1, 1, 1, 2, 2, 2, 3, 3, 4]
  icolh = [1, 2, 3, 4, 2, 3, 4, 3, 4, 4]
  do idf = 0, ncnln
    call e04rlf(handle, idf, 10_8, irowh, icolh, ifail)
  end do
  call e04zmf(handle, 'Print Level = 0', ifail)
  x = [1d0, 5d0, 5d0, 1d0]
  call e04stf(handle, objfun, objgrd, confun, congrd, hess, monit, nvar, x, nnzu, u, rinfo, &
              stats, iuser, ruser, c_null_ptr, ifail)
  write (*, *)
  write (*, '(a, i0)') 'ifail = ', ifail
  write (*, '(a, f10.6, a, i0, a)') 'objective ', rinfo(1), ' after ', int(stats(1)), ' iterations'
  do j = 1, nvar
    write (*, '(a, i0, a, f9.6)') 'x', j, ' = ', x(j)
  end do
  write (*, '(a, 2f10.6)') 'multipliers of the constraints'' lower bound and upper bound:', &
      u(2*nvar + 1), u(2*nvar + 4)
  call e04rzf(handle, ifail)
end program e04stf_example
