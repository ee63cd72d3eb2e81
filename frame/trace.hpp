// The argument trace: when the process-wide switch is on, every traced layer
// writes its arguments by name before and after the engine runs.
#pragma once

#include <cstdint>

#include "zeb/types.h"

extern "C" int64_t zeb_trace_switch;  // 0: off (the default)

namespace zeb::trace {

inline bool on() { return zeb_trace_switch != 0; }

enum class Kind { Int, Real, Char, Str, IntArr, RealArr, Addr, EnData, Ptr };

struct Arg {
  const char* name;
  Kind kind;
  const void* p;
  int64_t len;  // characters of a string; elements shown of an array
};

inline Arg arg(const char* n, const double* p) { return {n, Kind::Real, p, 1}; }
inline Arg arg(const char* n, const int64_t* p) { return {n, Kind::Int, p, 1}; }
inline Arg arg(const char* n, const char* p) { return {n, Kind::Char, p, 1}; }
// A pointer-sized handle, shown by its value.
inline Arg arg(const char* n, void* const* p) { return {n, Kind::Ptr, p, 1}; }
inline Arg arg(const char* n, const void** p) { return {n, Kind::Ptr, p, 1}; }
inline Arg arr(const char* n, const double* p) { return {n, Kind::RealArr, p, 0}; }
inline Arg arr(const char* n, const int64_t* p) { return {n, Kind::IntArr, p, 0}; }
inline Arg arr(const char* n, const char* p) { return {n, Kind::Addr, p, 0}; }
inline Arg arr(const char* n, const void* p) { return {n, Kind::Addr, p, 0}; }
template <class F>
inline Arg fun(const char* n, F f) { return {n, Kind::Addr, reinterpret_cast<const void*>(f), 0}; }
inline Arg str(const char* n, const char* p, int64_t len) { return {n, Kind::Str, p, len}; }

// Writes one block: the heading of `mode` under `name`, "en_data", the
// arguments, and (when errbuf is not null) "errbuf" and "ifail".
void block(ZebEnData* en, const char* name, int mode, const Arg* args, int nargs,
           const char* errbuf = nullptr, const int64_t* ifail = nullptr);

}  // namespace zeb::trace
