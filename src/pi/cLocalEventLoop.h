#ifndef MORTISE_PI_CLOCALEVENTLOOP_H
#define MORTISE_PI_CLOCALEVENTLOOP_H

#include "pi/piTypes.h"

namespace mpi
{

class cWorkQueue;

/// Guard for a loop inside an action: lets the action spin the queue until something happens.
///
///     mpi::cLocalEventLoop loop;
///     while (!answered)
///       loop.process();
///
/// While it lives, each change of a work item wakes the event processor, so that the loop sees it.
///
/// Ownership: refers to the queue, which must outlive it.
class MORTISE_API cLocalEventLoop
{
public:
  /// Guards `pQueue`, or the queue of the system if that is null.
  explicit cLocalEventLoop(cWorkQueue* pQueue = nullptr);
  cLocalEventLoop(cLocalEventLoop const&) = delete;
  cLocalEventLoop& operator=(cLocalEventLoop const&) = delete;
  virtual ~cLocalEventLoop();

  /// One turn of the queue, nested in the running one. Returns what cWorkQueue::process() returns.
  unsigned int process();

private:
  cWorkQueue* mpQueue;
};

} // namespace mpi

#endif
