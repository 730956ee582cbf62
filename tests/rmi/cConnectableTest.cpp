#include "rmi/cConnectable.h"

#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/localSignal0.h"
#include "std/cAsciiString.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
class cReceiver : public mrmi::cConnectable
{
public:
  explicit cReceiver(std::string* pLog = nullptr, char name = 'r') : mpLog(pLog), mName(name) {}
  void sltCalled()
  {
    if (mpLog != nullptr)
    {
      *mpLog += mName;
    }
  }

private:
  std::string* mpLog;
  char mName;
};

typedef mrmi::localSignal0<piVoid> cSignal;

mrmi::cDirectLocalSlotCall0<cReceiver, piVoid> slotOf(cReceiver& receiver)
{
  return mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(receiver, &cReceiver::sltCalled);
}

/// Writes down what a connectable tells it.
class cTellTale : public mrmi::cAbstractSignal
{
public:
  explicit cTellTale(std::string& log, char name = 's') : mLog(log), mName(name) {}
  void notifyConnectableDestroyed(mrmi::cConnectable& connectable) override
  {
    mLog += mName;
    if (mpAction != nullptr)
    {
      mpAction(*this, connectable);
    }
  }
  void connect(mrmi::cConnectable&, mstd::cAsciiString const&, SlotResolving) override {}
  void disconnect(mrmi::cConnectable const&) override {}
  void addParameterInfo(mrmi::cPublicSignal&) override {}

  void (*mpAction)(cTellTale&, mrmi::cConnectable&) = nullptr;

private:
  std::string& mLog;
  char mName;
};

std::string callsOf(cSignal& signal, std::string& log)
{
  log.clear();
  signal.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  signal();
  return log;
}
} // namespace

TEST(cConnectable, ItsOnlyVirtualOperationIsTheDestructor)
{
  EXPECT_TRUE(std::has_virtual_destructor<mrmi::cConnectable>::value);
  EXPECT_FALSE(std::is_copy_constructible<mrmi::cConnectable>::value);
  EXPECT_FALSE(std::is_copy_assignable<mrmi::cConnectable>::value);
}

TEST(cConnectable, TheIndexIsZeroAtFirstAndFree)
{
  cReceiver receiver;
  EXPECT_EQ(0u, receiver.index());
  receiver.setIndex(0xFFFFFFFFu);
  EXPECT_EQ(0xFFFFFFFFu, receiver.index());
}

TEST(cConnectable, ItEqualsTheSlotCallsForIt)
{
  cReceiver receiver;
  cReceiver other;
  auto const call = slotOf(receiver);
  EXPECT_TRUE(receiver == &call);
  EXPECT_FALSE(other == &call);
}

TEST(cConnectable, DestroyedWhileTwoSignalsHoldThreeCallsItLeavesTheOtherCallsInOrder)
{
  std::string log;
  cReceiver a(&log, 'a');
  cReceiver b(&log, 'b');
  cReceiver c(&log, 'c');
  std::unique_ptr<cReceiver> victim(new cReceiver(&log, 'v'));
  cSignal first;
  cSignal second;
  first.connect(slotOf(a));
  first.connect(slotOf(*victim));
  first.connect(slotOf(b));
  first.connect(slotOf(*victim));
  first.connect(slotOf(c));
  second.connect(slotOf(*victim));
  second.connect(slotOf(c));
  second.connect(slotOf(a));
  ASSERT_EQ("avbvc", callsOf(first, log));
  ASSERT_EQ("vca", callsOf(second, log));
  victim.reset();
  EXPECT_EQ("abc", callsOf(first, log));
  EXPECT_EQ("ca", callsOf(second, log));
  EXPECT_EQ(3u, first.slotCount());
  EXPECT_EQ(2u, second.slotCount());
}

TEST(cConnectable, DetachAllSignalsTellsEachSignalOncePerEntryFromHeadToTail)
{
  std::string log;
  cTellTale s(log, 's');
  cTellTale t(log, 't');
  cReceiver receiver;
  receiver.notifySignalAttached(s);
  receiver.notifySignalAttached(t);
  receiver.notifySignalAttached(s);
  receiver.detachAllSignals();
  EXPECT_EQ("sts", log);
  // The list itself is left as it is.
  log.clear();
  receiver.detachAllSignals();
  EXPECT_EQ("sts", log);
  log.clear();
  receiver.clear();
  EXPECT_EQ("sts", log);
  receiver.clear();
  receiver.detachAllSignals();
  EXPECT_EQ("sts", log);
}

TEST(cConnectable, NotifySignalDetachedRemovesEveryEqualEntry)
{
  std::string log;
  cTellTale s(log, 's');
  cTellTale t(log, 't');
  cReceiver receiver;
  receiver.notifySignalAttached(s);
  receiver.notifySignalAttached(t);
  receiver.notifySignalAttached(s);
  receiver.notifySignalAttached(s);
  receiver.notifySignalDetached(s);
  receiver.detachAllSignals();
  EXPECT_EQ("t", log);
  receiver.notifySignalDetached(t);
  receiver.notifySignalDetached(t);
  receiver.detachAllSignals();
  EXPECT_EQ("t", log);
}

TEST(cConnectable, ASignalThatDropsItsCallsLeavesNoFurtherEntryBehind)
{
  std::string log;
  cTellTale other(log, 'o');
  cReceiver receiver;
  cSignal former;
  std::unique_ptr<cSignal> signal(new cSignal);
  former.connect(slotOf(receiver), cSignal::Append);
  signal->connect(slotOf(receiver), cSignal::Append);
  receiver.notifySignalAttached(*signal);
  receiver.reAssign(former, *signal);
  signal->disconnect(receiver);
  EXPECT_FALSE(signal->isConnected());
  // Were there any entry left, it would show up under its new name.
  receiver.reAssign(*signal, other);
  receiver.detachAllSignals();
  EXPECT_EQ("", log);

  receiver.notifySignalAttached(*signal);
  signal->connect(slotOf(receiver), cSignal::Append);
  cSignal& gone = *signal;
  receiver.notifySignalAttached(other);
  signal.reset();
  receiver.reAssign(gone, other);
  receiver.detachAllSignals();
  EXPECT_EQ("o", log);
  receiver.notifySignalDetached(other);
}

TEST(cConnectable, NotifySignalDetachedDoesNothingWhileItDetaches)
{
  std::string log;
  cTellTale s(log, 's');
  cTellTale t(log, 't');
  s.mpAction = [](cTellTale& self, mrmi::cConnectable& connectable) { connectable.notifySignalDetached(self); };
  cReceiver receiver;
  receiver.notifySignalAttached(s);
  receiver.notifySignalAttached(s);
  receiver.notifySignalAttached(t);
  receiver.detachAllSignals();
  EXPECT_EQ("sst", log);
  // It works again afterwards.
  receiver.notifySignalDetached(s);
  log.clear();
  receiver.detachAllSignals();
  EXPECT_EQ("t", log);
}

TEST(cConnectable, ASignalAttachedWhileItDetachesIsTold)
{
  static cTellTale* pLate = nullptr;
  std::string log;
  cTellTale s(log, 's');
  cTellTale late(log, 'l');
  pLate = &late;
  s.mpAction = [](cTellTale&, mrmi::cConnectable& connectable) { connectable.notifySignalAttached(*pLate); };
  cReceiver receiver;
  receiver.notifySignalAttached(s);
  receiver.detachAllSignals();
  EXPECT_EQ("sl", log);
  s.mpAction = nullptr;
}

TEST(cConnectable, DetachingInsideOfDetachingIsSafe)
{
  std::string log;
  cTellTale s(log, 's');
  cSignal real;
  s.mpAction = [](cTellTale& self, mrmi::cConnectable& connectable) {
    self.mpAction = nullptr;
    connectable.detachAllSignals();
    // The outer one still runs, so this does nothing.
    connectable.notifySignalDetached(self);
  };
  cReceiver receiver;
  real.connect(slotOf(receiver));
  receiver.notifySignalAttached(s);
  real.connect(slotOf(receiver));
  receiver.notifySignalAttached(s);
  receiver.detachAllSignals();
  EXPECT_EQ("ssss", log); // once by the outer one, twice by the inner one, then the second by the outer one
  EXPECT_EQ(0u, real.slotCount());
  receiver.notifySignalDetached(s);
  log.clear();
  receiver.detachAllSignals();
  EXPECT_EQ("", log);
}

TEST(cConnectable, ASignalThatStandsTwiceDropsItsCallsAtOnce)
{
  std::string log;
  cReceiver receiver(&log);
  cSignal signal;
  signal.connect(slotOf(receiver));
  signal.connect(slotOf(receiver));
  receiver.detachAllSignals();
  EXPECT_EQ(0u, signal.slotCount());
  signal.connect(slotOf(receiver));
  EXPECT_EQ("r", callsOf(signal, log));
}

TEST(cConnectable, AfterDetachAllSignalsASignalMayGo)
{
  cReceiver receiver;
  {
    cSignal signal;
    signal.connect(slotOf(receiver));
    receiver.detachAllSignals();
  }
  receiver.detachAllSignals();
  receiver.clear();
}

TEST(cConnectable, ClearEndsAllConnections)
{
  std::string log;
  cReceiver receiver(&log);
  cReceiver other(&log, 'o');
  cSignal first;
  cSignal second;
  first.connect(slotOf(receiver));
  second.connect(slotOf(receiver));
  second.connect(slotOf(other));
  receiver.clear();
  EXPECT_EQ("", callsOf(first, log));
  EXPECT_EQ("o", callsOf(second, log));
  first.connect(slotOf(receiver));
  EXPECT_EQ("r", callsOf(first, log));
}

TEST(cConnectable, ReAssignReplacesEveryEntryInItsPlace)
{
  std::string log;
  cTellTale s(log, 's');
  cTellTale t(log, 't');
  cTellTale u(log, 'u');
  cReceiver receiver;
  receiver.notifySignalAttached(s);
  receiver.notifySignalAttached(t);
  receiver.notifySignalAttached(s);
  receiver.reAssign(s, u);
  receiver.detachAllSignals();
  EXPECT_EQ("utu", log);
  receiver.reAssign(s, t);
  log.clear();
  receiver.detachAllSignals();
  EXPECT_EQ("utu", log);
}

TEST(cConnectable, ReAssignWhileItDetachesGoesOnBehindTheEntry)
{
  static cTellTale* pTo = nullptr;
  std::string log;
  cTellTale s(log, 's');
  cTellTale t(log, 't');
  pTo = &t;
  s.mpAction = [](cTellTale& self, mrmi::cConnectable& connectable) { connectable.reAssign(self, *pTo); };
  cReceiver receiver;
  std::unique_ptr<mrmi::cAbstractSlotCall> const call(slotOf(receiver).createConnectedInstance(s));
  receiver.notifySignalAttached(s);
  receiver.detachAllSignals();
  EXPECT_EQ("st", log);
  log.clear();
  receiver.clear();
  EXPECT_EQ("tt", log);
}

TEST(cConnectableFault, ReAssignThatFailsChangesNothing)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build does not let allocations fail";
  }
  std::string log;
  cTellTale s(log, 's');
  cTellTale t(log, 't');
  for (unsigned int n = 1; n <= 2; ++n)
  {
    cReceiver receiver;
    std::unique_ptr<mrmi::cAbstractSlotCall> const first(slotOf(receiver).createConnectedInstance(s));
    std::unique_ptr<mrmi::cAbstractSlotCall> const second(slotOf(receiver).createConnectedInstance(s));
    {
      support::cAllocationFault fault(n);
      EXPECT_THROW(receiver.reAssign(s, t), std::bad_alloc);
    }
    log.clear();
    receiver.detachAllSignals();
    EXPECT_EQ("ss", log);
    receiver.notifySignalDetached(s);
  }
}

TEST(cConnectableFault, NotifySignalAttachedThatFailsChangesNothing)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build does not let allocations fail";
  }
  std::string log;
  cTellTale s(log, 's');
  cReceiver receiver;
  {
    support::cAllocationFault fault(1);
    EXPECT_THROW(receiver.notifySignalAttached(s), std::bad_alloc);
  }
  receiver.detachAllSignals();
  EXPECT_EQ("", log);
}

TEST(cConnectable, WhatASignalThrowsDoesNotLeaveTheDestructor)
{
  std::string log;
  cTellTale s(log, 's');
  cTellTale t(log, 't');
  cSignal real;
  s.mpAction = [](cTellTale&, mrmi::cConnectable&) { cSTDExceptions::throwUnexpectedEndOfInput(); };
  t.mpAction = [](cTellTale&, mrmi::cConnectable&) { throw std::runtime_error("t"); };
  support::cCaptureOut capture;
  {
    cReceiver receiver;
    receiver.notifySignalAttached(s);
    receiver.notifySignalAttached(t);
    real.connect(slotOf(receiver));
  }
  EXPECT_EQ("st", log);
  EXPECT_EQ(0u, real.slotCount());
  EXPECT_TRUE(capture.contains("[cRuntimeException (runtime)]: Unexpected end of input!")) << capture.text();
  EXPECT_TRUE(capture.contains("Exception in destructor: unknown exception")) << capture.text();
  ASSERT_FALSE(capture.lines().empty());
  EXPECT_EQ("rmi/cConnectable", capture.lines()[0].file);
}

TEST(cConnectable, WhatASignalThrowsLeavesDetachAllSignals)
{
  std::string log;
  cTellTale s(log, 's');
  s.mpAction = [](cTellTale&, mrmi::cConnectable&) { cSTDExceptions::throwUnexpectedEndOfInput(); };
  cReceiver receiver;
  receiver.notifySignalAttached(s);
  EXPECT_ANY_THROW(receiver.detachAllSignals());
  // The mark is gone.
  receiver.notifySignalDetached(s);
  receiver.detachAllSignals();
  EXPECT_EQ("s", log);
}

TEST(cConnectable, ASlotCallThatOutlivesItsReceiverGoesQuietly)
{
  std::string log;
  cTellTale s(log, 's');
  std::unique_ptr<cReceiver> receiver(new cReceiver);
  std::unique_ptr<mrmi::cAbstractSlotCall> call(slotOf(*receiver).createConnectedInstance(s));
  receiver.reset();
  EXPECT_EQ("s", log);
  call.reset();
}

namespace
{
double microseconds(std::chrono::steady_clock::time_point from)
{
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - from).count();
}

/// Least time of several rounds that `count` signals with one connection each to one receiver take to die.
double timeOfSignalsDying(unsigned int count)
{
  double best = 1e9;
  for (int round = 0; round < 5; ++round)
  {
    cReceiver receiver;
    std::unique_ptr<cSignal[]> signals(new cSignal[count]);
    for (unsigned int i = 0; i < count; ++i)
    {
      signals[i].connect(slotOf(receiver));
    }
    std::chrono::steady_clock::time_point const start = std::chrono::steady_clock::now();
    signals.reset();
    best = std::min(best, microseconds(start));
  }
  return best;
}

double timeOfReceiverDying(unsigned int count)
{
  double best = 1e9;
  for (int round = 0; round < 5; ++round)
  {
    std::unique_ptr<cReceiver> receiver(new cReceiver);
    std::unique_ptr<cSignal[]> signals(new cSignal[count]);
    for (unsigned int i = 0; i < count; ++i)
    {
      signals[i].connect(slotOf(*receiver));
    }
    std::chrono::steady_clock::time_point const start = std::chrono::steady_clock::now();
    receiver.reset();
    best = std::min(best, microseconds(start));
  }
  return best;
}
} // namespace

// 50 times the connections may cost 50 times the time, and some more for the caches. A search of the whole list for
// each connection would make it 2500.
TEST(cConnectable, TheDeathOfManySignalsWithOneReceiverIsLinear)
{
  EXPECT_LT(timeOfSignalsDying(50000), 500 * timeOfSignalsDying(1000));
}

TEST(cConnectable, TheDeathOfAReceiverWithManySignalsIsLinear)
{
  EXPECT_LT(timeOfReceiverDying(50000), 500 * timeOfReceiverDying(1000));
}
