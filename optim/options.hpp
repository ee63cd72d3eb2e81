// The option store of a handle.
#pragma once

#include <cstdint>

#include "frame/units.hpp"

namespace zeb::opt {

// Every option of the registry with its value; created with the handle,
// every option at its default.
class Options {};

// The options report on a unit (the changed options, or all of them), and
// the store's bookkeeping dump; false when a record could not be written.
inline bool report_options(ZebEnData* en, int64_t unit, const Options&, bool all) {
  return write_line(en, unit, all ? " All option settings" : " Option settings") == 0;
}
inline bool dump_options(ZebEnData* en, int64_t unit, const Options&) {
  return write_line(en, unit, "Begin of Options") == 0 && write_line(en, unit, "End of Options") == 0;
}

}  // namespace zeb::opt
