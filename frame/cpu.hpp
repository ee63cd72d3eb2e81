// Code for processors with AVX2 and FMA, chosen at run time: functions
// marked ZEB_AVX2_FMA may be called only where zeb::cpu::avx2_fma() holds.
#pragma once

#define ZEB_AVX2_FMA __attribute__((target("avx2,fma")))

namespace zeb::cpu {
inline bool avx2_fma() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
}
}  // namespace zeb::cpu
