! Adaptive quadrature from Fortran: an integrand with an end-point
! singularity, the subinterval lists left in the workspace, and the limit on
! subintervals reported with a noisy soft failure.
module d01ajf_example_functions
  implicit none
contains
  function f(x)
    real(kind=8) :: f
    real(kind=8), intent(in) :: x
    f = log(x) / sqrt(x)
  end function f
  function g(x)
    real(kind=8) :: g
    real(kind=8), intent(in) :: x
    g = x * sin(30.0d0 * x) * cos(x)
  end function g
end module d01ajf_example_functions

program d01ajf_example
  use zeb, only: d01ajf
  use d01ajf_example_functions, only: f, g
  implicit none
  integer(kind=8), parameter :: lw = 800, liw = 200
  real(kind=8) :: w(lw), result, abserr
  real(kind=8), parameter :: pi = 3.141592653589793d0
  integer(kind=8) :: iw(liw), ifail, n, i
  write (*, '(a)') 'd01ajf example results'
  ifail = 0
  call d01ajf(f, 0.0d0, 1.0d0, 0.0d0, 1.0d-10, result, abserr, w, lw, iw, liw, ifail)
  n = iw(1)
  write (*, '(/a)') 'log(x)/sqrt(x) on [0,1] (the integral is -4)'
  write (*, '(a, f18.12, a, l2)') 'result =', result, '   abserr < 1e-12:', abserr < 1.0d-12
  write (*, '(a, i0)') 'subintervals: ', n
  write (*, '(a)') '         from              to        integral'
  do i = 1, n
    write (*, '(2es16.6, f16.10)') w(i), w(n + i), w(3 * n + i)
  end do
  ifail = 0
  call d01ajf(g, 0.0d0, 2.0d0 * pi, 0.0d0, 1.0d-10, result, abserr, w, lw, iw, liw, ifail)
  write (*, '(/a)') 'x sin(30x) cos(x) on [0,2 pi] (the integral is -2 pi 30/899)'
  write (*, '(a, f18.12, a, i0)') 'result =', result, '   subintervals: ', iw(1)
  write (*, '(/a)') 'The same with room for 4 subintervals:'
  ifail = -1
  call d01ajf(g, 0.0d0, 2.0d0 * pi, 0.0d0, 1.0d-10, result, abserr, w, 16_8, iw, liw, ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
end program d01ajf_example
