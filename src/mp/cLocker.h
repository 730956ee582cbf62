#ifndef MORTISE_MP_CLOCKER_H
#define MORTISE_MP_CLOCKER_H

#include "pi/cAbstractMutexImpl.h"
#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mp
{

/// Recursive mutex with scope guards.
///
/// \code
/// mp::cLocker::cLock lock(&mLocker);               // waits
/// mp::cLocker::cLock attempt(mLocker.tryLock());   // ask attempt.isLocked()
/// mp::cLocker::cUnlock gap(mLocker.unlock());      // gives it up for the scope
/// \endcode
///
/// A copy is a locker without a mutex, and assignment changes nothing: a class with a cLocker member stays copyable,
/// and each copy keeps its own identity. Locking such a copy is an assertion failure.
class MORTISE_API cLocker
{
public:
  /// Request to lock, to be given to a cLock.
  class cLockRef
  {
  public:
    cLockRef(cLocker& locker, bool isTry) : mLocker(locker), mIsTry(isTry) {}

  private:
    friend class cLocker;
    cLocker& mLocker;
    bool mIsTry;
  };

  /// Request to unlock, to be given to a cUnlock.
  class cUnlockRef
  {
  public:
    explicit cUnlockRef(cLocker& locker) : mLocker(locker) {}

  private:
    friend class cLocker;
    cLocker& mLocker;
  };

  /// Holds the lock from construction to destruction.
  class MORTISE_API cLock
  {
  public:
    /// Locks. Without a locker it holds nothing, and says that it is locked.
    explicit cLock(cLocker* pLocker);
    /// Locks or tries to, as the request says.
    explicit cLock(cLockRef const& request);
    cLock(cLock const&) = delete; // one unlock for one lock
    cLock& operator=(cLock const&) = delete;
    ~cLock();

    bool isLocked() const { return mIsLocked; }

  private:
    cLocker* mpLocker;
    bool mIsLocked;
  };

  /// Gives the lock up from construction to destruction. The calling thread must hold it.
  class MORTISE_API cUnlock
  {
  public:
    /// Unlocks. Without a locker it does nothing.
    explicit cUnlock(cLocker* pLocker);
    explicit cUnlock(cUnlockRef const& request);
    cUnlock(cUnlock const&) = delete; // one lock for one unlock
    cUnlock& operator=(cUnlock const&) = delete;
    ~cUnlock();

  private:
    cLocker* mpLocker;
  };

  cLocker();
  cLocker(cLocker const&);
  cLocker& operator=(cLocker const&);
  ~cLocker();

  cLockRef lock() { return cLockRef(*this, false); }
  cLockRef tryLock() { return cLockRef(*this, true); }
  cUnlockRef unlock() { return cUnlockRef(*this); }

  void doLock();
  /// True if the lock is held now.
  bool doTryLock();
  void doUnlock();

private:
  mstd::tAutoPtr<mpi::cAbstractMutexImpl> mpImpl; // null in a copy

  mpi::cAbstractMutexImpl& impl() const;
};

} // namespace mp

#endif
