#include "pi/cFDAIOData.h"

namespace mpi
{

cFDAIOData::~cFDAIOData() = default;

cFDAIOData* cFDAIOData::isFDAIOData()
{
  return this;
}

void cFDAIOData::addFd(int fd, unsigned int flags)
{
  mFds.append(tFdInfo(fd, flags));
  publishDescriptors();
}

mstd::tVector<tFdInfo>& cFDAIOData::fds()
{
  mListShared = true;
  publishDescriptors();
  return mFds;
}

} // namespace mpi
