/* ZEB numerical library: random number generation.

   Every generator routine draws from a caller-owned Integer array `state`,
   filled by zeb_rand_init_repeatable (g05kfc) or zeb_rand_init_nonrepeatable
   (g05kgc).  Call either with *lstate <= 0 to have the required length
   returned in *lstate. */
#ifndef ZEB_RANDOM_H
#define ZEB_RANDOM_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The base generators (genid 1 to 6 of the Fortran entries), and how each
   maps its integers to the uniform deviates of g05sa, for comparing streams
   with other implementations:
   - Zeb_Basic: Y := 13^13 Y mod 2^59 (Y odd), u = 1 - Y/2^59.
   - Zeb_MersenneTwister: MT19937's tempered 32-bit word y gives
     u = (int32(y) + 2^31 + 2^-53) 2^-32: y read as a signed integer, so the
     top bit of y is the complement of the top bit of the usual real-number
     mapping y 2^-32 (u and that mapping differ by 1/2 modulo 1).
   - Zeb_MRG32k3a: the published recurrence and normalisation,
     u = z (4294967087 + 1)^-1 for z = x1 - x2 mod 4294967087 in 1..m1.
   - Zeb_ACORN: order k and digits of 30 bits chosen by subid (subid <= 0:
     order 11, 2 digits, modulus 2^60; subid = 1000 (m - 1) + (k - 1): order
     k, m digits, modulus 2^(30 m)).  With one digit (the 30-bit modulus) the
     low bits of the elements have short periods and the streams fail
     standard test batteries: choose two digits or more.
   The state check of every routine refuses a state the generator cannot use
   (NE_INVALID_STATE): one not initialised, or one whose words were
   changed. */
typedef ZEB_ENUM {
  Zeb_Basic = 151,          /* multiplicative congruential, 13^13 mod 2^59 */
  Zeb_WichmannHill_I,       /* one of 273 sets, chosen by subid */
  Zeb_MersenneTwister,      /* MT19937 */
  Zeb_WichmannHill_II,
  Zeb_ACORN,                /* order and precision chosen by subid */
  Zeb_MRG32k3a              /* L'Ecuyer's combined multiple recursive generator */
} Zeb_BaseRNG;

/* Codes of the generator routines' own failures, reported in fail.code
   under the table's code of their class. */
#define NE_INVALID_STATE NE_STATE_CORRUPT /* state not initialised or corrupted */
#define NE_ARRAY_SIZE NE_TOO_SMALL        /* Mersenne Twister state too short to skip ahead */

/* g05kf: repeatable initialisation of state from seed[0..lseed-1].  For
   ACORN, subid chooses the order and the digits (see above). */
void g05kfc(Zeb_BaseRNG genid, Integer subid, const Integer seed[], Integer lseed,
            Integer state[], Integer *lstate, ZebError *fail);
void g05kff_(const Integer *genid, const Integer *subid, const Integer seed[],
             const Integer *lseed, Integer state[], Integer *lstate, Integer *ifail);
#define zeb_rand_init_repeatable g05kfc

/* g05kg: non-repeatable initialisation (seeded from the clock). */
void g05kgc(Zeb_BaseRNG genid, Integer subid, Integer state[], Integer *lstate,
            ZebError *fail);
void g05kgf_(const Integer *genid, const Integer *subid, Integer state[], Integer *lstate,
             Integer *ifail);
#define zeb_rand_init_nonrepeatable g05kgc

/* g05kh: leap-frog, the k-th of n interleaved streams (not for ACORN). */
void g05khc(Integer n, Integer k, Integer state[], ZebError *fail);
void g05khf_(const Integer *n, const Integer *k, Integer state[], Integer *ifail);
#define zeb_rand_leap_frog g05khc

/* g05kj: skip ahead n draws. */
void g05kjc(Integer n, Integer state[], ZebError *fail);
void g05kjf_(const Integer *n, Integer state[], Integer *ifail);
#define zeb_rand_skip_ahead g05kjc

/* g05kk: skip ahead 2^e draws. */
void g05kkc(Integer e, Integer state[], ZebError *fail);
void g05kkf_(const Integer *e, Integer state[], Integer *ifail);
#define zeb_rand_skip_ahead_power2 g05kkc

/* g05sa: n uniform deviates on (0, 1). */
void g05sac(Integer n, Integer state[], double x[], ZebError *fail);
void g05saf_(const Integer *n, Integer state[], double x[], Integer *ifail);
#define zeb_rand_basic g05sac

/* g05sk: n normal deviates with mean xmu and variance var. */
void g05skc(Integer n, double xmu, double var, Integer state[], double x[], ZebError *fail);
void g05skf_(const Integer *n, const double *xmu, const double *var, Integer state[],
             double x[], Integer *ifail);
#define zeb_rand_normal g05skc

#ifdef __cplusplus
}
#endif

#endif
