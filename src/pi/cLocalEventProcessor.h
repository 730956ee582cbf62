#ifndef MORTISE_PI_CLOCALEVENTPROCESSOR_H
#define MORTISE_PI_CLOCALEVENTPROCESSOR_H

#include "pi/cAbstractProcessEvents.h"

namespace mpi
{

/// Event processor without descriptors, for simple loops and for hosts that have nothing better.
///
/// It spins: with any entry in the queue, stopped ones included, a wait returns at once.
/// Asynchronous work becomes periodic work under it.
class MORTISE_API cLocalEventProcessor : public cAbstractProcessEvents
{
public:
  cLocalEventProcessor() = default;
  ~cLocalEventProcessor() override;

  bool supportsAIO() const override;
  bool isAsynchronous() const override;
  /// Waits `iDelayMSec` milliseconds or until wakeUp(), but only if `jobs` is empty.
  void yield(unsigned int iLevel, mstd::tList<mstd::tSharedObject<cWork>>& jobs, unsigned int iDelayMSec) override;
  /// Ends the present wait, or the next one, at once.
  void wakeUp() override;

private:
  bool mWakeUp = false;
};

} // namespace mpi

#endif
