// The product of gamma's recurrence in its AVX2/FMA form and in its portable
// form: the same operations in the same order, so both parts of the
// double-double agree bit for bit, for every count the engine uses, from
// starts that are whole, near whole and random, of either sign.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "frame/cpu.hpp"
#include "special/gamma.hpp"

TEST(GammaProduct, FormsAgreeBitForBit) {
  using zeb::special::Dd;
  if (!zeb::cpu::avx2_fma()) GTEST_SKIP() << "no AVX2/FMA on this processor";
  std::mt19937_64 rng(20261125);
  std::uniform_real_distribution<double> frac(0.0, 1.0), tail(-1e-3, 1e-3);
  long differ = 0;
  for (int count = 1; count <= 170; ++count)
    for (int k = 0; k < 200; ++k) {
      // Positive starts 1 + g; negative starts x with x + count - 1 <= -1.
      const double g = k < 3 ? k * 0.25 : frac(rng);
      const double b = k % 2 ? 1.0 + g : -(count + g);
      const Dd d = k % 4 < 2 ? Dd{1.0, 0.0} : Dd{tail(rng), tail(rng) * 0x1p-60};
      const Dd v = zeb::special::product_avx2(d, b, count);
      const Dd w = zeb::special::product_portable(d, b, count);
      if ((std::memcmp(&v.hi, &w.hi, sizeof(double)) != 0 ||
           std::memcmp(&v.lo, &w.lo, sizeof(double)) != 0) && ++differ <= 5)
        ADD_FAILURE() << std::hexfloat << "b = " << b << ", count = " << count << ": (" << v.hi
                      << ", " << v.lo << ") against (" << w.hi << ", " << w.lo << ")";
    }
  EXPECT_EQ(differ, 0);
}
