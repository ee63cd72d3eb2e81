// The option store of a handle: every option of the registry
// (optim/options.inc) with its value.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "zeb/types.h"

namespace zeb::opt {

enum class Type : int8_t { Integer, Real, Keyword };
enum Rel : int8_t { NO, GE, GT, LE, LT };  // a limit: none, inclusive, strict

struct OptionDef {
  const char* name;
  Type type;
  double def;        // integer or real default
  double lo, hi;
  Rel lorel, hirel;
  const char* keywords;  // keyword options: the admissible values, the default first
  const char* kwdef;
};
constexpr int kOptionCount = 188;
extern const OptionDef kOptions[kOptionCount];

// An option's place in the registry for a name in any case and spacing
// (names are not abbreviated), or -1.
int find_option(std::string_view name);
// A name or value as matched: upper case, single blanks, trimmed.
std::string normal(std::string_view s);

class Options {
 public:
  struct Value {
    int64_t i = 0;
    double r = 0.0;
    int k = 0;          // keyword: its place in the option's list
    bool user = false;  // set by the user
  };
  Options() { reset(); }
  void reset();                // every option at its default
  void reset(int opt);
  int64_t integer(std::string_view name) const { return at(name).i; }
  double real(std::string_view name) const { return at(name).r; }
  std::string keyword(std::string_view name) const;
  // The value of option `opt` as text (keywords with their blanks).
  std::string text(int opt) const;
  std::array<Value, kOptionCount> v;
  int64_t solver = 0;  // bookkeeping shown by the dump
  bool locked = false;

 private:
  const Value& at(std::string_view name) const { return v[size_t(find_option(name))]; }
};

// What setting an option from "name = value" came to.
struct SetResult {
  enum Code { kOk, kDefaults, kUnknown, kNoDelimiter, kNotInteger, kNotReal, kIntegerLimit,
              kRealLimit, kNotKeyword } code = kOk;
  int opt = -1;
  std::string value;  // the value as given
  Rel rel = NO;       // the limit that failed
  double limit = 0;
};
SetResult set_option(Options& o, std::string_view optstr);

// The registry as Markdown (optim/OPTIONS.md is this text).
std::string option_doc();

// The options report on a unit (the options the user set, or all of them),
// and the store's bookkeeping dump; false when a record could not be
// written.
bool report_options(ZebEnData* en, int64_t unit, const Options& o, bool all);
bool dump_options(ZebEnData* en, int64_t unit, const Options& o);

}  // namespace zeb::opt
