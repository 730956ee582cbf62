#include "pi/platform/dependend/native_linux/cLinuxMutexImpl.h"

namespace mpi
{

cLinuxMutexImpl::cLinuxMutexImpl()
{
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(&mMutex, &attributes);
  pthread_mutexattr_destroy(&attributes);
}

cLinuxMutexImpl::~cLinuxMutexImpl()
{
  pthread_mutex_destroy(&mMutex);
}

void cLinuxMutexImpl::lock()
{
  pthread_mutex_lock(&mMutex);
}

bool cLinuxMutexImpl::tryLock()
{
  return pthread_mutex_trylock(&mMutex) == 0;
}

void cLinuxMutexImpl::unlock()
{
  pthread_mutex_unlock(&mMutex);
}

} // namespace mpi
