// The library exports exactly the names of the golden lists in
// tests/symbols (one file per chapter): a misspelt generated name, or a
// private helper that leaks, fails here.
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "common/testing.hpp"

TEST(Symbols, ExportedNamesMatchTheGoldenLists) {
  // The golden lists of the frame and of every chapter built in.
  std::set<std::string> golden;
  std::istringstream lists(ZEB_SYMBOL_LISTS);
  std::string list;
  while (std::getline(lists, list, ',')) {
    std::ifstream f(std::string(ZEB_TEST_DATA) + "/../symbols/" + list + ".txt");
    std::string s;
    while (f >> s) golden.insert(s);
  }
  ASSERT_GT(golden.size(), 100u);
  const auto r = zebtest::run(std::string("nm -D --defined-only ") + ZEB_LIBRARY_PATH +
                              " | awk '{print $3}'");
  ASSERT_EQ(r.status, 0) << r.err;
  ASSERT_FALSE(r.out.empty()) << r.err;
  std::set<std::string> exported;
  std::istringstream s(r.out);
  std::string name;
  while (s >> name) exported.insert(name);
  for (const auto& g : golden) EXPECT_TRUE(exported.count(g)) << "missing: " << g;
  for (const auto& x : exported)  // (a sanitized build adds its own names)
    EXPECT_TRUE(golden.count(x) || x.rfind("__odr_asan", 0) == 0) << "not in a golden list: " << x;
}

// Every Fortran entry of the library has an explicit interface in the
// Fortran module (fortran/*.fi).
TEST(Symbols, EveryFortranEntryHasAnInterface) {
  const auto fi = zebtest::run(std::string("cat ") + ZEB_TEST_DATA + "/../../fortran/*.fi");
  ASSERT_EQ(fi.status, 0);
  std::string text = fi.out;
  for (char& c : text) c = char(std::tolower(static_cast<unsigned char>(c)));
  const auto r = zebtest::run(std::string("nm -D --defined-only ") + ZEB_LIBRARY_PATH +
                              " | awk '{print $3}' | grep -E '^[a-z][0-9]{2}[a-z]{2}f_$'");
  std::istringstream s(r.out);
  std::string sym;
  int n = 0;
  while (s >> sym) {
    const std::string name = sym.substr(0, sym.size() - 1);
    const bool found = text.find("subroutine " + name + "(") != std::string::npos ||
                       text.find("function " + name + "(") != std::string::npos;
    EXPECT_TRUE(found) << "no interface for " << name;
    ++n;
  }
  EXPECT_GT(n, 15);
}
