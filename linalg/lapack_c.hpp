// The C entries of the LAPACK-style routines, all through one helper:
// null arrays, argument errors as the routine's info, the storage order
// (row-major matrices are worked on in column-major copies), and the
// mapping of info (the BLAS that cannot be loaded among it) to the fail
// structure.
#pragma once

#include <span>

#include "frame/frame.hpp"
#include "linalg/blas.hpp"
#include "zeb/linalg.h"

namespace zeb::lapack {

// A scalar argument whose error the engine reports as info = -pos.  With
// name2 the message is NE_INT_2 (name first); with bad_param NE_BAD_PARAM
// (an enumerated argument); otherwise NE_INT.
struct Scalar {
  int64_t pos;
  const char* name;
  int64_t value;
  const char* constraint;
  const char* name2 = nullptr;
  int64_t value2 = 0;
  bool bad_param = false;
};

// A matrix argument; its leading dimension is engine argument number ldpos.
struct Matrix {
  OrderedMatrix m;
  int64_t ldpos;
};

// The fail structure for a negative info.
void report_argument(ZebError* fail, const char* routine, int64_t info,
                     std::span<const Scalar> scalars, std::span<const Matrix> mats);
// The fail structure when the BLAS cannot be used.
void report_no_blas(ZebError* fail, const char* routine);

inline char trans_char(Zeb_TransType t) {
  return t == Zeb_NoTrans ? 'N' : t == Zeb_Trans ? 'T' : t == Zeb_ConjTrans ? 'C' : '?';
}
inline char side_char(Zeb_SideType s) {
  return s == Zeb_LeftSide ? 'L' : s == Zeb_RightSide ? 'R' : '?';
}

// Runs f(work) with `size` reals of workspace; -999 in info when they
// cannot be allocated.
template <class F>
void with_work(int64_t size, int64_t* info, F&& f) {
  if (size > int64_t(PTRDIFF_MAX / sizeof(double))) {
    *info = kAllocFail;
    return;
  }
  std::unique_ptr<double[]> w(new (std::nothrow) double[size_t(std::max<int64_t>(1, size))]);
  if (!w) {
    *info = kAllocFail;
    return;
  }
  f(w.get());
}

// Runs a routine with LAPACK's workspace query: call(work, lwork) first
// with lwork = -1 for the size, then with that much workspace.
template <class Call>
void with_queried_work(int64_t* info, Call&& call) {
  double size = 0.0;
  call(&size, int64_t{-1});
  if (*info != 0) return;
  // The size comes as a real: one beyond every integer cannot be allocated.
  const int64_t n = size < 0x1p63 ? std::max<int64_t>(1, int64_t(size)) : INT64_MAX;
  with_work(n, info, [&](double* w) { call(w, n); });
}

// check(lds) gives the engine's info for leading dimensions lds;
// run(a, lds, en, info) runs the engine on the column-major matrices a;
// positive(info) reports a computational failure.
template <size_t NM, class Check, class Run, class Positive>
void c_entry(ZebError* fail, const char* routine, Zeb_OrderType order,
             std::initializer_list<std::pair<const char*, const void*>> arrays,
             std::span<const Scalar> scalars, const Matrix (&mats)[NM], Check&& check,
             Run&& run, Positive&& positive) {
  f90_io_init();
  clear_fail(fail);
  if (c_null_arrays(fail, routine, arrays)) return;
  int64_t ld[NM + 1];
  double* a[NM + 1];
  // Errors of the other arguments come first, in either order.
  for (size_t i = 0; i < NM; ++i) ld[i] = std::max<int64_t>(1, mats[i].m.rows);
  int64_t info = check(ld);
  if (info != 0) return report_argument(fail, routine, info, scalars, mats);
  ColumnMajorCopy copy[NM + 1];
  if (order == Zeb_RowMajor) {
    for (size_t i = 0; i < NM; ++i)
      if (c_rowmajor_pd(fail, routine, mats[i].m)) return;
    for (size_t i = 0; i < NM; ++i) {
      if (!copy[i].make(mats[i].m)) return p01acc_c(nullptr, NE_ALLOC_FAIL, routine, fail);
      a[i] = copy[i].data();
      ld[i] = copy[i].ld();
    }
  } else if (order == Zeb_ColMajor) {
    for (size_t i = 0; i < NM; ++i) {
      ld[i] = mats[i].m.pd;
      a[i] = const_cast<double*>(mats[i].m.p);
    }
    info = check(ld);
    if (info != 0) return report_argument(fail, routine, info, scalars, mats);
  } else {
    return c_fail(fail, routine, NE_BAD_PARAM, "order");
  }
  ZebEnData en;
  y90haan_(&en);
  {
    // An engine that needs the BLAS and cannot load it gives kNoBlas; one
    // with nothing to do, or no use for it, runs without it.
    blas::Quiet quiet;
    run(a, ld, &en, &info);
  }
  if (info == blas::kNoBlas) return report_no_blas(fail, routine);
  if (order == Zeb_RowMajor && info >= 0)
    for (size_t i = 0; i < NM; ++i) copy[i].put_back(mats[i].m);
  if (info == 0) {
    if (fail) p01acc_c(nullptr, NE_NOERROR, routine, fail);
    return;
  }
  if (fail) fail->errnum = info;
  if (info > 0) return positive(info);
  p01acc_c(nullptr, info == kAllocFail ? NE_ALLOC_FAIL : NE_INTERNAL_ERROR, routine, fail);
}

}  // namespace zeb::lapack
