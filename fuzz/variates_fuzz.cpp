// The distribution routines with any parameters: reals of every kind (NaN,
// infinities, subnormals, huge), any integers and any reference vector
// contents.  Each call must fail with its message or give variates of the
// right kind (no NaN; counts within their support), and must end.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "zeb.h"

namespace {

struct Input {
  const uint8_t* p;
  size_t n;
  template <class T>
  T take() {
    T v{};
    if (n >= sizeof v) {
      std::memcpy(&v, p, sizeof v);
      p += sizeof v;
      n -= sizeof v;
    }
    return v;
  }
};

// Integers: small ones mostly, the input's raw words otherwise.
Integer count(Input& in) {
  const Integer v = in.take<Integer>();
  return (v & 3) ? (v >> 2) % 2000 : v;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  static std::vector<Integer> init;
  if (init.empty()) {
    Integer seed = 7, lstate = 1260;
    init.resize(1260);
    ZebError f;
    ZEB_INIT_FAIL(f);
    g05kfc(Zeb_MersenneTwister, 0, &seed, 1, init.data(), &lstate, &f);
  }
  std::vector<Integer> state = init, k(64 * 4, -1);
  std::vector<double> x(64 * 8, 0.0), r(4096, 0.0), lam(64, 1.0);
  Input in{data + 2, size - 2};
  const int which = data[0] % 26;
  const Integer n = data[1] % 64;
  const double a = in.take<double>(), b = in.take<double>(), c = in.take<double>();
  const Integer i = count(in), j = count(in), m = count(in);
  Integer lr = (in.take<uint8_t>() & 1) ? 4096 : count(in);
  const Zeb_ModeRNG mode = Zeb_ModeRNG(Zeb_InitializeReference + in.take<uint8_t>() % 3);
  double p[8];
  for (double& v : p) v = in.take<double>();
  if (in.take<uint8_t>() & 1)  // a reference vector from the input
    for (double& v : r) v = in.take<double>();
  if (lr > 4096) lr = 4096;
  const bool query = lr <= 0 && mode != Zeb_GenerateFromReference;  // answers lr, draws nothing
  const Integer np = 1 + (i & 7), d = 2 + (j & 3);
  ZebError f;
  ZEB_INIT_FAIL(f);
  bool counts = true;
  switch (which) {
    case 0: g05sbc(n, a, b, state.data(), x.data(), &f); counts = false; break;
    case 1: g05scc(n, a, b, state.data(), x.data(), &f); counts = false; break;
    case 2: g05sdc(n, a, state.data(), x.data(), &f); counts = false; break;
    case 3: g05sec(Zeb_RowMajor, n, np, p, state.data(), x.data(), 8, &f); counts = false; break;
    case 4: g05sfc(n, a, state.data(), x.data(), &f); counts = false; break;
    case 5: g05sgc(n, 2, p, p + 2, state.data(), x.data(), &f); counts = false; break;
    case 6: g05shc(n, a, b, state.data(), x.data(), &f); counts = false; break;
    case 7: g05sjc(n, a, b, state.data(), x.data(), &f); counts = false; break;
    case 8: g05slc(n, a, b, state.data(), x.data(), &f); counts = false; break;
    case 9: g05smc(n, a, b, state.data(), x.data(), &f); counts = false; break;
    case 10: g05snc(n, a, state.data(), x.data(), &f); counts = false; break;
    case 11: g05spc(n, a, b, c, state.data(), x.data(), &f); counts = false; break;
    case 12: g05sqc(n, a, b, state.data(), x.data(), &f); counts = false; break;
    case 13: g05src(n, a, state.data(), x.data(), &f); counts = false; break;
    case 14: g05ssc(n, a, b, state.data(), x.data(), &f); counts = false; break;
    case 15: g05tac(mode, n, i, a, r.data(), &lr, state.data(), k.data(), &f); break;
    case 16: g05tbc(n, a, state.data(), k.data(), &f); break;
    case 17: g05tcc(mode, n, a, r.data(), &lr, state.data(), k.data(), &f); break;
    case 18: g05tdc(mode, n, p, np, i, Zeb_DistType(Zeb_PDF + (j & 1)), r.data(), &lr, state.data(), k.data(), &f); break;
    case 19: g05tec(mode, n, i, j, m, r.data(), &lr, state.data(), k.data(), &f); break;
    case 20: g05tfc(mode, n, a, r.data(), &lr, state.data(), k.data(), &f); break;
    case 21: g05tgc(Zeb_RowMajor, n, i, d, p, state.data(), k.data(), 4, &f); break;
    case 22: g05thc(mode, n, i, a, r.data(), &lr, state.data(), k.data(), &f); break;
    case 23: g05tjc(mode, n, a, r.data(), &lr, state.data(), k.data(), &f); break;
    case 24: std::memcpy(lam.data(), p, sizeof p); g05tkc(n, lam.data(), state.data(), k.data(), &f); break;
    default: g05tlc(mode, n, i, j, r.data(), &lr, state.data(), k.data(), &f); break;
  }
  if (f.code != NE_NOERROR || (counts && (mode == Zeb_InitializeReference || query))) return 0;
  for (Integer t = 0; t < n; ++t)
    if (counts ? (which != 18 && which != 25 && k[size_t(t)] < 0) : std::isnan(x[size_t(t)]))
      __builtin_trap();
  return 0;
}
