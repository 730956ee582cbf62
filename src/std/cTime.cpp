#include "std/cTime.h"

#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSysTime.h"
#include "pi/cSystem.h"

namespace mstd
{

namespace
{

void warn(char const* pText, unsigned int iLine)
{
  mpi::cAbstractOut& out = mpi::system().out;
  mp::cLocker::cLock lock(out.mutex());
  out.debugMessage("std/cTime", iLine) << pText << "\n" << mpi::cAbstractOut::clearDebugMessage();
}

void spin(piUInt64 iUSec)
{
  cTime const start;
  for (cTime now; now >= start && (now - start).get() < iUSec; now = cTime())
  {
  }
}

} // namespace

cTime::cTime() : miUSec(mpi::cSysTime::utcTime().get()) {}

cTime cTime::diff() const
{
  return mpi::cSysTime::diffTime(*this);
}

void cTime::waitMS(piUInt64 iMS)
{
  warn("cTime::waitMS(piUInt64 iMS): TODO: More efficient wait...", __LINE__);
  spin(iMS > ~piUInt64(0) / 1000 ? ~piUInt64(0) : iMS * 1000);
}

void cTime::waitUS(piUInt64 iUS)
{
  warn("cTime::waitMS(piUInt64 iUS): TODO: More efficient wait...", __LINE__);
  spin(iUS);
}

} // namespace mstd
