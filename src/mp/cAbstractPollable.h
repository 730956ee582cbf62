#ifndef MORTISE_MP_CABSTRACTPOLLABLE_H
#define MORTISE_MP_CABSTRACTPOLLABLE_H

#include "mp/cAbstractProcess.h"

namespace mp
{

/// A process that runs in the caller's context: whoever owns it calls work() until isFinished(). It can't be
/// interrupted.
class MORTISE_API cAbstractPollable : public cAbstractProcess
{
public:
  /// With data of its own.
  cAbstractPollable();
  /// Raises cBugException if `data` already serves a process; that process isn't touched.
  explicit cAbstractPollable(mp::cAbstractProcessData& data);
  ~cAbstractPollable() override;

  cAbstractPollable* isPollable() override;
  cAbstractRunnable* isRunnable() override;
  void interrupt(bool wait) override;
};

} // namespace mp

#endif
