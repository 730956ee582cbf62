#ifndef MORTISE_PI_CABSTRACTAIODATA_H
#define MORTISE_PI_CABSTRACTAIODATA_H

#include "pi/piTypes.h"

namespace mpi
{

class cFDAIOData;
class cWork;

/// What an asynchronous work item waits for, and whether it has happened.
///
/// The event flag is the only link between the event processor, which sets it, and the work queue,
/// which dispatches the work for it and clears it after the action.
///
/// Ownership: owned by the work it is given to.
/// Threads:   belongs to the thread of the queue.
class MORTISE_API cAbstractAIOData
{
public:
  cAbstractAIOData() = default;
  cAbstractAIOData(cAbstractAIOData const&) = delete;
  cAbstractAIOData& operator=(cAbstractAIOData const&) = delete;
  virtual ~cAbstractAIOData();

  /// This data as descriptors to watch, or null if it is of another kind (the default).
  virtual cFDAIOData* isFDAIOData();

  /// As isFDAIOData(); data of another kind raises mstd::cBugException.
  cFDAIOData& fdAIOData();

  /// Marks that what the work waits for has happened, or takes that mark away.
  void setEvent(bool bEvent);
  /// True from the event until the end of the action that it led to.
  bool isEvent() const { return mEvent; }

protected:
  /// For data whose descriptors have changed: what was worked out from them is to be forgotten.
  void publishDescriptors();

private:
  friend class cWork;

  bool mEvent = false;
  cWork* mpWork = nullptr; // the owner, which passes changes on to its queues
};

} // namespace mpi

#endif
