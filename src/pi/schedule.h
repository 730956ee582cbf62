#ifndef MORTISE_PI_SCHEDULE_H
#define MORTISE_PI_SCHEDULE_H

#include "pi/cWork.h"
#include "rmi/cAbstractSlotCall0.h"
#include "std/tAutoPtr.h"
#include "std/tSharedObject.h"

namespace mpi
{

// The entries of the system's queue. Work that is scheduled from within an action becomes a child of
// the work whose action that is.

/// Adds `work`, which stays its owner's; the queue forgets it when it is destroyed. Returns `work`.
MORTISE_API cWork& schedule(cWork& work);

/// Adds work that the queue owns from now on, together with the holders of the result.
MORTISE_API mstd::tSharedObject<cWork> schedule(mstd::tAutoPtr<cWork> pWork);

/// Calls `call` once, in `iDelayMSec` milliseconds, as a new work item called `pName`, which the queue
/// owns and removes by itself. Without a name (null) it runs as well, and the debug output tells who
/// scheduled it.
MORTISE_API mstd::tSharedObject<cWork> schedule(mrmi::cAbstractSlotCall0<piVoid> const& call, unsigned int iDelayMSec,
                                                char const* pName);

/// As above for `SingleTask`; every other type makes periodic work with `iIntervalMSec` milliseconds from
/// one dispatch to the next, which stays until it is unscheduled.
MORTISE_API mstd::tSharedObject<cWork> schedule(mrmi::cAbstractSlotCall0<piVoid> const& call,
                                                unsigned int iIntervalMSec, cWork::Type iType, char const* pName);

/// Takes `work` out of the queue; work that the queue owns is destroyed here, unless others hold it too.
/// Never from within the action of owned work itself: that work stops itself instead.
MORTISE_API void unschedule(cWork& work);

} // namespace mpi

#endif
