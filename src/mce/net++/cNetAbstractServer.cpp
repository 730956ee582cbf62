#include "mce/net++/cNetAbstractServer.h"

#include "pi/cSystem.h"

namespace mce
{

cNetAbstractServer::cNetAbstractServer(mpi::cWorkQueue* pQueue) : mpWorkQueue(pQueue)
{
  sigPeerQuery.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  sigPeerAddress.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
}

cNetAbstractServer::~cNetAbstractServer() {}

mpi::cWorkQueue& cNetAbstractServer::wq() const
{
  return mpWorkQueue != nullptr ? *mpWorkQueue : mpi::system().wq;
}

} // namespace mce
