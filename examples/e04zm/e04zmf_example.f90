! Options of a handle from strings and from a file, read back and printed.
program e04zmf_example
  use iso_c_binding, only: c_ptr, c_null_ptr
  use zeb
  implicit none
  type(c_ptr) :: handle
  integer(kind=8) :: ifail, ivalue, optype, nin
  real(kind=8) :: rvalue
  character(len=16) :: cvalue

  write (*, '(a)') 'e04zmf example results'
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 2_8, ifail)
  call e04zmf(handle, 'Print Level = 1', ifail)
  call e04zmf(handle, 'task = maximize', ifail)
  nin = 20
  call x04acf(nin, 'options.txt', 0_8, ifail)
  call e04zpf(handle, nin, ifail)
  call x04adf(nin, ifail)
  call e04znf(handle, 'Stop Tolerance 1', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(a, es9.2, a, i0)') 'Stop Tolerance 1 = ', rvalue, ', optype ', optype
  call e04znf(handle, 'Task', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(2a)') 'Task = ', trim(cvalue)
  call e04ryf(handle, 6_8, 'Options', ifail)
  ! A value outside its limits: the noisy exit prints why.
  ifail = -1
  call e04zmf(handle, 'Print Level = 9', ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program e04zmf_example
