// A user function of one real for the tests of the quadrature and the zero
// finders: the function of the test being run, reachable from plain
// function pointers of either interface (and of GSL), with a count of its
// evaluations.
#pragma once

#include <functional>

#include "zeb.h"

namespace zebtest {

inline std::function<double(double)> g_f;
inline long g_calls = 0;

inline double fortran_f(const double* x) {
  ++g_calls;
  return g_f(*x);
}
inline double c_f(double x, Zeb_Comm*) {
  ++g_calls;
  return g_f(x);
}
inline double gsl_f(double x, void*) {
  ++g_calls;
  return g_f(x);
}

}  // namespace zebtest
