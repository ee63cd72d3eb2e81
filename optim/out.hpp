// Records written on a unit by the suite's reports and solvers.
#pragma once

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "frame/units.hpp"

namespace zeb::opt {

// The texts joined (appended in turn, which keeps GCC 12's overlap
// analysis of operator+ on strings quiet).
template <class... T>
std::string join(const T&... parts) {
  std::string r;
  (r.append(std::string_view(parts)), ...);
  return r;
}

// Records on a unit; remembers whether every write went through.
class Out {
 public:
  Out(ZebEnData* en, int64_t unit) : en_(en), unit_(unit) {}
  void line(const char* fmt, ...) __attribute__((format(printf, 2, 3))) {
    char buf[256];
    va_list ap;
    va_start(ap, fmt);
    const int n = std::vsnprintf(buf, sizeof buf, fmt, ap);
    va_end(ap);
    put(std::string_view(buf, size_t(std::clamp(n, 0, int(sizeof buf) - 1))));
  }
  void put(std::string_view s) { ok_ = zeb::write_record(en_, unit_, s.data(), int64_t(s.size())) == 0 && ok_; }
  // Items laid out `per` to a line after an indent.
  void items(const std::vector<std::string>& v, size_t per) {
    std::string l;
    for (size_t k = 0; k < v.size(); ++k) {
      l += v[k];
      l += ' ';
      if ((k + 1) % per == 0 || k + 1 == v.size()) {
        put(join("     ", l));
        l.clear();
      }
    }
  }
  // A blank record, then the heading of a section.
  void section(const char* heading) {
    put("");
    put(heading);
  }
  bool ok() const { return ok_; }
  void track(bool written) { ok_ = ok_ && written; }
  ZebEnData* en() const { return en_; }
  int64_t unit() const { return unit_; }

 private:
  ZebEnData* en_;
  int64_t unit_;
  bool ok_ = true;
};

}  // namespace zeb::opt
