#include "rmi/cConnectable.h"

#include "rmi/cAbstractRMIFactory.h"
#include "rmi/cCallParameterMissmatchException.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cNoSuchSignalException.h"
#include "rmi/cNoSuchSlotException.h"
#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "rmi/signal0.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cBugException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cTypeMissmatchException.h"
#include "std/tArrayRef.h"
#include "std/tConstArrayRef.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/cPublishing.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <vector>

namespace
{

using support::caught;
using support::messageOf;
using support::toString;

typedef mstd::tAutoPtr<mrmi::cAbstractSlotCall> tCall;

char const* const MissingReturnValue = "Missing return value on reference frame while indirect slot call!";

class cReceiver : public mrmi::cConnectable
{
public:
  void slt() { ++miCalls; }
  int miCalls = 0;
};

tCall poke(mrmi::cConnectable& object, support::cPokeCall::tBody body)
{
  return tCall(new support::cPokeCall(object, std::move(body)));
}

tCall scale(mrmi::cConnectable& object)
{
  return tCall(new support::cScaleCall(object, [](int iFactor, int& iValue) { iValue *= iFactor; }));
}

/// Calls a slot without arguments.
void invoke(mrmi::cConnectable const& object, char const* pName)
{
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(result, true, false);
  object.invokeIndirectSlot(pName, frame);
}

unsigned int lengthOf(mstd::tPtrList<mrmi::cPublicSlot> const* pList)
{
  return pList != nullptr ? pList->length() : 0;
}

/// Slot call that tells of its end.
class cMortalCall : public support::cPokeCall
{
public:
  cMortalCall(
      mrmi::cConnectable& object, std::vector<std::string>& deaths, std::string name,
      support::cPokeCall::tBody body = [] {})
      : support::cPokeCall(object, std::move(body)), mDeaths(deaths), mName(std::move(name))
  {
  }
  ~cMortalCall() override { mDeaths.push_back(mName); }

private:
  std::vector<std::string>& mDeaths;
  std::string mName;
};

/// Makes slot calls that do nothing, and signals.
class cFactory : public mrmi::cAbstractRMIFactory
{
public:
  tCall createRemoteSlotCall(mrmi::cConnectable& connectable) override
  {
    mpAsked = &connectable;
    return mbMakes ? tCall(new cMortalCall(connectable, mDeaths, "remote")) : tCall();
  }
  mrmi::cAbstractSignal* createRemoteSignal(unsigned int index) override
  {
    miAsked = index;
    return mbMakes ? &mSignal : nullptr;
  }

  bool mbMakes = true;
  mrmi::cConnectable* mpAsked = nullptr;
  unsigned int miAsked = 0;
  mrmi::signal0<piVoid> mSignal;
  std::vector<std::string> mDeaths;
};

template <class T>
mstd::tArray<char> bytesOf(T const& value)
{
  msa::cSerializeBinary stream;
  value >> stream;
  mstd::tArray<char> bytes;
  stream.swapData(bytes);
  return bytes;
}

} // namespace

TEST(PublicConnectable, ANewOneHasNoLists)
{
  cReceiver receiver;
  EXPECT_EQ(nullptr, receiver.hasPublicSlots());
  EXPECT_EQ(nullptr, receiver.hasPublicSignals());
  EXPECT_EQ(nullptr, receiver.tryFindSlot("x"));
  EXPECT_EQ(nullptr, receiver.tryFindPublicSlot(*poke(receiver, [] {})));
  EXPECT_EQ("unknown", toString(receiver.publicSlotName(*poke(receiver, [] {}))));
  mrmi::cNoSuchSlotException const e = caught<mrmi::cNoSuchSlotException>([&] { receiver.findPublicSlot("x"); });
  EXPECT_EQ("x", toString(e.slotName()));
  EXPECT_EQ("(?)", toString(e.slotArgs()));
  EXPECT_THROW(receiver.findPublicSignal("x"), mrmi::cNoSuchSignalException);
  EXPECT_THROW(receiver.findSignal("x"), mrmi::cNoSuchSignalException);
}

TEST(PublicConnectable, ListsAreMadeOnDemandAndStay)
{
  cReceiver receiver;
  mstd::tPtrList<mrmi::cPublicSlot>& slots = receiver.codRSlots();
  mstd::tPtrList<mrmi::cPublicSignal>& signals = receiver.codRSignals();
  EXPECT_EQ(mstd::tPtrList<mrmi::cPublicSlot>::Object, slots.kind());
  EXPECT_EQ(mstd::tPtrList<mrmi::cPublicSignal>::Object, signals.kind());
  EXPECT_TRUE(slots.empty());
  EXPECT_TRUE(signals.empty());
  EXPECT_EQ(&slots, receiver.hasPublicSlots());
  EXPECT_EQ(&signals, receiver.hasPublicSignals());
  EXPECT_EQ(&slots, &receiver.codRSlots());
  EXPECT_EQ(&signals, &receiver.codRSignals());
}

TEST(PublicConnectable, ARegisteredSlotIsFoundByNameAndByCall)
{
  cReceiver receiver;
  tCall call(poke(receiver, [] {}));
  mrmi::cAbstractSlotCall& slotCall = *call;
  mrmi::cPublicSlot& slot = receiver.registerSlot("open", "piVoid", "piInt32", "opens", call);
  EXPECT_EQ(nullptr, call.get());
  EXPECT_EQ("open", toString(slot.name()));
  EXPECT_EQ("piVoid", toString(slot.returnTypeName()));
  EXPECT_EQ("piInt32", toString(slot.paramTypeNames()));
  EXPECT_EQ("opens", toString(slot.description()));
  EXPECT_EQ(&slotCall, slot.slot());
  EXPECT_EQ(&slot, &receiver.findPublicSlot("open"));
  EXPECT_EQ(&slotCall, receiver.tryFindSlot("open"));
  EXPECT_EQ(&slot, receiver.tryFindPublicSlot(slotCall));
  EXPECT_EQ("open", toString(receiver.publicSlotName(slotCall)));
  EXPECT_TRUE(slotCall.isPublicSlot());
  EXPECT_EQ(&slot, slotCall.publicSlot());
  EXPECT_EQ("open", toString(slotCall.publicSlotName()));
  EXPECT_EQ(nullptr, receiver.tryFindSlot("close"));
  EXPECT_THROW(receiver.findPublicSlot("close"), mrmi::cNoSuchSlotException);
  EXPECT_EQ("unknown", toString(receiver.publicSlotName(*poke(receiver, [] {}))));
  slotCall.setPublicSlot(nullptr);
  EXPECT_FALSE(slotCall.isPublicSlot());
}

TEST(PublicConnectable, OfTwoSlotsOfOneNameTheFirstIsCalled)
{
  cReceiver receiver;
  std::string calls;
  mrmi::cPublicSlot& first = receiver.registerSlot("x", "", "", "", poke(receiver, [&] { calls += "1"; }));
  mrmi::cPublicSlot& second = receiver.registerSlot("x", "", "", "", poke(receiver, [&] { calls += "2"; }));
  receiver.registerSlot("y", "", "", "", poke(receiver, [&] { calls += "y"; }));
  invoke(receiver, "x");
  invoke(receiver, "y");
  EXPECT_EQ("1y", calls);
  EXPECT_EQ(3u, lengthOf(receiver.hasPublicSlots()));
  EXPECT_EQ(&first, &receiver.findPublicSlot("x"));
  EXPECT_EQ(&second, receiver.tryFindPublicSlot(*second.slot()));
}

TEST(PublicConnectable, NoSlotCallIsAnAssertionFailure)
{
  cReceiver receiver;
  support::cCaptureOut mute;
  EXPECT_THROW(receiver.registerSlot("x", "", "", "", tCall()), mstd::cBugException);
  EXPECT_EQ(nullptr, receiver.hasPublicSlots());
}

TEST(PublicConnectable, ASlotCallRegistersAtItsReceiver)
{
  cReceiver receiver;
  tCall const holder(poke(receiver, [] {}));
  mrmi::cPublicSlot& slot = holder->registerSlotByInterface("x", "r", "p", "d", poke(receiver, [] {}));
  EXPECT_EQ(&slot, &receiver.findPublicSlot("x"));
  EXPECT_EQ("r", toString(slot.returnTypeName()));
  EXPECT_EQ("p", toString(slot.paramTypeNames()));
  EXPECT_EQ("d", toString(slot.description()));
  EXPECT_FALSE(holder->isPublicSlot());
}

TEST(PublicConnectable, ARegisteredSignalIsFoundByName)
{
  cReceiver receiver;
  mrmi::localSignal0<piVoid> first;
  mrmi::localSignal0<piVoid> second;
  mrmi::cPublicSignal& published = receiver.registerSignal("sig", "r", "p", 9, "d", first);
  receiver.registerSignal("sig", "", "", 0, "", second);
  EXPECT_EQ("sig", toString(published.name()));
  EXPECT_EQ("r", toString(published.returnTypeName()));
  EXPECT_EQ("p", toString(published.paramTypeNames()));
  EXPECT_EQ("d", toString(published.description()));
  EXPECT_EQ(9u, published.type());
  EXPECT_EQ(&first, &receiver.findSignal("sig"));
  EXPECT_EQ(&published, &receiver.findPublicSignal("sig"));
  EXPECT_EQ(2u, receiver.hasPublicSignals()->length());
  EXPECT_TRUE(first.isPublicSignal());
  EXPECT_EQ("sig", toString(first.publicSignalName()));
  mrmi::cNoSuchSignalException const e = caught<mrmi::cNoSuchSignalException>([&] { receiver.findSignal("other"); });
  EXPECT_EQ("other", toString(e.signalName()));
  first.setPublicSignal(nullptr);
  EXPECT_FALSE(first.isPublicSignal());
  EXPECT_THROW(first.publicSignalName(), mstd::cBugException);
}

TEST(PublicConnectable, ExportSignalPublishesWhatTheSignalTells)
{
  class cTelling : public mrmi::localSignal0<piVoid>
  {
  public:
    mstd::cAsciiString parametersTypeString() const override { return "params"; }
    mstd::cAsciiString returnTypeString() const override { return "result"; }
    void addParameterInfo(mrmi::cPublicSignal& published) override { published.addParameter().set("p", false, false); }
  };
  cReceiver receiver;
  cTelling signal;
  signal.exportSignal(receiver, "sig", 4, "text");
  mrmi::cPublicSignal& published = receiver.findPublicSignal("sig");
  EXPECT_EQ("result", toString(published.returnTypeName()));
  EXPECT_EQ("params", toString(published.paramTypeNames()));
  EXPECT_EQ(4u, published.type());
  EXPECT_EQ("text", toString(published.description()));
  EXPECT_EQ(1u, published.parameters().length());
  EXPECT_EQ(&signal, published.signal());
  // a local signal tells nothing
  mrmi::localSignal0<piVoid> local;
  local.exportSignal(receiver, "local", 0, "");
  EXPECT_EQ("", toString(receiver.findPublicSignal("local").returnTypeName()));
  EXPECT_EQ(0u, receiver.findPublicSignal("local").parameters().length());
}

TEST(PublicConnectable, ASignalThatCannotDescribeItselfIsNotPublished)
{
  class cShy : public mrmi::localSignal0<piVoid>
  {
  public:
    void addParameterInfo(mrmi::cPublicSignal& published) override
    {
      EXPECT_EQ("sig", toString(published.name()));
      EXPECT_EQ("sig", toString(publicSignalName())); // it is published already
      if (mpToClear != nullptr)
      {
        mpToClear->clear();
      }
      throw 5;
    }
    mrmi::cConnectable* mpToClear = nullptr;
  };
  cReceiver receiver;
  cShy signal;
  EXPECT_THROW(signal.exportSignal(receiver, "sig", 0, ""), int);
  EXPECT_FALSE(signal.isPublicSignal());
  EXPECT_THROW(receiver.findPublicSignal("sig"), mrmi::cNoSuchSignalException);
  // what was published before stays, also the name of the signal
  mrmi::localSignal0<piVoid> other;
  receiver.registerSignal("other", "", "", 0, "", other);
  receiver.registerSignal("former", "", "", 0, "", signal);
  EXPECT_THROW(signal.exportSignal(receiver, "sig", 0, ""), int);
  EXPECT_EQ("former", toString(signal.publicSignalName()));
  EXPECT_EQ(2u, receiver.hasPublicSignals()->length());
  EXPECT_EQ(&other, &receiver.findSignal("other"));
  EXPECT_EQ(&signal, &receiver.findSignal("former"));
  // the description may be gone already
  cReceiver cleared;
  signal.mpToClear = &cleared;
  EXPECT_THROW(signal.exportSignal(cleared, "sig", 0, ""), int);
  EXPECT_TRUE(cleared.hasPublicSignals()->empty());
}

TEST(PublicConnectable, ARemoteSlotComesFromTheStreamAndTheFactory)
{
  cReceiver source;
  mrmi::cPublicSlot& slot = source.registerSlot("open", "piVoid", "piInt32", "opens", poke(source, [] {}));
  slot.addParameter().set("piInt32", false, false);
  mstd::tArray<char> const bytes = bytesOf(slot);

  cFactory factory; // outlives what it made
  cReceiver receiver;
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  mrmi::cPublicSlot& remote = receiver.registerRemoteSlot(reader, factory);
  EXPECT_EQ(&receiver, factory.mpAsked);
  EXPECT_EQ(&remote, &receiver.findPublicSlot("open"));
  EXPECT_EQ("opens", toString(remote.description()));
  EXPECT_EQ(1u, remote.parameters().length());
  ASSERT_NE(nullptr, remote.slot());
  EXPECT_EQ(&remote, remote.slot()->publicSlot());
}

TEST(PublicConnectable, ARemoteSlotThatCannotBeReadIsNotRegistered)
{
  cReceiver source;
  mstd::tArray<char> bytes = bytesOf(source.registerSlot("open", "r", "p", "d", poke(source, [] {})));
  bytes.truncate(bytes.length() - 1);
  cFactory factory; // outlives what it made
  cReceiver receiver;
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  support::cCaptureOut mute;
  EXPECT_THROW(receiver.registerRemoteSlot(reader, factory), mstd::cAbstractException);
  EXPECT_EQ(0u, lengthOf(receiver.hasPublicSlots()));
  EXPECT_EQ(1u, factory.mDeaths.size());
}

TEST(PublicConnectable, ARemoteSlotByNameOnlyIsATemporaryOne)
{
  cReceiver receiver;
  int iCalls = 0;
  mrmi::cPublicSlot& slot = receiver.registerRemoteSlot("x", poke(receiver, [&] { ++iCalls; }));
  EXPECT_EQ("x", toString(slot.name()));
  EXPECT_EQ("", toString(slot.returnTypeName()));
  EXPECT_EQ("", toString(slot.paramTypeNames()));
  EXPECT_EQ("tmp remoteslot", toString(slot.description()));
  invoke(receiver, "x");
  EXPECT_EQ(1, iCalls);
}

TEST(PublicConnectable, ARemoteSignalComesFromTheStreamAndTheFactory)
{
  cReceiver source;
  mrmi::localSignal0<piVoid> signal;
  mstd::tArray<char> const bytes = bytesOf(source.registerSignal("sig", "r", "p", 9, "d", signal));
  cFactory factory;
  cReceiver receiver;
  receiver.setIndex(1234);
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  mrmi::cPublicSignal& remote = receiver.registerRemoteSignal(reader, factory);
  EXPECT_EQ(1234u, factory.miAsked);
  EXPECT_EQ(&remote, &receiver.findPublicSignal("sig"));
  EXPECT_EQ(9u, remote.type());
  EXPECT_EQ(&factory.mSignal, &receiver.findSignal("sig"));
  EXPECT_EQ("sig", toString(factory.mSignal.publicSignalName()));
  // what can't be read changes nothing
  msa::cDeserializeBinary empty;
  EXPECT_THROW(receiver.registerRemoteSignal(empty, factory), mstd::cAbstractException);
  EXPECT_EQ(1u, receiver.hasPublicSignals()->length());
}

TEST(PublicConnectable, AFactoryThatMakesNothingIsAnAssertionFailure)
{
  cFactory factory; // outlives what it made
  cReceiver receiver;
  factory.mbMakes = false;
  msa::cDeserializeBinary reader;
  support::cCaptureOut mute;
  EXPECT_THROW(receiver.registerRemoteSlot(reader, factory), mstd::cBugException);
  EXPECT_THROW(receiver.registerRemoteSignal(reader, factory), mstd::cBugException);
  EXPECT_EQ(0u, lengthOf(receiver.hasPublicSlots()));
}

TEST(PublicConnectable, ACallByNameReadsItsArgumentsAndWritesItsResult)
{
  cReceiver receiver;
  receiver.registerSlot("scale", "piVoid", "piInt32, piInt32", "", scale(receiver));
  int iFactor = 6;
  int iValue = 7;
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(iFactor, false, true).addRef(iValue, true, true).addRef(result, true, false);
  frame.skipNext(); // the call begins at the start all the same
  receiver.invokeIndirectSlot("scale", frame);
  EXPECT_EQ(42, iValue);
  EXPECT_EQ(6, iFactor);
}

TEST(PublicConnectable, ACallByNameWithThreeArguments)
{
  cReceiver receiver;
  receiver.registerSlot("join", "", "", "", tCall(new support::cJoinCall(receiver)));
  int iFirst = 5;
  bool bSecond = false;
  double dThird = 0;
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(iFirst, false, true).addRef(bSecond, false, true).addRef(dThird, true, false);
  EXPECT_EQ(MissingReturnValue,
            messageOf(caught<mstd::cBugException>([&] { receiver.invokeIndirectSlot("join", frame); })));
  frame.addRef(result, true, false);
  receiver.invokeIndirectSlot("join", frame);
  EXPECT_EQ(-5.0, dThird);
}

TEST(PublicConnectable, AMissingOrWrongReturnValueIsTold)
{
  cReceiver receiver;
  int iTold = 0;
  receiver.registerSlot("tell", "", "", "",
                        tCall(new support::cTellCall(receiver, [&](int iValue) { iTold = iValue; })));
  int iValue = 3;
  auto const failure = [&](msa::cReferenceFrame& frame) {
    return caught<mstd::cBugException>([&] { receiver.invokeIndirectSlot("tell", frame); });
  };
  {
    msa::cReferenceFrame frame; // too short to skip the argument
    mstd::cBugException const e = failure(frame);
    EXPECT_EQ(MissingReturnValue, messageOf(e));
    ASSERT_NE(nullptr, e.history());
    EXPECT_EQ("cOutOfBoundsException", toString(e.history()->typeName()));
  }
  {
    msa::cReferenceFrame frame; // one reference only
    frame.addRef(iValue, false, true);
    mstd::cBugException const e = failure(frame);
    EXPECT_EQ(MissingReturnValue, messageOf(e));
    ASSERT_NE(nullptr, e.history());
    EXPECT_EQ("cOutOfBoundsException", toString(e.history()->typeName()));
  }
  {
    msa::cReferenceFrame frame; // another type
    frame.addRef(iValue, false, true).addRef(iValue, true, false);
    mstd::cBugException const e = failure(frame);
    EXPECT_EQ(MissingReturnValue, messageOf(e));
    ASSERT_NE(nullptr, e.history());
    EXPECT_EQ("cTypeMissmatchException", toString(e.history()->typeName()));
    EXPECT_EQ(nullptr, e.history()->history());
  }
  EXPECT_EQ(0, iTold);
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(iValue, false, true).addRef(result, true, false);
  receiver.invokeIndirectSlot("tell", frame);
  EXPECT_EQ(3, iTold);
}

TEST(PublicConnectable, WithoutArgumentsTheFramesOwnFailureGoesThrough)
{
  cReceiver receiver;
  receiver.registerSlot("x", "", "", "", poke(receiver, [] {}));
  msa::cReferenceFrame empty;
  EXPECT_THROW(receiver.invokeIndirectSlot("x", empty), mstd::cOutOfBoundsException);
  int iValue = 0;
  msa::cReferenceFrame wrong;
  wrong.addRef(iValue, true, false);
  EXPECT_THROW(receiver.invokeIndirectSlot("x", wrong), mstd::cTypeMissmatchException);
}

TEST(PublicConnectable, AnArgumentOfAnotherTypeIsToldWithTheDefinitionOfTheSlot)
{
  cReceiver receiver;
  mrmi::cPublicSlot& slot = receiver.registerSlot("scale", "piVoid", "piInt32, piInt32", "", scale(receiver));
  int iFactor = 6;
  bool bValue = true;
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(iFactor, false, true).addRef(bValue, true, true).addRef(result, true, false);
  auto const action = [&] { receiver.invokeIndirectSlot("scale", frame); };
  mrmi::cCallParameterMissmatchException const e = caught<mrmi::cCallParameterMissmatchException>(action);
  EXPECT_EQ("Slot parameter of (scale) or return value missmatch!", messageOf(e));
  ASSERT_NE(nullptr, e.history());
  EXPECT_EQ("cRuntimeException", toString(e.history()->typeName()));
  EXPECT_EQ("Definition: \"piVoid scale(piInt32, piInt32)\"", messageOf(*e.history()));
  ASSERT_NE(nullptr, e.history()->history());
  EXPECT_EQ("cTypeMissmatchException", toString(e.history()->history()->typeName()));
  EXPECT_EQ(nullptr, e.history()->history()->history());
  // not registered
  slot.slot()->setPublicSlot(nullptr);
  mrmi::cCallParameterMissmatchException const bare = caught<mrmi::cCallParameterMissmatchException>(action);
  EXPECT_EQ("Slot parameter or return value missmatch on unregistered slot!", messageOf(bare));
  ASSERT_NE(nullptr, bare.history());
  EXPECT_EQ("cTypeMissmatchException", toString(bare.history()->typeName()));
}

TEST(PublicConnectable, ACallOfAnUnknownNameTellsTheTypesOfTheFrame)
{
  cReceiver receiver;
  int iValue = 0;
  mstd::cAsciiString sText;
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(iValue, false, true).addRef(result, true, false);
  auto const failure = [&](msa::cReferenceFrame& arguments) {
    return caught<mrmi::cNoSuchSlotException>([&] { receiver.invokeIndirectSlot("open", arguments); });
  };
  EXPECT_EQ("(piInt32)", toString(failure(frame).slotArgs()));
  EXPECT_EQ("Slot \"open((piInt32))\" not found in interface", messageOf(failure(frame)));
  msa::cReferenceFrame two;
  two.addRef(iValue, false, true).addRef(sText, false, true);
  EXPECT_EQ("Slot \"open((piInt32, cAsciiString))\" not found in interface", messageOf(failure(two)));
  msa::cReferenceFrame none;
  EXPECT_EQ("()", toString(failure(none).slotArgs()));
}

TEST(PublicConnectable, ACallThroughStreamsReadsAndWrites)
{
  cReceiver receiver;
  receiver.registerSlot("scale", "", "", "", scale(receiver));
  msa::cSerializeBinary arguments;
  6 >> arguments;
  7 >> arguments;
  mstd::tArray<char> bytes;
  arguments.swapData(bytes);
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  msa::cSerializeBinary results;
  receiver.invokeIndirectRemoteSlot("scale", reader, results);
  results.swapData(bytes);
  msa::cDeserializeBinary answer((mstd::tConstArrayRef<char>(bytes)));
  int iValue = 0;
  iValue << answer;
  EXPECT_EQ(42, iValue);
  EXPECT_TRUE(answer.eoc());
  mrmi::cNoSuchSlotException const e =
      caught<mrmi::cNoSuchSlotException>([&] { receiver.invokeIndirectRemoteSlot("open", reader, results); });
  EXPECT_EQ("(?)", toString(e.slotArgs()));
  EXPECT_EQ("Slot \"open((?))\" not found in interface!", messageOf(e));
}

TEST(PublicConnectable, ADirectCallThatIsPublishedCannotBeCalledByName)
{
  cReceiver receiver;
  tCall call(new mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(receiver, &cReceiver::slt));
  receiver.registerSlot("x", "", "", "", call);
  EXPECT_EQ("Indirect slots cannot be called by reference!",
            messageOf(caught<mstd::cBugException>([&] { invoke(receiver, "x"); })));
  EXPECT_EQ(0, receiver.miCalls);
}

TEST(PublicConnectable, ClearEmptiesTheListsAndKeepsThem)
{
  cReceiver receiver;
  std::vector<std::string> deaths;
  receiver.registerSlot("a", "", "", "", tCall(new cMortalCall(receiver, deaths, "a")));
  receiver.registerSlot("b", "", "", "", tCall(new cMortalCall(receiver, deaths, "b")));
  mrmi::localSignal0<piVoid> signal;
  receiver.registerSignal("sig", "", "", 0, "", signal);
  mstd::tPtrList<mrmi::cPublicSlot> const* const pSlots = receiver.hasPublicSlots();
  mstd::tPtrList<mrmi::cPublicSignal> const* const pSignals = receiver.hasPublicSignals();
  receiver.clear();
  EXPECT_EQ((std::vector<std::string>{"a", "b"}), deaths);
  EXPECT_EQ(pSlots, receiver.hasPublicSlots());
  EXPECT_EQ(pSignals, receiver.hasPublicSignals());
  EXPECT_TRUE(pSlots->empty());
  EXPECT_TRUE(pSignals->empty());
  EXPECT_EQ(nullptr, receiver.tryFindSlot("a"));
  receiver.registerSlot("a", "", "", "", poke(receiver, [] {}));
  invoke(receiver, "a");
}

TEST(PublicConnectable, ItsSlotCallsGoWithItAfterItHasLeftItsSignals)
{
  std::vector<std::string> deaths;
  mrmi::localSignal0<piVoid> signal;
  signal.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  {
    cReceiver receiver;
    signal.connect(cMortalCall(receiver, deaths, "template"));
    signal.connect(mrmi::cDirectLocalSlotCall0(receiver, &cReceiver::slt));
    receiver.registerSlot("a", "", "", "", tCall(new cMortalCall(receiver, deaths, "a")));
    receiver.registerSlot("b", "", "", "", tCall(new cMortalCall(receiver, deaths, "b")));
    receiver.codRSignals();
    deaths.clear();
  }
  EXPECT_EQ((std::vector<std::string>{"a", "b"}), deaths);
  EXPECT_EQ(0u, signal.slotCount());
}

TEST(PublicConnectable, ASlotMayClearItsConnectable)
{
  cReceiver receiver;
  std::vector<std::string> deaths;
  std::string calls;
  receiver.registerSlot("a", "", "", "", tCall(new cMortalCall(receiver, deaths, "a", [&] {
                          receiver.clear();
                          EXPECT_TRUE(deaths.empty()) << "the slot call still runs";
                          EXPECT_EQ(nullptr, receiver.tryFindSlot("a"));
                          receiver.registerSlot("c", "", "", "", poke(receiver, [&] { calls += "c"; }));
                          invoke(receiver, "c");
                          EXPECT_TRUE(deaths.empty());
                          receiver.clear();
                          calls += "a";
                        })));
  receiver.registerSlot("b", "", "", "", tCall(new cMortalCall(receiver, deaths, "b")));
  invoke(receiver, "a");
  EXPECT_EQ("ca", calls);
  EXPECT_EQ((std::vector<std::string>{"a", "b"}), deaths);
  // nothing is kept afterwards
  receiver.registerSlot("d", "", "", "", tCall(new cMortalCall(receiver, deaths, "d")));
  invoke(receiver, "d");
  receiver.clear();
  EXPECT_EQ((std::vector<std::string>{"a", "b", "d"}), deaths);
}

TEST(PublicConnectable, ASlotThatWasCalledInsideLeavesTheOuterCallRunning)
{
  cReceiver receiver;
  std::vector<std::string> deaths;
  receiver.registerSlot("inner", "", "", "", poke(receiver, [] {}));
  receiver.registerSlot("outer", "", "", "", tCall(new cMortalCall(receiver, deaths, "outer", [&] {
                          std::vector<std::string> const& seen = deaths;
                          cReceiver& object = receiver;
                          invoke(object, "inner");
                          object.clear();
                          EXPECT_TRUE(seen.empty()) << "the outer slot call still runs";
                        })));
  invoke(receiver, "outer");
  EXPECT_EQ(std::vector<std::string>{"outer"}, deaths);
}

TEST(PublicConnectable, ASlotMayDestroyItsConnectable)
{
  std::vector<std::string> deaths;
  cReceiver* pReceiver = new cReceiver;
  std::string calls;
  pReceiver->registerSlot("outer", "", "", "", tCall(new cMortalCall(*pReceiver, deaths, "outer", [&] {
                            invoke(*pReceiver, "inner");
                            EXPECT_TRUE(deaths.empty()) << "both slot calls may still run";
                            calls += "outer";
                          })));
  pReceiver->registerSlot("inner", "", "", "", tCall(new cMortalCall(*pReceiver, deaths, "inner", [&] {
                            delete pReceiver;
                            EXPECT_TRUE(deaths.empty());
                            calls += "inner";
                          })));
  invoke(*pReceiver, "outer");
  EXPECT_EQ("innerouter", calls);
  EXPECT_EQ((std::vector<std::string>{"outer", "inner"}), deaths);
}

TEST(PublicConnectable, ASlotCalledThroughStreamsMayDestroyItsConnectableAndFail)
{
  std::vector<std::string> deaths;
  cReceiver* pReceiver = new cReceiver;
  pReceiver->registerSlot("x", "", "", "", tCall(new cMortalCall(*pReceiver, deaths, "x", [&] {
                            std::vector<std::string> const& seen = deaths;
                            delete pReceiver;
                            EXPECT_TRUE(seen.empty()) << "the slot call still runs";
                            throw 5;
                          })));
  msa::cDeserializeBinary arguments;
  msa::cSerializeBinary results;
  EXPECT_THROW(pReceiver->invokeIndirectRemoteSlot("x", arguments, results), int);
  EXPECT_EQ(1u, deaths.size());
}

TEST(PublicConnectable, AFailureOfMemoryRegistersNothingAndFreesWhatWasHandedOver)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build cannot make an allocation fail";
  }
  mrmi::localSignal0<piVoid> signal;
  for (int iOperation = 0; iOperation < 2; ++iOperation)
  {
    bool bFired = true;
    for (unsigned int iNth = 1; bFired; ++iNth)
    {
      std::vector<std::string> deaths;
      deaths.reserve(1);
      cReceiver receiver;
      mstd::cAsciiString const sText("text");
      tCall call(new cMortalCall(receiver, deaths, "x"));
      signal.setPublicSignal(nullptr);
      bool bFailed = false;
      support::cAllocationFault fault(iNth);
      try
      {
        if (iOperation == 0)
        {
          receiver.registerSlot(sText, sText, sText, sText, call);
        }
        else
        {
          receiver.registerSignal(sText, sText, sText, 0, sText, signal);
        }
      }
      catch (std::bad_alloc const&)
      {
        bFailed = true;
      }
      bFired = fault.hasFired();
      fault.disarm();
      EXPECT_EQ(bFired, bFailed);
      if (bFired)
      {
        EXPECT_EQ(0u, lengthOf(receiver.hasPublicSlots()));
        EXPECT_FALSE(signal.isPublicSignal());
        EXPECT_TRUE(receiver.hasPublicSignals() == nullptr || receiver.hasPublicSignals()->empty());
        EXPECT_EQ(iOperation == 0 ? 1u : 0u, deaths.size());
      }
    }
  }
}
