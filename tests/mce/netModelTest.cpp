// Random scripts on a connection in a queue, and on a plain model of it that keeps to the same rules with strings and
// integers. The same script of draws drives both: what the socket does, what the slots do, how time goes. Both write
// down everything that can be seen; the two traces must be the same.

#include "mce/net++/cNETExceptions.h"
#include "mce/net++/cNetAbstractConnection.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "rmi/cDirectLocalSlotCall3.h"
#include "support/cCaptureOut.h"
#include "support/cFakeProcessor.h"
#include "support/cScriptedSocket.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
typedef mstd::tArray<char> tBytes;
typedef std::vector<std::string> tTrace;

std::string textOf(tBytes const& data)
{
  return std::string(data.data(true), data.length());
}

tBytes bytes(std::string const& text)
{
  tBytes result;
  result.append(text.data(), static_cast<unsigned int>(text.size()));
  return result;
}

/// A failure with nothing but a text, in the model as in the slots and sockets of the real connection.
struct cFailure
{
  std::string text;
};

[[noreturn]] void raise(std::string const& text)
{
  mucs::cLIMessage message;
  message << text.c_str();
  throw mstd::cRuntimeException(message, nullptr, 0);
}

/// Everything that can be done with a connection from outside. Failures are cFailure.
class cSubject
{
public:
  virtual ~cSubject() = default;
  virtual void send(unsigned int iKind, std::string const& text) = 0;
  virtual void receive(unsigned int iLength) = 0;
  virtual void shrink(unsigned int iLength) = 0;
  virtual void receive(bool bOn) = 0;
  virtual void clearTx() = 0;
  virtual void invalidate() = 0;
  virtual void invalidateLater() = 0;
  virtual void tryTransfer() = 0;
  virtual void waitRx(unsigned int iMSec) = 0;
  virtual void flushTx(unsigned int iMSec) = 0;
  virtual void askForErrors(bool bConnect) = 0;
  virtual void askForSenders() = 0;
  virtual void turn(bool bRead, bool bWrite, bool bError) = 0;
  virtual bool isInvalid() = 0;
  virtual std::string state() = 0;
};

/// The draws, and what follows from them.
class cWorld
{
public:
  explicit cWorld(unsigned int iSeed) : mRandom(iSeed), miMaxTx(below(3) == 0 ? 1 : below(2) == 0 ? 3 : 1000) {}
  virtual ~cWorld() = default;

  virtual long long now() = 0;
  virtual void advance(long long iMSec) = 0;

  unsigned int below(unsigned int n) { return static_cast<unsigned int>(mRandom() % n); }
  bool oneIn(unsigned int n) { return below(n) == 0; }
  void note(std::string const& what) { mTrace.push_back(what); }

  // --- the socket; "!" raises ---
  struct cPiece
  {
    std::string data;
    unsigned int count;
    bool fails;
  };
  cPiece read(unsigned int iSize)
  {
    note("read " + std::to_string(iSize));
    advance(below(2));
    switch (below(40))
    {
    case 0:
      return cPiece{"", 0, true};
    case 1:
      return cPiece{"", iSize + 1, false};
    case 2:
      mClosed = true;
      return cPiece{"", 0, false};
    default:
      break;
    }
    unsigned int const length = std::min(iSize, below(5));
    return cPiece{letters(length), length, false};
  }
  cPiece readAll()
  {
    note("read all");
    unsigned int const length = below(6);
    return cPiece{letters(length), length, oneIn(40)};
  }
  cPiece write(std::string const& data)
  {
    note("write " + data);
    advance(below(2));
    unsigned int const size = static_cast<unsigned int>(data.size());
    switch (below(40))
    {
    case 0:
      return cPiece{"", 0, true};
    case 1:
      return cPiece{"", size + 2, false};
    case 2:
      mClosed = true;
      return cPiece{"", 0, false};
    default:
      return cPiece{"", std::min(size, below(6)), false};
    }
  }
  bool closedByPeer()
  {
    advance(1);
    return mClosed;
  }

  // --- the slots: true if they raise ---
  bool inside(std::string const& what)
  {
    note(what);
    ++miDepth;
    if (miDepth <= 3 && oneIn(4))
    {
      act(true);
    }
    --miDepth;
    return oneIn(40);
  }

  // --- the script ---
  void run(unsigned int iActs)
  {
    while (iActs-- != 0 && !(mpSubject->isInvalid() && oneIn(6)))
    {
      act(false);
      note(mpSubject->state() + " at " + std::to_string(now()));
    }
  }

  cSubject* mpSubject = nullptr;
  tTrace mTrace;

private:
  std::string letters(unsigned int iLength)
  {
    std::string text;
    while (text.size() < iLength)
    {
      text += static_cast<char>('a' + miLetter++ % 26);
    }
    return text;
  }
  void act(bool bInside)
  {
    try
    {
      choose(bInside);
    }
    catch (cFailure const& e)
    {
      note("failed: " + e.text);
    }
  }
  void choose(bool bInside)
  {
    unsigned int const draw = below(bInside ? 12 : 20);
    switch (draw)
    {
    case 0:
    case 1:
    case 2:
      mpSubject->send(below(3), letters(below(14)));
      return;
    case 3:
    case 4:
    case 5:
      mpSubject->receive(below(9));
      return;
    case 6:
      mpSubject->receive(!oneIn(3));
      return;
    case 7:
      if (oneIn(4))
      {
        mpSubject->clearTx();
      }
      else if (oneIn(6))
      {
        mpSubject->invalidateLater();
      }
      return;
    case 8:
      // A wait for an invalid connection has no end that the clock would bring.
      if (oneIn(8) && !mWaiting)
      {
        mpSubject->invalidate();
      }
      return;
    case 9:
      mpSubject->tryTransfer();
      return;
    case 10:
      mpSubject->shrink(below(5));
      return;
    case 11:
      if (!mpSubject->isInvalid() && !mWaiting)
      {
        mWaiting = true;
        unsigned int const limit = 1 + below(9);
        try
        {
          if (oneIn(2))
          {
            mpSubject->waitRx(limit);
          }
          else
          {
            mpSubject->flushTx(limit);
          }
        }
        catch (cFailure const&)
        {
          mWaiting = false;
          throw;
        }
        mWaiting = false;
      }
      return;
    case 12:
      if (oneIn(2))
      {
        mpSubject->askForErrors(!oneIn(3));
      }
      return;
    case 13:
      if (oneIn(4))
      {
        mpSubject->askForSenders();
      }
      return;
    case 14:
      advance(below(15));
      return;
    default:
      bool const bRead = !oneIn(4);
      bool const bWrite = !oneIn(4);
      mpSubject->turn(bRead, bWrite, mClosed || oneIn(20));
    }
  }

  std::mt19937 mRandom;
  unsigned int miLetter = 0;
  unsigned int miDepth = 0;
  bool mClosed = false;
  bool mWaiting = false;

public:
  unsigned int const miMaxTx;
};

// --- the real one ----------------------------------------------------------------------------------------------------

class cRealWorld : public cWorld
{
public:
  cRealWorld(unsigned int iSeed, support::cVirtualClock& clock) : cWorld(iSeed), mClock(clock), miStart(clock.now()) {}
  long long now() override { return (mClock.now() - miStart) / 1000; }
  void advance(long long iMSec) override { mClock.advanceMSec(iMSec); }

private:
  support::cVirtualClock& mClock;
  long long miStart;
};

class cWorldSocket : public mce::cNetAbstractSocket
{
public:
  explicit cWorldSocket(cWorld& world) : mWorld(world)
  {
    for (mpi::cWork* const work : {&readWork(), &writeWork(), &exceptionWork()})
    {
      work->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cAbstractAIOData));
    }
  }
  mce::cNetAbstractAddress& peer() override { return mPeer; }
  mce::cNetAbstractAddress& local() override { return mPeer; }
  unsigned int maxTxSize() override { return mWorld.miMaxTx; }
  void raiseError() override { raise("line"); }
  unsigned int read(char* pData, unsigned int iSize, mce::cNetAbstractAddress* pFrom) override
  {
    cWorld::cPiece const piece = take(mWorld.read(iSize), pFrom);
    std::copy(piece.data.begin(), piece.data.end(), pData);
    return piece.count;
  }
  bool read(mstd::tArray<char>& data, mce::cNetAbstractAddress* pFrom) override
  {
    EXPECT_TRUE(data.empty());
    cWorld::cPiece const piece = take(mWorld.readAll(), pFrom);
    data = bytes(piece.data);
    return piece.count != 0;
  }
  bool canRead() const override { return true; }
  unsigned int write(char const* pData, unsigned int iSize) override
  {
    return take(mWorld.write(std::string(pData, iSize)), nullptr).count;
  }
  void close() override { mWorld.note("close"); }
  bool closedByPeer() const override { return mWorld.closedByPeer(); }

private:
  cWorld::cPiece take(cWorld::cPiece const& piece, mce::cNetAbstractAddress* pFrom)
  {
    if (piece.fails)
    {
      raise("socket");
    }
    if (pFrom != nullptr)
    {
      pFrom->fromString("10.0.0.2:7");
    }
    return piece;
  }

  cWorld& mWorld;
  support::cPlainIPv4Address mPeer{0x0100000A, 1};
};

class cReal : public cSubject, public mrmi::cConnectable
{
public:
  explicit cReal(cWorld& world) : mWorld(world), mpSocket(new cWorldSocket(world))
  {
    mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new support::cFakeProcessor));
    mpConnection.reset(new mce::cNetAbstractConnection(mstd::tAutoPtr<mce::cNetAbstractSocket>(mpSocket)));
    mpConnection->sigClosedByPeer.connect(mrmi::cDirectLocalSlotCall1(*this, &cReal::sltClosedByPeer));
    mpConnection->sigInvalidated.connect(mrmi::cDirectLocalSlotCall1(*this, &cReal::sltInvalidated));
    mpConnection->sigDataReceived.connect(mrmi::cDirectLocalSlotCall2(*this, &cReal::sltData));
    mpConnection->sigTxProgress.connect(mrmi::cDirectLocalSlotCall0(*this, &cReal::sltProgress));
    mpConnection->sigTxComplete.connect(mrmi::cDirectLocalSlotCall0(*this, &cReal::sltComplete));
    mpConnection->schedule(&mQueue);
  }

  void send(unsigned int iKind, std::string const& text) override
  {
    translated([&] {
      if (iKind == 0)
      {
        mpConnection->send(bytes(text));
      }
      else if (iKind == 1)
      {
        tBytes data = bytes(text);
        mpConnection->sendSwap(data);
      }
      else
      {
        mReferred.push_back(std::make_unique<tBytes>(bytes(text)));
        mpConnection->sendRef(mstd::tConstArrayRef<char>(*mReferred.back()));
      }
    });
  }
  void receive(unsigned int iLength) override
  {
    mBuffers.push_back(std::make_unique<tBytes>(bytes(std::string(iLength, '.'))));
    translated([&] { mpConnection->receive(*mBuffers.back()); });
  }
  void shrink(unsigned int iLength) override
  {
    if (!mBuffers.empty() && iLength < mBuffers.back()->length())
    {
      *mBuffers.back() = bytes(textOf(*mBuffers.back()).substr(0, iLength));
    }
  }
  void receive(bool bOn) override { mpConnection->receive(bOn); }
  void clearTx() override { mpConnection->clearTx(); }
  void invalidate() override
  {
    translated([&] { mpConnection->invalidate(); });
  }
  void invalidateLater() override { mpConnection->invalidateLater(); }
  void tryTransfer() override
  {
    translated([&] { mpConnection->tryTransfer(); });
  }
  void waitRx(unsigned int iMSec) override
  {
    translated([&] { mpConnection->waitRx(iMSec); });
  }
  void flushTx(unsigned int iMSec) override
  {
    translated([&] { mpConnection->flushTx(iMSec); });
  }
  void askForErrors(bool bConnect) override
  {
    if (bConnect && !mpConnection->errorHandler().isConnected())
    {
      mpConnection->errorHandler().connect(mrmi::cDirectLocalSlotCall2(*this, &cReal::sltError));
    }
    mpConnection->errorHandler();
  }
  void askForSenders() override
  {
    if (!mpConnection->sigDataReceivedFrom().isConnected())
    {
      mpConnection->sigDataReceivedFrom().connect(mrmi::cDirectLocalSlotCall3(*this, &cReal::sltFrom));
    }
  }
  void turn(bool bRead, bool bWrite, bool bError) override
  {
    mpSocket->readWork().aioData().setEvent(bRead);
    mpSocket->writeWork().aioData().setEvent(bWrite);
    mpSocket->exceptionWork().aioData().setEvent(bError);
    translated([&] { mQueue.process(); });
  }
  bool isInvalid() override { return mpConnection->isInvalid(); }
  std::string state() override
  {
    return std::string(mpConnection->isTxBusy() ? "busy " : "") + std::to_string(mpConnection->txBytesLeft()) +
           (mpConnection->isInvalid() ? " invalid" : "") + (mpConnection->toInvalidateLater() ? " closing" : "") +
           (mpSocket->readWork().isStarted() ? " R" : "") + (mpSocket->writeWork().isStarted() ? " W" : "") +
           (mpSocket->exceptionWork().isStarted() ? " E" : "");
  }

  void sltClosedByPeer(mce::cNetAbstractConnection&) { inside("closed by peer"); }
  void sltInvalidated(mce::cNetAbstractConnection&) { inside("invalidated"); }
  void sltData(mce::cNetAbstractConnection&, tBytes const& data) { inside("data " + textOf(data)); }
  void sltFrom(mce::cNetAbstractConnection&, tBytes const& data, mce::cNetAbstractAddress const& from)
  {
    inside("data " + textOf(data) + " from " + from.toString(1).c_str());
  }
  void sltProgress() { inside("progress"); }
  void sltComplete() { inside("complete"); }
  void sltError(mce::cNetAbstractConnection&, mstd::cAbstractException const& e)
  {
    inside(support::messageOf(e) + " < " + support::messageOf(*e.history()));
  }

private:
  void inside(std::string const& what)
  {
    if (mWorld.inside(what))
    {
      raise("slot");
    }
  }
  template <class Action>
  static void translated(Action const& action)
  {
    try
    {
      action();
    }
    catch (mstd::cAbstractException const& e)
    {
      std::string const text = support::messageOf(e);
      throw cFailure{e.typeName() == "cBugException" && text.find("socket") == std::string::npos ? "amuck" : text};
    }
  }

  cWorld& mWorld;
  cWorldSocket* mpSocket;
  mpi::cWorkQueue mQueue;
  std::vector<std::unique_ptr<tBytes>> mBuffers;
  std::vector<std::unique_ptr<tBytes>> mReferred;
  std::unique_ptr<mce::cNetAbstractConnection> mpConnection;
};

// --- the model -------------------------------------------------------------------------------------------------------

class cModelWorld : public cWorld
{
public:
  explicit cModelWorld(unsigned int iSeed) : cWorld(iSeed) {}
  long long now() override { return miNow; }
  void advance(long long iMSec) override { miNow += iMSec; }

private:
  long long miNow = 0;
};

class cModel : public cSubject
{
public:
  explicit cModel(cWorld& world) : mWorld(world) { mError.started = true; }

  void send(unsigned int iKind, std::string const& text) override
  {
    if (mInvalid)
    {
      static char const* const Marks[] = {"(2)", "(3)", "(1)"};
      throw cFailure{"Network connection closed unexpectedly " + std::string(Marks[iKind]) + "!"};
    }
    if (!mTx.empty())
    {
      throw cFailure{"Unable to send packet - transmitter is busy!"};
    }
    mTx = text;
    miTxLeft = static_cast<unsigned int>(text.size());
    writable();
    if (miTxLeft != 0)
    {
      mWrite.start();
    }
    else
    {
      mWrite.started = false;
    }
  }
  void receive(unsigned int iLength) override
  {
    mBuffers.push_back(std::make_unique<std::string>(iLength, '.'));
    if (mInvalid)
    {
      throw cFailure{"Network connection closed unexpectedly! (4)"};
    }
    mpRx = mBuffers.back().get();
    miRxLeft = iLength;
    mRead.start();
  }
  void shrink(unsigned int iLength) override
  {
    if (!mBuffers.empty() && iLength < mBuffers.back()->size())
    {
      mBuffers.back()->resize(iLength);
    }
  }
  void receive(bool bOn) override
  {
    if (!mInvalid)
    {
      mContinuous = bOn;
      if (bOn)
      {
        mRead.start();
      }
    }
  }
  void clearTx() override
  {
    mTx.clear();
    miTxLeft = 0;
    mWrite.started = false;
  }
  void invalidate() override
  {
    std::string failure;
    if (!mInvalid && !mInvalidatedTold)
    {
      mInvalidatedTold = true;
      failure = caughtSlot("invalidated");
    }
    mWorld.note("close");
    mInvalid = true;
    rethrow(failure);
  }
  void invalidateLater() override
  {
    if (!mDelayed.started)
    {
      mDelayed.start();
      miPlanned = mWorld.now();
    }
  }
  void tryTransfer() override
  {
    readable();
    writable();
  }
  void waitRx(unsigned int iMSec) override
  {
    long long const start = mWorld.now();
    while (miRxLeft != 0)
    {
      readable();
      check(start, iMSec);
    }
    mpRx = nullptr;
  }
  void flushTx(unsigned int iMSec) override
  {
    long long const start = mWorld.now();
    while (!mTx.empty())
    {
      writable();
      check(start, iMSec);
    }
  }
  void askForErrors(bool bConnect) override
  {
    mErrorsAsked = true;
    mErrorsConnected = mErrorsConnected || bConnect;
  }
  void askForSenders() override { mFrom = true; }
  void turn(bool bRead, bool bWrite, bool bError) override
  {
    mRead.event = bRead;
    mWrite.event = bWrite;
    mError.event = bError;
    long long const now = mWorld.now();
    visit(mRead, [this] { readable(); });
    visit(mWrite, [this] { writable(); });
    visit(mError, [this] { failed(); });
    if (mDelayed.started && miPlanned <= now)
    {
      mDelayed.event = true;
      mDelayed.started = false;
      dispatch(
          mDelayed, [this] { look(); }, false);
    }
  }
  bool isInvalid() override { return mInvalid; }
  std::string state() override
  {
    return std::string(mTx.empty() ? "" : "busy ") + std::to_string(miTxLeft) + (mInvalid ? " invalid" : "") +
           (mDelayed.started ? " closing" : "") + (mRead.started ? " R" : "") + (mWrite.started ? " W" : "") +
           (mError.started ? " E" : "");
  }

private:
  struct cJob
  {
    bool started = false;
    bool event = false;
    unsigned int errors = 0;
    void start()
    {
      started = true;
      errors = 0;
    }
  };

  template <class Action>
  void visit(cJob& job, Action const& action)
  {
    if (job.started && job.event)
    {
      dispatch(job, action, true);
    }
  }
  template <class Action>
  void dispatch(cJob& job, Action const& action, bool bHandled)
  {
    if (job.errors > 2)
    {
      job.started = false;
      throw cFailure{"amuck"};
    }
    try
    {
      action();
      job.errors = 0;
    }
    catch (cFailure const& e)
    {
      ++job.errors;
      if (!bHandled || !handle(e))
      {
        throw;
      }
    }
    job.event = false;
  }
  // False if the handler fails.
  bool handle(cFailure const& e)
  {
    clearTx();
    return mErrorsConnected && !mWorld.inside("Network connection error! < " + e.text);
  }

  void slot(std::string const& what) { rethrow(caughtSlot(what)); }
  std::string caughtSlot(std::string const& what) { return mWorld.inside(what) ? "slot" : ""; }
  static void rethrow(std::string const& failure)
  {
    if (!failure.empty())
    {
      throw cFailure{failure};
    }
  }
  void check(long long iStart, unsigned int iMSec)
  {
    if (mWorld.now() - iStart > iMSec)
    {
      throw cFailure{"Transfer timeout after " + std::to_string(iMSec) + " milliseconds!"};
    }
  }
  static void checkCount(unsigned int iReturned, unsigned int iGiven)
  {
    if (iReturned > iGiven)
    {
      throw cFailure{"Bug in socket implementation: Returned size (" + std::to_string(iReturned) + ") > given size (" +
                     std::to_string(iGiven) + ")!"};
    }
  }

  bool writePiece()
  {
    if (miTxLeft == 0)
    {
      return false;
    }
    unsigned int const piece = std::min(miTxLeft, mWorld.miMaxTx);
    cWorld::cPiece const written = mWorld.write(mTx.substr(mTx.size() - miTxLeft, piece));
    rethrow(written.fails ? "socket" : "");
    checkCount(written.count, piece);
    miTxLeft -= written.count;
    return written.count != 0;
  }
  void writable()
  {
    for (unsigned int turn = 0; turn < 1000; ++turn)
    {
      if (mInvalid)
      {
        throw cFailure{"Network connection closed unexpectedly! (w)"};
      }
      if (!mTx.empty())
      {
        if (!writePiece())
        {
          break;
        }
        slot("progress");
      }
      if (miTxLeft == 0)
      {
        mTx.clear();
        mWrite.started = false;
        slot("complete");
        break;
      }
    }
    isClosed();
  }
  void deliver(std::string const& data)
  {
    slot("data " + data);
    if (mFrom)
    {
      slot("data " + data + " from 10.0.0.2:7");
    }
  }
  void readable()
  {
    for (unsigned int turn = 0; turn < 10; ++turn)
    {
      if (mInvalid)
      {
        return;
      }
      if (miRxLeft == 0)
      {
        if (!mContinuous)
        {
          mRead.started = false;
          break;
        }
        cWorld::cPiece const piece = mWorld.readAll();
        rethrow(piece.fails ? "socket" : "");
        if (piece.count != 0)
        {
          deliver(piece.data);
        }
        break;
      }
      readPieces();
      if (miRxLeft == 0)
      {
        break;
      }
    }
    isClosed();
  }
  void readPieces()
  {
    for (;;)
    {
      miRxLeft = std::min(miRxLeft, static_cast<unsigned int>(mpRx->size()));
      if (miRxLeft == 0)
      {
        return;
      }
      cWorld::cPiece const piece = mWorld.read(miRxLeft);
      rethrow(piece.fails ? "socket" : "");
      checkCount(piece.count, miRxLeft);
      if (piece.count == 0)
      {
        return;
      }
      mpRx->replace(mpRx->size() - miRxLeft, piece.count, piece.data);
      miRxLeft -= piece.count;
      if (miRxLeft == 0)
      {
        std::string const& full = *mpRx;
        mpRx = nullptr;
        // The second signal shows the buffer as it is then.
        slot("data " + full);
        if (mFrom)
        {
          slot("data " + full + " from 10.0.0.2:7");
        }
        return;
      }
    }
  }
  bool isClosed()
  {
    if (mInvalid || !mWorld.closedByPeer())
    {
      return false;
    }
    mContinuous = false;
    mpRx = nullptr;
    miRxLeft = 0;
    mTx.clear();
    miTxLeft = 0;
    std::string failure;
    if (!mClosureTold)
    {
      mClosureTold = true;
      failure = caughtSlot("closed by peer");
    }
    invalidateLater();
    rethrow(failure);
    return true;
  }
  void failed()
  {
    if (!mInvalid && !isClosed())
    {
      throw cFailure{"line"};
    }
  }
  void look()
  {
    if (mTx.empty())
    {
      invalidate();
    }
    else
    {
      mDelayed.start();
      miPlanned = mWorld.now() + 10;
    }
  }

  cWorld& mWorld;
  std::string mTx;
  unsigned int miTxLeft = 0;
  std::vector<std::unique_ptr<std::string>> mBuffers;
  std::string* mpRx = nullptr;
  unsigned int miRxLeft = 0;
  bool mContinuous = false;
  bool mInvalid = false;
  bool mInvalidatedTold = false;
  bool mClosureTold = false;
  bool mFrom = false;
  bool mErrorsAsked = false;
  bool mErrorsConnected = false;
  cJob mRead;
  cJob mWrite;
  cJob mError;
  cJob mDelayed;
  long long miPlanned = 0;
};

TEST(cNetConnectionModel, RandomScriptsGiveTheTraceOfThePlainModel)
{
  unsigned int const seed = std::random_device{}();
  std::printf("seed %u\n", seed);
  std::map<std::string, unsigned int> seen;
  for (unsigned int i = 0; i < 400; ++i)
  {
    support::cCaptureOut mute;
    support::cVirtualClock clock;
    cModelWorld modelWorld(seed + i);
    cModel model(modelWorld);
    modelWorld.mpSubject = &model;
    modelWorld.run(150);
    cRealWorld realWorld(seed + i, clock);
    {
      cReal real(realWorld);
      realWorld.mpSubject = &real;
      realWorld.run(150);
      tTrace const& expected = modelWorld.mTrace;
      tTrace const& actual = realWorld.mTrace;
      for (std::size_t n = 0; n < std::max(expected.size(), actual.size()); ++n)
      {
        std::string const wanted = n < expected.size() ? expected[n] : "(end)";
        std::string const got = n < actual.size() ? actual[n] : "(end)";
        std::string before;
        for (std::size_t b = n < 8 ? 0 : n - 8; b < n; ++b)
        {
          before += "\n  " + expected[b];
        }
        ASSERT_EQ(got, wanted) << "seed " << seed + i << ", line " << n << ", behind" << before;
        ++seen[wanted.substr(0, wanted.find_first_of(" <"))];
      }
      modelWorld.mTrace.clear();
    }
  }
  for (char const* what :
       {"read", "write", "close", "closed", "invalidated", "data", "progress", "complete", "Network", "failed:"})
  {
    EXPECT_GT(seen[what], 0u) << what; // the rarest comes some hundred times
  }
}
} // namespace
