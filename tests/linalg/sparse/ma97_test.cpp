// The sparse solver given to Ipopt as its MA97: the Hock-Schittkowski set
// solved with each ordering to MUMPS's optimum.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "linalg/sparse.hpp"
#include "optim/hs_set.hpp"

TEST(SparseMa97, IpoptSolvesTheHockSchittkowskiSetWithIt) {
  zeb::sparse::register_with_ipopt();
  for (const char* order : {"auto", "amd", "metis", "best"})
    for (const hs::Problem& p : hs::problems()) {
      SCOPED_TRACE(std::string(p.name) + " " + order);
      const hs::NativeResult mumps = hs::solve_native(p);
      const hs::NativeResult ours =
          hs::solve_native(p, {{"linear_solver", "ma97"}, {"ma97_order", order}});
      ASSERT_EQ(ours.status, 0);
      EXPECT_LE(std::fabs(ours.objective - mumps.objective),
                1e-7 * std::max(1.0, std::fabs(mumps.objective)));
      EXPECT_LE(std::abs(ours.iterations - mumps.iterations), 3)
          << ours.iterations << " against " << mumps.iterations;
    }
}
