! Three Hock-Schittkowski problems through e04stf from Fortran, printing
! "name ifail objective x...":
!   HS006  a sparse gradient (x1 only), one equation, the Lagrangian's Hessian;
!          then again, stopped at the second iteration by its monitor (p01stf)
!   HS038  bounds only, the objective's own Hessian (idf = 0)
!   HS076  quadratic objective and linear constraints (no user function is
!          called; those passed are never used)
module optim_hs_functions
  use iso_c_binding, only: c_ptr
  implicit none
contains
  ! The objective, its gradient and its Hessian are those of HS006 when
  ! nvar = 2 and of HS038 when nvar = 4.
  subroutine fun(nvar, x, fx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar
    real(kind=8), intent(in) :: x(nvar)
    real(kind=8), intent(out) :: fx
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    if (nvar == 2) then
      fx = (1 - x(1))**2
    else
      fx = 100*(x(2) - x(1)**2)**2 + (1 - x(1))**2 + 90*(x(4) - x(3)**2)**2 + (1 - x(3))**2 &
           + 10.1d0*((x(2) - 1)**2 + (x(4) - 1)**2) + 19.8d0*(x(2) - 1)*(x(4) - 1)
    end if
  end subroutine fun
  subroutine grd(nvar, x, nnzfd, fdx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar, nnzfd
    real(kind=8), intent(in) :: x(nvar)
    real(kind=8), intent(inout) :: fdx(nnzfd)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    if (nvar == 2) then
      fdx(1) = -2*(1 - x(1))  ! x1 only
    else
      fdx = [-400*x(1)*(x(2) - x(1)**2) - 2*(1 - x(1)), &
             200*(x(2) - x(1)**2) + 20.2d0*(x(2) - 1) + 19.8d0*(x(4) - 1), &
             -360*x(3)*(x(4) - x(3)**2) - 2*(1 - x(3)), &
             180*(x(4) - x(3)**2) + 20.2d0*(x(4) - 1) + 19.8d0*(x(2) - 1)]
    end if
  end subroutine grd
  ! HS006: the Lagrangian's, (1,1); HS038: the objective's, (1,1) (1,2)
  ! (2,2) (2,4) (3,3) (3,4) (4,4).
  subroutine hes(nvar, x, ncnln, idf, sigma, lambda, nnzh, hx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar, ncnln, idf, nnzh
    real(kind=8), intent(in) :: x(nvar), sigma, lambda(ncnln)
    real(kind=8), intent(inout) :: hx(nnzh)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    if (nvar == 2) then
      hx(1) = 2*sigma - 20*lambda(1)
    else
      hx = [1200*x(1)**2 - 400*x(2) + 2, -400*x(1), 220.2d0, 19.8d0, &
            1080*x(3)**2 - 360*x(4) + 2, -360*x(3), 200.2d0]
    end if
  end subroutine hes
  ! HS006's constraint and its Jacobian.
  subroutine c006(nvar, x, ncnln, gx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar, ncnln
    real(kind=8), intent(in) :: x(nvar)
    real(kind=8), intent(inout) :: gx(ncnln)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    gx(1) = 10*(x(2) - x(1)**2)
  end subroutine c006
  subroutine j006(nvar, x, nnzgd, gdx, inform, iuser, ruser, cpuser)
    integer(kind=8), intent(in) :: nvar, nnzgd
    real(kind=8), intent(in) :: x(nvar)
    real(kind=8), intent(inout) :: gdx(nnzgd)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    gdx = [-20*x(1), 10d0]
  end subroutine j006
  ! A monitor that asks the solver to stop at iteration iuser(1) (0: never).
  subroutine mon(nvar, x, inform, rinfo, stats, iuser, ruser, cpuser)
    use zeb, only: p01stf
    integer(kind=8), intent(in) :: nvar
    real(kind=8), intent(in) :: x(nvar), rinfo(100), stats(100)
    integer(kind=8), intent(inout) :: inform, iuser(*)
    real(kind=8), intent(inout) :: ruser(*)
    type(c_ptr), intent(in) :: cpuser
    if (iuser(1) > 0 .and. stats(1) >= iuser(1)) call p01stf(-3_8)
  end subroutine mon
end module optim_hs_functions

program optim_hs
  use iso_c_binding, only: c_ptr, c_null_ptr
  use zeb
  use optim_hs_functions
  implicit none
  type(c_ptr) :: h
  integer(kind=8) :: ifail, idlc, iuser(1)
  real(kind=8) :: x2(2), x4(4), u(14), rinfo(100), stats(100), ruser(1)
  real(kind=8), parameter :: big = 1d20

  ! HS006
  ifail = 0
  h = c_null_ptr
  call e04raf(h, 2_8, ifail)
  call e04rgf(h, 1_8, [1_8], ifail)
  call e04rkf(h, 1_8, [0d0], [0d0], 2_8, [1_8, 1_8], [1_8, 2_8], ifail)
  call e04rlf(h, -1_8, 1_8, [1_8], [1_8], ifail)
  call e04zmf(h, 'Print Level = 0', ifail)
  x2 = [-1.2d0, 1d0]
  iuser = 0
  call e04stf(h, fun, grd, c006, j006, hes, mon, 2_8, x2, 6_8, u, rinfo, stats, iuser, &
              ruser, c_null_ptr, ifail)
  call report('HS006', x2)
  ! Again from the start, stopped by the monitor at the second iteration.
  x2 = [-1.2d0, 1d0]
  ifail = 1
  iuser = 2
  call e04stf(h, fun, grd, c006, j006, hes, mon, 2_8, x2, 6_8, u, rinfo, stats, iuser, &
              ruser, c_null_ptr, ifail)
  write (*, '(a, 1x, i0, 1x, i0)') 'STOPPED', ifail, int(stats(1))
  ifail = 0
  iuser = 0
  call e04rzf(h, ifail)

  ! HS038
  h = c_null_ptr
  call e04raf(h, 4_8, ifail)
  call e04rgf(h, 4_8, [1_8, 2_8, 3_8, 4_8], ifail)
  call e04rhf(h, 4_8, [-10d0, -10d0, -10d0, -10d0], [10d0, 10d0, 10d0, 10d0], ifail)
  call e04rlf(h, 0_8, 7_8, [1_8, 1_8, 2_8, 2_8, 3_8, 3_8, 4_8], [1_8, 2_8, 2_8, 4_8, 3_8, 4_8, &
              4_8], ifail)
  call e04zmf(h, 'Print Level = 0', ifail)
  x4 = [-3d0, -1d0, -3d0, -1d0]
  call e04stf(h, fun, grd, c006, j006, hes, mon, 4_8, x4, 8_8, u, rinfo, stats, iuser, &
              ruser, c_null_ptr, ifail)
  call report('HS038', x4)
  call e04rzf(h, ifail)

  ! HS076: f = x'Hx/2 + c'x
  h = c_null_ptr
  call e04raf(h, 4_8, ifail)
  call e04rff(h, 4_8, [1_8, 2_8, 3_8, 4_8], [-1d0, -3d0, 1d0, -1d0], 6_8, &
              [1_8, 1_8, 2_8, 3_8, 3_8, 4_8], [1_8, 3_8, 2_8, 3_8, 4_8, 4_8], &
              [2d0, -1d0, 1d0, 2d0, 1d0, 1d0], ifail)
  call e04rhf(h, 4_8, [0d0, 0d0, 0d0, 0d0], [big, big, big, big], ifail)
  idlc = 0
  call e04rjf(h, 3_8, [-big, -big, 1.5d0], [5d0, 4d0, big], 10_8, &
              [1_8, 1_8, 1_8, 1_8, 2_8, 2_8, 2_8, 2_8, 3_8, 3_8], &
              [1_8, 2_8, 3_8, 4_8, 1_8, 2_8, 3_8, 4_8, 2_8, 3_8], &
              [1d0, 2d0, 1d0, 1d0, 3d0, 1d0, 2d0, -1d0, 1d0, 4d0], idlc, ifail)
  call e04zmf(h, 'Print Level = 0', ifail)
  x4 = 0.5d0
  call e04stf(h, fun, grd, c006, j006, hes, mon, 4_8, x4, 14_8, u, rinfo, stats, iuser, &
              ruser, c_null_ptr, ifail)
  call report('HS076', x4)
  call e04rzf(h, ifail)
contains
  subroutine report(name, x)
    character(len=*), intent(in) :: name
    real(kind=8), intent(in) :: x(:)
    write (*, '(a, 1x, i0, *(1x, es23.15))') name, ifail, rinfo(1), x
  end subroutine report
end program optim_hs
