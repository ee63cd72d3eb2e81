// The properties of the floating-point arithmetic that engines depend on.
// They are those of IEEE 754 binary64 and fixed at build time; the x02
// routines return the same values.
#pragma once

#include <cstdint>
#include <limits>

namespace zeb::machine {

constexpr double kEps = 0x1p-53;                                    // x02ajf
constexpr double kTiny = 0x1p-1022;                                 // x02akf
constexpr double kHuge = std::numeric_limits<double>::max();        // x02alf
constexpr double kSafe = 0x1.0000000000001p-1022;                   // x02amf, x02anf
constexpr double kMaxSineArg = 0x1p150;                             // x02ahf
constexpr int64_t kMaxInteger = std::numeric_limits<int64_t>::max(); // x02bbf
constexpr int64_t kDecimalDigits = 15;                              // x02bef
constexpr int64_t kBase = 2;                                        // x02bhf
constexpr int64_t kBaseDigits = 53;                                 // x02bjf
constexpr int64_t kMinExp = -1021;                                  // x02bkf
constexpr int64_t kMaxExp = 1024;                                   // x02blf
// Significant decimal digits by which engines choose the length of their
// expansions: one more than kDecimalDigits, on purpose.
constexpr int64_t kSeriesDigits = 16;                               // x02bezn

}  // namespace zeb::machine
