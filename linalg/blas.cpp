// Loading the platform BLAS; the argument-error report and the block sizes
// of the LAPACK-style routines.
#include "linalg/blas.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "frame/frame.hpp"
#include "frame/units.hpp"

namespace zeb::blas {

Table g{};

namespace {

constexpr const char* kDefaultLibrary = "libopenblas64.so.0";
constexpr const char* kFallbackLibrary = "libblas64.so.3";

struct State {
  bool ok = false;
  char path[256] = "";
  char reason[320] = "";
  char text[1024] = "";        // failure lines
  char description[512] = "";  // what was loaded and chosen
};
State g_state;
std::once_flag g_once;
int (*g_threads)() = nullptr;

bool has_avx512() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512cd") &&
         __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
         __builtin_cpu_supports("avx512vl");
}

// OpenBLAS's core type: the user's setting is kept; otherwise SkylakeX on
// AVX-512 processors.  Returns how the value came about.
const char* choose_coretype(bool openblas) {
  if (std::getenv("OPENBLAS_CORETYPE")) return "set by the user";
  if (!openblas) return nullptr;
  if (!has_avx512()) return "not set: detected by OpenBLAS";
  setenv("OPENBLAS_CORETYPE", "SkylakeX", 0);
  return "set to SkylakeX by ZEB for this AVX-512 processor";
}

bool fail_with(State& s, const char* fmt, const char* what) {
  std::snprintf(s.reason, sizeof s.reason, fmt, what);
  std::snprintf(s.text, sizeof s.text,
                "The BLAS library %s could not be used:\n%s\n"
                "Set ZEB_BLAS_LIBRARY to a BLAS with 64-bit integers (ILP64).",
                s.path, s.reason);
  return false;
}

// RTLD_DEEPBIND keeps the BLAS's own calls inside it when a 32-bit BLAS
// under the same names is in the process (Ipopt's).  The sanitizers'
// runtimes cannot host a library loaded so; a sanitized build loads it
// RTLD_LOCAL alone, which serves every process without that other BLAS.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kDeepBind = 0;
#else
constexpr int kDeepBind = RTLD_DEEPBIND;
#endif

bool open_blas(State& s) {
  const char* env = std::getenv("ZEB_BLAS_LIBRARY");
  std::snprintf(s.path, sizeof s.path, "%s", env && *env ? env : kDefaultLibrary);
  const char* base = std::strrchr(s.path, '/');
  const bool openblas = std::strstr(base ? base : s.path, "openblas") != nullptr;
  const char* coretype = choose_coretype(openblas);
  constexpr int kFlags = RTLD_NOW | RTLD_LOCAL | kDeepBind;
  void* h = dlopen(s.path, kFlags);
  if (!h) {
    const char* e = dlerror();
    char first[sizeof s.reason];
    std::snprintf(first, sizeof first, "%s", e ? e : "dlopen failed");
    // Without a choice of the user's, Debian's ILP64 BLAS of any provider.
    if (env && *env) return fail_with(s, "%s", first);
    h = dlopen(kFallbackLibrary, kFlags);
    if (!h) return fail_with(s, "%s", first);
    std::snprintf(s.path, sizeof s.path, "%s", kFallbackLibrary);
  }
  Table t{};
#define ZEB_BLAS_SYM(name, R, P)                                      \
  t.name = reinterpret_cast<R(*) P>(dlsym(h, #name "_"));             \
  if (!t.name) return fail_with(s, "it does not provide %s.", #name "_");
  ZEB_BLAS_ROUTINES(ZEB_BLAS_SYM)
#undef ZEB_BLAS_SYM
  // An ILP64 BLAS sees n = -(2^32 - 2) and returns 0; a 32-bit one sees
  // n = 2 and returns the position of the larger element.
  const double x[2] = {1.0, 5.0};
  const I n = I(0xFFFFFFFF00000002ull), inc = 1;
  if (t.idamax(&n, x, &inc) != 0)
    return fail_with(s, "%s", "it is not a BLAS with 64-bit integers (ILP64).");
  g = t;
  g_threads = reinterpret_cast<int (*)()>(dlsym(h, "openblas_get_num_threads"));
  auto corename = reinterpret_cast<char* (*)()>(dlsym(h, "openblas_get_corename"));
  auto config = reinterpret_cast<char* (*)()>(dlsym(h, "openblas_get_config"));
  int k = std::snprintf(s.description, sizeof s.description, "BLAS: %s (ILP64)", s.path);
  if (config) k += std::snprintf(s.description + k, sizeof s.description - size_t(k), "; %s", config());
  if (corename)
    k += std::snprintf(s.description + k, sizeof s.description - size_t(k), "; core %s",
                       corename());
  if (coretype)
    std::snprintf(s.description + k, sizeof s.description - size_t(k),
                  "; OPENBLAS_CORETYPE %s", coretype);
  return true;
}

}  // namespace

bool load() {
  std::call_once(g_once, [] {
    g_state.ok = open_blas(g_state);
    const char* v = std::getenv("ZEB_BLAS_VERBOSE");
    if (v && *v && std::strcmp(v, "0") != 0)
      std::fprintf(stderr, "ZEB %s\n", g_state.ok ? g_state.description : g_state.reason);
  });
  return g_state.ok;
}

const char* failure_text() { return g_state.text; }

int threads() { return g_threads ? g_threads() : 0; }

namespace {
thread_local bool g_quiet = false;
}  // namespace

Quiet::Quiet() : saved_(g_quiet) { g_quiet = true; }
Quiet::~Quiet() { g_quiet = saved_; }

bool ready(ZebEnData* en) {
  if (load()) return true;
  if (g_quiet) return false;
  char line[400];
  for (const char* t = g_state.text; *t;) {
    const char* eol = std::strchr(t, '\n');
    const int n = eol ? int(eol - t) : int(std::strlen(t));
    const int k = std::snprintf(line, sizeof line, " ** %.*s", n, t);
    write_record(en, g_error_unit, line, k < int(sizeof line) ? k : int(sizeof line) - 1);
    t += n + (eol ? 1 : 0);
  }
  return false;
}

}  // namespace zeb::blas

// The argument-error report of the BLAS and LAPACK-style routines.
ZEB_API void f06aazn_(ZebEnData* en, const char* srname, const int64_t* info,
                      int64_t srname_len) {
  if (zeb::blas::g_quiet) return;  // a C entry reports it in its fail structure
  int64_t n = srname_len;
  while (n > 0 && srname[n - 1] == ' ') --n;
  char line[128];
  const int k = std::snprintf(line, sizeof line,
                              " ** On entry to %13.*s parameter number %2ld had an illegal value",
                              int(n > 64 ? 64 : n), srname, long(*info));
  zeb::write_record(en, zeb::g_error_unit, line, k);
}

// Block sizes of the blocked engines, measured on this library's BLAS with
// the block-size sweeps of bench/linalg.cpp (OpenBLAS 0.3.21, 2-core AVX-512
// machine shared with other work, so within some 5 percent):
//   F07ADFN  96, and 128 from min(m, n) = 2000 on: with the panel's own
//            register kernels, against 64 (medians of 3, ms): n = 1000 one
//            thread 16.8 / 19.1, two 12.4 / 12.7; n = 2000 one thread 128
//            (96: 127) / 141, two 78.4 (96: 82.4) / 82.4; n = 4000 two
//            threads 587 (96: 582) / 600; 192 and 256 slower throughout.
//            The trailing update's passes over memory fall with the block,
//            the serial panel's work grows with it.
//   F08AEFN, F08AFFN  32: 32 and 64 alike within the noise.
// ZEB_NB_<NAME> in the environment (ZEB_NB_F07ADFN=96) replaces a value,
// for tuning.
ZEB_API int64_t f07zazn_(const char* name, const int64_t* m, const int64_t* n,
                         int64_t name_len) {
  struct Row {
    const char* name;
    int64_t nb;
    int64_t large_from, nb_large;  // the block from min(m, n) = large_from on
  };
  static const Row kTable[] = {
      {"F07ADFN", 96, 2000, 128}, {"F08AEFN", 32, 0, 32}, {"F08AFFN", 32, 0, 32}};
  char key[32];
  const int len = int(name_len < 16 ? name_len : 16);
  std::snprintf(key, sizeof key, "ZEB_NB_%.*s", len, name);
  if (const char* v = std::getenv(key)) {
    const long nb = std::strtol(v, nullptr, 10);
    if (nb > 0) return nb;
  }
  const int64_t k = std::min(*m, *n);
  for (const Row& r : kTable)
    if (std::strlen(r.name) == size_t(len) && std::strncmp(r.name, name, size_t(len)) == 0)
      return r.large_from > 0 && k >= r.large_from ? r.nb_large : r.nb;
  return 32;
}

// A description of the BLAS in use (path, version, core, and how the core
// type was chosen) or, when it cannot be used, the reason.  Returns 0 when
// the BLAS is usable, -998 otherwise.
ZEB_API int64_t f06zaac_c(char* text, int64_t len) {
  const bool ok = zeb::blas::load();
  if (text && len > 0)
    std::snprintf(text, size_t(len), "%s", ok ? zeb::blas::g_state.description : zeb::blas::g_state.text);
  return ok ? 0 : zeb::blas::kNoBlas;
}
