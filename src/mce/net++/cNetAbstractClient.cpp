#include "mce/net++/cNetAbstractClient.h"

#include "mce/net++/cNETExceptions.h"
#include "mce/net++/cNetAbstractAddress.h"
#include "mce/net++/cNetAbstractConnection.h"
#include "mce/net++/destroyLater.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "std/cAsciiString.h"

namespace mce
{

cNetAbstractClient::cNetAbstractClient(mpi::cWorkQueue* pQueue) : mpTimeoutWork(new mpi::cWork), mpWorkQueue(pQueue)
{
  sigEstablished.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  sigTimeout.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mpTimeoutWork->sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cNetAbstractClient::sltTimeout));
  wq().addJob(*mpTimeoutWork);
}

cNetAbstractClient::~cNetAbstractClient()
{
  if (isInAction(*mpTimeoutWork))
  {
    destroyLater(mpTimeoutWork, wq());
  }
}

void cNetAbstractClient::invalidate() {}

void cNetAbstractClient::startTimeout(unsigned int iMSec)
{
  mpTimeoutWork->start(iMSec, mpi::cWork::SingleTask);
}

void cNetAbstractClient::stopTimeout()
{
  mpTimeoutWork->stop();
}

mstd::tAutoPtr<cNetAbstractConnection> cNetAbstractClient::waitConnection()
{
  while (!isConnected())
  {
    processConnection();
  }
  return takeConnection();
}

mpi::cWorkQueue& cNetAbstractClient::wq() const
{
  return mpWorkQueue != nullptr ? *mpWorkQueue : mpi::system().wq;
}

void cNetAbstractClient::sltTimeout()
{
  invalidate();
  if (!sigTimeout.isConnected())
  {
    cNETExceptions::throwClientTimeout(target().toString(0));
  }
  sigTimeout();
}

} // namespace mce
