#include "pi/platform/dependend/native_linux/cLinuxThreadImpl.h"

#include "pi/cPIExceptions.h"

#include <errno.h>

namespace mpi
{

cLinuxThreadImpl::cLinuxThreadImpl(void (*function)(void*), void* argument)
    : mpFunction(function), mpArgument(argument), mThread(), mIsStarted(false)
{
}

cLinuxThreadImpl::~cLinuxThreadImpl() = default;

void cLinuxThreadImpl::start()
{
  stop();
  int const result = pthread_create(&mThread, 0, &cLinuxThreadImpl::threadWork, this);
  if (result < 0)
  {
    cPIExceptions::throwUnableCreateThread();
  }
  // After a failure that goes unnoticed the thread's handle is undefined, and waiting for it would be too.
  mIsStarted = result == 0;
}

void cLinuxThreadImpl::stop()
{
  // A thread that waits for itself is refused; it is then still to be waited for by somebody else.
  if (mIsStarted && pthread_join(mThread, 0) != EDEADLK)
  {
    mIsStarted = false;
  }
}

void* cLinuxThreadImpl::threadWork(void* self)
{
  cLinuxThreadImpl* pThread = static_cast<cLinuxThreadImpl*>(self);
  pThread->mpFunction(pThread->mpArgument);
  return 0;
}

} // namespace mpi
