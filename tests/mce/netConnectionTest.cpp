// Connections over a socket that plays scripts, under virtual time.

#include "mce/net++/cNETExceptions.h"
#include "mce/net++/cNetAbstractConnection.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "rmi/cDirectLocalSlotCall3.h"
#include "rmi/cUnconnectedSignalException.h"
#include "std/cBugException.h"
#include "support/cCaptureOut.h"
#include "support/cScriptedSocket.h"
#include "support/cSlotOf.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

using mce::cNetAbstractConnection;
using support::caught;
using support::cScriptedLine;
using support::cScriptedSocket;
using support::messageOf;

namespace
{
typedef mstd::tArray<char> tBytes;
typedef std::vector<std::string> tNotes;

tBytes bytes(std::string const& text)
{
  tBytes result;
  result.append(text.data(), static_cast<unsigned int>(text.size()));
  return result;
}

std::string textOf(tBytes const& data)
{
  return std::string(data.data(true), data.length());
}

void resize(tBytes& data, unsigned int iLength)
{
  std::string text = textOf(data);
  text.resize(iLength);
  data = bytes(text);
}

// Writes down which signals a connection raises, and does what a test wants inside of them.
class cListener : public mrmi::cConnectable
{
public:
  void listen(cNetAbstractConnection& connection)
  {
    mpExpected = &connection;
    connection.sigClosedByPeer.connect(mrmi::cDirectLocalSlotCall1(*this, &cListener::sltClosedByPeer));
    connection.sigInvalidated.connect(mrmi::cDirectLocalSlotCall1(*this, &cListener::sltInvalidated));
    connection.sigDataReceived.connect(mrmi::cDirectLocalSlotCall2(*this, &cListener::sltData));
    connection.sigTxProgress.connect(mrmi::cDirectLocalSlotCall0(*this, &cListener::sltProgress));
    connection.sigTxComplete.connect(mrmi::cDirectLocalSlotCall0(*this, &cListener::sltComplete));
  }
  void listenFrom(cNetAbstractConnection& connection)
  {
    connection.sigDataReceivedFrom().connect(mrmi::cDirectLocalSlotCall3(*this, &cListener::sltDataFrom));
  }
  void listenErrors(cNetAbstractConnection& connection)
  {
    connection.errorHandler().connect(mrmi::cDirectLocalSlotCall2(*this, &cListener::sltError));
  }

  void sltClosedByPeer(cNetAbstractConnection& connection) { note(connection, "closed by peer"); }
  void sltInvalidated(cNetAbstractConnection& connection) { note(connection, "invalidated"); }
  void sltData(cNetAbstractConnection& connection, tBytes const& data) { note(connection, "data " + textOf(data)); }
  void sltDataFrom(cNetAbstractConnection& connection, tBytes const& data, mce::cNetAbstractAddress const& from)
  {
    note(connection, "data " + textOf(data) + " from " + from.toString(1).c_str());
  }
  void sltProgress() { note(*mpExpected, "progress"); }
  void sltComplete() { note(*mpExpected, "complete"); }
  void sltError(cNetAbstractConnection& connection, mstd::cAbstractException const& e)
  {
    std::string text = "error " + std::string(e.typeName().c_str()) + ": " + messageOf(e);
    for (mstd::cAbstractException const* h = e.history(); h != nullptr; h = h->history())
    {
      text += " < " + messageOf(*h);
    }
    note(connection, text);
  }

  /// What has happened since the last call.
  tNotes take()
  {
    tNotes notes;
    notes.swap(mNotes);
    return notes;
  }

  std::function<void(std::string const&)> mInside;

private:
  void note(cNetAbstractConnection& connection, std::string const& what)
  {
    EXPECT_EQ(&connection, mpExpected);
    mNotes.push_back(what);
    if (mInside)
    {
      std::function<void(std::string const&)> const inside = mInside; // may be exchanged while it runs
      inside(what);
    }
  }

  cNetAbstractConnection* mpExpected = nullptr;
  tNotes mNotes;
};

class cNetConnection : public testing::Test
{
protected:
  cNetConnection() : mLine(std::make_shared<cScriptedLine>()), mpSocket(new cScriptedSocket(mLine))
  {
    support::cScriptedEvents* const events = new support::cScriptedEvents(mClock);
    mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(events));
    events->mLook = [this] { return !mLine->mGone && mpSocket->look(); };
    mpConnection.reset(new cNetAbstractConnection(mstd::tAutoPtr<mce::cNetAbstractSocket>(mpSocket)));
    mListener.listen(*mpConnection);
  }
  ~cNetConnection() override
  {
    mListener.mInside = nullptr; // belongs to the body of the test
    mpConnection.reset();
  }

  cNetAbstractConnection& connection() { return *mpConnection; }
  cScriptedLine& line() { return *mLine; }
  cScriptedSocket& socket() { return *mpSocket; }
  tNotes take() { return mListener.take(); }
  void turns(unsigned int iTurns)
  {
    while (iTurns-- != 0)
    {
      mQueue.process();
    }
  }
  bool reads() { return socket().readWork().isStarted(); }
  bool writes() { return socket().writeWork().isStarted(); }

  support::cCaptureOut mOut;
  support::cVirtualClock mClock;
  mpi::cWorkQueue mQueue;
  std::shared_ptr<cScriptedLine> mLine;
  cScriptedSocket* mpSocket;
  cListener mListener;
  std::unique_ptr<cNetAbstractConnection> mpConnection;
};

template <class Action>
std::string failure(Action const& action)
{
  return messageOf(caught<mstd::cRuntimeException>(action));
}

// --- construction ----------------------------------------------------------------------------------------------------

TEST(cNetConnectionAlone, NeedsASocket)
{
  support::expectAssertion([] { cNetAbstractConnection connection{mstd::tAutoPtr<mce::cNetAbstractSocket>()}; },
                           "mpSocket.get()", "mce/net++/cNetAbstractConnection");
}

TEST_F(cNetConnection, WatchesForErrorsOnlyAtFirst)
{
  EXPECT_FALSE(reads());
  EXPECT_FALSE(writes());
  EXPECT_TRUE(socket().exceptionWork().isStarted());
  EXPECT_FALSE(connection().isInvalid());
  EXPECT_FALSE(connection().isTxBusy());
  EXPECT_EQ(connection().txBytesLeft(), 0u);
  EXPECT_FALSE(connection().toInvalidateLater());
  EXPECT_EQ(&connection().peer(), &line().mPeer);
  EXPECT_TRUE(line().mNotes.empty());
}

TEST_F(cNetConnection, SchedulesItsWorksInTheirOrder)
{
  connection().schedule(&mQueue);
  std::vector<mpi::cWork const*> works;
  std::string last;
  for (mstd::tSharedObject<mpi::cWork> const& job : mQueue.jobs())
  {
    works.push_back(job.get());
    last = job->name().c_str();
  }
  ASSERT_EQ(works.size(), 4u);
  EXPECT_EQ(works[0], &socket().readWork());
  EXPECT_EQ(works[1], &socket().writeWork());
  EXPECT_EQ(works[2], &socket().exceptionWork());
  EXPECT_EQ(last, "network connection delayed invalidation for 10.0.0.1)");
}

TEST_F(cNetConnection, TakesTheQueueOfTheSystemForNone)
{
  connection().schedule(nullptr);
  unsigned int found = 0;
  for (mstd::tSharedObject<mpi::cWork> const& job : mpi::system().wq.jobs())
  {
    found += job.get() == &socket().readWork() ? 1 : 0;
  }
  EXPECT_EQ(found, 1u);
}

TEST_F(cNetConnection, IsNotScheduledWhenItIsInvalid)
{
  connection().invalidate();
  connection().schedule(&mQueue);
  EXPECT_TRUE(mQueue.jobs().empty());
}

TEST_F(cNetConnection, LeavesTheQueueWhenItGoes)
{
  connection().schedule(&mQueue);
  mpConnection.reset();
  EXPECT_TRUE(mLine->mGone);
  for (mstd::tSharedObject<mpi::cWork> const& job : mQueue.jobs())
  {
    EXPECT_EQ(job.get(), nullptr);
  }
  turns(1);
}

TEST(cNetConnectionAlone, LosesItsSocketIfThePeerHasNoName)
{
  class cNameless : public cScriptedSocket
  {
  public:
    using cScriptedSocket::cScriptedSocket;
    mce::cNetAbstractAddress& peer() override { mce::cNETExceptions::throwNoIPAddress(); }
  };
  std::shared_ptr<cScriptedLine> const line = std::make_shared<cScriptedLine>();
  EXPECT_THROW(cNetAbstractConnection{mstd::tAutoPtr<mce::cNetAbstractSocket>(new cNameless(line))},
               mstd::cRuntimeException);
  EXPECT_TRUE(line->mGone);
}

TEST(cNetConnectionAlone, MayOutliveItsQueue)
{
  std::shared_ptr<cScriptedLine> const line = std::make_shared<cScriptedLine>();
  std::unique_ptr<mpi::cWorkQueue> queue(new mpi::cWorkQueue);
  {
    cNetAbstractConnection connection{mstd::tAutoPtr<mce::cNetAbstractSocket>(new cScriptedSocket(line))};
    connection.schedule(queue.get());
    queue.reset();
    connection.send(bytes("abc"));
  }
  EXPECT_EQ(line->mSent, "abc");
  EXPECT_TRUE(line->mGone);
}

TEST(cNetConnectionAlone, RaisesItsSignalsForNobody)
{
  std::shared_ptr<cScriptedLine> const line = std::make_shared<cScriptedLine>();
  cNetAbstractConnection connection{mstd::tAutoPtr<mce::cNetAbstractSocket>(new cScriptedSocket(line))};
  tBytes buffer(2);
  line->arrive("xy");
  connection.send(bytes("abc"));
  connection.sigDataReceivedFrom();
  connection.receive(buffer);
  connection.sltSocketReadable();
  EXPECT_EQ(textOf(buffer), "xy");
  line->mClosedByPeer = true;
  connection.sltSocketReadable();
  connection.invalidate();
  EXPECT_TRUE(connection.isInvalid());
}

// --- sending ---------------------------------------------------------------------------------------------------------

TEST_F(cNetConnection, SendsWholeMessageInsideOfSend)
{
  EXPECT_EQ(&connection().send(bytes("hello")), &connection());
  EXPECT_EQ(line().mSent, "hello");
  EXPECT_EQ(take(), (tNotes{"progress", "complete"}));
  EXPECT_FALSE(writes());
  EXPECT_FALSE(connection().isTxBusy());
  EXPECT_EQ(line().mNotes, tNotes{"write 5"}); // nothing but what was sent
}

TEST_F(cNetConnection, SendsAnEmptyBufferWithoutProgress)
{
  mListener.mInside = [&](std::string const&) { EXPECT_FALSE(connection().isTxBusy()); };
  connection().send(tBytes());
  EXPECT_EQ(take(), tNotes{"complete"});
  EXPECT_FALSE(writes());
  EXPECT_TRUE(line().mNotes.empty());
}

TEST_F(cNetConnection, SendsInPiecesAsTheSocketTakesThem)
{
  connection().schedule(&mQueue);
  line().take({3, 2, 0, 1, 0, 100});
  connection().send(bytes("0123456789"));
  EXPECT_EQ(take(), (tNotes{"progress", "progress"}));
  EXPECT_TRUE(connection().isTxBusy());
  EXPECT_EQ(connection().txBytesLeft(), 5u);
  EXPECT_TRUE(writes());
  EXPECT_EQ(line().mSent, "01234");
  turns(2); // one to wait, one to work
  EXPECT_EQ(take(), tNotes{"progress"});
  EXPECT_EQ(connection().txBytesLeft(), 4u);
  turns(2);
  EXPECT_EQ(take(), (tNotes{"progress", "complete"}));
  EXPECT_EQ(line().mSent, "0123456789");
  EXPECT_FALSE(writes());
  EXPECT_EQ(line().mNotes, (tNotes{"write 10", "write 7", "write 5", "write 5", "write 4", "write 4"}));
}

TEST_F(cNetConnection, GivesTheSocketNoMoreThanOneWriteTakes)
{
  line().miMaxTx = 4;
  connection().send(bytes("0123456789"));
  EXPECT_EQ(line().mNotes, (tNotes{"write 4", "write 4", "write 2"}));
  EXPECT_EQ(take(), (tNotes{"progress", "progress", "progress", "complete"}));
}

TEST_F(cNetConnection, RefusesASecondBufferAndDisturbsNothing)
{
  line().take({3, 0});
  connection().send(bytes("0123456789"));
  take();
  tBytes second = bytes("second");
  tBytes const constant = second;
  EXPECT_EQ(failure([&] { connection().send(second); }), "Unable to send packet - transmitter is busy!");
  EXPECT_EQ(failure([&] { connection().sendSwap(second); }), "Unable to send packet - transmitter is busy!");
  EXPECT_EQ(failure([&] { connection().sendRef(mstd::tConstArrayRef<char>(constant)); }),
            "Unable to send packet - transmitter is busy!");
  EXPECT_EQ(textOf(second), "second");
  EXPECT_EQ(connection().txBytesLeft(), 7u);
  EXPECT_TRUE(writes());
  EXPECT_TRUE(take().empty());
  connection().sltSocketWritable();
  EXPECT_EQ(line().mSent, "0123456789");
}

TEST_F(cNetConnection, CopiesSwapsOrRefersToWhatIsSent)
{
  line().mTakesAll = false;
  tBytes data = bytes("abc");
  connection().send(data);
  data.clear();
  line().mTakesAll = true;
  connection().sltSocketWritable();
  EXPECT_EQ(line().mSent, "abc");

  tBytes swapped = bytes("defg");
  char const* const place = static_cast<tBytes const&>(swapped).data();
  line().mTakesAll = false;
  EXPECT_EQ(&connection().sendSwap(swapped), &connection());
  EXPECT_EQ(textOf(swapped), "abc"); // the one before
  line().mTakesAll = true;
  connection().sltSocketWritable();
  EXPECT_EQ(line().mSent, "abcdefg");
  connection().sendSwap(swapped);
  EXPECT_EQ(static_cast<tBytes const&>(swapped).data(), place);

  line().mSent.clear();
  line().mTakesAll = false;
  tBytes referred = bytes("hijk");
  EXPECT_EQ(&connection().sendRef(mstd::tConstArrayRef<char>(referred)), &connection());
  referred[0] = 'H';
  line().mTakesAll = true;
  connection().sltSocketWritable();
  EXPECT_EQ(line().mSent, "Hijk");
}

TEST_F(cNetConnection, SendsThePartThatAViewShows)
{
  tBytes const data = bytes("0123456789");
  line().take({2, 1});
  connection().sendRef(mstd::tConstArrayRef<char>(data, 3, 5));
  EXPECT_EQ(line().mSent, "34567");
  EXPECT_EQ(line().mNotes, (tNotes{"write 5", "write 3", "write 2"}));
}

TEST_F(cNetConnection, GivesTheQueueBackAfterAThousandPieces)
{
  connection().schedule(&mQueue);
  line().miMaxTx = 1;
  connection().send(tBytes(2500));
  EXPECT_EQ(line().miWrites, 1000u);
  EXPECT_EQ(connection().txBytesLeft(), 1500u);
  EXPECT_TRUE(writes());
  turns(2);
  EXPECT_EQ(line().miWrites, 2000u);
  EXPECT_TRUE(writes());
  turns(2);
  EXPECT_EQ(line().miWrites, 2500u);
  EXPECT_FALSE(writes());
  tNotes const notes = take();
  EXPECT_EQ(notes.size(), 2501u);
  EXPECT_EQ(notes.back(), "complete");
}

TEST_F(cNetConnection, CompletesABufferOfAThousandPiecesInOneCall)
{
  line().miMaxTx = 1;
  connection().send(tBytes(1000));
  EXPECT_EQ(line().miWrites, 1000u);
  EXPECT_EQ(take().back(), "complete");
  EXPECT_FALSE(writes());
}

TEST_F(cNetConnection, GoesOnWithTheBufferThatASlotOfCompletionSends)
{
  unsigned int left = 2;
  mListener.mInside = [&](std::string const& what) {
    if (what == "complete" && left != 0)
    {
      --left;
      connection().send(bytes("next" + std::to_string(left)));
    }
  };
  connection().send(bytes("first"));
  EXPECT_EQ(line().mSent, "firstnext1next0");
  EXPECT_FALSE(writes());

  left = 1;
  line().take({100, 2, 0});
  connection().send(bytes("again"));
  EXPECT_TRUE(writes()) << "the rest of the buffer that the slot sent is left";
  EXPECT_EQ(connection().txBytesLeft(), 3u);
}

TEST_F(cNetConnection, IsCompleteWhenASlotOfProgressForgetsTheRest)
{
  line().take({2});
  mListener.mInside = [&](std::string const& what) {
    if (what == "progress")
    {
      connection().clearTx();
    }
  };
  connection().send(bytes("abcdef"));
  EXPECT_EQ(take(), (tNotes{"progress", "complete"}));
  EXPECT_EQ(line().mSent, "ab");
}

TEST_F(cNetConnection, ForgetsWhatIsLeftToSend)
{
  line().take({2, 0});
  connection().send(bytes("abcdef"));
  take();
  connection().clearTx();
  EXPECT_FALSE(connection().isTxBusy());
  EXPECT_EQ(connection().txBytesLeft(), 0u);
  EXPECT_FALSE(writes());
  EXPECT_TRUE(take().empty());
  connection().send(bytes("new"));
  EXPECT_EQ(line().mSent, "abnew");
}

TEST_F(cNetConnection, RaisesABugIfTheSocketTakesMoreThanItWasGiven)
{
  line().miMaxTx = 4;
  line().onWrite(cScriptedLine::Excess, 3);
  mstd::cBugException const e = caught<mstd::cBugException>([&] { connection().send(bytes("abcdef")); });
  EXPECT_EQ(messageOf(e), "Bug in socket implementation: Returned size (7) > given size (4)!");
  EXPECT_TRUE(e.liMessage()->isTranslatable());
  EXPECT_TRUE(connection().isTxBusy()); // as the failure has left it
  EXPECT_EQ(connection().txBytesLeft(), 6u);
  EXPECT_FALSE(writes());
  EXPECT_TRUE(take().empty());
}

TEST_F(cNetConnection, ForgetsTheBufferOverABugOfTheSocketInItsWork)
{
  connection().schedule(&mQueue);
  mListener.listenErrors(connection());
  line().take({2, 0});
  line().onWrite(cScriptedLine::Excess, 1);
  connection().send(bytes("abcdef"));
  take();
  turns(2);
  EXPECT_EQ(take(), tNotes{"error cRuntimeException: Network connection error! < Bug in socket implementation: "
                           "Returned size (5) > given size (4)!"});
  EXPECT_FALSE(connection().isTxBusy());
  EXPECT_FALSE(writes());
}

TEST_F(cNetConnection, LeavesAFailureOfTheSocketInSendToTheCaller)
{
  line().take({2});
  line().onWrite(cScriptedLine::Fail);
  EXPECT_EQ(failure([&] { connection().send(bytes("abcdef")); }), "the script says so");
  EXPECT_EQ(connection().txBytesLeft(), 4u);
  EXPECT_EQ(take(), tNotes{"progress"});
}

TEST_F(cNetConnection, LeavesAFailureOfASlotInSendToTheCaller)
{
  mListener.mInside = [&](std::string const&) { mce::cNETExceptions::throwConnectionTxBusy(); };
  EXPECT_THROW(connection().send(bytes("abc")), mstd::cRuntimeException);
  EXPECT_TRUE(connection().isTxBusy()) << "all is gone, but nobody has looked";
  EXPECT_EQ(connection().txBytesLeft(), 0u);
  mListener.mInside = nullptr;
  take();
  // A buffer of which nothing is left to be taken is no progress, and so it stays until somebody forgets it.
  connection().sltSocketWritable();
  EXPECT_TRUE(take().empty());
  connection().clearTx();
  connection().send(bytes("def"));
  EXPECT_EQ(line().mSent, "abcdef");
}

TEST_F(cNetConnection, NamesTheOperationThatAnInvalidConnectionRefuses)
{
  connection().invalidate();
  tBytes data = bytes("abc");
  EXPECT_EQ(failure([&] { connection().sendRef(mstd::tConstArrayRef<char>(data)); }),
            "Network connection closed unexpectedly (1)!");
  EXPECT_EQ(failure([&] { connection().send(data); }), "Network connection closed unexpectedly (2)!");
  EXPECT_EQ(failure([&] { connection().sendSwap(data); }), "Network connection closed unexpectedly (3)!");
  EXPECT_EQ(failure([&] { connection().receive(data); }), "Network connection closed unexpectedly! (4)");
  EXPECT_EQ(failure([&] { connection().sltSocketWritable(); }), "Network connection closed unexpectedly! (w)");
  EXPECT_EQ(textOf(data), "abc");
  EXPECT_FALSE(reads());
  EXPECT_FALSE(connection().isTxBusy());
}

TEST_F(cNetConnection, FailsToSendWhenASlotOfProgressInvalidates)
{
  line().take({2});
  mListener.mInside = [&](std::string const& what) {
    if (what == "progress")
    {
      connection().invalidate();
    }
  };
  EXPECT_EQ(failure([&] { connection().send(bytes("abcdef")); }), "Network connection closed unexpectedly! (w)");
  EXPECT_EQ(take(), (tNotes{"progress", "invalidated"}));
}

TEST_F(cNetConnection, CompletesThoughASlotOfTheLastProgressInvalidates)
{
  mListener.mInside = [&](std::string const& what) {
    if (what == "progress")
    {
      connection().invalidate();
    }
  };
  connection().send(bytes("abcdef"));
  EXPECT_EQ(take(), (tNotes{"progress", "invalidated", "complete"}));
}

// --- receiving -------------------------------------------------------------------------------------------------------

TEST_F(cNetConnection, FillsABufferFromPieces)
{
  connection().schedule(&mQueue);
  tBytes buffer(6);
  connection().receive(buffer);
  EXPECT_TRUE(reads());
  EXPECT_TRUE(line().mNotes.empty());
  line().arrive("ab");
  line().arrive("c");
  line().onRead(cScriptedLine::Nothing);
  turns(2);
  EXPECT_TRUE(take().empty());
  EXPECT_TRUE(reads());
  line().mReads.clear();
  line().arrive("defgh");
  turns(2);
  EXPECT_EQ(take(), tNotes{"data abcdef"});
  EXPECT_EQ(textOf(buffer), "abcdef");
  EXPECT_TRUE(reads()) << "the next turn stops it";
  turns(2);
  EXPECT_FALSE(reads());
  EXPECT_EQ(line().mReads.front().data, "gh");
}

TEST_F(cNetConnection, ReadsTenTimesInOneCallAtMost)
{
  tBytes buffer(100);
  connection().receive(buffer);
  for (unsigned int i = 0; i < 30; ++i)
  {
    line().onRead(cScriptedLine::Nothing);
  }
  connection().sltSocketReadable();
  EXPECT_EQ(line().miReads, 10u);
  EXPECT_TRUE(reads());
}

TEST_F(cNetConnection, DeliversTenBuffersInOneCallAtMost)
{
  connection().schedule(&mQueue);
  tBytes buffer(1);
  unsigned int received = 0;
  mListener.mInside = [&](std::string const&) {
    ++received;
    connection().receive(buffer);
  };
  for (unsigned int i = 0; i < 25; ++i)
  {
    line().arrive("x");
  }
  connection().receive(buffer);
  connection().sltSocketReadable();
  EXPECT_EQ(received, 10u);
  EXPECT_TRUE(reads());
  turns(2);
  EXPECT_EQ(received, 20u);
  turns(2);
  EXPECT_EQ(received, 25u);
}

TEST_F(cNetConnection, ReceivesNothingIntoABufferWithoutBytes)
{
  connection().schedule(&mQueue);
  line().arrive("abc");
  tBytes buffer;
  connection().receive(buffer);
  EXPECT_TRUE(reads());
  turns(2);
  EXPECT_FALSE(reads());
  EXPECT_TRUE(take().empty());
  EXPECT_EQ(line().miReads, 0u);
}

TEST_F(cNetConnection, ASecondBufferReplacesTheFirst)
{
  tBytes first(4);
  tBytes second(2);
  line().arrive("a");
  connection().receive(first);
  connection().sltSocketReadable();
  connection().receive(second);
  line().arrive("bcd");
  connection().sltSocketReadable();
  EXPECT_EQ(take(), tNotes{"data bc"});
  EXPECT_EQ(first[0], 'a');
}

TEST_F(cNetConnection, WantsNoMoreThanAShrunkenBufferHolds)
{
  tBytes buffer(10);
  connection().receive(buffer);
  resize(buffer, 3);
  line().arrive("abcdef");
  connection().sltSocketReadable();
  EXPECT_EQ(line().mNotes.front(), "read 3");
  EXPECT_EQ(take(), tNotes{"data abc"});

  // What is filled already stays where it is.
  tBytes other(6);
  line().mReads.clear();
  line().arrive("gh");
  connection().receive(other);
  connection().sltSocketReadable();
  resize(other, 5); // 4 bytes are wanted, and fit
  line().arrive("ijklm");
  connection().sltSocketReadable();
  EXPECT_EQ(textOf(other), "gijkl") << "the wanted bytes go to the end of the buffer";
  EXPECT_EQ(take(), tNotes{"data gijkl"});
}

TEST_F(cNetConnection, WantsNothingOfABufferThatIsEmptied)
{
  tBytes buffer(10);
  connection().receive(buffer);
  buffer.clear();
  line().arrive("abc");
  connection().sltSocketReadable();
  EXPECT_EQ(line().miReads, 0u);
  EXPECT_TRUE(take().empty());
  EXPECT_TRUE(reads());
  connection().sltSocketReadable();
  EXPECT_FALSE(reads());
}

TEST_F(cNetConnection, TakesASocketThatReadsTooMuchForABug)
{
  tBytes buffer(4);
  connection().receive(buffer);
  line().onRead(cScriptedLine::Excess, 2);
  EXPECT_EQ(messageOf(caught<mstd::cBugException>([&] { connection().sltSocketReadable(); })),
            "Bug in socket implementation: Returned size (6) > given size (4)!");
  line().arrive("abcd");
  connection().sltSocketReadable();
  EXPECT_EQ(take(), tNotes{"data abcd"});
}

TEST_F(cNetConnection, DeliversWhatArrivesInContinuousMode)
{
  connection().schedule(&mQueue);
  connection().receive(true);
  EXPECT_TRUE(reads());
  line().arrive("abc");
  line().arrive("d");
  line().onRead(cScriptedLine::Nothing);
  turns(2);
  EXPECT_EQ(take(), tNotes{"data abcd"});
  EXPECT_TRUE(reads());
  turns(2);
  EXPECT_TRUE(take().empty()) << "there is nothing";
  line().arrive("ef");
  turns(2);
  EXPECT_EQ(take(), tNotes{"data ef"});
  connection().receive(false);
  EXPECT_TRUE(reads());
  line().arrive("gh");
  turns(2);
  EXPECT_FALSE(reads());
  EXPECT_TRUE(take().empty());
  for (std::string const& note : line().mNotes)
  {
    EXPECT_EQ(note, "read all into 0");
  }
}

TEST_F(cNetConnection, DeliversOnePieceForEachCallInContinuousMode)
{
  connection().receive(true);
  line().arrive("abc");
  mListener.mInside = [&](std::string const&) { line().arrive("more"); };
  connection().sltSocketReadable();
  EXPECT_EQ(take(), tNotes{"data abc"});
  EXPECT_EQ(line().miReads, 1u);
}

TEST_F(cNetConnection, FillsABufferFirstInContinuousMode)
{
  tBytes buffer(2);
  connection().receive(true);
  connection().receive(buffer);
  line().arrive("abcde");
  connection().sltSocketReadable();
  EXPECT_EQ(take(), tNotes{"data ab"});
  connection().sltSocketReadable();
  EXPECT_EQ(take(), tNotes{"data cde"});
}

TEST_F(cNetConnection, SwitchesContinuousModeOfAnInvalidConnectionNever)
{
  connection().invalidate();
  connection().receive(true);
  EXPECT_FALSE(reads());
  line().arrive("abc");
  connection().sltSocketReadable();
  EXPECT_EQ(line().miReads, 0u);
}

TEST_F(cNetConnection, TellsTheSenderToThoseWhoAsk)
{
  tBytes buffer(2);
  line().arrive("abcd");
  connection().receive(buffer);
  connection().sltSocketReadable();
  EXPECT_EQ(take(), tNotes{"data ab"});
  cNetAbstractConnection::tFromSignal* const signal = &connection().sigDataReceivedFrom();
  EXPECT_EQ(&connection().sigDataReceivedFrom(), signal);
  connection().receive(buffer);
  connection().sltSocketReadable(); // nobody listens yet
  EXPECT_EQ(take(), tNotes{"data cd"});
  mListener.listenFrom(connection());
  line().arrive("ef");
  connection().receive(buffer);
  connection().sltSocketReadable();
  EXPECT_EQ(take(), (tNotes{"data ef", "data ef from 10.0.0.2:7"}));
  connection().receive(true);
  line().mSender = "10.0.0.3:9";
  line().arrive("ghi");
  connection().sltSocketReadable();
  EXPECT_EQ(take(), (tNotes{"data ghi", "data ghi from 10.0.0.3:9"}));
  EXPECT_EQ(line().mPeer.miPort, 8080u) << "the peer is another address";
}

TEST_F(cNetConnection, CanReadWhatTheSocketCan)
{
  EXPECT_FALSE(connection().canRead());
  line().arrive("a");
  EXPECT_TRUE(connection().canRead());
  connection().invalidate();
  EXPECT_FALSE(connection().canRead());
}

TEST_F(cNetConnection, SendsAndReceivesInsideOfItsSignals)
{
  connection().schedule(&mQueue);
  tBytes buffer(3);
  mListener.mInside = [&](std::string const& what) {
    if (what.compare(0, 4, "data") == 0)
    {
      connection().send(buffer);
      connection().receive(buffer);
    }
  };
  connection().receive(buffer);
  line().arrive("abcdefgh");
  turns(2);
  EXPECT_EQ(line().mSent, "abcdef");
  EXPECT_EQ(take(), (tNotes{"data abc", "progress", "complete", "data def", "progress", "complete"}));
}

TEST_F(cNetConnection, ReadsNoFurtherWhenASlotInvalidates)
{
  tBytes buffer(1);
  connection().receive(true);
  connection().receive(buffer);
  mListener.mInside = [&](std::string const& what) {
    if (what == "data a")
    {
      connection().invalidate();
    }
  };
  line().arrive("abc");
  connection().sltSocketReadable();
  EXPECT_EQ(take(), (tNotes{"data a", "invalidated"}));
  EXPECT_EQ(line().miReads, 1u);
  connection().sltSocketReadable();
  EXPECT_EQ(line().miReads, 1u);
}

TEST_F(cNetConnection, TransfersBothWaysAtOnce)
{
  tBytes buffer(2);
  line().mTakesAll = false;
  connection().receive(buffer);
  connection().send(bytes("xyz"));
  line().mTakesAll = true;
  line().arrive("ab");
  connection().tryTransfer();
  EXPECT_EQ(take(), (tNotes{"data ab", "progress", "complete"}));
}

// --- closing ---------------------------------------------------------------------------------------------------------

TEST_F(cNetConnection, InvalidatesOnceAndClosesEachTime)
{
  mListener.mInside = [&](std::string const& what) {
    EXPECT_EQ(what, "invalidated");
    EXPECT_FALSE(connection().isInvalid());
    EXPECT_EQ(line().miCloses, 0u);
    mListener.mInside = nullptr;
    connection().send(bytes("farewell"));
  };
  connection().invalidate();
  EXPECT_EQ(line().mSent, "farewell");
  EXPECT_EQ(take(), (tNotes{"invalidated", "progress", "complete"}));
  EXPECT_TRUE(connection().isInvalid());
  EXPECT_EQ(line().miCloses, 1u);
  connection().invalidate();
  EXPECT_EQ(line().miCloses, 2u);
  EXPECT_TRUE(take().empty());
}

TEST_F(cNetConnection, InvalidatesOnceWhenASlotInvalidatesAgain)
{
  mListener.mInside = [&](std::string const&) { connection().invalidate(); };
  connection().invalidate();
  EXPECT_EQ(take(), tNotes{"invalidated"});
  EXPECT_TRUE(connection().isInvalid());
  EXPECT_EQ(line().miCloses, 2u);
}

TEST_F(cNetConnection, ClosesThoughASlotOfItsEndFails)
{
  mListener.mInside = [&](std::string const&) { mce::cNETExceptions::throwConnectionTxBusy(); };
  EXPECT_THROW(connection().invalidate(), mstd::cRuntimeException);
  EXPECT_TRUE(connection().isInvalid());
  EXPECT_EQ(line().miCloses, 1u);
  connection().invalidate();
  EXPECT_EQ(take(), tNotes{"invalidated"});
}

TEST_F(cNetConnection, InvalidatesBeforeItGoes)
{
  mListener.mInside = [&](std::string const&) { EXPECT_FALSE(mLine->mGone); };
  mpConnection.reset();
  EXPECT_EQ(take(), tNotes{"invalidated"});
  EXPECT_EQ(mLine->mNotes, tNotes{"close"});
  EXPECT_TRUE(mLine->mGone);
}

TEST_F(cNetConnection, LetsNoFailureOutOfItsDestructor)
{
  mListener.mInside = [&](std::string const&) { mce::cNETExceptions::throwConnectionTxBusy(); };
  mpConnection.reset();
  EXPECT_TRUE(mOut.contains("transmitter is busy")) << mOut.text();
  EXPECT_EQ(mLine->miCloses, 1u);
  EXPECT_TRUE(mLine->mGone);
}

TEST_F(cNetConnection, InvalidatesLaterInTheNextTurn)
{
  connection().schedule(&mQueue);
  connection().invalidateLater();
  EXPECT_TRUE(connection().toInvalidateLater());
  EXPECT_FALSE(connection().isInvalid());
  connection().send(bytes("last"));
  long long const planned = mClock.now();
  connection().invalidateLater(); // is started already
  mQueue.process();
  EXPECT_TRUE(connection().isInvalid());
  EXPECT_FALSE(connection().toInvalidateLater());
  EXPECT_EQ(mClock.now(), planned);
  EXPECT_EQ(line().mSent, "last");
}

TEST_F(cNetConnection, InvalidatesWhenAllIsSentAndLooksEveryTenMilliseconds)
{
  connection().schedule(&mQueue);
  line().take({1});
  line().mTakesAll = false;
  connection().send(bytes("abcdef"));
  connection().invalidateLater();
  long long const start = mClock.now();
  unsigned int looks = 0;
  mClock.at(start + 35000, [&] { line().mTakesAll = true; });
  while (!connection().isInvalid() && looks < 1000)
  {
    ++looks;
    mQueue.process();
  }
  EXPECT_EQ(mClock.now() - start, 40000);
  EXPECT_EQ(line().mSent, "abcdef");
  EXPECT_EQ(take(), (tNotes{"progress", "progress", "complete", "invalidated"}));
}

TEST_F(cNetConnection, LooksAgainAtEachTenthMillisecondOnly)
{
  connection().schedule(&mQueue);
  line().mTakesAll = false;
  connection().send(bytes("abc"));
  connection().invalidateLater();
  mpi::cWork const* delayed = nullptr;
  for (mstd::tSharedObject<mpi::cWork> const& job : mQueue.jobs())
  {
    delayed = job.get();
  }
  for (long long const end = mClock.now() + 100000; mClock.now() < end;)
  {
    mQueue.process();
  }
  EXPECT_EQ(delayed->statistic().numTriggered(), 10u);
  EXPECT_FALSE(connection().isInvalid());
  line().mClosedByPeer = true; // clears the bytes, and so closes at the next look
  long long const closure = mClock.now();
  for (unsigned int i = 0; i < 100 && !connection().isInvalid(); ++i)
  {
    mQueue.process();
    mClock.advanceMSec(1); // the closure keeps the queue awake
  }
  EXPECT_EQ(delayed->statistic().numTriggered(), 12u);
  EXPECT_LE(mClock.now() - closure, 12000);
  EXPECT_EQ(take(), (tNotes{"closed by peer", "invalidated"}));
  EXPECT_EQ(line().mSent, "");
}

TEST_F(cNetConnection, NoticesThePeerClosingWhileItReceives)
{
  connection().schedule(&mQueue);
  connection().receive(true);
  tBytes buffer(10);
  connection().receive(buffer);
  line().arrive("abc");
  line().onRead(cScriptedLine::Close);
  connection().sltSocketReadable();
  EXPECT_EQ(take(), tNotes{"closed by peer"});
  EXPECT_TRUE(connection().toInvalidateLater());
  buffer.clear();      // nobody looks at it any more
  line().arrive("de"); // and nothing is wanted
  connection().sltSocketReadable();
  EXPECT_FALSE(reads());
  EXPECT_EQ(line().mReads.size(), 1u);
  turns(1);
  EXPECT_EQ(take(), tNotes{"invalidated"});
  EXPECT_TRUE(connection().isInvalid());
  for (std::string const& note : line().mNotes)
  {
    EXPECT_NE(note, "read all into 0");
  }
}

TEST_F(cNetConnection, NoticesThePeerClosingWhileItSends)
{
  connection().schedule(&mQueue);
  line().take({3});
  line().onWrite(cScriptedLine::Close);
  connection().send(bytes("abcdef"));
  EXPECT_EQ(take(), (tNotes{"progress", "closed by peer"}));
  EXPECT_FALSE(connection().isTxBusy());
  EXPECT_EQ(connection().txBytesLeft(), 0u);
  EXPECT_FALSE(writes());
  turns(1);
  EXPECT_EQ(take(), tNotes{"invalidated"});
}

TEST_F(cNetConnection, NoticesThePeerClosingWhileItRests)
{
  connection().schedule(&mQueue);
  line().mClosedByPeer = true;
  turns(4);
  EXPECT_EQ(take(), (tNotes{"closed by peer", "invalidated"}));
  EXPECT_TRUE(mOut.contains("cNetAbstractConnection::sltSocketException()"));
  for (std::string const& note : line().mNotes)
  {
    EXPECT_NE(note, "raiseError");
  }
}

TEST_F(cNetConnection, DeliversTheLastBufferBeforeTheClosure)
{
  tBytes buffer(3);
  connection().receive(buffer);
  line().arrive("abc");
  line().mClosedByPeer = true;
  connection().sltSocketReadable();
  EXPECT_EQ(take(), (tNotes{"data abc", "closed by peer"}));
}

TEST_F(cNetConnection, TellsThePeersClosureOnceEvenIfASlotLooksAgain)
{
  mListener.mInside = [&](std::string const& what) {
    EXPECT_EQ(what, "closed by peer");
    mListener.mInside = nullptr;
    connection().sltSocketReadable();
    connection().sltSocketException();
  };
  line().mClosedByPeer = true;
  connection().sltSocketReadable();
  connection().sltSocketReadable();
  EXPECT_EQ(take(), tNotes{"closed by peer"});
  EXPECT_TRUE(connection().toInvalidateLater());
}

TEST_F(cNetConnection, ClosesThoughASlotOfThePeersClosureFails)
{
  connection().schedule(&mQueue);
  mListener.mInside = [&](std::string const&) { mce::cNETExceptions::throwConnectionTxBusy(); };
  line().mClosedByPeer = true;
  EXPECT_THROW(connection().sltSocketReadable(), mstd::cRuntimeException);
  EXPECT_TRUE(connection().toInvalidateLater());
  mListener.mInside = nullptr;
  turns(1);
  EXPECT_EQ(take(), (tNotes{"closed by peer", "invalidated"}));
}

TEST_F(cNetConnection, ClearsWhatASlotOfThePeersClosureMaySendAnew)
{
  line().mTakesAll = false;
  connection().send(bytes("old"));
  line().mTakesAll = true;
  mListener.mInside = [&](std::string const& what) {
    if (what == "closed by peer")
    {
      connection().send(bytes("new"));
    }
  };
  line().mClosedByPeer = true;
  connection().sltSocketException();
  EXPECT_EQ(line().mSent, "new");
}

TEST_F(cNetConnection, AsksAnInvalidConnectionNothingAboutErrors)
{
  connection().invalidate();
  line().mClosedByPeer = true;
  connection().sltSocketException();
  EXPECT_EQ(take(), tNotes{"invalidated"});
  EXPECT_EQ(line().mNotes, tNotes{"close"});
}

// --- failures --------------------------------------------------------------------------------------------------------

TEST_F(cNetConnection, WritesALineAndRaisesTheErrorOfTheSocket)
{
  EXPECT_EQ(failure([&] { connection().sltSocketException(); }), "the line is broken");
  ASSERT_EQ(mOut.lines().size(), 1u);
  EXPECT_EQ(mOut.lines()[0].text, "cNetAbstractConnection::sltSocketException()");
  EXPECT_EQ(mOut.lines()[0].file, "mce/net++/cNetAbstractConnection");
}

TEST_F(cNetConnection, HandsErrorsOfItsWorksToTheQueue)
{
  connection().schedule(&mQueue);
  line().take({2, 0});
  connection().send(bytes("abcdef"));
  line().mError = true;
  mQueue.process(); // makes it due
  mstd::cRuntimeException const e = caught<mstd::cRuntimeException>([&] { turns(1); });
  EXPECT_EQ(messageOf(e), "the line is broken") << "what leaves a handler is dropped for the failure itself";
  EXPECT_FALSE(connection().isTxBusy());
  EXPECT_FALSE(writes());
}

TEST_F(cNetConnection, MakesAnErrorWithTheCauseBehindIt)
{
  mstd::cRuntimeException const cause =
      caught<mstd::cRuntimeException>([] { mce::cNETExceptions::throwConnectionTxBusy(); });
  line().take({2, 0});
  connection().send(bytes("abcdef"));
  mstd::cRuntimeException const e = caught<mstd::cRuntimeException>([&] { connection().sltException(cause, false); });
  EXPECT_EQ(messageOf(e), "Network connection error!");
  EXPECT_TRUE(e.liMessage()->isTranslatable());
  ASSERT_NE(e.history(), nullptr);
  EXPECT_EQ(messageOf(*e.history()), "Unable to send packet - transmitter is busy!");
  EXPECT_EQ(e.history()->history(), nullptr);
  EXPECT_FALSE(connection().isTxBusy());
}

TEST_F(cNetConnection, HandsErrorsToItsHandler)
{
  connection().schedule(&mQueue);
  mListener.listenErrors(connection());
  EXPECT_EQ(&connection().errorHandler(), &connection().errorHandler());
  line().mError = true;
  turns(2);
  line().mError = false;
  socket().look();
  EXPECT_EQ(take(), tNotes{"error cRuntimeException: Network connection error! < the line is broken"});
  connection().receive(true);
  line().onRead(cScriptedLine::Fail);
  turns(2);
  EXPECT_EQ(take(), tNotes{"error cRuntimeException: Network connection error! < the script says so"});
  line().mTakesAll = false;
  connection().send(bytes("abc"));
  line().onWrite(cScriptedLine::Fail);
  turns(2);
  EXPECT_EQ(take(), tNotes{"error cRuntimeException: Network connection error! < the script says so"});
  EXPECT_FALSE(connection().isTxBusy());
  EXPECT_FALSE(connection().isInvalid());
}

TEST_F(cNetConnection, RaisesThatAHandlerIsAskedForAndUnconnected)
{
  connection().errorHandler();
  mstd::cRuntimeException const cause;
  EXPECT_THROW(connection().sltException(cause, false), mrmi::cUnconnectedSignalException);
  // In the queue the failure itself goes on, as with any handler that fails.
  connection().schedule(&mQueue);
  line().mError = true;
  turns(1);
  EXPECT_EQ(failure([&] { turns(1); }), "the line is broken");
}

TEST_F(cNetConnection, GoesAfterThreeErrorsInARow)
{
  connection().schedule(&mQueue);
  line().mError = true;
  unsigned int errors = 0;
  std::string bug;
  for (unsigned int i = 0; i < 20 && bug.empty(); ++i)
  {
    try
    {
      mQueue.process();
    }
    catch (mstd::cBugException const& e)
    {
      bug = messageOf(e);
    }
    catch (mstd::cRuntimeException const&)
    {
      ++errors;
    }
  }
  EXPECT_EQ(errors, 3u);
  EXPECT_FALSE(bug.empty());
  EXPECT_FALSE(socket().exceptionWork().isStarted());
}

// --- waiting ---------------------------------------------------------------------------------------------------------

TEST_F(cNetConnection, WaitsForItsBuffer)
{
  connection().waitRx(0); // nothing is wanted
  EXPECT_EQ(line().miReads, 0u);
  tBytes buffer(3);
  connection().receive(buffer);
  line().arrive("a");
  for (unsigned int i = 0; i < 50; ++i)
  {
    line().onRead(cScriptedLine::Nothing);
  }
  line().arrive("bc");
  connection().waitRx(0);
  EXPECT_EQ(take(), tNotes{"data abc"});
  EXPECT_EQ(mClock.blocked(), 0);
}

TEST_F(cNetConnection, ForgetsTheBufferWhenThereIsNothingToWaitFor)
{
  tBytes buffer;
  connection().receive(buffer);
  connection().waitRx(1);
  resize(buffer, 5);
  line().arrive("abc");
  connection().sltSocketReadable();
  EXPECT_EQ(line().miReads, 0u);
}

TEST_F(cNetConnection, WaitsForItsBufferUpToALimit)
{
  tBytes buffer(3);
  connection().receive(buffer);
  line().arrive("a");
  long long const start = mClock.now();
  mClock.setTick(1000);
  EXPECT_EQ(failure([&] { connection().waitRx(20); }), "Transfer timeout after 20 milliseconds!");
  mClock.setTick(0);
  EXPECT_EQ(mClock.now() - start, 22000); // the first look gives the start
  EXPECT_TRUE(take().empty());
  line().arrive("bc");
  connection().waitRx(20); // the buffer is still wanted
  EXPECT_EQ(take(), tNotes{"data abc"});
}

TEST_F(cNetConnection, KeepsToTheMicrosecondOfALimit)
{
  tBytes buffer(1);
  connection().receive(buffer);
  mListener.mInside = [&](std::string const&) { mClock.advance(1000); };
  line().arrive("a");
  connection().waitRx(1);
  connection().receive(buffer);
  mListener.mInside = [&](std::string const&) { mClock.advance(1001); };
  line().arrive("b");
  EXPECT_EQ(failure([&] { connection().waitRx(1); }), "Transfer timeout after 1 milliseconds!")
      << "the round counts, also the one that completes";
  EXPECT_EQ(take(), (tNotes{"data a", "data b"}));
}

TEST_F(cNetConnection, APeersClosureEndsTheWait)
{
  tBytes buffer(3);
  connection().receive(buffer);
  line().arrive("a");
  line().onRead(cScriptedLine::Close);
  connection().waitRx(0);
  EXPECT_EQ(take(), tNotes{"closed by peer"});
}

TEST_F(cNetConnection, FailuresEndTheWait)
{
  tBytes buffer(3);
  connection().receive(buffer);
  line().onRead(cScriptedLine::Fail);
  EXPECT_EQ(failure([&] { connection().waitRx(0); }), "the script says so");
}

TEST_F(cNetConnection, TheLimitEndsTheWaitOfAnInvalidConnection)
{
  tBytes buffer(3);
  connection().receive(buffer);
  connection().invalidate();
  mClock.setTick(1000);
  EXPECT_EQ(failure([&] { connection().waitRx(5); }), "Transfer timeout after 5 milliseconds!");
}

TEST_F(cNetConnection, FlushesWhatIsLeft)
{
  connection().flushTx(0);
  EXPECT_TRUE(take().empty());
  line().take({1, 0, 1, 0, 0, 0, 1, 0});
  connection().send(bytes("abcdef"));
  take();
  connection().flushTx(0);
  EXPECT_EQ(line().mSent, "abcdef");
  EXPECT_EQ(take(), (tNotes{"progress", "progress", "progress", "complete"}));
  EXPECT_FALSE(writes());
}

TEST_F(cNetConnection, FlushesUpToALimit)
{
  line().mTakesAll = false;
  connection().send(bytes("abc"));
  mClock.setTick(1000);
  EXPECT_EQ(failure([&] { connection().flushTx(20); }), "Transfer timeout after 20 milliseconds!");
  mClock.setTick(0);
  EXPECT_EQ(connection().txBytesLeft(), 3u);
  EXPECT_TRUE(writes());
  mListener.mInside = [&](std::string const& what) {
    if (what == "complete")
    {
      mClock.advance(20001);
    }
  };
  line().mTakesAll = true;
  EXPECT_EQ(failure([&] { connection().flushTx(20); }), "Transfer timeout after 20 milliseconds!");
  EXPECT_EQ(line().mSent, "abc");
}

TEST_F(cNetConnection, FlushesNothingOfAnInvalidConnection)
{
  line().mTakesAll = false;
  connection().send(bytes("abc"));
  connection().invalidate();
  EXPECT_EQ(failure([&] { connection().flushTx(0); }), "Network connection closed unexpectedly! (w)");
}

// --- a connection that goes while it works ---------------------------------------------------------------------------

// From each signal, once by a direct call and once by the works in a queue, and with one slot or two.
struct cEnd
{
  char const* signal;
  char const* name;
  bool inQueue;
};

class cNetConnectionEnd : public cNetConnection, public testing::WithParamInterface<cEnd>
{
protected:
  // Whatever makes the signal of the parameter.
  void provoke(std::string const& signal)
  {
    if (signal == "progress" || signal == "complete")
    {
      line().mTakesAll = false;
      connection().send(bytes("abcdef"));
      line().mTakesAll = true;
      act([&] { connection().sltSocketWritable(); });
    }
    else if (signal == "data abc")
    {
      connection().receive(mBuffer);
      line().arrive("abcdef");
      act([&] { connection().sltSocketReadable(); });
    }
    else if (signal == "data xyz")
    {
      connection().receive(true);
      line().arrive("xyz");
      act([&] { connection().sltSocketReadable(); });
    }
    else if (signal == "data abc from 10.0.0.2:7")
    {
      mListener.listenFrom(connection());
      connection().receive(mBuffer);
      line().arrive("abcdef");
      act([&] { connection().sltSocketReadable(); });
    }
    else if (signal == "closed by peer")
    {
      line().mClosedByPeer = true;
      act([&] { connection().sltSocketException(); });
    }
    else if (signal == "invalidated")
    {
      if (GetParam().inQueue)
      {
        connection().invalidateLater();
      }
      act([&] { connection().invalidate(); });
    }
    else
    {
      mListener.listenErrors(connection());
      line().mError = true;
      mstd::cRuntimeException const cause;
      act([&] { connection().sltException(cause, false); });
    }
  }
  template <class Action>
  void act(Action const& action)
  {
    if (GetParam().inQueue)
    {
      turns(3);
    }
    else
    {
      action();
    }
  }

  tBytes mBuffer{3};
};

TEST_P(cNetConnectionEnd, IsSurvived)
{
  std::string const signal = GetParam().signal;
  bool const isError = signal == "error";
  if (GetParam().inQueue)
  {
    connection().schedule(&mQueue);
  }
  unsigned int ends = 0;
  mListener.mInside = [&](std::string const& what) {
    if (what == signal || (isError && what.compare(0, 5, "error") == 0))
    {
      mListener.mInside = nullptr;
      ++ends;
      delete mpConnection.release();
      EXPECT_GE(mLine->miCloses, 1u) << "it is closed at once";
    }
  };
  provoke(signal);
  EXPECT_EQ(ends, 1u);
  EXPECT_EQ(mpConnection.get(), nullptr);
  turns(3);
  EXPECT_TRUE(mLine->mGone) << "the socket goes in a later turn at the latest";
  unsigned int works = 0;
  for (mstd::tSharedObject<mpi::cWork> const& job : mQueue.jobs())
  {
    works += job.get() != nullptr ? 1 : 0;
  }
  EXPECT_EQ(works, 0u);
  tNotes const notes = take();
  EXPECT_EQ(std::count(notes.begin(), notes.end(), "invalidated"), 1);
}

INSTANTIATE_TEST_SUITE_P(
    InSlots, cNetConnectionEnd,
    testing::Values(cEnd{"progress", "Progress", false}, cEnd{"complete", "Completion", false},
                    cEnd{"data abc", "Buffer", false}, cEnd{"data xyz", "ContinuousData", false},
                    cEnd{"data abc from 10.0.0.2:7", "DataFrom", false}, cEnd{"closed by peer", "PeersClosure", false},
                    cEnd{"invalidated", "Invalidation", false}, cEnd{"error", "Error", false},
                    cEnd{"progress", "ProgressInQueue", true}, cEnd{"complete", "CompletionInQueue", true},
                    cEnd{"data abc", "BufferInQueue", true}, cEnd{"data xyz", "ContinuousDataInQueue", true},
                    cEnd{"data abc from 10.0.0.2:7", "DataFromInQueue", true},
                    cEnd{"closed by peer", "PeersClosureInQueue", true},
                    cEnd{"invalidated", "InvalidationInQueue", true}, cEnd{"error", "ErrorInQueue", true}),
    [](testing::TestParamInfo<cEnd> const& end) { return std::string(end.param.name); });

TEST_F(cNetConnection, GoesInsideOfSendWithoutBeingTouchedAgain)
{
  mListener.mInside = [&](std::string const& what) {
    if (what == "complete")
    {
      mpConnection.reset();
    }
  };
  connection().send(bytes("abc"));
  EXPECT_TRUE(mLine->mGone);
  EXPECT_TRUE(mOut.contains("\n")) << "a signal that goes inside of its slot tells it";
}

TEST_F(cNetConnection, GoesInsideOfWaitsAndTransfersWithoutBeingTouchedAgain)
{
  for (unsigned int variant = 0; variant < 3; ++variant)
  {
    std::shared_ptr<cScriptedLine> const line = std::make_shared<cScriptedLine>();
    cNetAbstractConnection* other =
        new cNetAbstractConnection(mstd::tAutoPtr<mce::cNetAbstractSocket>(new cScriptedSocket(line)));
    cListener listener;
    listener.listen(*other);
    tBytes buffer(1);
    other->receive(buffer);
    line->mTakesAll = false;
    other->send(bytes("abc"));
    line->mTakesAll = true;
    line->arrive("x");
    listener.mInside = [&](std::string const& what) {
      if (what == "data x" || what == "complete")
      {
        delete other;
      }
    };
    switch (variant)
    {
    case 0:
      other->waitRx(0);
      break;
    case 1:
      other->flushTx(0);
      break;
    default:
      other->tryTransfer();
    }
    EXPECT_TRUE(line->mGone) << variant;
  }
}

TEST_F(cNetConnection, GoesInsideOfANestedCallOfItsSlots)
{
  tBytes buffer(1);
  connection().receive(buffer);
  line().arrive("ab");
  mListener.mInside = [&](std::string const& what) {
    if (what == "data a")
    {
      connection().send(bytes("answer"));
    }
    if (what == "progress")
    {
      mpConnection.reset();
    }
  };
  connection().sltSocketReadable();
  EXPECT_TRUE(mLine->mGone);
  EXPECT_EQ(take(), (tNotes{"data a", "progress", "invalidated"}));
}

TEST_F(cNetConnection, GoesWithAFailureOfTheSlotThatDestroysIt)
{
  mListener.mInside = [&](std::string const& what) {
    if (what == "invalidated" || what == "closed by peer")
    {
      mListener.mInside = nullptr;
      mpConnection.reset();
      mce::cNETExceptions::throwConnectionTxBusy();
    }
  };
  EXPECT_EQ(failure([&] { connection().invalidate(); }), "Unable to send packet - transmitter is busy!");
  EXPECT_TRUE(mLine->mGone);
}

TEST_F(cNetConnection, GoesWithAFailureOfTheSlotOfThePeersClosureThatDestroysIt)
{
  connection().schedule(&mQueue);
  mListener.mInside = [&](std::string const& what) {
    if (what == "closed by peer")
    {
      mListener.mInside = nullptr;
      mpConnection.reset();
      mce::cNETExceptions::throwConnectionTxBusy();
    }
  };
  line().mClosedByPeer = true;
  turns(1);
  EXPECT_EQ(failure([&] { turns(1); }), "Unable to send packet - transmitter is busy!");
  turns(2);
  EXPECT_TRUE(mLine->mGone);
}

} // namespace
