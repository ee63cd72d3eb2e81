! Writes the description of the library build on the advisory unit.
program a00aaf_example
  use zeb, only: a00aaf
  implicit none
  call a00aaf()
end program a00aaf_example
