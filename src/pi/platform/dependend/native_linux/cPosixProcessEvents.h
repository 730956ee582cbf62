#ifndef MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CPOSIXPROCESSEVENTS_H
#define MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CPOSIXPROCESSEVENTS_H

#include "pi/cAbstractProcessEvents.h"
#include "std/tAutoPtr.h"

namespace mpi
{

/// Event processor that blocks in poll(), or in select() when there is no descriptor to watch.
///
/// It turns readiness into event flags and runs nothing itself. A wait ends by its time-out, by a
/// descriptor or by a signal handler of the process; wakeUp() cannot end it, since all traffic of a queue
/// happens on the queue's own thread. Another thread ends a wait through a descriptor of its own.
///
/// Errors: asynchronous work without data, or with data that has no descriptors, raises mstd::cBugException
///         out of yield(). Failures of the host's calls only shorten the wait.
class MORTISE_API cPosixProcessEvents : public cAbstractProcessEvents
{
public:
  cPosixProcessEvents();
  ~cPosixProcessEvents() override;

  bool supportsAIO() const override;
  bool isAsynchronous() const override;
  void yield(unsigned int iLevel, mstd::tList<mstd::tSharedObject<cWork>>& jobs, unsigned int iDelayMSec) override;
  /// Does nothing.
  void wakeUp() override;

private:
  class cPollSet;

  static bool fill(cPollSet& set, mstd::tList<mstd::tSharedObject<cWork>> const& jobs);

  mstd::tAutoPtr<cPollSet> mpPollSet; // never null
};

} // namespace mpi

#endif
