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
}

} // namespace mpi
