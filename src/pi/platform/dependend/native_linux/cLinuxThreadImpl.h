#ifndef MORTISE_PI_PLATFORM_CLINUXTHREADIMPL_H
#define MORTISE_PI_PLATFORM_CLINUXTHREADIMPL_H

#include "pi/cAbstractRunnableImpl.h"

#include <pthread.h>

namespace mpi
{

/// Thread of POSIX threads. The function and its argument stay the caller's.
class cLinuxThreadImpl : public cAbstractRunnableImpl
{
public:
  cLinuxThreadImpl(void (*function)(void*), void* argument);
  cLinuxThreadImpl(cLinuxThreadImpl const&) = delete; // a thread is joined once
  cLinuxThreadImpl& operator=(cLinuxThreadImpl const&) = delete;
  ~cLinuxThreadImpl() override;

  /// Raises cOSErrorException if the platform reports a negative result. POSIX reports failures as positive ones:
  /// these go unnoticed, and there is then no thread to wait for.
  void start() override;
  void stop() override;

private:
  void (*mpFunction)(void*);
  void* mpArgument;
  pthread_t mThread;
  bool mIsStarted;

  static void* threadWork(void* self);
};

} // namespace mpi

#endif
