! The machine constants from Fortran.
program x02ajf_example
  use zeb, only: x02ajf, x02akf, x02alf, x02amf, x02anf, x02ahf, x02bbf, x02bef, &
                 x02bhf, x02bjf, x02bkf, x02blf
  implicit none
  write (*, '(a)') 'x02 machine constants'
  write (*, '(a)') ''
  write (*, '(a, es24.16e3)') 'machine precision          ', x02ajf()
  write (*, '(a, es24.16e3)') 'smallest normalised number ', x02akf()
  write (*, '(a, es24.16e3)') 'largest finite number      ', x02alf()
  write (*, '(a, es24.16e3)') 'safe range                 ', x02amf()
  write (*, '(a, es24.16e3)') 'safe range, complex        ', x02anf()
  write (*, '(a, es24.16e3)') 'largest sine argument      ', x02ahf()
  write (*, '(a, i0)') 'largest integer            ', x02bbf()
  write (*, '(a, i0)') 'decimal digits             ', x02bef()
  write (*, '(a, i0)') 'base                       ', x02bhf()
  write (*, '(a, i0)') 'base digits                ', x02bjf()
  write (*, '(a, i0)') 'smallest exponent          ', x02bkf()
  write (*, '(a, i0)') 'largest exponent           ', x02blf()
end program x02ajf_example
