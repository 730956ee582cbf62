#ifndef MORTISE_PI_CWORKSTAT_H
#define MORTISE_PI_CWORKSTAT_H

#include "pi/piTypes.h"
#include "std/cAsciiString.h"
#include "std/cTime.h"
#include "std/tAutoPtr.h"

namespace mpi
{

/// How often a work item was started and triggered, and, with debugging on, when and from where.
///
/// Cost: one count per notification; with debugging on each notification reads the clock, and each
///       start takes a stack trace.
class MORTISE_API cWorkStat
{
public:
  /// What is recorded of a work item while debugging is on.
  class MORTISE_API cDebugInfo
  {
  public:
    /// Takes the present stack as the creation stack, and the present time for both times.
    cDebugInfo();

    /// The stack that switched debugging on.
    mstd::cAsciiString const& creationStack() const { return mCreationStack; }
    /// The stack of the last start; empty before one.
    mstd::cAsciiString const& lastStartStack() const { return mLastStartStack; }
    mstd::cTime const& lastStart() const { return mLastStart; }
    mstd::cTime const& lastTrigger() const { return mLastTrigger; }

  private:
    friend class cWorkStat;
    mstd::cAsciiString mCreationStack;
    mstd::cAsciiString mLastStartStack;
    mstd::cTime mLastStart;
    mstd::cTime mLastTrigger;
  };

  cWorkStat() = default;
  cWorkStat(cWorkStat const&) = delete;
  cWorkStat& operator=(cWorkStat const&) = delete;
  ~cWorkStat();

  /// Starts, restarts included. Wraps at 2^32.
  unsigned int numStarted() const { return miNumStarted; }
  /// Calls of the action. Wraps at 2^32.
  unsigned int numTriggered() const { return miNumTriggered; }

  /// The debug record, or null while debugging is off. Valid until setDebug(false).
  cDebugInfo const* hasDebugInfo() const { return mpDebugInfo.get(); }

  /// Makes the debug record if there is none, or destroys it.
  void setDebug(bool bDebug);

  void notifyStart()
  {
    ++miNumStarted;
    if (mpDebugInfo.get())
    {
      recordStart();
    }
  }

  void notifyTrigger()
  {
    ++miNumTriggered;
    if (mpDebugInfo.get())
    {
      recordTrigger();
    }
  }

private:
  void recordStart();
  void recordTrigger();

  unsigned int miNumStarted = 0;
  unsigned int miNumTriggered = 0;
  mstd::tAutoPtr<cDebugInfo> mpDebugInfo;
};

} // namespace mpi

#endif
