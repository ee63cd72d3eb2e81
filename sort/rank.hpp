// Rearranging several vectors by one set of ranks, for engines that hold
// ranks known to be a permutation (such as those m01da returns).
#pragma once

#include <cstdint>

namespace zeb {

// Moves element i of each of the nlists vectors lists[k][0..n-1] to place
// ranks[i] - 1; ranks[0..n-1] must be a permutation of 1..n.  The ranks are
// used as marks and restored.
void rearrange_by_ranks(double* const* lists, int nlists, int64_t n, int64_t* ranks);

}  // namespace zeb
