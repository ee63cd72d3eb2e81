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

/* The mode of the discrete routines that keep a set-up in a reference
   vector r (Fortran entries: 0, 1, 2). */
typedef ZEB_ENUM {
  Zeb_InitializeReference = 161,   /* set r up only; nothing is drawn */
  Zeb_GenerateFromReference,       /* draw from an r set up before */
  Zeb_InitializeAndGenerate        /* set r up, then draw */
} Zeb_ModeRNG;

/* How g05td's table p is given (Fortran itype 1, 2). */
typedef ZEB_ENUM { Zeb_PDF = 165, Zeb_CDF } Zeb_DistType;

/* Codes of the generator routines' own failures, reported in fail.code
   under the table's code of their class. */
#define NE_INVALID_STATE NE_STATE_CORRUPT /* state not initialised or corrupted */
#define NE_ARRAY_SIZE NE_TOO_SMALL        /* Mersenne Twister state too short to skip ahead */
#define NE_REF_VEC NE_STRUCT_CORRUPT      /* reference vector r not set up, or changed */
#define NE_REAL_ARRAY NE_REAL_ARRAY_CONS  /* probabilities that do not form a distribution */

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


/* ---- Continuous distributions -------------------------------------------
   Each takes n >= 0, its parameters, the state and x[n]; a location-scale
   family with scale 0 gives its location and draws nothing. */

/* g05sb: Beta(a, b) variates, a > 0, b > 0: G_a/(G_a + G_b) from two gamma
   variates, about 6.2 uniforms per variate. */
void g05sbc(Integer n, double a, double b, Integer state[], double x[], ZebError *fail);
void g05sbf_(const Integer *n, const double *a, const double *b, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_beta g05sbc

/* g05sc: Cauchy variates with median xmed and semi-interquartile range
   semiqr >= 0, by inversion (one uniform per variate). */
void g05scc(Integer n, double xmed, double semiqr, Integer state[], double x[], ZebError *fail);
void g05scf_(const Integer *n, const double *xmed, const double *semiqr, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_cauchy g05scc

/* g05sd: chi-squared variates with df > 0 degrees of freedom (twice a
   gamma variate of shape df/2). */
void g05sdc(Integer n, double df, Integer state[], double x[], ZebError *fail);
void g05sdf_(const Integer *n, const double *df, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_chi_sq g05sdc

/* g05sf: exponential variates with mean a > 0, by inversion (one uniform
   per variate). */
void g05sfc(Integer n, double a, Integer state[], double x[], ZebError *fail);
void g05sff_(const Integer *n, const double *a, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_exp g05sfc

/* g05sh: F variates with df1 > 0 and df2 > 0 degrees of freedom (a ratio of
   gamma variates). */
void g05shc(Integer n, double df1, double df2, Integer state[], double x[], ZebError *fail);
void g05shf_(const Integer *n, const double *df1, const double *df2, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_f g05shc

/* g05sj: gamma variates with shape a > 0 and scale b > 0: Marsaglia and
   Tsang over a ziggurat normal, about 3.1 uniforms per variate (a >= 1). */
void g05sjc(Integer n, double a, double b, Integer state[], double x[], ZebError *fail);
void g05sjf_(const Integer *n, const double *a, const double *b, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_gamma g05sjc

/* g05sl: logistic variates with mean a and spread b >= 0 (density
   proportional to e^(-(x-a)/b)/(1 + e^(-(x-a)/b))^2), by inversion. */
void g05slc(Integer n, double a, double b, Integer state[], double x[], ZebError *fail);
void g05slf_(const Integer *n, const double *a, const double *b, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_logistic g05slc

/* g05sm: lognormal variates: exp(y) with y normal of mean xmu and
   variance var >= 0, by inversion (one uniform per variate). */
void g05smc(Integer n, double xmu, double var, Integer state[], double x[], ZebError *fail);
void g05smf_(const Integer *n, const double *xmu, const double *var, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_lognormal g05smc

/* g05sn: Student's t variates with df > 0 degrees of freedom (a normal
   over the root of a scaled gamma variate). */
void g05snc(Integer n, double df, Integer state[], double x[], ZebError *fail);
void g05snf_(const Integer *n, const double *df, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_students_t g05snc

/* g05sp: triangular variates on [xmin, xmax] with mode xmed, by
   inversion (one uniform per variate). */
void g05spc(Integer n, double xmin, double xmed, double xmax, Integer state[], double x[], ZebError *fail);
void g05spf_(const Integer *n, const double *xmin, const double *xmed, const double *xmax, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_triangular g05spc

/* g05sq: uniform variates on [a, b], a <= b, by inversion (one uniform
   per variate). */
void g05sqc(Integer n, double a, double b, Integer state[], double x[], ZebError *fail);
void g05sqf_(const Integer *n, const double *a, const double *b, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_uniform g05sqc

/* g05sr: von Mises angles in (-pi, pi] with concentration vk >= 0:
   Best and Fisher, 3 to 4 uniforms per variate (1 at vk = 0: uniform angles). */
void g05src(Integer n, double vk, Integer state[], double x[], ZebError *fail);
void g05srf_(const Integer *n, const double *vk, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_von_mises g05src

/* g05ss: Weibull variates with shape a > 0 and scale b > 0 (P(X > x) =
   exp(-(x/b)^a)), by inversion (one uniform per variate). */
void g05ssc(Integer n, double a, double b, Integer state[], double x[], ZebError *fail);
void g05ssf_(const Integer *n, const double *a, const double *b, Integer state[], double x[],
             Integer *ifail);
#define zeb_rand_weibull g05ssc

/* g05se: n Dirichlet vectors of m >= 1 components with parameters a[m] > 0
   (normalised gamma variates).  C: vector i in row i of x (Zeb_RowMajor,
   pdx >= m) or in column i (Zeb_ColMajor, pdx >= n); Fortran: x(i, j),
   ldx >= n. */
void g05sec(Zeb_OrderType order, Integer n, Integer m, const double a[], Integer state[],
            double x[], Integer pdx, ZebError *fail);
void g05sef_(const Integer *n, const Integer *m, const double a[], Integer state[], double x[],
             const Integer *ldx, Integer *ifail);
#define zeb_rand_dirichlet g05sec

/* g05sg: variates of a mixture of nmix exponentials with means a[j] > 0 and
   weights wgt[j] >= 0 summing to 1 (two uniforms per variate). */
void g05sgc(Integer n, Integer nmix, const double a[], const double wgt[], Integer state[],
            double x[], ZebError *fail);
void g05sgf_(const Integer *n, const Integer *nmix, const double a[], const double wgt[],
             Integer state[], double x[], Integer *ifail);
#define zeb_rand_exp_mix g05sgc

/* ---- Discrete distributions ---------------------------------------------
   The routines with a reference vector r take mode (Zeb_ModeRNG): r is set
   up (Zeb_InitializeReference), drawn from (Zeb_GenerateFromReference: the
   distribution's own arguments are then not referenced, and an r that was
   not set up by the same routine, or was changed since, is refused with
   NE_REF_VEC), or both.  With *lr <= 0 and a set-up mode, *lr is set to the
   length r needs and nothing else is done.  A vector set up once serves any
   number of calls and gives the same variates as set-up-and-generate.
   Methods: inversion of a table of the distribution function with a guide
   table when the standard deviation is at most 32 (one uniform per variate,
   so skip-ahead and leap-frog carry over), rejection otherwise; counts and
   means up to 10^15. */

/* g05ta: binomial variates: successes in 0 <= m <= 10^15 trials of
   probability p (table, or BTRS for large m p (1 - p)). */
void g05tac(Zeb_ModeRNG mode, Integer n, Integer m, double p, double r[], Integer *lr,
            Integer state[], Integer x[], ZebError *fail);
void g05taf_(const Integer *mode, const Integer *n, const Integer *m, const double *p, double r[], Integer *lr,
             Integer state[], Integer x[], Integer *ifail);
#define zeb_rand_binomial g05tac

/* g05tc: geometric variates: failures before the first success of
   probability p, 1e-15 <= p <= 1, by inversion (one uniform per variate). */
void g05tcc(Zeb_ModeRNG mode, Integer n, double p, double r[], Integer *lr,
            Integer state[], Integer x[], ZebError *fail);
void g05tcf_(const Integer *mode, const Integer *n, const double *p, double r[], Integer *lr,
             Integer state[], Integer x[], Integer *ifail);
#define zeb_rand_geom g05tcc

/* g05te: hypergeometric variates: the special items in a sample of ns
   drawn without replacement from m items of which np are special (table,
   or ratio of uniforms). */
void g05tec(Zeb_ModeRNG mode, Integer n, Integer ns, Integer np, Integer m, double r[], Integer *lr,
            Integer state[], Integer x[], ZebError *fail);
void g05tef_(const Integer *mode, const Integer *n, const Integer *ns, const Integer *np, const Integer *m, double r[], Integer *lr,
             Integer state[], Integer x[], Integer *ifail);
#define zeb_rand_hypergeom g05tec

/* g05tf: logarithmic variates, P(X = k) = -a^k/(k log(1 - a)) for
   k >= 1, 0 < a < 1: Kemp's LK, 1 + a uniforms per variate. */
void g05tfc(Zeb_ModeRNG mode, Integer n, double a, double r[], Integer *lr,
            Integer state[], Integer x[], ZebError *fail);
void g05tff_(const Integer *mode, const Integer *n, const double *a, double r[], Integer *lr,
             Integer state[], Integer x[], Integer *ifail);
#define zeb_rand_logarithmic g05tfc

/* g05th: negative binomial variates: failures before the m-th success
   of probability p, 0 < p <= 1, mean m(1 - p)/p <= 10^15 (table, or ratio
   of uniforms). */
void g05thc(Zeb_ModeRNG mode, Integer n, Integer m, double p, double r[], Integer *lr,
            Integer state[], Integer x[], ZebError *fail);
void g05thf_(const Integer *mode, const Integer *n, const Integer *m, const double *p, double r[], Integer *lr,
             Integer state[], Integer x[], Integer *ifail);
#define zeb_rand_neg_bin g05thc

/* g05tj: Poisson variates with mean 0 <= lambda <= 10^15 (table up to
   lambda = 1024, PTRS above). */
void g05tjc(Zeb_ModeRNG mode, Integer n, double lambda, double r[], Integer *lr,
            Integer state[], Integer x[], ZebError *fail);
void g05tjf_(const Integer *mode, const Integer *n, const double *lambda, double r[], Integer *lr,
             Integer state[], Integer x[], Integer *ifail);
#define zeb_rand_poisson g05tjc

/* g05tl: uniform variates on the integers a..b, a <= b, by
   inversion (one uniform per variate). */
void g05tlc(Zeb_ModeRNG mode, Integer n, Integer a, Integer b, double r[], Integer *lr,
            Integer state[], Integer x[], ZebError *fail);
void g05tlf_(const Integer *mode, const Integer *n, const Integer *a, const Integer *b, double r[], Integer *lr,
             Integer state[], Integer x[], Integer *ifail);
#define zeb_rand_discrete_uniform g05tlc

/* g05td: variates of the general discrete distribution on ip1, ip1 + 1, ...,
   ip1 + np - 1 given by p[np]: probabilities summing to 1 (Zeb_PDF, Fortran
   itype 1) or the cumulative table, strictly ascending to 1 (Zeb_CDF,
   itype 2); inversion by a guide table, one uniform per variate. */
void g05tdc(Zeb_ModeRNG mode, Integer n, const double p[], Integer np, Integer ip1,
            Zeb_DistType itype, double r[], Integer *lr, Integer state[], Integer x[],
            ZebError *fail);
void g05tdf_(const Integer *mode, const Integer *n, const double p[], const Integer *np,
             const Integer *ip1, const Integer *itype, double r[], Integer *lr, Integer state[],
             Integer x[], Integer *ifail);
#define zeb_rand_gen_discrete g05tdc

/* g05tb: Bernoulli variates, 1 with probability p, 0.0 <= p <= 1.0, by
   inversion (one uniform per variate). */
void g05tbc(Integer n, double p, Integer state[], Integer x[], ZebError *fail);
void g05tbf_(const Integer *n, const double *p, Integer state[], Integer x[], Integer *ifail);
#define zeb_rand_bernoulli g05tbc

/* g05tg: n multinomial vectors: the counts of m trials, 0 <= m <= 10^15,
   over k >= 1 categories of probabilities p[k] summing to 1 (conditional
   binomials).  Layout of x as for g05se, pdx >= k for Zeb_RowMajor. */
void g05tgc(Zeb_OrderType order, Integer n, Integer m, Integer k, const double p[],
            Integer state[], Integer x[], Integer pdx, ZebError *fail);
void g05tgf_(const Integer *n, const Integer *m, const Integer *k, const double p[],
             Integer state[], Integer x[], const Integer *ldx, Integer *ifail);
#define zeb_rand_multinomial g05tgc

/* g05tk: Poisson variates, the i-th with mean 0 <= vlamda[i] <= 10^15. */
void g05tkc(Integer n, const double vlamda[], Integer state[], Integer x[], ZebError *fail);
void g05tkf_(const Integer *n, const double vlamda[], Integer state[], Integer x[],
             Integer *ifail);
#define zeb_rand_poisson_varmean g05tkc

#ifdef __cplusplus
}
#endif

#endif
