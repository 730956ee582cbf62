#include "mce/net++/cNetAbstractConnection.h"

#include "mce/net++/cNETExceptions.h"
#include "mce/net++/cNetAbstractAddress.h"
#include "mce/net++/destroyLater.h"
#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "std/cRuntimeException.h"
#include "std/cTime.h"
#include "std/debugLines.h"
#include "std/exceptionMessage.h"

namespace mce
{
namespace
{
char const Mark[] = "mce/net++/cNetAbstractConnection";

enum
{
  ReadTurns = 10,    // of one call; the rest waits for the next turn of the queue
  WriteTurns = 1000, // of one call, too
  LookAgain = 10     // milliseconds until a closing connection looks whether everything is sent
};

/// Raises the timeout when its time is over; with 0 never.
class cDeadline
{
public:
  explicit cDeadline(unsigned int iMSec) : miMSec(iMSec) {}

  void check() const
  {
    if (miMSec != 0 && mStart.diff().toUSec() > miMSec * USecPerMSec)
    {
      cNETExceptions::throwTransferTimeout(miMSec);
    }
  }

private:
  static piUInt64 const USecPerMSec = 1000;

  unsigned int miMSec;
  mstd::cTime mStart;
};
} // namespace

cNetAbstractConnection::cNetAbstractConnection(mstd::tAutoPtr<cNetAbstractSocket> pSocket)
    : mpSocket(pSocket), mInvalid(false), miTxLeft(0), mpRxPacket(nullptr), miRxLeft(0), mContinuous(false),
      mpDelayedInvalidation(new mpi::cWork), mClosedByPeerReported(false), mInvalidatedReported(false), mpQueue(nullptr)
{
  if (!(mpSocket.get()))
  {
    cSTDExceptions::throwAssertionFailed("mpSocket.get()", Mark, __LINE__);
  }
  mrmi::cAbstractSignal* const signals[] = {&sigClosedByPeer, &sigInvalidated, &sigDataReceived, &sigTxProgress,
                                            &sigTxComplete};
  for (mrmi::cAbstractSignal* const signal : signals)
  {
    signal->setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  }
  mpi::cWork& readWork = mpSocket->readWork();
  mpi::cWork& writeWork = mpSocket->writeWork();
  mpi::cWork& exceptionWork = mpSocket->exceptionWork();
  mpDelayedInvalidation->sigAction.connect(
      mrmi::cDirectLocalSlotCall0(*this, &cNetAbstractConnection::sltDelayedSocketDestroy));
  readWork.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cNetAbstractConnection::sltSocketReadable));
  writeWork.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cNetAbstractConnection::sltSocketWritable));
  exceptionWork.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cNetAbstractConnection::sltSocketException));
  exceptionWork.start();
  readWork.stop();
  writeWork.stop();
  for (mpi::cWork* const work : {&readWork, &writeWork, &exceptionWork})
  {
    work->sigActionError().connect(mrmi::cDirectLocalSlotCall2(*this, &cNetAbstractConnection::sltException));
  }
  mstd::cAsciiString name("network connection delayed invalidation for ");
  name += mpSocket->peer().toString(0);
  name += ")";
  mpDelayedInvalidation->setName(name);
}

cNetAbstractConnection::~cNetAbstractConnection()
{
  try
  {
    invalidate();
  }
  catch (...)
  {
    mstd::writeCaughtException(Mark, __LINE__);
  }
  try
  {
    handOver();
  }
  catch (...)
  {
    mstd::writeCaughtException(Mark, __LINE__);
  }
}

// What has a running work outlives this object. The queue is asked for only then: it may be gone otherwise.
void cNetAbstractConnection::handOver()
{
  if (isInAction(*mpDelayedInvalidation))
  {
    destroyLater(mpDelayedInvalidation, queue());
  }
  mpi::cWork* const works[] = {&mpSocket->readWork(), &mpSocket->writeWork(), &mpSocket->exceptionWork()};
  if (isInAction(*works[0]) || isInAction(*works[1]) || isInAction(*works[2]))
  {
    destroyLater(mpSocket, queue());
    for (mpi::cWork* const work : works)
    {
      work->stop(); // nobody listens to it any more
    }
  }
}

mpi::cWorkQueue& cNetAbstractConnection::queue() const
{
  return mpQueue != nullptr ? *mpQueue : mpi::system().wq;
}

void cNetAbstractConnection::schedule(mpi::cWorkQueue* pQueue)
{
  if (mInvalid)
  {
    return;
  }
  mpQueue = pQueue;
  mpSocket->schedule(queue());
  queue().addJob(*mpDelayedInvalidation);
}

void cNetAbstractConnection::checkCanSend(char const* pInvalidKey)
{
  if (mInvalid)
  {
    cNETExceptions::throwInvalidConnection(pInvalidKey);
  }
  if (isTxBusy())
  {
    cNETExceptions::throwConnectionTxBusy();
  }
}

cNetAbstractConnection& cNetAbstractConnection::startTx(mstd::tConstArrayRef<char> const& view)
{
  mTxView = view;
  miTxLeft = view.length();
  mstd::cLifeWatch const watch(mLife);
  sltSocketWritable();
  if (!watch.isOver())
  {
    mpi::cWork& writeWork = mpSocket->writeWork();
    if (miTxLeft != 0)
    {
      writeWork.start();
    }
    else
    {
      writeWork.stop();
    }
  }
  return *this;
}

cNetAbstractConnection& cNetAbstractConnection::sendRef(mstd::tConstArrayRef<char> const& data)
{
  checkCanSend("$MTR$Network connection closed unexpectedly (1)!");
  return startTx(data);
}

cNetAbstractConnection& cNetAbstractConnection::send(mstd::tArray<char> const& data)
{
  checkCanSend("$MTR$Network connection closed unexpectedly (2)!");
  mTxCopy = data;
  return startTx(mstd::tConstArrayRef<char>(mTxCopy));
}

cNetAbstractConnection& cNetAbstractConnection::sendSwap(mstd::tArray<char>& rData)
{
  checkCanSend("$MTR$Network connection closed unexpectedly (3)!");
  mTxCopy.swap(rData);
  return startTx(mstd::tConstArrayRef<char>(mTxCopy));
}

void cNetAbstractConnection::receive(mstd::tArray<char>& rBuffer)
{
  if (mInvalid)
  {
    cNETExceptions::throwInvalidConnection("$MTR$Network connection closed unexpectedly! (4)");
  }
  mpRxPacket = &rBuffer;
  miRxLeft = rBuffer.length();
  mpSocket->readWork().start();
}

void cNetAbstractConnection::receive(bool bOn)
{
  if (mInvalid)
  {
    return;
  }
  mContinuous = bOn;
  if (bOn)
  {
    mpSocket->readWork().start();
  }
}

void cNetAbstractConnection::waitRx(unsigned int iMSec)
{
  cDeadline const deadline(iMSec);
  mstd::cLifeWatch const watch(mLife);
  while (miRxLeft != 0)
  {
    sltSocketReadable();
    if (watch.isOver())
    {
      return;
    }
    deadline.check();
  }
  mpRxPacket = nullptr;
}

void cNetAbstractConnection::flushTx(unsigned int iMSec)
{
  cDeadline const deadline(iMSec);
  mstd::cLifeWatch const watch(mLife);
  while (isTxBusy())
  {
    sltSocketWritable();
    if (watch.isOver())
    {
      return;
    }
    deadline.check();
  }
}

bool cNetAbstractConnection::canRead() const
{
  return !mInvalid && mpSocket->canRead();
}

bool cNetAbstractConnection::isTxBusy() const
{
  return !mTxView.empty();
}

void cNetAbstractConnection::clearTx()
{
  mTxView.clear();
  miTxLeft = 0;
  mpSocket->writeWork().stop();
}

unsigned int cNetAbstractConnection::txBytesLeft() const
{
  return miTxLeft;
}

cNetAbstractAddress& cNetAbstractConnection::peer()
{
  return mpSocket->peer();
}

bool cNetAbstractConnection::isInvalid() const
{
  return mInvalid;
}

void cNetAbstractConnection::invalidate()
{
  mstd::cLifeWatch const watch(mLife);
  if (!mInvalid && !mInvalidatedReported)
  {
    mInvalidatedReported = true;
    try
    {
      sigInvalidated(*this);
    }
    catch (...)
    {
      if (!watch.isOver())
      {
        mpSocket->close();
        mInvalid = true;
      }
      throw;
    }
    if (watch.isOver())
    {
      return;
    }
  }
  mpSocket->close();
  mInvalid = true;
}

void cNetAbstractConnection::invalidateLater()
{
  if (!toInvalidateLater())
  {
    mpDelayedInvalidation->start();
  }
}

void cNetAbstractConnection::tryTransfer()
{
  mstd::cLifeWatch const watch(mLife);
  sltSocketReadable();
  if (!watch.isOver())
  {
    sltSocketWritable();
  }
}

cNetAbstractConnection::tErrorSignal& cNetAbstractConnection::errorHandler()
{
  if (mpSigError.get() == nullptr)
  {
    mpSigError.reinit(new tErrorSignal);
  }
  return *mpSigError;
}

cNetAbstractConnection::tFromSignal& cNetAbstractConnection::sigDataReceivedFrom()
{
  if (mpSigDataReceivedFrom.get() == nullptr)
  {
    mstd::tAutoPtr<tFromSignal> signal(new tFromSignal);
    signal->setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
    mpFromAddress = mpSocket->peer().newAddress();
    mpSigDataReceivedFrom = signal;
  }
  return *mpSigDataReceivedFrom;
}

bool cNetAbstractConnection::handleTxPacket(cNetAbstractSocket& socket, mstd::tConstArrayRef<char> const& view,
                                            unsigned int& riLeft)
{
  if (riLeft == 0)
  {
    return false;
  }
  unsigned int const offset = view.length() - riLeft;
  unsigned int const limit = socket.maxTxSize();
  unsigned int const piece = riLeft < limit ? riLeft : limit;
  unsigned int const written = socket.write(view.proxyProvideData(offset, piece), piece);
  if (written > piece)
  {
    cNETExceptions::throwSocketBug(written, piece);
  }
  riLeft -= written;
  return written != 0;
}

void cNetAbstractConnection::sltSocketWritable()
{
  mstd::cLifeWatch const watch(mLife);
  bool endedInvalid = true;
  for (unsigned int turn = 0; !mInvalid;)
  {
    if (isTxBusy())
    {
      if (!handleTxPacket(*mpSocket, mTxView, miTxLeft))
      {
        endedInvalid = false;
        break;
      }
      sigTxProgress();
      if (watch.isOver())
      {
        return;
      }
    }
    if (miTxLeft == 0)
    {
      mTxView.clear();
      mpSocket->writeWork().stop();
      sigTxComplete();
      if (watch.isOver())
      {
        return;
      }
      endedInvalid = false;
      break;
    }
    if (++turn == WriteTurns)
    {
      endedInvalid = false;
      break;
    }
  }
  if (endedInvalid)
  {
    cNETExceptions::throwInvalidConnection("$MTR$Network connection closed unexpectedly! (w)");
  }
  checkClosedByPeer();
}

bool cNetAbstractConnection::deliver(mstd::tArray<char> const& data, mstd::cLifeWatch const& watch)
{
  sigDataReceived(*this, data);
  if (!watch.isOver() && mpSigDataReceivedFrom.get() != nullptr && mpFromAddress.get() != nullptr)
  {
    (*mpSigDataReceivedFrom)(*this, data, *mpFromAddress);
  }
  return !watch.isOver();
}

bool cNetAbstractConnection::readContinuously(mstd::cLifeWatch const& watch)
{
  mstd::tArray<char> data;
  return !mpSocket->read(data, mpFromAddress.get()) || deliver(data, watch);
}

bool cNetAbstractConnection::readPieces(mstd::cLifeWatch const& watch)
{
  while (miRxLeft != 0)
  {
    if (!(mpRxPacket != 0))
    {
      cSTDExceptions::throwAssertionFailed("mpRxPacket != 0", Mark, __LINE__);
    }
    mstd::tArray<char>& buffer = *mpRxPacket;
    if (buffer.length() < miRxLeft)
    {
      miRxLeft = buffer.length();
      if (miRxLeft == 0)
      {
        return true;
      }
    }
    unsigned int const got =
        mpSocket->read(buffer.data(buffer.length() - miRxLeft, miRxLeft), miRxLeft, mpFromAddress.get());
    if (got == 0)
    {
      return true;
    }
    if (got > miRxLeft)
    {
      cNETExceptions::throwSocketBug(got, miRxLeft);
    }
    miRxLeft -= got;
    if (miRxLeft == 0)
    {
      mpRxPacket = nullptr;
      return deliver(buffer, watch);
    }
  }
  return true;
}

void cNetAbstractConnection::sltSocketReadable()
{
  mstd::cLifeWatch const watch(mLife);
  for (unsigned int turn = 0; turn < ReadTurns; ++turn)
  {
    if (mInvalid)
    {
      return;
    }
    if (miRxLeft == 0)
    {
      if (!mContinuous)
      {
        mpSocket->readWork().stop();
      }
      else if (!readContinuously(watch))
      {
        return;
      }
      break;
    }
    if (!readPieces(watch))
    {
      return;
    }
    if (miRxLeft == 0)
    {
      break;
    }
  }
  checkClosedByPeer();
}

bool cNetAbstractConnection::checkClosedByPeer()
{
  if (mInvalid || !mpSocket->closedByPeer())
  {
    return false;
  }
  mContinuous = false;
  mpRxPacket = nullptr;
  miRxLeft = 0;
  mTxView.clear();
  miTxLeft = 0;
  if (!mClosedByPeerReported)
  {
    mClosedByPeerReported = true;
    mstd::cLifeWatch const watch(mLife);
    try
    {
      sigClosedByPeer(*this);
    }
    catch (...)
    {
      if (!watch.isOver())
      {
        invalidateLater();
      }
      throw;
    }
    if (watch.isOver())
    {
      return true;
    }
  }
  invalidateLater();
  return true;
}

void cNetAbstractConnection::sltDelayedSocketDestroy()
{
  if (isTxBusy())
  {
    mpDelayedInvalidation->start(LookAgain, mpi::cWork::SingleTask);
  }
  else
  {
    invalidate();
  }
}

void cNetAbstractConnection::sltSocketException()
{
  mpi::cAbstractOut& out = mpi::system().out;
  {
    mp::cLocker::cLock lock(out.mutex());
    out.debugMessage(Mark, __LINE__) << "cNetAbstractConnection::sltSocketException()"
                                     << "\n"
                                     << mpi::cAbstractOut::clearDebugMessage();
  }
  if (!mInvalid && !checkClosedByPeer())
  {
    mpSocket->raiseError();
  }
}

void cNetAbstractConnection::sltException(mstd::cAbstractException const& e, bool)
{
  clearTx();
  if (mpSigError.get() == nullptr)
  {
    cNETExceptions::throwConnectionError(e);
  }
  (*mpSigError)(*this, cNETExceptions::connectionError(e));
}

} // namespace mce
