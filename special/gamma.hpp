// The product of gamma's recurrence in its two compiled forms, for the test
// that they agree bit for bit: the AVX2/FMA form (call it only where
// zeb::cpu::avx2_fma() holds) and the portable one.
#pragma once

namespace zeb::special {

// The unevaluated sum hi + lo.
struct Dd {
  double hi, lo;
};

// d b (b + 1) ... (b + count - 1) for exact doubles b + i of one sign and
// at least 1 in magnitude, 0 < count <= 170.
Dd product_avx2(Dd d, double b, int count);
Dd product_portable(Dd d, double b, int count);

}  // namespace zeb::special
