#include "std/debugLines.h"

#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "pi/piStackTrace.h"
#include "std/cAbstractException.h"

namespace mstd
{
void writeDebugLine(char const* file, unsigned int line, char const* text) noexcept
{
  try
  {
    mpi::cAbstractOut& out = mpi::system().out;
    mp::cLocker::cLock lock(out.mutex());
    out.debugMessage(file, line) << text << "\n" << mpi::cAbstractOut::clearDebugMessage();
  }
  catch (...)
  {
    // there is nowhere left to report to
  }
}

void writeDebugStackTrace(char const* file, unsigned int line) noexcept
{
  static bool isWriting = false; // guarded by the lock of the output
  try
  {
    mpi::cAbstractOut& out = mpi::system().out;
    mp::cLocker::cLock lock(out.mutex());
    if (isWriting)
    {
      return;
    }
    isWriting = true;
    try
    {
      out.debugMessage(file, line) << piStackTrace(128) << "\n" << mpi::cAbstractOut::clearDebugMessage();
    }
    catch (...)
    {
      // there is nowhere left to report to
    }
    isWriting = false;
  }
  catch (...)
  {
    // as above
  }
}

void writeCaughtException(char const* file, unsigned int line) noexcept
{
  try
  {
    throw;
  }
  catch (cAbstractException const& e)
  {
    writeDebugLine(file, line, "Exception in destructor:");
    try
    {
      e.dump();
    }
    catch (...)
    {
      // as above
    }
  }
  catch (...)
  {
    writeDebugLine(file, line, "Exception in destructor: unknown exception");
  }
}
} // namespace mstd
