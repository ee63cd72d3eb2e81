// x^1.5 for the rule's error estimate, bit for bit the value std::pow(x,
// 1.5) returns, at the cost of a square root and a few products in most
// cases.
//
// x sqrt(x) is formed to about 2^-100 relative (the products exact by
// Veltkamp's splitting, sqrt(x) corrected by its exact residual), then
// rounded.  When that value lies farther than 0.05 of a unit in the last
// place from the midpoint between two doubles, every power function with an
// error under 0.55 units in the last place (glibc's is under 0.52) returns
// the same double, the correctly rounded one, and it is returned; otherwise
// (about one argument in ten), and outside the range where no product can
// overflow or underflow, std::pow gives the value.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

namespace zeb::quad {

// a * b = hi + lo exactly (Dekker's product; |a|, |b| well inside the range).
inline void exact_product(double a, double b, double& hi, double& lo) {
  constexpr double kSplit = 134217729.0;  // 2^27 + 1
  const double ca = kSplit * a, cb = kSplit * b;
  const double ah = ca - (ca - a), al = a - ah;
  const double bh = cb - (cb - b), bl = b - bh;
  hi = a * b;
  lo = ((ah * bh - hi) + ah * bl + al * bh) + al * bl;
}

inline double pow_three_halves(double x) {
  if (!(x >= 0x1p-400 && x <= 0x1p400)) return std::pow(x, 1.5);
  const double s = std::sqrt(x);
  double ss, ss_lo, p, p_lo;
  exact_product(s, s, ss, ss_lo);
  exact_product(x, s, p, p_lo);
  // x - s^2: x - ss is exact (the two agree to a few units), ss_lo is tiny.
  const double r = (x - ss) - ss_lo;
  // x sqrt(x) = x s + x r / (2 s) + O(2^-106 x^1.5) = p + c.
  const double c = p_lo + x * (r / (2 * s));
  const double y = p + c;
  const double t = (p - y) + c;  // the rounding's remainder, |t| <= half a unit
  // The spacing of the doubles on the side of y where the power lies: 2^-52
  // times y's binade, half that below a power of 2.
  uint64_t bits;
  std::memcpy(&bits, &y, sizeof bits);
  uint64_t ubits = ((bits >> 52) - 52) << 52;
  if ((bits & 0xfffffffffffffu) == 0 && t < 0) ubits -= uint64_t(1) << 52;
  double unit;
  std::memcpy(&unit, &ubits, sizeof unit);
  if (std::fabs(t) < 0.45 * unit) return y;
  return std::pow(x, 1.5);
}

}  // namespace zeb::quad
