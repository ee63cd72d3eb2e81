! A semidefinite problem of SDPLIB read from its SDPA file and defined on a
! handle: first the sizes (a query with zero capacities), then the data.
program e04rdf_example
  use iso_c_binding, only: c_ptr, c_null_ptr
  use zeb
  implicit none
  type(c_ptr) :: handle
  integer(kind=8) :: ifail, nin, nvar, nnzc, nblk, dima, total, idblk
  integer(kind=8) :: blk(10), nnza(10), irowa(100), icola(100), q1(1), q2(1), q3(1), q4(1)
  real(kind=8) :: cvec(10), a(100), r1(1), r2(1)

  write (*, '(a)') 'e04rdf example results'
  nin = 20
  ifail = 0
  call x04acf(nin, '../../../shared/data/sdplib/truss1.dat-s', 0_8, ifail)
  ifail = 1
  call e04rdf(nin, 0_8, 0_8, 0_8, nvar, nnzc, r1, nblk, q1, q2, q3, q4, r2, ifail)
  write (*, '(a, i0, a, i0, a, i0)') 'size query: ifail = ', ifail, ', nvar = ', nvar, &
    ', nblk = ', nblk
  call x04adf(nin, ifail)
  ifail = 0
  call x04acf(nin, '../../../shared/data/sdplib/truss1.dat-s', 0_8, ifail)
  call e04rdf(nin, 10_8, 10_8, 100_8, nvar, nnzc, cvec, nblk, blk, nnza, irowa, icola, a, ifail)
  call x04adf(nin, ifail)
  dima = sum(blk(1:nblk))
  total = sum(nnza(1:nvar + 1))
  write (*, '(i0, a, i0, a, i0, a, i0, a)') nvar, ' variables, ', nblk, &
    ' blocks of total dimension ', dima, ', ', total, ' nonzeros'
  handle = c_null_ptr
  call e04raf(handle, nvar, ifail)
  call e04ref(handle, nvar, cvec, ifail)
  idblk = 0
  call e04rnf(handle, nvar, dima, nnza, total, irowa, icola, a, nblk, blk, idblk, ifail)
  call e04ryf(handle, 6_8, 'Matrix Constraints', ifail)
  call e04rzf(handle, ifail)
end program e04rdf_example
