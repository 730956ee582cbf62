#ifndef MORTISE_PI_CFDAIODATA_H
#define MORTISE_PI_CFDAIODATA_H

#include "pi/cAbstractAIOData.h"
#include "pi/tFdInfo.h"
#include "std/tVector.h"

namespace mpi
{

/// Asynchronous I/O data that waits for file descriptors: one event as soon as any of them is ready.
///
/// The list may be changed between any two turns of the queue without telling anybody.
///
/// Ownership: the list owns its entries; the descriptors stay with whoever opened them.
/// Cost:      work whose list was only ever built by addFd() costs a turn nothing but the system's own look at the
/// descriptor.
///            Once the list was handed out for writing, all lists of the queue are read anew each turn.
class MORTISE_API cFDAIOData : public cAbstractAIOData
{
public:
  cFDAIOData() = default;
  ~cFDAIOData() override;

  cFDAIOData* isFDAIOData() override;

  /// Adds `fd`, watched for `flags` (mask of tFdInfo::Flags), behind those already there.
  void addFd(int fd, unsigned int flags);

  /// The descriptors, in the order in which they were added.
  mstd::tVector<tFdInfo>& fds();
  mstd::tVector<tFdInfo> const& fds() const { return mFds; }

  /// True once fds() has given the list out for writing: it may change at any moment then.
  bool isListShared() const { return mListShared; }

private:
  mstd::tVector<tFdInfo> mFds;
  bool mListShared = false;
};

} // namespace mpi

#endif
