// The checkers of the definition routines.
#include "optim/checks.hpp"

#include <algorithm>
#include <numeric>
#include <vector>

namespace zeb::opt {

bool c_null(ZebError* fail, const char* routine, std::initializer_list<CArray> arrays) {
  for (const CArray& a : arrays)
    if (!a.p && a.len > 0) {
      f90_io_init();
      clear_fail(fail);
      c_fail(fail, routine, NE_BAD_PARAM, a.name);
      return true;
    }
  return false;
}

bool Check::range(const int64_t* idx, int64_t n, int64_t hi, const Msg<3>& row) {
  for (int64_t i = 0; i < n; ++i)
    if (idx[i] < 1 || idx[i] > hi) return fail(row, i + 1, idx[i], hi);
  return true;
}

bool Check::ascending(const int64_t* idx, int64_t n, const Msg<3>& row) {
  for (int64_t i = 0; i + 1 < n; ++i)
    if (idx[i] >= idx[i + 1]) return fail(row, i + 1, idx[i], idx[i + 1]);
  return true;
}

bool Check::coords(const int64_t* ir, const int64_t* ic, int64_t n, int64_t nr, int64_t nc,
                   const Msg<3>& row_row, const Msg<3>& col_row, const Msg<3>* upper) {
  for (int64_t i = 0; i < n; ++i) {
    if (ir[i] < 1 || ir[i] > nr) return fail(row_row, i + 1, ir[i], nr);
    if (ic[i] < 1 || ic[i] > nc) return fail(col_row, i + 1, ic[i], nc);
    if (upper && ir[i] > ic[i]) return fail(*upper, i + 1, ir[i], ic[i]);
  }
  return true;
}

int64_t first_repeat(const int64_t* ir, const int64_t* ic, int64_t n) {
  std::vector<int64_t> order(static_cast<size_t>(n));
  std::iota(order.begin(), order.end(), int64_t{0});
  std::sort(order.begin(), order.end(), [&](int64_t a, int64_t b) {
    return ir[a] != ir[b] ? ir[a] < ir[b] : ic[a] != ic[b] ? ic[a] < ic[b] : a < b;
  });
  // In a run of equal pairs the second member is the first repetition.
  int64_t first = -1;
  for (size_t k = 1; k < order.size(); ++k) {
    const int64_t a = order[k - 1], b = order[k];
    if (ir[a] == ir[b] && ic[a] == ic[b] && (first < 0 || b < first) &&
        (k < 2 || ir[order[k - 2]] != ir[b] || ic[order[k - 2]] != ic[b]))
      first = b;
  }
  return first;
}

bool Check::unique(const int64_t* ir, const int64_t* ic, int64_t n, const Msg<2>& row) {
  const int64_t r = first_repeat(ir, ic, n);
  return r < 0 || fail(row, ir[r], ic[r]);
}

bool Check::bounds(const double* bl, const double* bu, int64_t n, double big,
                   const BoundRows& rows) {
  for (int64_t j = 0; j < n; ++j) {
    if (!(bl[j] <= bu[j])) return fail(rows.order, j + 1, bl[j], bu[j]);
    if (bl[j] >= big) return fail(rows.lower, j + 1, bl[j], big);
    if (bu[j] <= -big) return fail(rows.upper, j + 1, bu[j], big);
  }
  return true;
}

}  // namespace zeb::opt
