// What the zero finders of the chapter share.
#pragma once

// The probable-pole message, the same in the reverse-communication and the
// direct form.
#define ZEB_C05_POLE_TEXT                                                     \
  "The final interval may contain a pole rather than a zero.\n"               \
  "Note that this error exit is not completely reliable: it may be taken\n"   \
  "in extreme cases when [x,y] contains a zero, or it may not be taken\n"     \
  "when [x,y] contains a pole.\n"                                             \
  "Both these cases occur most frequently when tolx is large."

namespace zeb {

// A new bracket [b, c] with the contrapoint at the previous iterate a.
inline void c05_new_bracket(double a, double fa, double b, double& c, double& fc, double& d,
                            double& e) {
  c = a;
  fc = fa;
  d = e = b - a;
}

}  // namespace zeb
