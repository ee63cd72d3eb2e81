// The library's ILP64 BLAS and the 32-bit BLAS of Ipopt's sparse solver
// (called directly and through e04st) in one process, in both load orders:
// a client program is built against the library and Ipopt (linked in both
// orders) and run in both call orders.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "common/testing.hpp"

TEST(Coexistence, LuAndIpoptInOneProcessInBothOrders) {
  const std::string lib = ZEB_LIBRARY_PATH;
  const std::string libdir = lib.substr(0, lib.rfind('/'));
  char dir[] = "/tmp/zebipoptXXXXXX";
  ASSERT_NE(mkdtemp(dir), nullptr);
  const std::string obj = std::string(dir) + "/client.o";
  const std::string tests = std::string(ZEB_TEST_DATA) + "/..";
  const auto cc = zebtest::run("g++ -std=c++17 -O1 -Wall -Werror -c " + tests +
                               "/linalg/ipopt_client.cxx -I" + tests +
                               "/../include $(pkg-config --cflags ipopt) -o " + obj);
  ASSERT_EQ(cc.status, 0) << cc.err;
  const std::string zeb = lib + " -Wl,-rpath," + libdir;
  const std::string ipopt = "$(pkg-config --libs ipopt)";
  for (const std::string& order : {zeb + " " + ipopt, ipopt + " " + zeb}) {
    const std::string exe = std::string(dir) + "/client";
    const auto ld = zebtest::run("g++ " + obj + " -o " + exe + " " + order);
    ASSERT_EQ(ld.status, 0) << ld.err;
    for (const char* calls : {"lu-first", "ipopt-first"}) {
      const auto r = zebtest::run(exe + " " + calls);
      EXPECT_EQ(r.status, 0) << "link: " << order << "\ncalls: " << calls << "\n" << r.out << r.err;
      EXPECT_EQ(r.out.find("too large"), std::string::npos) << r.out;
    }
    std::remove(exe.c_str());
  }
  std::remove(obj.c_str());
  rmdir(dir);
}
