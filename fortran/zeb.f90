! The ZEB library's interface module for Fortran programs: explicit
! interfaces of every Fortran entry.  Integers are integer(kind=8) and reals
! real(kind=8) throughout.
module zeb
  implicit none
  interface
    include 'frame.fi'
    include 'units.fi'
    include 'special.fi'
    include 'random.fi'
    include 'sort.fi'
    include 'quad.fi'
    include 'roots.fi'
    include 'linalg.fi'
    include 'optim.fi'
  end interface
end module zeb
