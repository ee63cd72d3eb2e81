/* ZEB numerical library: the C interface.
   Link with -lzeb (pkg-config zeb).  Every C entry has a descriptive long
   name with the prefix zeb_ as well as its routine name. */
#ifndef ZEB_H
#define ZEB_H

#include "zeb/types.h"
#include "zeb/frame.h"
#include "zeb/machine.h"
#include "zeb/units.h"
#include "zeb/special.h"
#include "zeb/random.h"
#include "zeb/sort.h"
#include "zeb/quad.h"
#include "zeb/roots.h"
#include "zeb/linalg.h"
#include "zeb/optim.h"

#endif
