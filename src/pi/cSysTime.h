#ifndef MORTISE_PI_CSYSTIME_H
#define MORTISE_PI_CSYSTIME_H

#include "pi/piTypes.h"

namespace mstd
{
class cTime;
}

/// The wall clock: microseconds since 1 January 1970, UTC.
MORTISE_API piInt64 usecSinceEpoch();

namespace mpi
{

/// The wall clock in the terms of mstd::cTime. Only static operations.
///
/// Units: microseconds, UTC; the zone offset is in seconds.
/// Errors: none.
class MORTISE_API cSysTime
{
public:
  /// The present instant.
  static mstd::cTime utcTime();
  /// The distance between `t` and the present instant, whichever of them is later.
  static mstd::cTime diffTime(mstd::cTime const& t);
  /// Seconds that local time is ahead of UTC (east is positive) at this moment, daylight saving included.
  static int zoneOffset();

  cSysTime() = delete;
};

} // namespace mpi

#endif
