#include "rmi/cAbstractSlotCall.h"

#include "rmi/cAbstractSlotCall0.h"
#include "rmi/cAbstractSlotCall1.h"
#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/localSignal0.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{
class cReceiver : public mrmi::cConnectable
{
public:
  void sltCalled() { ++miCalls; }
  int miCalls = 0;
};

class cCountingSignal : public mrmi::cAbstractSignal
{
public:
  void notifyConnectableDestroyed(mrmi::cConnectable&) override { ++miNotified; }
  void connect(mrmi::cConnectable&, mstd::cAsciiString const&, SlotResolving) override {}
  void disconnect(mrmi::cConnectable const&) override {}
  void addParameterInfo(mrmi::cPublicSignal&) override {}
  int miNotified = 0;

  /// Notifications by one detachAllSignals() of the receiver.
  int entriesAt(mrmi::cConnectable& receiver)
  {
    miNotified = 0;
    receiver.detachAllSignals();
    return miNotified;
  }
};

class cOwnCall : public mrmi::cAbstractSlotCall0<piVoid>
{
public:
  explicit cOwnCall(cReceiver& object, mrmi::cAbstractSignal* signal = nullptr)
      : mrmi::cAbstractSlotCall0<piVoid>(object, signal)
  {
  }
  using mrmi::cAbstractSlotCall0<piVoid>::call;
  void call() const override { static_cast<cReceiver*>(receiver())->sltCalled(); }
  void callRef(msa::cReferenceFrame&) const override {}
  mrmi::cAbstractSlotCall0<piVoid>* createConnectedInstance(mrmi::cAbstractSignal& signal) const override
  {
    return new cOwnCall(static_cast<cReceiver&>(assignedObject()), &signal);
  }
};

typedef std::unique_ptr<mrmi::cAbstractSlotCall> cCallPtr;

// No frame and no stream exists yet, and the base forms look at none: any address serves.
template <typename T>
T& anyReference()
{
  static char place;
  return reinterpret_cast<T&>(place);
}
} // namespace

TEST(cAbstractSlotCall, ATemplateRegistersNothing)
{
  cReceiver receiver;
  cCountingSignal signal;
  {
    cOwnCall const call(receiver);
    EXPECT_EQ(0, signal.entriesAt(receiver));
    EXPECT_EQ(&receiver, &call.assignedObject());
    EXPECT_FALSE(call.isPublicSlot());
  }
  EXPECT_EQ(0, signal.entriesAt(receiver));
}

TEST(cAbstractSlotCall, ATemplateThatGoesOutOfScopeAfterConnectDetachesNothing)
{
  cReceiver receiver;
  mrmi::localSignal0<piVoid> signal;
  {
    mrmi::cDirectLocalSlotCall0<cReceiver, piVoid> const call(receiver, &cReceiver::sltCalled);
    signal.connect(call, mrmi::cAbstractSignal::Append);
  }
  signal();
  EXPECT_EQ(1, receiver.miCalls);
  receiver.detachAllSignals();
  EXPECT_EQ(0u, signal.slotCount());
}

TEST(cAbstractSlotCall, AConnectedInstanceEntersTheReceiversListAndLeavesItWhenItGoes)
{
  cReceiver receiver;
  cCountingSignal signal;
  cCallPtr call(cOwnCall(receiver).createConnectedInstance(signal));
  EXPECT_EQ(1, signal.entriesAt(receiver));
  call.reset();
  EXPECT_EQ(0, signal.entriesAt(receiver));
}

TEST(cAbstractSlotCall, OneThatDiesAloneTakesEveryEntryOfItsSignal)
{
  cReceiver receiver;
  cCountingSignal signal;
  cCountingSignal other;
  cCallPtr first(cOwnCall(receiver).createConnectedInstance(signal));
  cCallPtr second(cOwnCall(receiver).createConnectedInstance(signal));
  cCallPtr foreign(cOwnCall(receiver).createConnectedInstance(other));
  receiver.notifySignalAttached(signal);
  EXPECT_EQ(3, signal.entriesAt(receiver));
  first.reset();
  EXPECT_EQ(0, signal.entriesAt(receiver));
  EXPECT_EQ(1, other.entriesAt(receiver));
  second.reset();
}

TEST(cAbstractSlotCall, OneThatGoesWhileItsReceiverDetachesTakesItsOwnEntryOnly)
{
  static cCallPtr* pVictim = nullptr;
  class cDropping : public cCountingSignal
  {
  public:
    void notifyConnectableDestroyed(mrmi::cConnectable& connectable) override
    {
      cCountingSignal::notifyConnectableDestroyed(connectable);
      pVictim->reset();
    }
  };
  cReceiver receiver;
  cDropping signal;
  cCallPtr first(cOwnCall(receiver).createConnectedInstance(signal));
  cCallPtr second(cOwnCall(receiver).createConnectedInstance(signal));
  cCallPtr third(cOwnCall(receiver).createConnectedInstance(signal));
  pVictim = &first;
  EXPECT_EQ(3, signal.entriesAt(receiver));
  EXPECT_EQ(2, signal.entriesAt(receiver));
}

TEST(cAbstractSlotCall, ACopyIsATemplate)
{
  cReceiver receiver;
  cCountingSignal signal;
  cCallPtr const connected(cOwnCall(receiver).createConnectedInstance(signal));
  {
    cOwnCall const copy(static_cast<cOwnCall const&>(*connected));
    EXPECT_EQ(1, signal.entriesAt(receiver));
    EXPECT_EQ(&receiver, &copy.assignedObject());
  }
  EXPECT_EQ(1, signal.entriesAt(receiver));
}

TEST(cAbstractSlotCall, ItMatchesItsReceiverOnly)
{
  cReceiver receiver;
  cReceiver other;
  cOwnCall const call(receiver);
  EXPECT_TRUE(call.matchSlotOfObject(&receiver));
  EXPECT_FALSE(call.matchSlotOfObject(&other));
  EXPECT_FALSE(call.matchSlotOfObject(nullptr));
}

TEST(cAbstractSlotCall, ReAssignRenamesTheEntriesAndLeavesTheCallsOwnSignal)
{
  cReceiver receiver;
  cCountingSignal before;
  cCountingSignal after;
  cCallPtr first(cOwnCall(receiver).createConnectedInstance(before));
  cCallPtr second(cOwnCall(receiver).createConnectedInstance(before));
  first->reAssign(&after);
  EXPECT_EQ(0, before.entriesAt(receiver));
  EXPECT_EQ(2, after.entriesAt(receiver));
  // The call still has its old signal, so what it takes with it are entries of that one.
  first.reset();
  EXPECT_EQ(2, after.entriesAt(receiver));
  receiver.notifySignalAttached(before);
  second.reset();
  EXPECT_EQ(0, before.entriesAt(receiver));
  EXPECT_EQ(2, after.entriesAt(receiver));
  receiver.clear();
}

TEST(cAbstractSlotCall, ReAssignOfATemplateDoesNothing)
{
  cReceiver receiver;
  cCountingSignal after;
  cOwnCall call(receiver);
  call.reAssign(&after);
  EXPECT_EQ(0, after.entriesAt(receiver));
}

TEST(cAbstractSlotCall, ReAssignToNoSignalIsAnAssertionFailure)
{
  cReceiver receiver;
  cCountingSignal signal;
  cCallPtr const call(cOwnCall(receiver).createConnectedInstance(signal));
  support::cCaptureOut capture;
  EXPECT_THROW(call->reAssign(nullptr), mstd::cBugException);
  EXPECT_EQ(1, signal.entriesAt(receiver));
}

TEST(cAbstractSlotCall, TheNameOfOneThatIsNotPublicIsABug)
{
  cReceiver receiver;
  cOwnCall const call(receiver);
  mstd::cBugException const e = support::caught<mstd::cBugException>([&] { call.publicSlotName(); });
  EXPECT_EQ("Slot is not a public one!", support::messageOf(e));
}

TEST(cAbstractSlotCall, TheBaseFormOfACallWithAFrameWritesALine)
{
  class cBare : public mrmi::cAbstractSlotCall
  {
  public:
    explicit cBare(mrmi::cConnectable& object) : mrmi::cAbstractSlotCall(object, nullptr) {}
  };
  cReceiver receiver;
  support::cCaptureOut capture;
  cBare(receiver).call(anyReference<msa::cReferenceFrame>());
  ASSERT_EQ(1u, capture.lines().size());
  EXPECT_EQ("DummyCall (1)", capture.lines()[0].text);
  EXPECT_EQ("rmi/cAbstractSlotCall", capture.lines()[0].file);
  EXPECT_EQ(54u, capture.lines()[0].line);
}

TEST(cAbstractSlotCall, TheBaseFormOfACallWithStreamsWritesATraceAndALine)
{
  cReceiver receiver;
  mrmi::cAbstractSlotCall const& call = cOwnCall(receiver);
  support::cCaptureOut capture;
  call.call(anyReference<msa::cAbstractDeserializer>(), anyReference<msa::cAbstractSerializer>());
  ASSERT_GE(capture.lines().size(), 4u);
  EXPECT_EQ("rmi/cAbstractSlotCall", capture.lines()[0].file);
  EXPECT_EQ(65u, capture.lines()[0].line);
  EXPECT_TRUE(capture.contains("mrmi::cAbstractSlotCall::call(")) << capture.text();
  EXPECT_EQ("DummyCall (2)", capture.lines().back().text);
  EXPECT_EQ("rmi/cAbstractSlotCall", capture.lines().back().file);
  EXPECT_EQ(66u, capture.lines().back().line);
}

TEST(cAbstractSlotCall0, ItDescribesItself)
{
  cReceiver receiver;
  cOwnCall const call(receiver);
  EXPECT_EQ("", support::toString(call.parametersTypeString()));
  EXPECT_EQ("piVoid", support::toString(call.returnTypeString()));
}

TEST(cAbstractSlotCall0, AnApplicationsOwnCallCanBeConnected)
{
  cReceiver receiver;
  mrmi::localSignal0<piVoid> signal;
  signal.connect(cOwnCall(receiver));
  signal();
  EXPECT_EQ(1, receiver.miCalls);
}
