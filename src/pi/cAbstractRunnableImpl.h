#ifndef MORTISE_PI_CABSTRACTRUNNABLEIMPL_H
#define MORTISE_PI_CABSTRACTRUNNABLEIMPL_H

#include "pi/piTypes.h"

namespace mpi
{

/// A thread of the platform, made for one function and one argument.
class MORTISE_API cAbstractRunnableImpl
{
public:
  virtual ~cAbstractRunnableImpl();

  /// Runs the function on a new thread, after waiting for an earlier one.
  virtual void start() = 0;
  /// Waits for the end of the thread; returns at once if none was started.
  virtual void stop() = 0;
};

} // namespace mpi

#endif
