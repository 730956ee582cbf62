// Servers and clients, as far as they stand without a transport.

#include "mce/net++/cNetAbstractClient.h"
#include "mce/net++/cNetAbstractConnection.h"
#include "mce/net++/cNetAbstractIPCapInfo.h"
#include "mce/net++/cNetAbstractServer.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "support/cCaptureOut.h"
#include "support/cPublishing.h"
#include "support/cScriptedSocket.h"
#include "support/cSlotOf.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

using support::caught;
using support::cPlainIPv4Address;

namespace
{
class cServer : public mce::cNetAbstractServer
{
public:
  explicit cServer(mpi::cWorkQueue* pQueue) : cNetAbstractServer(pQueue) {}
  void listen(mce::cNetAbstractAddress const&) override {}
  void close() override {}
  bool hasConnection() const override { return false; }
  mstd::tAutoPtr<mce::cNetAbstractConnection> takeConnection() override
  {
    return mstd::tAutoPtr<mce::cNetAbstractConnection>();
  }
};

class cClient : public mce::cNetAbstractClient
{
public:
  cClient(mpi::cWorkQueue* pQueue, std::vector<std::string>& notes) : cNetAbstractClient(pQueue), mNotes(notes) {}
  ~cClient() override { mNotes.push_back("gone"); }
  void connect(mce::cNetAbstractAddress const&) override {}
  bool isConnected() override { return miSteps >= 3; }
  mstd::tAutoPtr<mce::cNetAbstractConnection> takeConnection() override
  {
    mNotes.push_back("take");
    return mstd::tAutoPtr<mce::cNetAbstractConnection>(
        new mce::cNetAbstractConnection(mstd::tAutoPtr<mce::cNetAbstractSocket>(new support::cScriptedSocket(mLine))));
  }
  mce::cNetAbstractAddress& target() override { return mTarget; }
  void processConnection() override
  {
    mNotes.push_back("step");
    ++miSteps;
  }
  void invalidate() override { mNotes.push_back("invalidate"); }

  unsigned int miSteps = 0;
  std::shared_ptr<support::cScriptedLine> mLine = std::make_shared<support::cScriptedLine>();

private:
  std::vector<std::string>& mNotes;
  cPlainIPv4Address mTarget{0x0100000A, 8080};
};

typedef std::vector<std::string> tNotes;

class cNetClient : public testing::Test
{
protected:
  cNetClient()
  {
    mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new support::cScriptedEvents(mClock)));
    mpClient.reset(new cClient(&mQueue, mNotes));
  }
  void turns(unsigned int iTurns)
  {
    while (iTurns-- != 0)
    {
      mQueue.process();
    }
  }

  support::cVirtualClock mClock;
  mpi::cWorkQueue mQueue;
  tNotes mNotes;
  std::unique_ptr<cClient> mpClient;
};

template <class tQueueOwner>
void expectQueues(tQueueOwner const& withNone, tQueueOwner const& withOne, mpi::cWorkQueue const& queue)
{
  EXPECT_EQ(&withNone.wq(), &mpi::system().wq);
  EXPECT_EQ(&withOne.wq(), &queue);
}

TEST(cNetServer, WorksOnItsQueueOrThatOfTheSystem)
{
  mpi::cWorkQueue queue;
  expectQueues(cServer(nullptr), cServer(&queue), queue);
  EXPECT_TRUE(queue.jobs().empty());
}

TEST(cNetServer, RaisesItsSignalsForNobody)
{
  cServer server(nullptr);
  bool bAnswer = false;
  server.sigPeerQuery(cPlainIPv4Address(), bAnswer);
  server.sigPeerAddress(cPlainIPv4Address());
  EXPECT_FALSE(bAnswer);
}

TEST(cNetServer, LetsSlotsAnswerForAPeer)
{
  class cGuard : public mrmi::cConnectable
  {
  public:
    void sltQuery(mce::cNetAbstractAddress const& address, bool& rAnswer)
    {
      rAnswer = address.toString(0) == "10.0.0.1";
    }
    void sltAddress(mce::cNetAbstractAddress const& address) { mLast = address.toString(1); }
    mstd::cAsciiString mLast;
  };
  cServer server(nullptr);
  cGuard guard;
  server.sigPeerQuery.connect(mrmi::cDirectLocalSlotCall2(guard, &cGuard::sltQuery));
  server.sigPeerAddress.connect(mrmi::cDirectLocalSlotCall1(guard, &cGuard::sltAddress));
  bool bAnswer = false;
  server.sigPeerQuery(cPlainIPv4Address(0x0100000A, 1), bAnswer);
  EXPECT_TRUE(bAnswer);
  server.sigPeerQuery(cPlainIPv4Address(0x0200000A, 1), bAnswer);
  EXPECT_FALSE(bAnswer);
  server.sigPeerAddress(cPlainIPv4Address(0x0100000A, 5));
  EXPECT_STREQ(guard.mLast.c_str(), "10.0.0.1:5");
}

TEST_F(cNetClient, WorksOnItsQueueOrThatOfTheSystem)
{
  tNotes notes;
  expectQueues(cClient(nullptr, notes), *mpClient, mQueue);
}

TEST_F(cNetClient, PutsItsTimeLimitIntoTheQueue)
{
  ASSERT_EQ(mQueue.jobs().length(), 1u);
  mpi::cWork const* const work = mQueue.jobs().begin()->get();
  EXPECT_FALSE(work->isStarted());
  long long const start = mClock.now();
  mpClient->startTimeout(250);
  EXPECT_TRUE(work->isStarted());
  EXPECT_EQ(work->type(), mpi::cWork::SingleTask);
  EXPECT_EQ(static_cast<long long>(work->plannedTime().toUSec()), start + 250000);
  mpClient->stopTimeout();
  EXPECT_FALSE(work->isStarted());
  mClock.advanceMSec(1000);
  turns(2);
  EXPECT_TRUE(mNotes.empty());
  mpClient.reset();
  EXPECT_EQ(mQueue.jobs().begin()->get(), nullptr);
}

TEST_F(cNetClient, NamesTheTargetIfNobodyListensToTheTimeLimit)
{
  long long const start = mClock.now();
  mpClient->startTimeout(250);
  turns(1);
  mstd::cRuntimeException const e = caught<mstd::cRuntimeException>([&] { turns(1); });
  EXPECT_EQ(support::messageOf(e), "Timeout while establish network connection to 10.0.0.1!");
  EXPECT_TRUE(e.liMessage()->isTranslatable());
  EXPECT_EQ(mClock.now() - start, 250000);
  EXPECT_EQ(mNotes, tNotes{"invalidate"});
}

TEST_F(cNetClient, TellsTheTimeLimitToWhoListens)
{
  support::cSlot slot([&] { mNotes.push_back("timeout"); });
  mpClient->sigTimeout.connect(slot.call());
  mpClient->startTimeout(250);
  turns(2);
  EXPECT_EQ(mNotes, (tNotes{"invalidate", "timeout"}));
  mpClient->startTimeout(10); // once more
  turns(2);
  EXPECT_EQ(mNotes.size(), 4u);
}

TEST_F(cNetClient, TellsTheTimeLimitByName)
{
  class cTarget : public mrmi::cConnectable
  {
  public:
    explicit cTarget(tNotes& notes)
    {
      registerSlot("poke", "piVoid", "", "",
                   mstd::tAutoPtr<mrmi::cAbstractSlotCall>(
                       new support::cPokeCall(*this, [&notes] { notes.push_back("poked"); })));
    }
  };
  cTarget target(mNotes);
  mpClient->sigTimeout.connect(target, "poke", mrmi::cAbstractSignal::ResolveOnCall);
  mpClient->startTimeout(1);
  turns(2);
  EXPECT_EQ(mNotes, (tNotes{"invalidate", "poked"}));
}

TEST_F(cNetClient, GoesInsideOfTheSlotOfItsTimeLimit)
{
  support::cCaptureOut mute;
  support::cSlot slot([&] { mpClient.reset(); });
  mpClient->sigTimeout.connect(slot.call());
  mpClient->startTimeout(1);
  turns(2);
  EXPECT_EQ(mNotes, (tNotes{"invalidate", "gone"}));
  turns(2);
  unsigned int works = 0;
  for (mstd::tSharedObject<mpi::cWork> const& job : mQueue.jobs())
  {
    works += job.get() != nullptr ? 1 : 0;
  }
  EXPECT_EQ(works, 0u);
}

TEST_F(cNetClient, RaisesItsSignalForNobody)
{
  mpClient->sigEstablished();
  mpClient->sigTimeout();
  EXPECT_TRUE(mNotes.empty());
}

TEST_F(cNetClient, StepsUntilItIsConnected)
{
  mstd::tAutoPtr<mce::cNetAbstractConnection> const connection = mpClient->waitConnection();
  EXPECT_NE(connection.get(), nullptr);
  EXPECT_EQ(mNotes, (tNotes{"step", "step", "step", "take"}));
  EXPECT_EQ(mClock.blocked(), 0);
  mNotes.clear();
  mpClient->waitConnection();
  EXPECT_EQ(mNotes, tNotes{"take"});
}

TEST(cNetClientAlone, DoesNothingToGiveUpByItself)
{
  class cPlain : public cClient
  {
  public:
    using cClient::cClient;
    void invalidate() override { cNetAbstractClient::invalidate(); }
  };
  tNotes notes;
  cPlain client(nullptr, notes);
  client.invalidate();
  EXPECT_TRUE(notes.empty());
}

TEST(cNetIPCapInfo, IsImplementedByTransports)
{
  class cInfo : public mce::cNetAbstractIPCapInfo
  {
  public:
    explicit cInfo(bool& rGone) : mGone(rGone) {}
    ~cInfo() override { mGone = true; }
    bool hasIPv4() const override { return true; }
    bool hasIPv6() const override { return false; }
    void addresses(mstd::tPtrList<mce::cNetAbstractAddress>& list) const override
    {
      list.append(new cPlainIPv4Address(0x0100007F, 0));
    }

  private:
    bool& mGone;
  };
  bool bGone = false;
  mce::cNetAbstractIPCapInfo* const info = new cInfo(bGone);
  EXPECT_TRUE(info->hasIPv4());
  EXPECT_FALSE(info->hasIPv6());
  mstd::tPtrList<mce::cNetAbstractAddress> list(mstd::tPtrList<mce::cNetAbstractAddress>::Object);
  info->addresses(list);
  ASSERT_EQ(list.length(), 1u);
  EXPECT_STREQ((*list.begin())->toString(0).c_str(), "127.0.0.1");
  delete info;
  EXPECT_TRUE(bGone);
}
} // namespace
