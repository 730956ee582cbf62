#include "rmi/signal0.h"

#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cIndirectLazySlotCall0.h"
#include "rmi/cIndirectResolvingSlotCall0.h"
#include "rmi/cNoSuchSlotException.h"
#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "rmi/cUnconnectedSignalException.h"
#include "std/cBugException.h"
#include "support/cCaptureOut.h"
#include "support/cPublishing.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

using mrmi::cAbstractSignal;
using support::caught;
using support::messageOf;
using support::toString;

typedef mrmi::signal0<piVoid> tSignal;

/// Publishes "poke", which counts.
class cTarget : public mrmi::cConnectable
{
public:
  explicit cTarget(bool bPublish = true)
  {
    if (bPublish)
    {
      publish();
    }
  }
  void publish()
  {
    registerSlot("poke", "piVoid", "", "",
                 mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new support::cPokeCall(*this, [this] {
                   ++miCalls;
                   if (mBody)
                   {
                     mBody();
                   }
                 })));
  }
  void slt() { ++miDirect; }

  int miCalls = 0;
  int miDirect = 0;
  std::function<void()> mBody;
};

} // namespace

TEST(signal0, ItDescribesItself)
{
  tSignal signal;
  EXPECT_EQ("", toString(signal.parametersTypeString()));
  EXPECT_EQ("piVoid", toString(signal.returnTypeString()));
  mrmi::cPublicSignal published("x", "", "", 0, "", signal);
  signal.addParameterInfo(published);
  EXPECT_EQ("piVoid", toString(published.returnValue().typeName()));
  EXPECT_FALSE(published.returnValue().isAlterable());
  EXPECT_TRUE(published.returnValue().isVoid());
  EXPECT_EQ(0u, published.parameters().length());
}

TEST(signal0, AnExportedOneHasTheTypesOfNoArgumentAndNoResult)
{
  mrmi::cConnectable connectable;
  tSignal signal;
  signal.exportSignal(connectable, "sigDone", 3, "done");
  mrmi::cPublicSignal const& published = connectable.findPublicSignal("sigDone");
  EXPECT_EQ("piVoid", toString(published.returnTypeName()));
  EXPECT_EQ("", toString(published.paramTypeNames()));
  EXPECT_EQ("done", toString(published.description()));
  EXPECT_EQ(3u, published.type());
  EXPECT_TRUE(published.returnValue().isVoid());
  EXPECT_EQ("sigDone", toString(signal.publicSignalName()));
}

TEST(signal0, ALazyConnectionLooksTheNameUpAtEachCall)
{
  cTarget target(false);
  tSignal signal;
  signal.connect(target, "poke", cAbstractSignal::ResolveOnCall);
  EXPECT_EQ(1u, signal.slotCount());
  mrmi::cNoSuchSlotException const e = caught<mrmi::cNoSuchSlotException>([&] { signal(); });
  EXPECT_EQ("poke", toString(e.slotName()));
  EXPECT_EQ("()", toString(e.slotArgs()));
  EXPECT_EQ("Slot \"poke(())\" not found in interface", messageOf(e));
  EXPECT_EQ(0u, signal.nestedInvocationCount());
  target.publish();
  signal();
  EXPECT_EQ(1, target.miCalls);
  target.codRSlots().clear();
  EXPECT_THROW(signal(), mrmi::cNoSuchSlotException);
}

TEST(signal0, AnyOtherResolvingIsLazy)
{
  cTarget target(false);
  tSignal signal;
  signal.connect(target, "poke", static_cast<cAbstractSignal::SlotResolving>(2));
  target.publish();
  signal();
  EXPECT_EQ(1, target.miCalls);
}

TEST(signal0, AResolvingConnectionFailsAtOnce)
{
  cTarget target(false);
  tSignal signal;
  mrmi::cNoSuchSlotException const e =
      caught<mrmi::cNoSuchSlotException>([&] { signal.connect(target, "poke", cAbstractSignal::ResolveOnConnect); });
  EXPECT_EQ("(?)", toString(e.slotArgs()));
  EXPECT_EQ("Slot \"poke((?))\" not found in interface!", messageOf(e));
  EXPECT_FALSE(signal.isConnected());
  EXPECT_THROW(signal(), mrmi::cUnconnectedSignalException);
}

TEST(signal0, AResolvingConnectionCallsTheSlotThatItFound)
{
  cTarget target;
  tSignal signal;
  signal.connect(target, "poke", cAbstractSignal::ResolveOnConnect);
  signal();
  target.findPublicSlot("poke"); // the name does not matter any more
  signal();
  EXPECT_EQ(2, target.miCalls);
}

TEST(signal0, AResolvingConnectionStaysWithItsSlot)
{
  cTarget target;
  std::string calls;
  target.mBody = [&] { calls += "1"; };
  tSignal resolving;
  tSignal lazy;
  resolving.connect(target, "poke", cAbstractSignal::ResolveOnConnect);
  lazy.connect(target, "poke", cAbstractSignal::ResolveOnCall);
  mstd::tAutoPtr<mrmi::cAbstractSlotCall> const call(new support::cPokeCall(target, [&] { calls += "2"; }));
  target.codRSlots().prepend(new mrmi::cPublicSlot("poke", "", "", "", call)); // now the first of that name
  resolving();
  EXPECT_EQ("1", calls);
  lazy();
  EXPECT_EQ("12", calls);
}

TEST(signal0, ACallByNameHandsOverAPlaceForTheResultOnly)
{
  class cLooking : public support::cPokeCall
  {
  public:
    cLooking(mrmi::cConnectable& object, int& iLooks) : support::cPokeCall(object, [] {}), mLooks(iLooks) {}
    void callRef(msa::cReferenceFrame& frame) const override
    {
      ++mLooks;
      EXPECT_EQ(1u, frame.length());
      EXPECT_STREQ("piVoid", frame.currentReference().typeName());
      EXPECT_TRUE(frame.currentReference().alterable());
      EXPECT_FALSE(frame.currentReference().readable());
    }

  private:
    int& mLooks;
  };
  int iLooks = 0;
  cTarget target(false);
  target.registerSlot("look", "", "", "", mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new cLooking(target, iLooks)));
  tSignal signal;
  signal.connect(target, "look", cAbstractSignal::ResolveOnCall);
  signal.connect(target, "look", cAbstractSignal::ResolveOnConnect);
  signal();
  EXPECT_EQ(2, iLooks);
}

TEST(signal0, ConnectionsByNameAreAppended)
{
  cTarget first;
  cTarget second;
  std::string order;
  first.mBody = [&] { order += "1"; };
  second.mBody = [&] { order += "2"; };
  tSignal signal;
  cAbstractSignal& base = signal;
  base.connect(first, "poke", cAbstractSignal::ResolveOnCall);
  base.connect(second, "poke", cAbstractSignal::ResolveOnConnect);
  base.connect(first, "poke", cAbstractSignal::ResolveOnConnect);
  signal();
  EXPECT_EQ("121", order);
}

TEST(signal0, TheFailureOfALazyCallEndsTheInvocation)
{
  cTarget missing(false);
  cTarget before;
  cTarget behind;
  tSignal signal;
  signal.connect(before, "poke", cAbstractSignal::ResolveOnConnect);
  signal.connect(missing, "poke", cAbstractSignal::ResolveOnCall);
  signal.connect(behind, "poke", cAbstractSignal::ResolveOnConnect);
  EXPECT_THROW(signal(), mrmi::cNoSuchSlotException);
  EXPECT_EQ(1, before.miCalls);
  EXPECT_EQ(0, behind.miCalls);
  EXPECT_EQ(0u, signal.nestedInvocationCount());
}

TEST(signal0, TheEndOfTheTargetEndsTheConnection)
{
  for (cAbstractSignal::SlotResolving resolving : {cAbstractSignal::ResolveOnCall, cAbstractSignal::ResolveOnConnect})
  {
    tSignal signal;
    {
      cTarget target;
      signal.connect(target, "poke", resolving);
      EXPECT_EQ(1u, signal.slotCount());
    }
    EXPECT_EQ(0u, signal.slotCount());
  }
}

TEST(signal0, DisconnectRemovesDirectAndIndirectConnectionsAlike)
{
  cTarget target;
  cTarget other;
  tSignal signal;
  signal.connect(target, "poke", cAbstractSignal::ResolveOnCall);
  signal.connect(mrmi::cDirectLocalSlotCall0(target, &cTarget::slt));
  signal.connect(other, "poke", cAbstractSignal::ResolveOnCall);
  signal.connect(target, "poke", cAbstractSignal::ResolveOnConnect);
  signal.disconnect(target);
  EXPECT_EQ(1u, signal.slotCount());
  signal();
  EXPECT_EQ(0, target.miCalls);
  EXPECT_EQ(0, target.miDirect);
  EXPECT_EQ(1, other.miCalls);
}

TEST(signal0, ASlotMayDestroyItsTarget)
{
  for (cAbstractSignal::SlotResolving resolving : {cAbstractSignal::ResolveOnCall, cAbstractSignal::ResolveOnConnect})
  {
    tSignal signal;
    std::unique_ptr<cTarget> pTarget(new cTarget);
    pTarget->mBody = [&] {
      std::function<void()> const keep(pTarget->mBody); // it dies with the target
      pTarget.reset();
    };
    signal.connect(*pTarget, "poke", resolving);
    signal();
    EXPECT_EQ(nullptr, pTarget);
    EXPECT_EQ(0u, signal.slotCount());
    EXPECT_EQ(0u, signal.nestedInvocationCount());
  }
}

TEST(signal0, ItsDestructionWhileItRunsIsToldByEachOfItsDestructors)
{
  support::cCaptureOut capture;
  std::unique_ptr<tSignal> pSignal(new tSignal);
  cTarget target;
  target.mBody = [&] { pSignal.reset(); };
  pSignal->connect(target, "poke", cAbstractSignal::ResolveOnCall);
  tSignal& signal = *pSignal;
  signal();
  unsigned int iLines = 0;
  for (auto const& line : capture.lines())
  {
    iLines += line.text == ">>>>>>>>> delete this situation in signal!" ? 1 : 0;
  }
  EXPECT_EQ(2u, iLines);
}

TEST(cIndirectLazySlotCall0, ItCannotBeCalledByAFrame)
{
  cTarget target;
  mrmi::cIndirectLazySlotCall0<piVoid> const call(target, "poke");
  msa::cReferenceFrame frame;
  EXPECT_EQ("Indirect slots cannot be called by reference!",
            messageOf(caught<mstd::cBugException>([&] { call.callRef(frame); })));
  EXPECT_TRUE(call.matchSlotOfObject(&target));
  call.call();
  EXPECT_EQ(1, target.miCalls);
}

TEST(cIndirectLazySlotCall0, ItsConnectedInstanceIsOfTheSameClassAndBelongsToTheSignal)
{
  cTarget target;
  tSignal signal;
  mrmi::cIndirectLazySlotCall0<piVoid> const call(target, "poke");
  std::unique_ptr<mrmi::cAbstractSlotCall0<piVoid>> const pConnected(call.createConnectedInstance(signal));
  EXPECT_NE(nullptr, dynamic_cast<mrmi::cIndirectLazySlotCall0<piVoid>*>(pConnected.get()));
  EXPECT_EQ(&target, &pConnected->assignedObject());
  pConnected->call();
  EXPECT_EQ(1, target.miCalls);
}

TEST(cIndirectResolvingSlotCall0, ItCannotBeCalledByAFrame)
{
  cTarget target;
  mrmi::cIndirectResolvingSlotCall0<piVoid> const call(target, target.tryFindSlot("poke"));
  msa::cReferenceFrame frame;
  EXPECT_EQ("Indirect slots cannot be called by reference!",
            messageOf(caught<mstd::cBugException>([&] { call.callRef(frame); })));
  call.call();
  EXPECT_EQ(1, target.miCalls);
}

TEST(cIndirectResolvingSlotCall0, WithoutASlotItCannotBeConnected)
{
  cTarget target;
  tSignal signal;
  mrmi::cIndirectResolvingSlotCall0<piVoid> const call(target, nullptr);
  EXPECT_EQ("Assertion failed in file rmi/signal0:239. (mpCall != 0)!",
            support::bugMessageOf([&] { signal.connect(call); }));
  EXPECT_FALSE(signal.isConnected());
}
