#ifndef MORTISE_PI_BREAKPOINT_H
#define MORTISE_PI_BREAKPOINT_H

#include "pi/piTypes.h"

namespace mpi
{

/// Stops in the debugger; without one the process ends by SIGTRAP.
MORTISE_API void breakPoint();

} // namespace mpi

#endif
