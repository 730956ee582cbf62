#include "mce/net++/cNetAbstractSocket.h"

#include "pi/cWorkQueue.h"

namespace mce
{

cNetAbstractSocket::cNetAbstractSocket() {}

cNetAbstractSocket::~cNetAbstractSocket() {}

void cNetAbstractSocket::schedule(mpi::cWorkQueue& queue)
{
  queue.addJob(mReadWork);
  queue.addJob(mWriteWork);
  queue.addJob(mExceptionWork);
}

} // namespace mce
