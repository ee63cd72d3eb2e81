! The seed of a non-repeatable generator initialisation, from the Fortran
! runtime: date and time, processor time, the clock count and the runtime's
! own random source, seeded from the operating system's entropy for the two
! values taken here; the caller's own random_number stream is put back as
! it was.
subroutine zeb_f_nonrepeatable_seed(s1, s2) bind(c, name='zeb_f_nonrepeatable_seed')
  use iso_c_binding, only: c_int64_t
  implicit none
  integer(c_int64_t), intent(out) :: s1, s2
  integer(c_int64_t), parameter :: big = 2147483647_c_int64_t, top = 16909320_c_int64_t
  integer :: dt(8)
  integer(kind=8) :: count, r
  real(kind=8) :: u, v, t
  integer :: nseed
  integer, allocatable :: saved(:)
  call random_seed(size=nseed)
  allocate (saved(nseed))
  call random_seed(get=saved)
  call random_seed()
  call random_number(u)
  call random_number(v)
  call random_seed(put=saved)
  call date_and_time(values=dt)
  call cpu_time(t)
  r = mod(dt(1), 10)
  r = r * 100 + dt(2)
  r = r * 100 + dt(3)
  r = r * 100 + dt(5)
  r = r * 100 + dt(6)
  r = r * 100 + dt(7)
  r = r * 1000 + dt(8)
  r = r + int(u * real(big, 8), 8) + mod(int(t * 1.0d6, 8), big)
  r = 4 * r
  if (r < 1 .or. r > top) r = mod(abs(r) + 1, top)
  if (r < 1) r = 1
  s1 = r
  call system_clock(count)
  s2 = mod(count, 1073741823_c_int64_t) + int(real(big, 8) * v / 2.0d0, 8)
end subroutine zeb_f_nonrepeatable_seed
