#ifndef MORTISE_TESTS_SUPPORT_CSCRIPTEDSOCKET_H
#define MORTISE_TESTS_SUPPORT_CSCRIPTEDSOCKET_H

#include "mce/net++/cNetAbstractSocket.h"
#include "pi/cAbstractAIOData.h"
#include "pi/cAbstractProcessEvents.h"
#include "std/cRuntimeException.h"
#include "support/cPlainIPv4Address.h"
#include "support/virtualclock.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace support
{

/// What a scripted socket plays, and what was done with it. It is shared with the socket, so that a test can look at it
/// when the socket is gone.
class cScriptedLine
{
public:
  enum Kind
  {
    Data,    ///< reading: this piece has arrived
    Take,    ///< writing: up to so many bytes
    Nothing, ///< not now
    Excess,  ///< claims so many bytes more than it was given
    Fail,    ///< raises an exception
    Close    ///< the other side closes, and there is nothing
  };
  struct cStep
  {
    Kind kind;
    unsigned int count;
    std::string data;
  };

  void arrive(std::string const& data) { mReads.push_back(cStep{Data, 0, data}); }
  void onRead(Kind kind, unsigned int iCount = 0) { mReads.push_back(cStep{kind, iCount, ""}); }
  void onWrite(Kind kind, unsigned int iCount = 0) { mWrites.push_back(cStep{kind, iCount, ""}); }
  void take(std::vector<unsigned int> const& counts)
  {
    for (unsigned int const count : counts)
    {
      onWrite(Take, count);
    }
  }
  bool canRead() const { return !mReads.empty() && mReads.front().kind == Data; }

  std::deque<cStep> mReads;  ///< when they are through there is nothing to be read
  std::deque<cStep> mWrites; ///< when they are through, everything is taken, or nothing
  bool mTakesAll = true;
  unsigned int miMaxTx = 0xFFFFFFFF;
  bool mClosedByPeer = false;
  bool mError = false; ///< the exception work becomes due
  cPlainIPv4Address mPeer{0x0100000A, 8080};
  std::string mSender = "10.0.0.2:7";

  std::string mSent;
  std::vector<std::string> mNotes; ///< every call but questions
  unsigned int miReads = 0;
  unsigned int miWrites = 0;
  unsigned int miCloses = 0;
  bool mGone = false;
};

/// Socket that plays what a cScriptedLine says. Its works are asynchronous, and become due by look().
class cScriptedSocket : public mce::cNetAbstractSocket
{
public:
  explicit cScriptedSocket(std::shared_ptr<cScriptedLine> line) : mLine(std::move(line))
  {
    for (mpi::cWork* const work : {&readWork(), &writeWork(), &exceptionWork()})
    {
      work->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cAbstractAIOData));
    }
  }
  ~cScriptedSocket() override { mLine->mGone = true; }

  mce::cNetAbstractAddress& peer() override { return mLine->mPeer; }
  mce::cNetAbstractAddress& local() override { return mLocal; }
  unsigned int maxTxSize() override { return mLine->miMaxTx; }
  void raiseError() override
  {
    note("raiseError");
    fail("the line is broken");
  }
  unsigned int read(char* pData, unsigned int iSize, mce::cNetAbstractAddress* pFrom) override
  {
    ++mLine->miReads;
    note("read " + std::to_string(iSize));
    tell(pFrom);
    if (mLine->canRead())
    {
      std::string& data = mLine->mReads.front().data;
      unsigned int const size = std::min(iSize, static_cast<unsigned int>(data.size()));
      std::copy(data.begin(), data.begin() + size, pData);
      data.erase(0, size);
      if (data.empty())
      {
        mLine->mReads.pop_front();
      }
      return size;
    }
    return step(mLine->mReads, iSize, false);
  }
  bool read(mstd::tArray<char>& data, mce::cNetAbstractAddress* pFrom) override
  {
    ++mLine->miReads;
    note("read all into " + std::to_string(data.length()));
    tell(pFrom);
    if (!mLine->canRead())
    {
      step(mLine->mReads, 0, false);
      return false;
    }
    for (; mLine->canRead(); mLine->mReads.pop_front())
    {
      std::string const& piece = mLine->mReads.front().data;
      data.append(piece.data(), static_cast<unsigned int>(piece.size()));
    }
    return true;
  }
  bool canRead() const override { return mLine->canRead(); }
  unsigned int write(char const* pData, unsigned int iSize) override
  {
    ++mLine->miWrites;
    note("write " + std::to_string(iSize));
    unsigned int const taken = step(mLine->mWrites, iSize, mLine->mTakesAll);
    mLine->mSent.append(pData, std::min(taken, iSize));
    return taken;
  }
  void close() override
  {
    ++mLine->miCloses;
    note("close");
  }
  bool closedByPeer() const override { return mLine->mClosedByPeer; }

  /// Makes those works due whose condition holds; true if any of them runs.
  bool look()
  {
    bool const bRead = !mLine->mReads.empty();
    bool const bWrite = !mLine->mWrites.empty() || mLine->mTakesAll;
    bool const bError = mLine->mError || mLine->mClosedByPeer;
    bool const bReadDue = mark(readWork(), bRead);
    bool const bWriteDue = mark(writeWork(), bWrite);
    return mark(exceptionWork(), bError) || bReadDue || bWriteDue;
  }

private:
  static bool mark(mpi::cWork& work, bool bEvent)
  {
    bEvent = bEvent && work.isStarted();
    work.aioData().setEvent(bEvent);
    return bEvent;
  }
  static unsigned int fail(char const* pText)
  {
    mucs::cLIMessage message;
    message << pText;
    throw mstd::cRuntimeException(message, nullptr, 0);
  }
  void note(std::string const& what) { mLine->mNotes.push_back(what); }
  void tell(mce::cNetAbstractAddress* pFrom)
  {
    if (pFrom != nullptr)
    {
      pFrom->fromString(mstd::cAsciiString(mLine->mSender.c_str()));
    }
  }
  unsigned int step(std::deque<cScriptedLine::cStep>& script, unsigned int iSize, bool bAll)
  {
    if (script.empty())
    {
      return bAll ? iSize : 0;
    }
    cScriptedLine::cStep const now = script.front();
    script.pop_front();
    switch (now.kind)
    {
    case cScriptedLine::Take:
      return std::min(iSize, now.count);
    case cScriptedLine::Excess:
      return iSize + now.count;
    case cScriptedLine::Fail:
      return fail("the script says so");
    case cScriptedLine::Close:
      mLine->mClosedByPeer = true;
      return 0;
    default:
      return 0;
    }
  }

  std::shared_ptr<cScriptedLine> mLine;
  cPlainIPv4Address mLocal{0x0100007F, 1};
};

/// Waits for scripted sockets and for virtual time: while no socket has anything due, the clock goes on.
class cScriptedEvents : public mpi::cAbstractProcessEvents
{
public:
  explicit cScriptedEvents(cVirtualClock& clock) : mClock(clock) {}

  bool supportsAIO() const override { return true; }
  bool isAsynchronous() const override { return false; }
  void yield(unsigned int, mstd::tList<mstd::tSharedObject<mpi::cWork>>&, unsigned int iDelay) override
  {
    while (!(mLook && mLook()) && iDelay != 0)
    {
      mClock.advanceMSec(1);
      --iDelay;
    }
    sigFinished();
  }
  void wakeUp() override {}

  /// Looks at the sockets; true if anything is due.
  std::function<bool()> mLook;

private:
  cVirtualClock& mClock;
};

} // namespace support

#endif
