// The library exports exactly the names of the golden lists in
// tests/symbols (one file per chapter): a misspelt generated name, or a
// private helper that leaks, fails here; and every Fortran entry it exports
// has an explicit interface in the Fortran module (fortran/*.fi).
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "common/testing.hpp"

TEST(Symbols, ExportedNamesMatchTheGoldenListsAndTheFortranInterfaces) {
  std::set<std::string> golden, exported;
  std::istringstream lists(ZEB_SYMBOL_LISTS);  // the frame's and every chapter's built in
  for (std::string list; std::getline(lists, list, ',');) {
    std::ifstream f(std::string(ZEB_TEST_DATA) + "/../symbols/" + list + ".txt");
    for (std::string s; f >> s;) golden.insert(s);
  }
  ASSERT_GT(golden.size(), 100u);
  const auto r = zebtest::run(std::string("nm -D --defined-only ") + ZEB_LIBRARY_PATH +
                              " | awk '{print $3}'");
  ASSERT_EQ(r.status, 0) << r.err;
  std::istringstream s(r.out);
  for (std::string name; s >> name;) exported.insert(name);
  for (const auto& g : golden) EXPECT_TRUE(exported.count(g)) << "missing: " << g;
  for (const auto& x : exported)  // (a sanitized build adds its own names)
    EXPECT_TRUE(golden.count(x) || x.rfind("__odr_asan", 0) == 0) << "not in a golden list: " << x;

  auto fi = zebtest::run(std::string("cat ") + ZEB_TEST_DATA + "/../../fortran/*.fi");
  ASSERT_EQ(fi.status, 0);
  for (char& c : fi.out) c = char(std::tolower(static_cast<unsigned char>(c)));
  int n = 0;
  for (const auto& x : exported) {
    if (!std::regex_match(x, std::regex("[a-z][0-9]{2}[a-z]{2}f_"))) continue;
    const std::string name = x.substr(0, x.size() - 1);
    EXPECT_TRUE(fi.out.find("subroutine " + name + "(") != std::string::npos ||
                fi.out.find("function " + name + "(") != std::string::npos)
        << "no interface for " << name;
    ++n;
  }
  EXPECT_GT(n, 15);
}
