#ifndef MORTISE_PI_CABSTRACTMUTEXIMPL_H
#define MORTISE_PI_CABSTRACTMUTEXIMPL_H

#include "pi/piTypes.h"

namespace mpi
{

/// A recursive mutex of the platform: one thread may take it any number of times and gives it up as often.
class MORTISE_API cAbstractMutexImpl
{
public:
  virtual ~cAbstractMutexImpl();

  /// Waits until the mutex is held.
  virtual void lock() = 0;
  /// Takes the mutex if that needs no waiting; true if it is held now.
  virtual bool tryLock() = 0;
  /// Gives up one hold of the calling thread.
  virtual void unlock() = 0;
};

} // namespace mpi

#endif
