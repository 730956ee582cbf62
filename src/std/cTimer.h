#ifndef MORTISE_STD_CTIMER_H
#define MORTISE_STD_CTIMER_H

#include "pi/piTypes.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal0.h"
#include "std/tSharedObject.h"

namespace mpi
{
class cWork;
}

namespace mstd
{

/// Periodic or single-shot timer on the work queue of mpi::system().
///
/// Setting it puts its work on the queue; from then on turns of the main loop run it. It may be set again
/// at any time, also by a slot of its own signal and after its single shot.
///
/// Units:     intervals are milliseconds.
/// Ownership: owns its work, together with the queue while that runs it. A timer may be destroyed at any time, also
///            by a slot of its own signal.
/// Errors:    an exception of a slot goes the way of the exceptions of work: to the handlers of the work that
///            was running when the timer was first set, then out of the main loop.
/// Threads:   belongs to the thread that runs the main loop.
class MORTISE_API cTimer : public mrmi::cConnectable
{
public:
  /// A timer that stands still.
  cTimer();
  /// As setInterval() after the default constructor.
  explicit cTimer(unsigned int iIntervalMSec);
  cTimer(cTimer const&) = delete; // whoever is connected to the signal knows this one
  cTimer& operator=(cTimer const&) = delete;
  ~cTimer() override;

  /// Runs every `iIntervalMSec` milliseconds from now on.
  void setInterval(unsigned int iIntervalMSec);
  /// Runs once, in `iDelayMSec` milliseconds.
  void setSingleShot(unsigned int iDelayMSec);
  /// Stands still, and forgets that it has elapsed.
  void reset();

  /// True while the signal is fired, and after a single shot until the timer is set or reset.
  bool isElapsed() const { return mElapsed; }
  bool operator()() const { return isElapsed(); }

  /// Fired at each run; may be unconnected.
  mrmi::localSignal0<piVoid> sigElapsed;

  /// Run by the queue.
  void sltPoll();

private:
  struct cPoll;

  void start(unsigned int iMSec, bool isPeriodic);

  tSharedObject<mpi::cWork> mWork; // shared with the queue, since a slot may destroy the timer while the work runs
  cPoll* mpPoll;                   // innermost run of sltPoll(), null outside
  bool mElapsed;
};

} // namespace mstd

#endif
