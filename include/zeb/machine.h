/* ZEB numerical library: machine constants and library identification. */
#ifndef ZEB_MACHINE_H
#define ZEB_MACHINE_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The constants of IEEE 754 binary64 arithmetic and of the 64-bit integer.
   C forms take no arguments; Fortran forms (x02ajf_ ...) likewise. */
double x02ajc(void);  /* machine precision 2^-53 */
double x02akc(void);  /* smallest positive normalised number 2^-1022 */
double x02alc(void);  /* largest positive finite number */
double x02amc(void);  /* safe range: smallest number whose reciprocal is finite */
double x02anc(void);  /* safe range for complex division */
double x02ahc(void);  /* largest argument of the sine and cosine routines, 2^150 */
Integer x02bbc(void); /* largest positive integer, 2^63 - 1 */
Integer x02bec(void); /* decimal digits represented and preserved: 15 */
Integer x02bhc(void); /* base of the representation: 2 */
Integer x02bjc(void); /* base digits in the significand: 53 */
Integer x02bkc(void); /* smallest exponent before underflow: -1021 */
Integer x02blc(void); /* largest exponent before overflow: 1024 */

double x02ajf_(void);
double x02akf_(void);
double x02alf_(void);
double x02amf_(void);
double x02anf_(void);
double x02ahf_(void);
Integer x02bbf_(void);
Integer x02bef_(void);
Integer x02bhf_(void);
Integer x02bjf_(void);
Integer x02bkf_(void);
Integer x02blf_(void);

#define zeb_machine_precision x02ajc
#define zeb_real_smallest x02akc
#define zeb_real_largest x02alc
#define zeb_real_safe x02amc
#define zeb_complex_safe x02anc
#define zeb_max_sine_arg x02ahc
#define zeb_integer_largest x02bbc
#define zeb_decimal_digits x02bec
#define zeb_real_base x02bhc
#define zeb_real_base_digits x02bjc
#define zeb_real_min_exponent x02bkc
#define zeb_real_max_exponent x02blc

/* Library identification: a00aac prints a description of the build on
   standard output; a00aaf_ writes it on the advisory message unit. */
void a00aac(void);
void a00aaf_(void);
#define zeb_implementation_details a00aac

#ifdef __cplusplus
}
#endif

#endif
