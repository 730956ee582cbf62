#ifndef MORTISE_PI_PLATFORM_CLINUXMUTEXIMPL_H
#define MORTISE_PI_PLATFORM_CLINUXMUTEXIMPL_H

#include "pi/cAbstractMutexImpl.h"

#include <pthread.h>

namespace mpi
{

/// Recursive mutex of POSIX threads.
class cLinuxMutexImpl : public cAbstractMutexImpl
{
public:
  cLinuxMutexImpl();
  cLinuxMutexImpl(cLinuxMutexImpl const&) = delete; // a mutex is its address
  cLinuxMutexImpl& operator=(cLinuxMutexImpl const&) = delete;
  ~cLinuxMutexImpl() override;

  void lock() override;
  bool tryLock() override;
  void unlock() override;

private:
  pthread_mutex_t mMutex;
};

} // namespace mpi

#endif
