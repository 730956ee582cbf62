#ifndef MORTISE_MCE_NET_DESTROYLATER_H
#define MORTISE_MCE_NET_DESTROYLATER_H

#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "std/debugLines.h"
#include "std/tAutoPtr.h"
#include "std/tSharedObject.h"

// For objects that are destroyed from inside of their own work: whoever runs the work goes on using it.

namespace mce
{

/// Work that runs once, does nothing, and takes an object along when the queue drops it.
template <class T>
class tDestroyingWork : public mpi::cWork
{
public:
  void take(T* pObject) { mpObject.reinit(pObject); }

private:
  mstd::tAutoPtr<T> mpObject;
};

/// True while a slot or a handler of failures of `work` runs.
inline bool isInAction(mpi::cWork& work)
{
  return work.sigAction.nestedInvocationCount() != 0 || work.sigActionError().nestedInvocationCount() != 0;
}

/// Destroys the object when the outermost turn of the queue in which that is due ends. If there is no memory to
/// arrange that, it stays for good, which is reported on the debug output.
template <class T>
void destroyLater(mstd::tAutoPtr<T> pObject, mpi::cWorkQueue& queue) noexcept
{
  T* const object = pObject.release();
  try
  {
    tDestroyingWork<T>* const work = new tDestroyingWork<T>;
    mstd::tSharedObject<mpi::cWork> const job(work);
    queue.addJob(job);
    work->take(object);
    work->start();
  }
  catch (...)
  {
    mstd::writeCaughtException("mce/net++/destroyLater", __LINE__);
  }
}

} // namespace mce

#endif
