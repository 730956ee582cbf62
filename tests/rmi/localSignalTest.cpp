#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "rmi/cDirectLocalSlotCall3.h"
#include "rmi/cUnconnectedSignalException.h"
#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"
#include "rmi/localSignal2.h"
#include "rmi/localSignal3.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>

using mrmi::cAbstractSignal;
using support::messageOf;

namespace
{
/// Writes its name down when it is called, then does what it was told.
class cActor : public mrmi::cConnectable
{
public:
  cActor(std::string& log, char name) : mLog(log), mName(name) {}
  void sltCalled()
  {
    mLog += mName;
    if (mAction)
    {
      // A copy, since an actor may die in its own action.
      std::function<void()> const action = mAction;
      action();
    }
  }

  std::function<void()> mAction;

private:
  std::string& mLog;
  char mName;
};

typedef mrmi::localSignal0<piVoid> cSignal;
typedef mrmi::cDirectLocalSlotCall0<cActor, piVoid> cSlot;

cSlot slotOf(cActor& actor)
{
  return cSlot(actor, &cActor::sltCalled);
}

class localSignal : public testing::Test
{
protected:
  localSignal() : a(mLog, 'A'), b(mLog, 'B'), c(mLog, 'C'), d(mLog, 'D')
  {
    mSignal.setInvocationBehavior(cAbstractSignal::IgnoreIfUnconnected);
  }

  void connectABC()
  {
    mSignal.connect(slotOf(a));
    mSignal.connect(slotOf(b));
    mSignal.connect(slotOf(c));
  }

  std::string emitted()
  {
    mLog.clear();
    mSignal();
    EXPECT_EQ(0u, mSignal.nestedInvocationCount());
    return mLog;
  }

  // The receivers go first, as in an application either end may.
  std::string mLog;
  cSignal mSignal;
  cActor a;
  cActor b;
  cActor c;
  cActor d;
};
} // namespace

TEST_F(localSignal, TheEnumeratorsHaveTheirNumbers)
{
  EXPECT_EQ(0, cAbstractSignal::ThrowIfUnconnected);
  EXPECT_EQ(1, cAbstractSignal::IgnoreIfUnconnected);
  EXPECT_EQ(1, cAbstractSignal::Append);
  EXPECT_EQ(1, cAbstractSignal::ResolveOnConnect);
  EXPECT_NE(1, cAbstractSignal::Prepend);
  EXPECT_NE(1, cAbstractSignal::ResolveOnCall);
}

TEST_F(localSignal, AFreshSignalThrowsIfUnconnected)
{
  cSignal fresh;
  EXPECT_EQ(cAbstractSignal::ThrowIfUnconnected, fresh.invocationBehavior());
  EXPECT_FALSE(fresh.isPublicSignal());
  mrmi::cUnconnectedSignalException const e = support::caught<mrmi::cUnconnectedSignalException>([&] { fresh(); });
  EXPECT_EQ("Call of an unconnected signal", messageOf(e));
  EXPECT_EQ(0u, fresh.nestedInvocationCount());
}

TEST_F(localSignal, WithoutASlotABehaviourOf1ReturnsAndTheCountIsZeroAgain)
{
  EXPECT_EQ("", emitted());
  EXPECT_EQ(0u, mSignal.nestedInvocationCount());
}

TEST_F(localSignal, SlotsAreCalledInTheOrderOfTheirConnection)
{
  connectABC();
  EXPECT_EQ("ABC", emitted());
  EXPECT_EQ("ABC", emitted());
}

TEST_F(localSignal, AConnectionAtTheFrontIsCalledFirst)
{
  connectABC();
  mSignal.connect(slotOf(d), cAbstractSignal::Prepend);
  EXPECT_EQ("DABC", emitted());
}

TEST_F(localSignal, AnyPolicyBut1GoesToTheFront)
{
  mSignal.connect(slotOf(a), static_cast<cAbstractSignal::ConnectionPolicy>(1));
  mSignal.connect(slotOf(b), static_cast<cAbstractSignal::ConnectionPolicy>(0));
  EXPECT_EQ("BA", emitted());
}

TEST_F(localSignal, TheSameSlotCanBeConnectedTwiceAndIsCalledTwice)
{
  mSignal.connect(slotOf(a));
  mSignal.connect(slotOf(a));
  EXPECT_EQ("AA", emitted());
}

TEST_F(localSignal, DisconnectRemovesBothCallsOfAConnectableConnectedTwice)
{
  mSignal.connect(slotOf(a));
  mSignal.connect(slotOf(b));
  mSignal.connect(slotOf(a));
  mSignal.disconnect(a);
  EXPECT_EQ("B", emitted());
  EXPECT_EQ(1u, mSignal.slotCount());
}

TEST_F(localSignal, DisconnectingWhatIsNotConnectedChangesNothing)
{
  mSignal.disconnect(a);
  connectABC();
  mSignal.disconnect(d);
  EXPECT_EQ("ABC", emitted());
}

TEST_F(localSignal, NotifyConnectableDestroyedIsADisconnect)
{
  connectABC();
  static_cast<cAbstractSignal&>(mSignal).notifyConnectableDestroyed(b);
  EXPECT_EQ("AC", emitted());
}

TEST_F(localSignal, IsConnectedTellsIfThereIsASlot)
{
  EXPECT_FALSE(mSignal.isConnected());
  mSignal.connect(slotOf(a));
  EXPECT_TRUE(mSignal.isConnected());
  mSignal.disconnect(a);
  EXPECT_FALSE(mSignal.isConnected());
}

TEST_F(localSignal, ManySlotsKeepTheirOrder)
{
  std::string expected;
  for (int i = 0; i < 500; ++i)
  {
    cActor& actor = i % 3 == 0 ? a : i % 3 == 1 ? b : c;
    mSignal.connect(slotOf(actor), i % 2 == 0 ? cAbstractSignal::Append : cAbstractSignal::Prepend);
    char const name = "ABC"[i % 3];
    expected = i % 2 == 0 ? expected + name : name + expected;
  }
  EXPECT_EQ(expected, emitted());
  mSignal.disconnect(b);
  expected.erase(std::remove(expected.begin(), expected.end(), 'B'), expected.end());
  EXPECT_EQ(expected, emitted());
}

TEST_F(localSignal, WhenTheFirstOfThreeDisconnectsItselfTheOthersAreCalledOnce)
{
  connectABC();
  a.mAction = [&] { mSignal.disconnect(a); };
  EXPECT_EQ("ABC", emitted());
  EXPECT_EQ("BC", emitted());
}

TEST_F(localSignal, WhenTheSecondOfThreeDisconnectsTheFirstTheThirdIsCalledOnce)
{
  connectABC();
  b.mAction = [&] { mSignal.disconnect(a); };
  EXPECT_EQ("ABC", emitted());
  EXPECT_EQ("BC", emitted());
}

TEST_F(localSignal, WhenTheFirstOfThreeDisconnectsTheThirdThatIsNotCalled)
{
  connectABC();
  a.mAction = [&] { mSignal.disconnect(c); };
  EXPECT_EQ("AB", emitted());
}

TEST_F(localSignal, WhenTheFirstOfThreeAppendsAFourthThatIsCalledInTheSameInvocation)
{
  connectABC();
  a.mAction = [&] { mSignal.connect(slotOf(d), cAbstractSignal::Append); };
  EXPECT_EQ("ABCD", emitted());
}

TEST_F(localSignal, WhenTheOnlySlotAppendsAnotherThatIsNotCalledInTheSameInvocation)
{
  mSignal.connect(slotOf(a));
  a.mAction = [&] {
    mSignal.connect(slotOf(d));
    a.mAction = nullptr;
  };
  EXPECT_EQ("A", emitted());
  EXPECT_EQ("AD", emitted());
}

TEST_F(localSignal, WhenTheFirstOfThreeConnectsAtTheFrontThatIsNotCalledAndTheOthersAreCalledOnce)
{
  connectABC();
  a.mAction = [&] {
    mSignal.connect(slotOf(d), cAbstractSignal::Prepend);
    a.mAction = nullptr;
  };
  EXPECT_EQ("ABC", emitted());
  EXPECT_EQ("DABC", emitted());
}

TEST_F(localSignal, AConnectionAtTheFrontIsNotReachedWhereverTheCallingSlotStands)
{
  connectABC();
  for (cActor* actor : {&a, &b, &c})
  {
    mSignal.disconnect(d);
    actor->mAction = [&] { mSignal.connect(slotOf(d), cAbstractSignal::Prepend); };
    EXPECT_EQ("ABC", emitted());
    actor->mAction = nullptr;
    EXPECT_EQ("DABC", emitted());
  }
}

TEST_F(localSignal, AConnectionAtTheFrontIsNotReachedWhenTheCallingSlotIsDisconnectedBefore)
{
  // The new call takes the very index that is looked at next.
  connectABC();
  a.mAction = [&] {
    mSignal.disconnect(a);
    mSignal.connect(slotOf(d), cAbstractSignal::Prepend);
  };
  EXPECT_EQ("ABC", emitted());
  EXPECT_EQ("DBC", emitted());
}

TEST_F(localSignal, AConnectionAtTheFrontOutsideOfAnInvocationIsReached)
{
  mSignal.connect(slotOf(a));
  mSignal.connect(slotOf(d), cAbstractSignal::Prepend);
  EXPECT_EQ("DA", emitted());
}

TEST_F(localSignal, WhenASlotThrowsTheLaterOnesAreNotCalledAndTheCountIsAsBefore)
{
  connectABC();
  b.mAction = [] { throw std::runtime_error("b"); };
  EXPECT_THROW(mSignal(), std::runtime_error);
  EXPECT_EQ("AB", mLog);
  EXPECT_EQ(0u, mSignal.nestedInvocationCount());
  b.mAction = nullptr;
  EXPECT_EQ("ABC", emitted());
}

TEST_F(localSignal, WhenTheOnlySlotThrowsTheCountIsAsBefore)
{
  mSignal.connect(slotOf(a));
  a.mAction = [] { throw std::runtime_error("a"); };
  EXPECT_THROW(mSignal(), std::runtime_error);
  EXPECT_EQ(0u, mSignal.nestedInvocationCount());
}

TEST_F(localSignal, TheCountTellsTheInvocationsThatRun)
{
  connectABC();
  unsigned int seen[2] = {0, 0};
  a.mAction = [&] {
    seen[0] = mSignal.nestedInvocationCount();
    a.mAction = [&] { seen[1] = mSignal.nestedInvocationCount(); };
    mSignal();
  };
  mSignal();
  EXPECT_EQ(1u, seen[0]);
  EXPECT_EQ(2u, seen[1]);
  EXPECT_EQ(0u, mSignal.nestedInvocationCount());
}

TEST_F(localSignal, AfterANestedInvocationTheOuterOneHasNothingLeftToCall)
{
  connectABC();
  b.mAction = [&] {
    b.mAction = nullptr;
    mSignal();
  };
  EXPECT_EQ("ABABC", emitted());
}

TEST_F(localSignal, AfterANestedInvocationThatThrewTheOuterOneGoesOnWithWhatIsLeft)
{
  connectABC();
  b.mAction = [&] {
    b.mAction = [&] { throw std::runtime_error("nested"); };
    EXPECT_THROW(mSignal(), std::runtime_error);
    b.mAction = nullptr;
  };
  EXPECT_EQ("ABABC", emitted());
}

TEST_F(localSignal, AReceiverMayDieInItsOwnSlot)
{
  std::unique_ptr<cActor> victim(new cActor(mLog, 'V'));
  victim->mAction = [&] { victim.reset(); };
  mSignal.connect(slotOf(a));
  mSignal.connect(slotOf(*victim));
  mSignal.connect(slotOf(b));
  EXPECT_EQ("AVB", emitted());
  EXPECT_EQ("AB", emitted());
}

TEST_F(localSignal, TheOnlyReceiverMayDieInItsOwnSlot)
{
  std::unique_ptr<cActor> victim(new cActor(mLog, 'V'));
  victim->mAction = [&] { victim.reset(); };
  mSignal.connect(slotOf(*victim));
  EXPECT_EQ("V", emitted());
  EXPECT_EQ("", emitted());
}

TEST_F(localSignal, AReceiverThatDiesBeforeItsTurnIsNotCalled)
{
  std::unique_ptr<cActor> victim(new cActor(mLog, 'V'));
  mSignal.connect(slotOf(a));
  mSignal.connect(slotOf(*victim));
  mSignal.connect(slotOf(b));
  a.mAction = [&] { victim.reset(); };
  EXPECT_EQ("AB", emitted());
}

TEST_F(localSignal, DestroyingASignalEndsItsConnections)
{
  {
    cSignal other;
    other.connect(slotOf(a));
    other.connect(slotOf(b));
    other.connect(slotOf(a));
    mSignal.connect(slotOf(a));
  }
  a.detachAllSignals();
  EXPECT_EQ(0u, mSignal.slotCount());
}

TEST_F(localSignal, DestroyingARunningSignalWritesTheDebugLineAndProceeds)
{
  std::unique_ptr<cSignal> victim(new cSignal);
  victim->connect(slotOf(a));
  victim->connect(slotOf(b));
  a.mAction = [&] { victim.reset(); };
  support::cCaptureOut capture;
  (*victim)();
  EXPECT_EQ("A", mLog);
  ASSERT_GE(capture.lines().size(), 4u);
  EXPECT_EQ(">>>>>>>>> delete this situation in signal!", capture.lines()[0].text);
  EXPECT_EQ("rmi/cAbstractSignal", capture.lines()[0].file);
  EXPECT_EQ(81u, capture.lines()[0].line);
  EXPECT_EQ("rmi/cAbstractSignal", capture.lines()[1].file);
  EXPECT_EQ(82u, capture.lines()[1].line);
  EXPECT_TRUE(capture.contains("mrmi::cLocalSignalBase::~cLocalSignalBase()")) << capture.text();
  // Both receivers have forgotten it.
  a.detachAllSignals();
  b.detachAllSignals();
}

TEST_F(localSignal, TheOnlySlotMayDestroyTheSignal)
{
  std::unique_ptr<cSignal> victim(new cSignal);
  victim->connect(slotOf(a));
  a.mAction = [&] { victim.reset(); };
  support::cCaptureOut capture;
  (*victim)();
  EXPECT_TRUE(capture.contains(">>>>>>>>> delete this situation in signal!"));
}

TEST_F(localSignal, ASignalMayBeDestroyedFromANestedInvocation)
{
  std::unique_ptr<cSignal> victim(new cSignal);
  victim->connect(slotOf(a));
  victim->connect(slotOf(b));
  a.mAction = [&] {
    a.mAction = [&] { victim.reset(); };
    (*victim)();
  };
  support::cCaptureOut capture;
  (*victim)();
  EXPECT_EQ("AA", mLog);
}

TEST_F(localSignal, ASignalMayBeDestroyedAndTheSlotThrow)
{
  std::unique_ptr<cSignal> victim(new cSignal);
  victim->connect(slotOf(a));
  victim->connect(slotOf(b));
  a.mAction = [&] {
    victim.reset();
    throw std::runtime_error("a");
  };
  support::cCaptureOut capture;
  EXPECT_THROW((*victim)(), std::runtime_error);
}

TEST_F(localSignal, DestroyingASignalThatDoesNotRunWritesNothing)
{
  support::cCaptureOut capture;
  {
    cSignal other;
    other.connect(slotOf(a));
    other();
  }
  EXPECT_EQ("", capture.text());
}

TEST_F(localSignal, ConnectByNameIsRefused)
{
  mstd::cBugException const e = support::caught<mstd::cBugException>(
      [&] { mSignal.connect(a, mstd::cAsciiString("slot"), cAbstractSignal::ResolveOnConnect); });
  EXPECT_EQ("Indirect connections not possible with explicit local signals!", messageOf(e));
  EXPECT_THROW(mSignal.connect(a, mstd::cAsciiString("slot"), cAbstractSignal::ResolveOnCall), mstd::cBugException);
  EXPECT_EQ(0u, mSignal.slotCount());
}

TEST_F(localSignal, ALocalSignalDescribesNothing)
{
  EXPECT_EQ("", support::toString(mSignal.parametersTypeString()));
  EXPECT_EQ("", support::toString(mSignal.returnTypeString()));
  mrmi::localSignal1<piVoid, int> other;
  EXPECT_EQ("", support::toString(other.parametersTypeString()));
  EXPECT_EQ("", support::toString(other.returnTypeString()));
}

TEST_F(localSignal, AnInvocationAllocatesNothing)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build does not count allocations";
  }
  mLog.reserve(100);
  mSignal.connect(slotOf(a));
  support::cAllocationFault one(0);
  mSignal();
  one.disarm();
  EXPECT_EQ(0u, one.count());
  mSignal.connect(slotOf(b));
  mSignal.connect(slotOf(c));
  support::cAllocationFault three(0);
  mSignal();
  three.disarm();
  EXPECT_EQ(0u, three.count());
}

TEST_F(localSignal, TheFirstConnectionIsOneAllocation)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build does not count allocations";
  }
  support::cAllocationFault count(0);
  mSignal.connect(slotOf(a));
  count.disarm();
  EXPECT_EQ(1u, count.count());
}

TEST(localSignalFault, AConnectThatFailsLeavesSignalAndReceiverAsTheyWere)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build does not let allocations fail";
  }
  for (unsigned int connected : {0u, 1u, 10u, 20u})
  {
    for (cAbstractSignal::ConnectionPolicy policy : {cAbstractSignal::Append, cAbstractSignal::Prepend})
    {
      for (unsigned int n = 1;; ++n)
      {
        std::string log;
        cActor a(log, 'A');
        std::unique_ptr<cActor> b(new cActor(log, 'B'));
        cSignal signal;
        signal.setInvocationBehavior(cAbstractSignal::IgnoreIfUnconnected);
        for (unsigned int i = 0; i < connected; ++i)
        {
          signal.connect(slotOf(i % 2 == 0 ? a : *b));
        }
        signal();
        std::string const before = log;
        support::cAllocationFault fault(n);
        try
        {
          signal.connect(slotOf(*b), policy);
          fault.disarm();
          EXPECT_FALSE(fault.hasFired());
        }
        catch (std::bad_alloc const&)
        {
          fault.disarm();
          log.clear();
          signal();
          EXPECT_EQ(before, log);
        }
        // Earlier connections of the receiver still end with it.
        b.reset();
        log.clear();
        signal();
        EXPECT_EQ(std::string::npos, log.find('B'));
        if (!fault.hasFired())
        {
          break;
        }
      }
    }
  }
}

TEST_F(localSignal, ASlotCallThatMakesNoInstanceIsRefused)
{
  class cBarren : public mrmi::cAbstractSlotCall0<piVoid>
  {
  public:
    explicit cBarren(mrmi::cConnectable& object) : mrmi::cAbstractSlotCall0<piVoid>(object, nullptr) {}
    using mrmi::cAbstractSlotCall0<piVoid>::call;
    void call() const override {}
    void callRef(msa::cReferenceFrame&) const override {}
    mrmi::cAbstractSlotCall0<piVoid>* createConnectedInstance(cAbstractSignal&) const override { return nullptr; }
  };
  support::cCaptureOut capture;
  EXPECT_THROW(mSignal.connect(cBarren(a)), mstd::cBugException);
  EXPECT_EQ(0u, mSignal.slotCount());
}

namespace
{
/// A slot call with a notion of its own of whom it is for, whose destructor is told.
class cChoosy : public mrmi::cAbstractSlotCall0<piVoid>
{
public:
  cChoosy(mrmi::cConnectable& object, mrmi::cConnectable const* match, std::function<void()> const& onDeath,
          cAbstractSignal* signal = nullptr)
      : mrmi::cAbstractSlotCall0<piVoid>(object, signal), mpMatch(match), mOnDeath(onDeath),
        mIsConnected(signal != nullptr)
  {
  }
  ~cChoosy() override
  {
    if (mIsConnected && mOnDeath)
    {
      mOnDeath();
    }
  }
  bool matchSlotOfObject(mrmi::cConnectable const* object) const override
  {
    if (mpMatch == nullptr)
    {
      throw std::runtime_error("cannot tell");
    }
    return object == mpMatch;
  }
  using mrmi::cAbstractSlotCall0<piVoid>::call;
  void call() const override { static_cast<cActor*>(receiver())->sltCalled(); }
  void callRef(msa::cReferenceFrame&) const override {}
  mrmi::cAbstractSlotCall0<piVoid>* createConnectedInstance(cAbstractSignal& signal) const override
  {
    return new cChoosy(assignedObject(), mpMatch, mOnDeath, &signal);
  }

private:
  mrmi::cConnectable const* mpMatch;
  std::function<void()> mOnDeath;
  bool mIsConnected;
};
} // namespace

TEST_F(localSignal, DisconnectAsksTheSlotCallWhomItIsFor)
{
  mSignal.connect(cChoosy(a, &b, nullptr));
  mSignal.connect(slotOf(a));
  mSignal.connect(slotOf(b));
  mSignal.disconnect(a);
  EXPECT_EQ("AB", emitted());
  mSignal.disconnect(b);
  EXPECT_EQ("", emitted());
}

TEST_F(localSignal, ASlotCallThatCannotTellLeavesTheSignalAsItWas)
{
  cSignal signal;
  signal.connect(slotOf(a));
  signal.connect(cChoosy(b, nullptr, nullptr));
  signal.connect(slotOf(c));
  EXPECT_THROW(signal.disconnect(a), std::runtime_error);
  EXPECT_THROW(signal.disconnect(c), std::runtime_error);
  signal();
  EXPECT_EQ("ABC", mLog);
}

TEST_F(localSignal, TheSignalIsWholeWhenTheDestructorOfASlotCallRuns)
{
  std::string seen;
  mSignal.connect(slotOf(a));
  mSignal.connect(cChoosy(b, &b, [&] {
    seen = emitted();
    mSignal.disconnect(a);
  }));
  mSignal.connect(slotOf(b));
  mSignal.connect(slotOf(c));
  mSignal.disconnect(b);
  EXPECT_EQ("AC", seen);
  EXPECT_EQ("C", emitted());
}

TEST_F(localSignal, ADyingSignalMayBeAskedToDisconnectByItsSlotCalls)
{
  {
    cSignal victim;
    victim.connect(cChoosy(a, &a, [&] { victim.disconnect(a); }));
    victim.connect(slotOf(a));
    victim.connect(cChoosy(b, &b, [&] { victim.disconnect(b); }));
  }
  a.detachAllSignals();
}

namespace
{
class cTaker : public mrmi::cConnectable
{
public:
  void sltOne(int const& x) { mLog += std::to_string(x) + ";"; }
  void sltTwo(int x, bool& y)
  {
    mLog += std::to_string(x) + ";";
    y = !y;
  }
  void sltThree(std::string x, std::string const& y, std::string& z) { z += x + y; }
  std::string mLog;
};
} // namespace

TEST(localSignal1, PassesItsArgumentByCallAndByInvoke)
{
  cTaker taker;
  mrmi::localSignal1<piVoid, int const&> signal;
  EXPECT_THROW(signal(1), mrmi::cUnconnectedSignalException);
  EXPECT_THROW(signal.invoke(1), mrmi::cUnconnectedSignalException);
  signal.connect(mrmi::cDirectLocalSlotCall1<cTaker, piVoid, int const&>(taker, &cTaker::sltOne),
                 cAbstractSignal::Append);
  signal(1);
  signal.invoke(2);
  signal.connect(mrmi::cDirectLocalSlotCall1(taker, &cTaker::sltOne));
  signal(3);
  EXPECT_EQ("1;2;3;3;", taker.mLog);
}

TEST(localSignal1, InvokeIsVirtual)
{
  class cTelling : public mrmi::localSignal1<piVoid, int>
  {
  public:
    void invoke(int x) override { miSeen = x; }
    int miSeen = 0;
  };
  cTelling signal;
  mrmi::localSignal1<piVoid, int>& base = signal;
  base.invoke(5);
  EXPECT_EQ(5, signal.miSeen);
}

TEST(localSignal2, PassesReferencesThatSlotsAlter)
{
  cTaker taker;
  mrmi::localSignal2<piVoid, int, bool&> signal;
  signal.connect(mrmi::cDirectLocalSlotCall2(&taker, &cTaker::sltTwo));
  bool flag = false;
  signal(7, flag);
  EXPECT_TRUE(flag);
  signal.invoke(8, flag);
  EXPECT_FALSE(flag);
  EXPECT_EQ("7;8;", taker.mLog);
}

TEST(localSignal3, PassesThreeArgumentsToEachSlot)
{
  cTaker one;
  cTaker two;
  mrmi::localSignal3<piVoid, std::string, std::string const&, std::string&> signal;
  signal.connect(mrmi::cDirectLocalSlotCall3(one, &cTaker::sltThree));
  signal.connect(mrmi::cDirectLocalSlotCall3(two, &cTaker::sltThree));
  std::string out;
  signal("a", "b", out);
  EXPECT_EQ("abab", out);
  signal.disconnect(one);
  signal.invoke("c", "d", out);
  EXPECT_EQ("ababcd", out);
}

TEST_F(localSignal, SignalsAreNotCopied)
{
  EXPECT_FALSE(std::is_copy_constructible<cSignal>::value);
  EXPECT_FALSE(std::is_copy_assignable<cSignal>::value);
}
