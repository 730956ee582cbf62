#ifndef MORTISE_MP_CABSTRACTPROCESSDATA_H
#define MORTISE_MP_CABSTRACTPROCESSDATA_H

#include "mp/cAbstractProcess.h"
#include "pi/piTypes.h"

namespace mp
{

class cLocker;

/// What a process and its users share: the flags canceled, finished and running, and the context it runs in.
///
/// The flags are read and written under the locker given by setContext(); without one nothing is locked.
///
/// Ownership: lockers stay their owner's.
class MORTISE_API cAbstractProcessData
{
public:
  /// `pOwnerLocker` may be null.
  explicit cAbstractProcessData(mp::cLocker* pOwnerLocker);
  cAbstractProcessData(cAbstractProcessData const&) = delete; // serves one process at a time
  cAbstractProcessData& operator=(cAbstractProcessData const&) = delete;
  virtual ~cAbstractProcessData();

  /// Sets running, and clears canceled and finished. Tells the debug output what it does, while it holds the locker.
  virtual void restart();

  /// The locker given at construction, or null.
  mp::cLocker* ownerLocker() const { return mpOwnerLocker; }
  /// Stores all three, without locking. `pLocker` guards the flags from now on. Both may be null.
  void setContext(mp::cAbstractProcess::Context context, mp::cLocker* pLocker, mp::cLocker* pSecondLocker);
  mp::cLocker* locker() const { return mpLocker; }
  mp::cLocker* secondLocker() const { return mpSecondLocker; }
  mp::cAbstractProcess::Context context() const { return mContext; }
  mp::cAbstractProcess::Context preferredContext() const { return mPreferredContext; }
  void setPreferredContext(mp::cAbstractProcess::Context context) { mPreferredContext = context; }

  void cancel();
  bool isCanceled() const;
  /// Sets finished, and clears running.
  void setFinished();
  bool isFinished() const;
  bool isRunning() const;

private:
  mp::cLocker* mpOwnerLocker;
  mp::cLocker* mpLocker;
  mp::cLocker* mpSecondLocker;
  mp::cAbstractProcess::Context mContext;
  mp::cAbstractProcess::Context mPreferredContext;
  bool mIsCanceled;
  bool mIsFinished;
  bool mIsRunning;
};

} // namespace mp

#endif
