#include "pi/cSysTime.h"
#include "std/cTime.h"

#include <sys/time.h>
#include <time.h>

piInt64 usecSinceEpoch()
{
  timeval now;
  gettimeofday(&now, nullptr);
  return static_cast<piInt64>(now.tv_sec) * 1000000 + now.tv_usec;
}

namespace mpi
{

mstd::cTime cSysTime::utcTime()
{
  return mstd::cTime(static_cast<piUInt64>(usecSinceEpoch()));
}

mstd::cTime cSysTime::diffTime(mstd::cTime const& t)
{
  piUInt64 const now = static_cast<piUInt64>(usecSinceEpoch());
  piUInt64 const then = t.get();
  return mstd::cTime(now < then ? then - now : now - then);
}

int cSysTime::zoneOffset()
{
  time_t const now = time(nullptr);
  tm local;
  localtime_r(&now, &local); // can't fail: the clock stays within the years that the calendar knows
  return static_cast<int>(local.tm_gmtoff);
}

} // namespace mpi
