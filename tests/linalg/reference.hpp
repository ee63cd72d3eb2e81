// Reference LAPACK (Debian's liblapack64: the Fortran reference code with
// 64-bit integers, on the same ILP64 OpenBLAS), loaded privately beside
// the library, and the test matrices.
#pragma once

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "common/testing.hpp"
#include "zeb.h"

namespace ref {

using I = int64_t;
constexpr const char* kPath = "/usr/lib/x86_64-linux-gnu/lapack64/liblapack64.so.3";

inline void* handle() {
  // RTLD_DEEPBIND as the library loads its BLAS; the sanitizers cannot
  // host it, and need it no more here than there.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  static void* h = dlopen(kPath, RTLD_NOW | RTLD_LOCAL);
#else
  static void* h = dlopen(kPath, RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
#endif
  return h;
}
template <class F>
F sym(const char* name) {
  return reinterpret_cast<F>(handle() ? dlsym(handle(), name) : nullptr);
}

using getrf_t = void (*)(const I*, const I*, double*, const I*, I*, I*);
using getrs_t = void (*)(const char*, const I*, const I*, const double*, const I*, const I*,
                         double*, const I*, I*, size_t);
using geequ_t = void (*)(const I*, const I*, const double*, const I*, double*, double*, double*,
                         double*, double*, I*);
using geqrf_t = void (*)(const I*, const I*, double*, const I*, double*, double*, const I*, I*);
using orgqr_t = void (*)(const I*, const I*, const I*, double*, const I*, const double*, double*,
                         const I*, I*);
using geqrt_t = void (*)(const I*, const I*, const I*, double*, const I*, double*, const I*,
                         double*, I*);
using gemqrt_t = void (*)(const char*, const char*, const I*, const I*, const I*, const I*,
                          const double*, const I*, const double*, const I*, double*, const I*,
                          double*, I*, size_t, size_t);

// Column-major m by n matrices.
struct Mat {
  I m = 0, n = 0;
  std::vector<double> v;
  Mat(I rows, I cols) : m(rows), n(cols), v(size_t(std::max<I>(1, rows * cols)), 0.0) {}
  double& operator()(I i, I j) { return v[size_t(i + j * m)]; }
  double operator()(I i, I j) const { return v[size_t(i + j * m)]; }
  double* data() { return v.data(); }
};

inline Mat random(I m, I n, unsigned seed) {
  std::mt19937_64 g(seed);
  Mat a(m, n);
  for (auto& x : a.v) x = std::uniform_real_distribution<double>(-1.0, 1.0)(g);
  return a;
}

// Rows and columns graded over 12 orders of magnitude: condition about 1e12
// and more, with pivots of very different sizes.
inline Mat ill_conditioned(I m, I n, unsigned seed) {
  Mat a = random(m, n, seed);
  for (I j = 0; j < n; ++j)
    for (I i = 0; i < m; ++i)
      a(i, j) *= std::pow(10.0, -6.0 * double(i) / double(std::max<I>(1, m - 1)) -
                                    6.0 * double(j) / double(std::max<I>(1, n - 1)));
  return a;
}

// max |a - b| / max |b|.
inline double rel_diff(const Mat& a, const Mat& b) {
  double d = 0.0, s = 0.0;
  for (size_t i = 0; i < a.v.size(); ++i)
    d = std::max(d, std::fabs(a.v[i] - b.v[i])), s = std::max(s, std::fabs(b.v[i]));
  return s > 0.0 ? d / s : d;
}

inline Mat transpose(const Mat& a) {
  Mat t(a.n, a.m);
  for (I j = 0; j < a.n; ++j)
    for (I i = 0; i < a.m; ++i) t(j, i) = a(i, j);
  return t;
}

}  // namespace ref
