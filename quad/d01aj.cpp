// d01aj: the definite integral of a user function over a finite interval,
// by globally adaptive bisection with the 21-point Gauss-Kronrod rule and
// Wynn's epsilon algorithm extrapolating the sequence of partial results
// (end-point singularities of algebraic or logarithmic type).
//
//   d01ajf   Fortran entry: real(kind=8) function f(x), caller's workspace
//   d01sjc   C entry: double f(double x, Zeb_Comm *comm), own workspace
//
// Layers: d01ajft_ (thin), d01ajfv_ (traced), d01ajfn_ (engine: checks,
// workspace partition, the adaptive core, the final ordering of the lists).
// Private helpers: qk21 (the rule), order_errors (the descending error
// list), epsilon (the extrapolation), adaptive (the core).  Every value of
// f comes through the callback shims d01ajf_*fh_.
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "frame/layers.hpp"
#include "quad/power.hpp"
#include "quad/quad.def"
#include "sort/rank.hpp"
#include "zeb/quad.h"

namespace {

// max as the classic codes write it (no library call).
inline double dmax(double a, double b) { return a > b ? a : b; }

constexpr double kEpmach = 0x1p-53;                 // 1.1102230246251565e-16
constexpr double kUflow = 2.2250738585072014e-308;
constexpr double kOflow = DBL_MAX / 4;              // "not yet set"
constexpr double kRoundoffTest = 100 * kEpmach;     // first rule's round-off test
constexpr double kSignTest = 1 - 50 * kEpmach;
constexpr double kTooSmall = 1 + 100 * kEpmach;
constexpr double kTooSmallAbs = 1000 * kUflow;
constexpr double kRuleFloor = 50 * kEpmach;         // error floor of the rule
constexpr double kRuleFloorMin = kUflow / (50 * kEpmach);
constexpr double kEpsFloor = 0x1p-54;               // error floor of the extrapolation
constexpr int64_t kLimExp = 50;                     // useful fill of the table

// The 21-point Kronrod extension of the 10-point Gauss rule: abscissae
// (odd positions are the Gauss nodes), Kronrod weights (the last at the
// centre) and Gauss weights.
constexpr double kXgk[11] = {
    0.995657163025808080735527280689003, 0.973906528517171720077964012084452,
    0.930157491355708226001207180059508, 0.865063366688984510732096688423493,
    0.780817726586416897063717578345042, 0.679409568299024406234327365114874,
    0.562757134668604683339000099272694, 0.433395394129247190799265943165784,
    0.294392862701460198131126603103866, 0.148874338981631210884826001129720,
    0.000000000000000000000000000000000};
constexpr double kWgk[11] = {
    0.011694638867371874278064396062192, 0.032558162307964727478818972459390,
    0.054755896574351996031381300244580, 0.075039674810919952767043140916190,
    0.093125454583697605535065465083366, 0.109387158802297641899210590325805,
    0.123491976262065851077208838064775, 0.134709217311473325928054001771707,
    0.142775938577060080797094273138717, 0.147739104901338491374841515972068,
    0.149445554002916905664936468389821};
constexpr double kWg[5] = {
    0.066671344308688137593568809893332, 0.149451349150580593145776339657697,
    0.219086362515982043995534934228163, 0.269266719309996355091226921569469,
    0.295524224714752870173892994651338};

struct Rule {
  double result, abserr, resabs, resasc;
};

// The rule on [a1, b1].  `f(x, fx)` returns false when the user asked to
// stop; the rule then returns false at once.  The sums read the values one
// at a time: a vector load of two values that were just stored one by one
// waits until both stores have retired.
#if defined(__GNUC__) && !defined(__clang__)
#define ZEB_SCALAR_SUMS __attribute__((optimize("no-tree-slp-vectorize", "no-tree-loop-vectorize")))
#else
#define ZEB_SCALAR_SUMS
#endif
template <class F>
ZEB_SCALAR_SUMS inline bool qk21(F& f, double a1, double b1, Rule& r) {
  const double centr = 0.5 * (a1 + b1);
  const double hlgth = 0.5 * (b1 - a1);
  const double dhlgth = std::fabs(hlgth);
  // All 21 values first, in the order of the rule (the centre, the Gauss
  // pairs outermost first, then the Kronrod pairs), so that no partial sum
  // lives across a call of f; then the sums, in the same order as ever.
  double fv1[10], fv2[10], fc;
  if (!f(centr, fc)) return false;
#pragma GCC unroll 5
  for (int j = 0; j < 5; ++j) {
    const int jtw = 2 * j + 1;
    const double absc = hlgth * kXgk[jtw];
    if (!f(centr - absc, fv1[jtw]) || !f(centr + absc, fv2[jtw])) return false;
  }
#pragma GCC unroll 5
  for (int j = 0; j < 5; ++j) {
    const int jtwm1 = 2 * j;
    const double absc = hlgth * kXgk[jtwm1];
    if (!f(centr - absc, fv1[jtwm1]) || !f(centr + absc, fv2[jtwm1])) return false;
  }
  double resg = 0.0;
  double resk = kWgk[10] * fc;
  double resabs = std::fabs(resk);
  for (int j = 0; j < 5; ++j) {
    const int jtw = 2 * j + 1;
    const double f1 = fv1[jtw], f2 = fv2[jtw];
    const double fsum = f1 + f2;
    resg += kWg[j] * fsum;
    resk += kWgk[jtw] * fsum;
    resabs += kWgk[jtw] * (std::fabs(f1) + std::fabs(f2));
  }
  for (int j = 0; j < 5; ++j) {
    const int jtwm1 = 2 * j;
    const double f1 = fv1[jtwm1], f2 = fv2[jtwm1];
    const double fsum = f1 + f2;
    resk += kWgk[jtwm1] * fsum;
    resabs += kWgk[jtwm1] * (std::fabs(f1) + std::fabs(f2));
  }
  const double reskh = resk * 0.5;
  double resasc = kWgk[10] * std::fabs(fc - reskh);
  for (int j = 0; j < 10; ++j)
    resasc += kWgk[j] * (std::fabs(fv1[j] - reskh) + std::fabs(fv2[j] - reskh));
  r.result = resk * hlgth;
  resabs *= dhlgth;
  resasc *= dhlgth;
  double abserr = std::fabs((resk - resg) * hlgth);
  if (resasc != 0.0 && abserr != 0.0) {
    // min(1, q^1.5): 1 from q >= 1 on without the power.
    const double q = 200.0 * abserr / resasc;
    abserr = resasc * (q >= 1.0 ? 1.0 : zeb::quad::pow_three_halves(q));
  }
  if (resabs > kRuleFloorMin) abserr = dmax(kRuleFloor * resabs, abserr);
  r.abserr = abserr;
  r.resabs = resabs;
  r.resasc = resasc;
  return true;
}

// Keeps iord(1..jupbnd) in descending order of the error estimates after a
// bisection (1-based arrays): the bisected interval, now at maxerr, moves to
// its place and the new one, at last, to its own; returns the next maxerr
// and errmax.  Only the part a further bisection can reach is maintained.
void order_errors(int64_t limit, int64_t last, int64_t& maxerr, double& errmax,
                  const double* elist, int64_t* iord, int64_t& nrmax) {
  if (last <= 2) {
    iord[1] = 1;
    iord[2] = 2;
  } else {
    const double emax = elist[maxerr];
    // Bisection raised the estimate: move up past smaller ones.
    while (nrmax > 1) {
      const int64_t isucc = iord[nrmax - 1];
      if (emax <= elist[isucc]) break;
      iord[nrmax] = isucc;
      --nrmax;
    }
    const int64_t jupbnd = last > limit / 2 + 2 ? limit + 3 - last : last;
    const double errmin = elist[last];
    const int64_t jbnd = jupbnd - 1;
    int64_t i = nrmax + 1;
    for (; i <= jbnd; ++i) {
      const int64_t isucc = iord[i];
      if (emax >= elist[isucc]) break;
      iord[i - 1] = isucc;
    }
    if (i > jbnd) {
      iord[jbnd] = maxerr;
      iord[jupbnd] = last;
    } else {
      iord[i - 1] = maxerr;
      int64_t k = jbnd;
      bool placed = false;
      for (int64_t j = i; j <= jbnd; ++j) {
        const int64_t isucc = iord[k];
        if (errmin < elist[isucc]) {
          iord[k + 1] = last;
          placed = true;
          break;
        }
        iord[k + 1] = isucc;
        --k;
      }
      if (!placed) iord[i] = last;
    }
  }
  maxerr = iord[nrmax];
  errmax = elist[maxerr];
}

// One step of the epsilon algorithm: the table epstab(1..n) (1-based, 52
// entries) has a new last element; builds the new lower diagonal and returns
// the best extrapolated value and its error estimate.  n may shrink.
void epsilon(int64_t& n, double* epstab, double& result, double& abserr, double* res3la,
             int64_t& nres) {
  ++nres;
  abserr = kOflow;
  result = epstab[n];
  if (n < 3) {
    abserr = dmax(abserr, kEpsFloor * std::fabs(result));
    return;
  }
  epstab[n + 2] = epstab[n];
  const int64_t newelm = (n - 1) / 2;
  epstab[n] = kOflow;
  const int64_t num = n;
  int64_t k1 = n;
  for (int64_t i = 1; i <= newelm; ++i) {
    const int64_t k2 = k1 - 1, k3 = k1 - 2;
    double res = epstab[k1 + 2];
    const double e0 = epstab[k3], e1 = epstab[k2], e2 = res;
    const double e1abs = std::fabs(e1);
    const double delta2 = e2 - e1, err2 = std::fabs(delta2);
    const double tol2 = dmax(std::fabs(e2), e1abs) * kEpmach;
    const double delta3 = e1 - e0, err3 = std::fabs(delta3);
    const double tol3 = dmax(e1abs, std::fabs(e0)) * kEpmach;
    if (err2 <= tol2 && err3 <= tol3) {
      // e0, e1 and e2 agree to machine accuracy: converged.
      result = res;
      abserr = dmax(err2 + err3, kEpsFloor * std::fabs(result));
      return;
    }
    const double e3 = epstab[k1];
    epstab[k1] = e1;
    const double delta1 = e1 - e3, err1 = std::fabs(delta1);
    const double tol1 = dmax(e1abs, std::fabs(e3)) * kEpmach;
    // Two elements very close, or irregular behaviour: cut the table.
    if (err1 <= tol1 || err2 <= tol2 || err3 <= tol3) {
      n = i + i - 1;
      break;
    }
    const double ss = 1.0 / delta1 + 1.0 / delta2 - 1.0 / delta3;
    if (std::fabs(ss * e1) <= 1.0e-4) {
      n = i + i - 1;
      break;
    }
    res = e1 + 1.0 / ss;
    epstab[k1] = res;
    k1 -= 2;
    const double error = err2 + std::fabs(res - e2) + err3;
    if (error <= abserr) {
      abserr = error;
      result = res;
    }
  }
  // Shift the table.
  if (n == kLimExp) n = 2 * (kLimExp / 2) - 1;
  int64_t ib = num % 2 == 0 ? 2 : 1;
  for (int64_t i = 1; i <= newelm + 1; ++i) {
    epstab[ib] = epstab[ib + 2];
    ib += 2;
  }
  if (num != n) {
    int64_t indx = num - n + 1;
    for (int64_t i = 1; i <= n; ++i) epstab[i] = epstab[indx++];
  }
  if (nres < 4) {  // too few earlier results to judge this one by
    res3la[nres] = result;
    abserr = kOflow;
  } else {
    abserr = std::fabs(result - res3la[3]) + std::fabs(result - res3la[2]) +
             std::fabs(result - res3la[1]);
    res3la[1] = res3la[2];
    res3la[2] = res3la[3];
    res3la[3] = result;
  }
  abserr = dmax(abserr, kEpsFloor * std::fabs(result));
}

double sum_results(const double* rlist, int64_t last) {
  double s = 0.0;
  for (int64_t k = 1; k <= last; ++k) s += rlist[k];
  return s;
}

// The subintervals in the order they lie from a to b: a doubly linked list
// over their list indices (1..limit), index 0 the sentinel (next[0] the
// first, prev[0] the last), kept by every bisection so that the lists can
// be put in order at the end without a sort.  The links of up to kInline
// subintervals live in the object itself; more are allocated when the
// bisections reach them (without memory the lists are sorted instead).
class Chain {
 public:
  static constexpr int64_t kInline = 128;
  explicit Chain(int64_t limit) : limit_(limit) {
    next_ = inline_;
    prev_ = inline_ + kInline + 1;
    next_[0] = prev_[0] = 1;
    next_[1] = prev_[1] = 0;
  }
  ~Chain() { delete[] heap_; }
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;
  bool valid() const { return next_ != nullptr; }
  // Interval `old` was split into `left` and `right` (one of them `old`,
  // the other the new index `last`).
  void split(int64_t last, int64_t old, int64_t left, int64_t right) {
    if (__builtin_expect(last > cap_, 0) && !grow()) return;  // (cap_ stays when it fails)
    const int64_t p = prev_[old], n = next_[old];
    next_[p] = left;
    prev_[left] = p;
    next_[left] = right;
    prev_[right] = left;
    next_[right] = n;
    prev_[n] = right;
  }
  const int64_t* next() const { return next_; }
  const int64_t* prev() const { return prev_; }

 private:
  bool grow() {
    if (!next_) return false;
    int64_t* h = new (std::nothrow) int64_t[size_t(2 * (limit_ + 1))];
    if (!h) {
      next_ = prev_ = nullptr;
      return false;
    }
    std::memcpy(h, next_, size_t(cap_ + 1) * sizeof(int64_t));
    std::memcpy(h + limit_ + 1, prev_, size_t(cap_ + 1) * sizeof(int64_t));
    heap_ = h;
    next_ = h;
    prev_ = h + limit_ + 1;
    cap_ = limit_;
    return true;
  }
  int64_t limit_, cap_ = kInline;
  int64_t* next_;
  int64_t* prev_;
  int64_t* heap_ = nullptr;
  int64_t inline_[2 * (kInline + 1)];
};

// The ranks (from 1) of the left end points keys[0..n-1] of the n
// subintervals, in ranks[0..n-1], read from the chain: walked from a towards
// b when a < b, else from b.  The left end points must strictly increase
// along the walk (no ties, no NaN), for then the walk is the order of a
// sort; false otherwise.
bool ranks_from_chain(const Chain& chain, const double* keys, int64_t n, bool from_a,
                      int64_t* ranks) {
  if (!chain.valid()) return false;
  const int64_t* step = from_a ? chain.next() : chain.prev();
  int64_t i = step[0];
  double prev = -HUGE_VAL;
  for (int64_t k = 1; k <= n; ++k) {
    if (i < 1 || i > n) return false;
    const double key = keys[i - 1];
    if (!(key > prev) && k > 1) return false;
    if (key != key) return false;
    prev = key;
    ranks[i - 1] = k;
    i = step[i];
  }
  return i == 0;
}

struct Outcome {
  double result = 0.0, abserr = 0.0;
  int64_t neval = 0, last = 0, ier = 0;
  double a1 = 0.0, b2 = 0.0;  // for ier = 3: the interval at fault
  bool stopped = false;       // the user asked to stop
};

// The adaptive core: one integration from start to finish.  The lists are
// 1-based: alist, blist (end points), elist (errors), rlist (integrals),
// iord (the error ordering), each of length limit.
template <class F>
void adaptive(F& f, double a, double b, double epsabs, double epsrel, int64_t limit,
              double* alist, double* blist, double* elist, double* rlist, int64_t* iord,
              Chain& chain, Outcome& o) {
  alist[1] = a;
  blist[1] = b;
  rlist[1] = 0.0;
  elist[1] = 0.0;
  int64_t ier = 0, last = 1;
  double result = 0.0, abserr = 0.0, a1 = 0.0, b2 = 0.0;
  o.result = o.abserr = 0.0;
  Rule r0;
  if (!qk21(f, a, b, r0)) {
    o.stopped = true;
    return;
  }
  result = r0.result;
  abserr = r0.abserr;
  const double defabs = r0.resabs, resabs = r0.resasc;
  const double dres = std::fabs(result);
  double errbnd = dmax(epsabs, epsrel * dres);
  rlist[1] = result;
  elist[1] = abserr;
  iord[1] = 1;
  if (abserr <= kRoundoffTest * defabs && abserr > errbnd) ier = 2;
  if (limit == 1) ier = 1;
  if (!(ier != 0 || (abserr <= errbnd && abserr != resabs) || abserr == 0.0)) {
    double rlist2[53];  // the epsilon table, 1-based, 52 entries
    double res3la[4];
    rlist2[1] = result;
    double errmax = abserr, area = result, errsum = abserr;
    int64_t maxerr = 1, nrmax = 1, nres = 0, numrl2 = 2, ktmin = 0;
    abserr = kOflow;
    bool extrap = false, noext = false;
    int iroff1 = 0, iroff2 = 0, iroff3 = 0, ierro = 0;
    const int ksgn = dres >= kSignTest * defabs ? 1 : -1;
    double small = 0.0, erlarg = 0.0, ertest = 0.0, correc = 0.0;
    bool summed = false;  // finished with the summed result
    for (last = 2; last <= limit; ++last) {
      // Bisect the subinterval with the nrmax-th largest error estimate.
      a1 = alist[maxerr];
      const double b1 = 0.5 * (alist[maxerr] + blist[maxerr]);
      const double a2 = b1;
      b2 = blist[maxerr];
      const double erlast = errmax;
      Rule h1, h2;
      if (!qk21(f, a1, b1, h1) || !qk21(f, a2, b2, h2)) {
        o.stopped = true;
        return;
      }
      const double area1 = h1.result, error1 = h1.abserr, defab1 = h1.resasc;
      const double area2 = h2.result, error2 = h2.abserr, defab2 = h2.resasc;
      const double area12 = area1 + area2, erro12 = error1 + error2;
      errsum = errsum + erro12 - errmax;
      area = area + area12 - rlist[maxerr];
      if (defab1 != error1 && defab2 != error2) {
        if (std::fabs(rlist[maxerr] - area12) <= 1.0e-5 * std::fabs(area12) &&
            erro12 >= 0.99 * errmax) {
          if (extrap)
            ++iroff2;
          else
            ++iroff1;
        }
        if (last > 10 && erro12 > errmax) ++iroff3;
      }
      rlist[maxerr] = area1;
      rlist[last] = area2;
      errbnd = dmax(epsabs, epsrel * std::fabs(area));
      // The half with the larger error keeps maxerr; on a tie the left half
      // goes to last.
      if (error2 >= error1) {
        alist[maxerr] = a2;
        alist[last] = a1;
        blist[last] = b1;
        rlist[maxerr] = area2;
        rlist[last] = area1;
        elist[maxerr] = error2;
        elist[last] = error1;
        chain.split(last, maxerr, last, maxerr);
      } else {
        alist[last] = a2;
        blist[maxerr] = b1;
        blist[last] = b2;
        elist[maxerr] = error1;
        elist[last] = error2;
        chain.split(last, maxerr, maxerr, last);
      }
      order_errors(limit, last, maxerr, errmax, elist, iord, nrmax);
      if (errsum <= errbnd) {
        summed = true;
        break;
      }
      if (last == limit) ier = 1;
      if (iroff1 + iroff2 >= 10 || iroff3 >= 20) ier = 2;
      if (iroff2 >= 5) ierro = 3;
      if (dmax(std::fabs(a1), std::fabs(b2)) <= kTooSmall * (std::fabs(a2) + kTooSmallAbs)) {
        ier = 4;
        break;
      }
      if (ier >= 2) break;
      if (last == 2) {
        small = std::fabs(b - a) * 0.375;
        erlarg = errsum;
        ertest = errbnd;
        rlist2[2] = area;
        continue;
      }
      if (noext) {
        continue;
      }
      erlarg -= erlast;
      if (std::fabs(b1 - a1) > small) erlarg += erro12;
      bool next_round = false;
      if (!extrap) {
        // Is the interval to be bisected next the smallest one?
        if (std::fabs(blist[maxerr] - alist[maxerr]) > small) {
          next_round = true;
        } else {
          extrap = true;
          nrmax = 2;
        }
      }
      if (!next_round && ierro != 3 && erlarg > ertest) {
        // Bisect the large intervals while the small ones hold more than
        // the requested error.
        const int64_t id = nrmax;
        const int64_t jupbnd = last > 2 + limit / 2 ? limit + 3 - last : last;
        for (int64_t k = id; k <= jupbnd; ++k) {
          maxerr = iord[nrmax];
          errmax = elist[maxerr];
          if (std::fabs(blist[maxerr] - alist[maxerr]) > small) {
            next_round = true;
            break;
          }
          ++nrmax;
        }
      }
      if (next_round) {
        continue;
      }
      // Extrapolate.
      ++numrl2;
      rlist2[numrl2] = area;
      double reseps, abseps;
      epsilon(numrl2, rlist2, reseps, abseps, res3la, nres);
      ++ktmin;
      if (ktmin > 5 && abserr < 1.0e-3 * errsum) ier = 5;
      if (abseps < abserr) {
        ktmin = 0;
        abserr = abseps;
        result = reseps;
        correc = erlarg;
        ertest = dmax(epsabs, epsrel * std::fabs(reseps));
        if (abserr <= ertest) {
          if (ier == 1) ier = 0;
          break;
        }
      }
      if (numrl2 == 1) noext = true;
      if (ier == 1 || ier == 5) break;
      // Go on with the largest error.
      maxerr = iord[1];
      errmax = elist[maxerr];
      nrmax = 1;
      extrap = false;
      small *= 0.5;
      erlarg = errsum;
    }
    if (last > limit) last = limit;  // the loop ran to its end
    // The final result and error estimate.
    if (!summed && abserr != kOflow) {
      bool divergence_test = true;
      if (ier + ierro != 0) {
        if (ierro == 3) abserr += correc;
        if (ier == 0) ier = 3;
        if (result != 0.0 && area != 0.0) {
          summed = abserr / std::fabs(result) > errsum / std::fabs(area);
        } else if (abserr > errsum) {
          summed = true;
        } else if (area == 0.0) {
          divergence_test = false;
        }
      }
      if (!summed && divergence_test &&
          !(ksgn == -1 && dmax(std::fabs(result), std::fabs(area)) <= defabs * 0.01)) {
        if (0.01 > result / area || result / area > 100.0 || errsum > std::fabs(area)) ier = 6;
      }
    } else {
      summed = true;
    }
    if (summed) {
      result = sum_results(rlist, last);
      abserr = errsum;
    }
    if (ier > 2) --ier;
  }
  o.result = result;
  o.abserr = abserr;
  o.ier = ier;
  o.last = last;
  o.neval = 42 * last - 21;
  iord[1] = last;
  o.a1 = a1;
  o.b2 = b2;
}

// The rows carry the texts of both entries, d01ajf and d01sjc.
constexpr zeb::Msg<3> kMaxSubdiv{
    1, 1001, NE_QUAD_MAX_SUBDIV,
    "The maximum number of subdivisions (LIMIT) has been reached:\nLIMIT = %s, lw = %s and\n"
    "liw = %s",
    "The maximum number of subdivisions has\nbeen reached: max_num_subint = %1ld"};
constexpr zeb::Msg<2> kRoundoff{
    2, 1002, NE_QUAD_ROUNDOFF_TOL,
    "Round-off error prevents the requested tolerance from being achieved:\n"
    "epsabs = %s and epsrel = %s",
    "Round-off error prevents the requested tolerance from\n"
    "being achieved:  epsabs = %7.1e,  epsrel =  %7.1e."};
constexpr zeb::Msg<2> kBadSubdiv{
    3, 1003, NE_QUAD_BAD_SUBDIV,
    "Extremely bad integrand behaviour occurs around the sub-interval\n(%s, %s).",
    "Extremely bad integrand behaviour occurs around the\nsub-interval (%14.7e, %14.7e )."};
constexpr zeb::Msg<0> kRoundoffExtrapolation{
    4, 1004, NE_QUAD_ROUNDOFF_EXTRAPL, "Round-off error is detected in the extrapolation table.",
    "Round-off error is detected during extrapolation."};
constexpr zeb::Msg<0> kNoConvergence{5, 1005, NE_QUAD_NO_CONV,
                                     "The integral is probably divergent or slowly convergent."};
constexpr zeb::Msg<1> kBadLw{6, 1006, NE_INT, "On entry, lw = %s.\nConstraint: lw >= 4."};
constexpr zeb::Msg<1> kBadLiw{6, 1007, NE_INT, "On entry, liw = %s.\nConstraint: liw >= 1."};
constexpr zeb::Msg<1> kUserStop{-1, 1008, NE_USER_STOP,
                                "User requested termination, user flag value = %s."};
constexpr const zeb::MsgRow* kD01ajMessages[] = {
    &kMaxSubdiv, &kRoundoff, &kBadSubdiv, &kRoundoffExtrapolation,
    &kNoConvergence, &kBadLw, &kBadLiw, &kUserStop};

// The callback: the user's f at one abscissa, through the shims.
typedef void (*D01ajMarshal)(zeb::RealFn1, ZebEnData*, const double*, double*, int64_t*,
                             double*);

}  // namespace

// The adapter d01ajf_fh_ and the callback shims of the user function.
ZEB_REAL1_CALLBACK(d01ajf, "d01ajfv:f")

ZEB_LAYERS_EN(d01ajf, D01AJF_ARGS)
ZEB_FORTRAN_SUBROUTINE(d01ajf, D01AJF_ARGS, kD01ajMessages)

extern "C" {
void m01dafn_(const double* rv, const int64_t* m1, const int64_t* m2, const char* order,
              int64_t* irank, char* errbuf, int64_t* ifail, int64_t errbuf_len);
}

extern "C" void d01ajfn_(ZebEnData* en, D01ajMarshal marshal, zeb::RealFn1 fun,
                         const double* a, const double* b, const double* epsabs,
                         const double* epsrel, double* result, double* abserr, double* w,
                         const int64_t* lw, int64_t* iw, const int64_t* liw, char* errbuf,
                         int64_t* ifail, int64_t errbuf_len) {
  *ifail = 0;
  if (*lw < 4) {
    zeb::fail(errbuf, errbuf_len, ifail, kBadLw, *lw);
    return;
  }
  if (*liw < 1) {
    zeb::fail(errbuf, errbuf_len, ifail, kBadLiw, *liw);
    return;
  }
  const int64_t limit = *lw / 4 < *liw ? *lw / 4 : *liw;
  Outcome o;
  Chain chain(limit);
  zeb::with_real1(
      marshal == d01ajf_internal_fh_, en, fun,
      [&](double x, double& fx) {
        fx = 0.0;  // the traced shim shows the value before the call too
        return d01ajf_print_fh_(marshal, fun, en, &x, &fx, nullptr, nullptr);
      },
      [&](auto&& f) {
        adaptive(f, *a, *b, std::fabs(*epsabs), std::fabs(*epsrel), limit, w - 1,
                 w + limit - 1, w + 2 * limit - 1, w + 3 * limit - 1, iw - 1, chain, o);
      });
  if (o.stopped) {
    zeb::fail(errbuf, errbuf_len, ifail, kUserStop, en->user_stop != 0 ? en->user_stop : -1);
    return;
  }
  *result = o.result;
  *abserr = o.abserr;
  // The lists, contiguous with stride n, in ascending order of left end point.
  const int64_t n = o.last;
  if (n == 1 && limit > 1) {  // one rule sufficed: three elements, no library calls
    w[1] = w[limit];
    w[2] = w[2 * limit];
    w[3] = w[3 * limit];
  } else if (n < limit) {
    for (int64_t k = 1; k < 4; ++k) std::memmove(w + k * n, w + k * limit, size_t(n) * sizeof(double));
  }
  if (n > 1) {
    int64_t rfail = 0;
    if (!ranks_from_chain(chain, w, n, *a < *b, iw)) {  // rank the left end points
      const int64_t one = 1;
      char rbuf[zeb::kErrbufLen];
      m01dafn_(w, &one, &n, "A", iw, rbuf, &rfail, zeb::kErrbufLen);
    }
    if (rfail == 0) {  // the ranks are a permutation: all four lists at once
      double* const lists[4] = {w, w + n, w + 2 * n, w + 3 * n};
      zeb::rearrange_by_ranks(lists, 4, n, iw);
    } else {
      zeb::fail_internal(errbuf, errbuf_len, ifail);
      return;
    }
  }
  iw[0] = n;
  switch (o.ier) {
    case 0: break;
    case 1: zeb::fail(errbuf, errbuf_len, ifail, kMaxSubdiv, limit, *lw, *liw); break;
    case 2: zeb::fail(errbuf, errbuf_len, ifail, kRoundoff, *epsabs, *epsrel); break;
    case 3: zeb::fail(errbuf, errbuf_len, ifail, kBadSubdiv, o.a1, o.b2); break;
    case 4: zeb::fail(errbuf, errbuf_len, ifail, kRoundoffExtrapolation); break;
    default: zeb::fail(errbuf, errbuf_len, ifail, kNoConvergence); break;
  }
}

// d01sjc: the C entry.  Allocates the lists itself (max_num_subint entries
// each), runs the same layers with the C user function, and reports the
// outcome with the C texts.
ZEB_API void d01sjc(double (*f)(double x, Zeb_Comm* comm), double a, double b, double epsabs,
                    double epsrel, Integer max_num_subint, double* result, double* abserr,
                    Zeb_QuadProgress* qp, Zeb_Comm* comm, ZebError* fail) {
  static const char kName[] = "d01sjc";
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  if (!f) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "f");
  if (!result) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "result");
  if (!abserr) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "abserr");
  if (max_num_subint < 1)
    return zeb::c_fail(fail, kName, NE_INT_ARG_LT, "max_num_subint", "1", "max_num_subint",
                       long(max_num_subint));
  if (qp) qp->num_subint = qp->fun_count = 0;
  const int64_t limit = max_num_subint;
  double* w = nullptr;
  int64_t* iw = nullptr;
  if (limit <= INT64_MAX / 4 / int64_t(sizeof(double))) {
    w = new (std::nothrow) double[size_t(4 * limit)];
    iw = new (std::nothrow) int64_t[size_t(limit)];
  }
  if (!w || !iw) {
    delete[] w;
    delete[] iw;
    return zeb::c_fail(fail, kName, NE_ALLOC_FAIL);
  }
  Zeb_Comm own{};
  if (!comm) comm = &own;
  ZebEnData en;
  y90haan_(&en);
  zeb::CurrentEn current(&en);
  zeb::set_c_function(&en, f, comm);
  char errbuf[zeb::kErrbufLen + 1];
  errbuf[0] = ' ';
  errbuf[zeb::kErrbufLen] = '\0';
  int64_t ierr = 1, lw = 4 * limit, liw = limit;
  d01ajft_(&en, d01ajf_internal_fh_, reinterpret_cast<zeb::RealFn1>(reinterpret_cast<void (*)(void)>(f)), &a, &b, &epsabs,
           &epsrel, result, abserr, w, &lw, iw, &liw, errbuf, &ierr, zeb::kErrbufLen);
  if (qp && ierr >= 0) {
    const int64_t n = iw[0];
    qp->num_subint = n;
    qp->fun_count = 42 * n - 21;
    double* const out[4] = {qp->sub_int_beg_pts, qp->sub_int_end_pts, qp->sub_int_error,
                            qp->sub_int_result};
    for (int k = 0; k < 4; ++k)
      if (out[k]) std::memcpy(out[k], w + k * n, size_t(n) * sizeof(double));
  }
  delete[] w;
  delete[] iw;
  zeb::finish_c(fail, kName, kD01ajMessages, ierr, errbuf);
}
