! A problem defined piece by piece from Fortran: a linear objective,
! simple bounds and a block of linear constraints, printed by sections.
program e04ryf_example
  use iso_c_binding, only: c_ptr, c_null_ptr, c_associated
  use zeb
  implicit none
  type(c_ptr) :: handle
  integer(kind=8) :: ifail, idlc
  real(kind=8) :: cvec(3) = [1.0d0, -1.0d0, 2.0d0]
  real(kind=8) :: bl(3) = [0.0d0, 0.0d0, -1.0d25], bu(3) = [1.0d0, 1.0d25, 1.0d25]
  real(kind=8) :: lbl(2) = [1.0d0, -1.0d25], lbu(2) = [1.0d0, 3.0d0]
  real(kind=8) :: b(4) = [1.0d0, 1.0d0, 1.0d0, -2.0d0]
  integer(kind=8) :: irowb(4) = [1_8, 1_8, 2_8, 2_8], icolb(4) = [1_8, 2_8, 2_8, 3_8]

  write (*, '(a)') 'e04ryf example results'
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 3_8, ifail)
  call e04ref(handle, 3_8, cvec, ifail)
  call e04rhf(handle, 3_8, bl, bu, ifail)
  idlc = 0
  call e04rjf(handle, 2_8, lbl, lbu, 4_8, irowb, icolb, b, idlc, ifail)
  call e04ryf(handle, 6_8, 'overview; objective; simple bounds', ifail)
  call e04ryf(handle, 6_8, 'linear constraints bounds, linear constraints detailed', ifail)
  ! A second objective is refused; the noisy exit prints why.
  ifail = -1
  call e04ref(handle, 3_8, cvec, ifail)
  ifail = 0
  call e04rzf(handle, ifail)
  write (*, '(a, l1)') 'handle freed: ', .not. c_associated(handle)
end program e04ryf_example
