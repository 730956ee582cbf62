#include "mcs/cModuleMgr.h"

#include "mce/cCoreExtensionMgr.h"
#include "mcs/cNoPublicInterfaceException.h"
#include "mcs/cNoSuchModuleException.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cAbstractKROApp.h"
#include "sa/cDeserializeBinary.h"
#include "std/cBugException.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <memory>

using mcs::cAbstractComponent;
using mcs::cComponentAddr;
using mcs::cComponentLocation;
using mcs::cModuleMgr;
using support::cTestComponent;

namespace
{
typedef std::vector<std::string> tLines;

class cApp : public cAbstractKROApp
{
};

class cIdleSlot : public mrmi::cConnectable
{
public:
  void slt() { ++miCalls; }
  unsigned int miCalls = 0;
};

class cModuleMgrTest : public ::testing::Test
{
protected:
  /// A component whose life ends with the manager's entry.
  cTestComponent& add(char const* name)
  {
    cTestComponent* const component = new cTestComponent(mManager, name);
    component->mOnDestroyed = [this, component] { mDestroyed.push_back(support::toString(component->info().name())); };
    mManager.addComponent(mstd::tAutoPtr<cAbstractComponent>(component), cComponentAddr(7, 7));
    return *component;
  }
  std::string listed() const
  {
    std::string names;
    for (mcs::cManagedComponent* const managed : mManager.components())
    {
      names += managed->component()->info().name().c_str();
    }
    return names;
  }

  support::cCaptureOut mOut;
  tLines mDestroyed;
  cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
  support::cManagerTrace mTrace{mManager};
};

} // namespace

TEST_F(cModuleMgrTest, AnEmptyManagerHasNothingToDo)
{
  cApp app;
  EXPECT_FALSE(mPasses.isPending());
  mManager.removeAllComponentsNow();
  EXPECT_FALSE(mPasses.isPending());
  EXPECT_TRUE(mManager.applicationCloseAdvisable(app));
  mManager.submitShortlyRemove();
  mManager.handleComponentIterationLater();
  EXPECT_EQ(mPasses.settle(), 1u);
  EXPECT_TRUE(mTrace.lines().empty());
}

TEST_F(cModuleMgrTest, PutsTwoKeptWorksIntoTheQueueOfTheSystem)
{
  std::vector<mpi::cWork*> works;
  for (mstd::tSharedObject<mpi::cWork> const& job : mpi::system().wq.jobs())
  {
    works.push_back(job.get());
  }
  ASSERT_GE(works.size(), 2u);
  mpi::cWork& passes = *works[works.size() - 2];
  mpi::cWork& idle = *works.back();
  EXPECT_EQ(support::toString(passes.name()), "ComponentManagement");
  EXPECT_EQ(passes.type(), mpi::cWork::SingleTask);
  EXPECT_TRUE(passes.isKeep());
  EXPECT_FALSE(passes.isStarted());
  EXPECT_EQ(support::toString(idle.name()), "ComapatIdle");
  EXPECT_EQ(idle.type(), mpi::cWork::Periodic);
  EXPECT_EQ(idle.interval(), 4000u);
  EXPECT_TRUE(idle.isStarted());
}

TEST_F(cModuleMgrTest, TakesItsWorksOutOfTheQueueWhenItGoes)
{
  auto const liveWorks = [] {
    unsigned int count = 0;
    for (mstd::tSharedObject<mpi::cWork> const& job : mpi::system().wq.jobs())
    {
      count += job.get() != nullptr;
    }
    return count;
  };
  unsigned int const before = liveWorks();
  {
    cModuleMgr other(mpi::system().extensions);
    EXPECT_EQ(liveWorks(), before + 2);
  }
  EXPECT_EQ(liveWorks(), before);
}

TEST_F(cModuleMgrTest, RaisesTheIdleSignalWithEveryRunOfItsWork)
{
  cIdleSlot slot;
  mpi::cWork* idle = nullptr;
  for (mstd::tSharedObject<mpi::cWork> const& job : mpi::system().wq.jobs())
  {
    idle = job.get();
  }
  idle->action(); // nobody listens
  mManager.sigCompatIdle.connect(mrmi::cDirectLocalSlotCall0(slot, &cIdleSlot::slt));
  idle->action();
  EXPECT_EQ(slot.miCalls, 1u);
}

TEST_F(cModuleMgrTest, KnowsTheExtensionsOfTheSystemWhateverItWasGiven)
{
  mce::cCoreExtensionMgr own;
  cModuleMgr manager(own);
  EXPECT_EQ(&manager.coreExtensions(), &mpi::system().extensions);
}

TEST_F(cModuleMgrTest, HasNoApplicationUntilOneIsSet)
{
  EXPECT_EQ(support::messageOf(support::caught<mstd::cBugException>([&] { mManager.app(); })),
            "No application object set!");
  cModuleMgr const& constant = mManager;
  EXPECT_EQ(support::messageOf(support::caught<mstd::cBugException>([&] { constant.app(); })),
            "No application object set!");
  cApp app;
  mManager.setApp(app);
  EXPECT_EQ(&mManager.app(), &app);
  EXPECT_EQ(&constant.app(), &app);
}

TEST_F(cModuleMgrTest, NumbersComponentsFromTwoOn)
{
  EXPECT_TRUE(add("a").address() == cComponentAddr(1, 2));
  EXPECT_TRUE(add("b").address() == cComponentAddr(1, 3));
  EXPECT_TRUE(mManager.findComponent("b").deployedBy() == cComponentAddr(7, 7));
  EXPECT_EQ(mTrace.take(), (tLines{"added 2", "added 3"}));
  EXPECT_TRUE(mPasses.isPending());
}

TEST_F(cModuleMgrTest, CountsOnFromANumberThatAComponentInsistsOn)
{
  cTestComponent nine(mManager, "nine");
  nine.miModuleID = 9;
  EXPECT_EQ(&mManager.addComponent(nine, cComponentAddr()), &nine);
  EXPECT_EQ(nine.address().moduleID(), 9u);
  EXPECT_EQ(add("next").address().moduleID(), 10u);
}

TEST_F(cModuleMgrTest, NumberOneIsFreeInAnEmptyManagerAndThenCountsOnWithTwo)
{
  cTestComponent one(mManager, "one");
  one.miModuleID = 1;
  mManager.addComponent(one, cComponentAddr());
  EXPECT_EQ(one.address().moduleID(), 1u);
  EXPECT_EQ(add("next").address().moduleID(), 2u);
}

TEST_F(cModuleMgrTest, RefusesANumberBelowTheLastAndChangesNothing)
{
  add("two");
  mPasses.settle();
  mTrace.take();
  cTestComponent one(mManager, "one");
  one.miModuleID = 1;
  EXPECT_EQ(support::messageOf(
                support::caught<mstd::cRuntimeException>([&] { mManager.addComponent(one, cComponentAddr()); })),
            "Component id (1) not unique!");
  EXPECT_FALSE(one.address().valid());
  EXPECT_EQ(listed(), "two");
  EXPECT_TRUE(mTrace.lines().empty());
  EXPECT_FALSE(mPasses.isPending());
  EXPECT_EQ(add("three").address().moduleID(), 3u);
}

TEST_F(cModuleMgrTest, AnOwnedComponentThatIsRefusedDies)
{
  add("two");
  cTestComponent* const one = new cTestComponent(mManager, "one");
  bool isDestroyed = false;
  one->miModuleID = 1;
  one->mOnDestroyed = [&] { isDestroyed = true; };
  EXPECT_THROW(mManager.addComponent(mstd::tAutoPtr<cAbstractComponent>(one), cComponentAddr()),
               mstd::cRuntimeException);
  EXPECT_TRUE(isDestroyed);
}

TEST_F(cModuleMgrTest, GivesTheLastNumberTwiceIfAComponentInsists)
{
  cTestComponent& two = add("two");
  cTestComponent again(mManager, "again");
  again.miModuleID = 2;
  mManager.addComponent(again, cComponentAddr());
  EXPECT_TRUE(again.address() == two.address());
  EXPECT_EQ(&mManager.findComponent(again.address()), &two) << "the first one is found";
}

TEST_F(cModuleMgrTest, NoComponentIsAnAssertionFailureAndTakesNoNumber)
{
  EXPECT_NE(support::bugMessageOf([&] {
              mManager.addComponent(mstd::tAutoPtr<cAbstractComponent>(), cComponentAddr());
            }).find("mpComponentGuard.get()"),
            std::string::npos);
  EXPECT_EQ(add("a").address().moduleID(), 2u);
}

TEST_F(cModuleMgrTest, AComponentThatFailsToTakeItsNumberIsNotAddedAndTheNumberIsGivenToTheNext)
{
  class cFailing : public cTestComponent
  {
  public:
    using cTestComponent::cTestComponent;
    unsigned int fixedQueueID() const override { throw std::runtime_error("no queue"); }
  };
  cFailing failing(mManager);
  EXPECT_THROW(mManager.addComponent(failing, cComponentAddr()), std::runtime_error);
  EXPECT_EQ(listed(), "");
  EXPECT_EQ(add("a").address().moduleID(), 2u);
}

TEST_F(cModuleMgrTest, OwnsWhatItWasHandedAndBorrowsTheRest)
{
  bool isDestroyed = false;
  cTestComponent borrowed(mManager, "borrowed");
  borrowed.mOnDestroyed = [&] { isDestroyed = true; };
  mManager.addComponent(borrowed, cComponentAddr());
  add("owned");
  mPasses.settle();
  mManager.removeComponent(borrowed.address());
  mManager.removeComponent(mManager.findComponent("owned").address());
  mPasses.settle();
  EXPECT_EQ(mDestroyed, tLines{"owned"});
  EXPECT_FALSE(isDestroyed);
  EXPECT_EQ(listed(), "");
}

TEST_F(cModuleMgrTest, AnnouncesEachComponentOnceAndThenTellsIt)
{
  cTestComponent& a = add("a");
  add("b");
  mTrace.take();
  bool wasAnnounced = true;
  mTrace.mOnLine = [&](std::string const& line, cAbstractComponent* pComponent) {
    if (line == "registered 2")
    {
      wasAnnounced = pComponent->announced();
    }
  };
  bool wasAnnouncedWhenTold = false;
  a.mOnRegistered = [&] { wasAnnouncedWhenTold = a.announced(); };
  EXPECT_EQ(mPasses.settle(), 1u);
  EXPECT_EQ(mTrace.take(), (tLines{"registered 2", "registered 3"}));
  EXPECT_FALSE(wasAnnounced);
  EXPECT_TRUE(wasAnnouncedWhenTold);
  EXPECT_EQ(a.miRegistered, 1u);
  mManager.handleComponentIterationLater();
  mPasses.settle();
  EXPECT_TRUE(mTrace.take().empty());
  EXPECT_EQ(a.miRegistered, 1u);
}

TEST_F(cModuleMgrTest, KeepsPassingWhileAComponentDelaysItsAnnouncement)
{
  unsigned int delays = 3;
  cTestComponent& a = add("a");
  a.mDelay = [&] { return delays != 0 && delays-- != 0; };
  mTrace.take();
  EXPECT_EQ(mPasses.settle(), 4u);
  EXPECT_EQ(mTrace.take(), (tLines{"registered 2"}));
  EXPECT_TRUE(a.announced());
}

TEST_F(cModuleMgrTest, TellsOfModifiedDependenciesAndRequirementsBehindTheAnnouncement)
{
  cTestComponent& a = add("a");
  a.modifyInterfaceDep();
  a.modifyComponentDep();
  mTrace.take();
  bool wasMarked = false;
  mTrace.mOnLine = [&](std::string const& line, cAbstractComponent*) {
    if (line == "dependencies 2")
    {
      wasMarked = a.interfaceDepModified();
      a.modifyInterfaceDep(); // lost: the pass takes the mark away behind the signal
    }
  };
  EXPECT_EQ(mPasses.settle(), 2u);
  EXPECT_EQ(mTrace.take(), (tLines{"registered 2", "dependencies 2", "requirements"}));
  EXPECT_TRUE(wasMarked);
  EXPECT_FALSE(a.interfaceDepModified());
  EXPECT_FALSE(a.componentDepModified());
}

TEST_F(cModuleMgrTest, LooksAtNothingElseOfAComponentThatIsToBeRemoved)
{
  cTestComponent& a = add("a");
  a.modifyInterfaceDep();
  a.modifyComponentDep();
  a.removeLater();
  mTrace.take();
  mPasses.settle();
  EXPECT_EQ(mTrace.take(), (tLines{"removed 2"}));
}

TEST_F(cModuleMgrTest, AReferrerBehindTheRequiredOneGoesInTheSamePassAndTheRequiredOneInTheNext)
{
  cTestComponent& b = add("b");
  cTestComponent& a = add("a");
  a.addLocalRequiredComponent(&b);
  mPasses.settle();
  mTrace.take();
  mOut.clear();
  std::string const location = support::toString(a.location().toString());
  mManager.removeComponent(b.address());
  mPasses.run();
  EXPECT_EQ(mTrace.take(), (tLines{"removed 3"}));
  EXPECT_EQ(mDestroyed, tLines{"a"});
  ASSERT_EQ(mOut.lines().size(), 1u);
  EXPECT_EQ(mOut.lines()[0].text, "cModuleMgr: Mark referencing component for removal... (" + location + ")");
  mPasses.run();
  EXPECT_EQ(mTrace.take(), (tLines{"removed 2"}));
  EXPECT_EQ(mDestroyed, (tLines{"a", "b"}));
  EXPECT_EQ(mPasses.settle(), 0u);
}

TEST_F(cModuleMgrTest, AReferrerInFrontOfTheRequiredOneNeedsAPassMore)
{
  cTestComponent& a = add("a");
  cTestComponent& b = add("b");
  a.addLocalRequiredComponent(&b);
  mPasses.settle();
  mTrace.take();
  mManager.removeComponent(b.address());
  mPasses.run();
  EXPECT_TRUE(mTrace.take().empty());
  EXPECT_TRUE(a.toRemove());
  mPasses.run();
  EXPECT_EQ(mTrace.take(), (tLines{"removed 2"})) << "the entry counts as a referrer until the sweep";
  mPasses.run();
  EXPECT_EQ(mTrace.take(), (tLines{"removed 3"}));
}

TEST_F(cModuleMgrTest, ARemovedComponentLivesUntilTheEndOfThePass)
{
  add("a").removeLater();
  add("b");
  mTrace.mOnLine = [&](std::string const& line, cAbstractComponent* pComponent) {
    if (line == "removed 2")
    {
      EXPECT_EQ(support::toString(pComponent->info().name()), "a");
      EXPECT_EQ(&mManager.findComponent("a"), pComponent);
    }
    if (line == "registered 3")
    {
      EXPECT_TRUE(mDestroyed.empty());
      EXPECT_EQ(listed(), "ab");
    }
  };
  mTrace.take();
  mPasses.run();
  EXPECT_EQ(mTrace.take(), (tLines{"removed 2", "registered 3"}));
  EXPECT_EQ(mDestroyed, tLines{"a"});
}

TEST_F(cModuleMgrTest, AComponentAddedInAPassIsReachedByTheSameWalk)
{
  cTestComponent& a = add("a");
  a.mOnRegistered = [&] { add("b"); };
  mTrace.take();
  mPasses.run();
  EXPECT_EQ(mTrace.take(), (tLines{"registered 2", "added 3", "registered 3"}));
}

TEST_F(cModuleMgrTest, RemovingAnUnknownAddressFails)
{
  mcs::cNoSuchModuleException const e =
      support::caught<mcs::cNoSuchModuleException>([&] { mManager.removeComponent(cComponentAddr(1, 99)); });
  EXPECT_TRUE(e.address() == cComponentAddr(1, 99));
  EXPECT_FALSE(mPasses.isPending());
}

TEST_F(cModuleMgrTest, AnyNumberOfRequestsIsOnePass)
{
  for (int i = 0; i < 5; ++i)
  {
    mManager.handleComponentIterationLater();
  }
  EXPECT_EQ(mPasses.settle(), 1u);
}

TEST_F(cModuleMgrTest, AComponentThatFailsWhenItIsToldIsRemovedAndTheErrorIsThrownOn)
{
  cTestComponent& a = add("a");
  add("b");
  a.mOnRegistered = [] { throw std::runtime_error("no"); };
  mTrace.take();
  EXPECT_THROW(mPasses.run(), std::runtime_error);
  EXPECT_TRUE(a.toRemove());
  EXPECT_TRUE(a.announced());
  EXPECT_EQ(mTrace.take(), (tLines{"registered 2"})) << "the pass ended there";
  EXPECT_TRUE(mPasses.isPending());
  mPasses.settle();
  EXPECT_EQ(mTrace.take(), (tLines{"removed 2", "registered 3"}));
}

TEST_F(cModuleMgrTest, AnEntryThatAnEndedPassHasMarkedGoesWithTheNextWithoutASecondSignal)
{
  add("a").removeLater();
  cTestComponent& b = add("b");
  b.mOnRegistered = [] { throw std::runtime_error("no"); };
  mTrace.take();
  EXPECT_THROW(mPasses.run(), std::runtime_error);
  EXPECT_EQ(mTrace.take(), (tLines{"removed 2", "registered 3"}));
  EXPECT_EQ(listed(), "ab");
  mPasses.run();
  EXPECT_EQ(mTrace.take(), (tLines{"removed 3"}));
  EXPECT_EQ(mDestroyed, (tLines{"a", "b"}));
}

TEST_F(cModuleMgrTest, ASlotThatThrowsEndsThePassAndMarksNothing)
{
  for (char const* const where : {"registered 2", "dependencies 2", "requirements", "removed 2"})
  {
    cModuleMgr manager(mpi::system().extensions);
    support::cPasses passes;
    support::cManagerTrace trace(manager);
    cTestComponent a(manager, "a");
    cTestComponent b(manager, "b");
    manager.addComponent(a, cComponentAddr());
    manager.addComponent(b, cComponentAddr());
    a.modifyInterfaceDep();
    a.modifyComponentDep();
    std::string const line(where);
    if (line == "removed 2")
    {
      a.removeLater();
    }
    bool isBad = true;
    trace.mOnLine = [&](std::string const& what, cAbstractComponent*) {
      if (isBad && what == line)
      {
        throw std::runtime_error("slot");
      }
    };
    EXPECT_THROW(passes.run(), std::runtime_error) << where;
    EXPECT_EQ(a.toRemove(), line == "removed 2");
    EXPECT_FALSE(b.announced());
    EXPECT_EQ(manager.components().length(), 2u);
    EXPECT_EQ(a.announced(), line == "dependencies 2" || line == "requirements");
    isBad = false;
    manager.handleComponentIterationLater();
    passes.settle();
    EXPECT_TRUE(b.announced()) << where;
  }
}

TEST_F(cModuleMgrTest, ARequestInsideAPassIsAPassMoreAndNoPassInsideIt)
{
  cTestComponent& a = add("a");
  add("b");
  mTrace.take();
  a.mOnRegistered = [&] {
    mPasses.work().action(); // as an event loop that somebody enters in here
    EXPECT_TRUE(mPasses.isPending());
  };
  mPasses.run();
  EXPECT_EQ(mTrace.take(), (tLines{"registered 2", "registered 3"}));
  EXPECT_TRUE(mPasses.isPending());
  mPasses.run();
  EXPECT_FALSE(mPasses.isPending());
}

TEST_F(cModuleMgrTest, PassesAreAllowedAgainAfterOneThatFailed)
{
  cTestComponent& a = add("a");
  a.mOnRegistered = [] { throw std::runtime_error("no"); };
  EXPECT_THROW(mPasses.run(), std::runtime_error);
  EXPECT_EQ(mPasses.settle(), 1u);
  EXPECT_EQ(listed(), "");
}

TEST_F(cModuleMgrTest, FindsByContextAddressLocationAndInterface)
{
  cTestComponent& a = add("a");
  cTestComponent& b = add("b");
  cModuleMgr const& manager = mManager;
  EXPECT_EQ(manager.hasComponent("b"), &b);
  EXPECT_EQ(manager.hasComponent(b.address()), &b);
  EXPECT_EQ(manager.hasComponent(b.location()), &b);
  EXPECT_TRUE(manager.exists(b.location()));
  EXPECT_EQ(&manager.findComponent("a"), &a);
  EXPECT_EQ(&manager.findComponent(a.address()), &a);
  EXPECT_EQ(&manager.findComponent(a.location()), &a);
  support::cTestInterface interface("x");
  EXPECT_EQ(support::messageOf(support::caught<mcs::cNoPublicInterfaceException>(
                [&] { manager.findComponent(static_cast<mrmi::cConnectable const&>(interface)); })),
            "No public interface!");
  b.addInterface(interface);
  EXPECT_EQ(&manager.findComponent(static_cast<mrmi::cConnectable const&>(interface)), &b);
}

TEST_F(cModuleMgrTest, FindsTheFirstOfSeveralAndAlsoWhatIsToBeRemoved)
{
  cTestComponent& first = add("same");
  add("same");
  first.removeLater();
  EXPECT_EQ(mManager.hasComponent("same"), &first);
}

TEST_F(cModuleMgrTest, ToFindNothingIsNullOrAnException)
{
  add("a");
  cComponentAddr const address(1, 99);
  cComponentLocation const location(address, "far", "", 3);
  EXPECT_EQ(mManager.hasComponent("b"), nullptr);
  EXPECT_EQ(mManager.hasComponent(address), nullptr);
  EXPECT_EQ(mManager.hasComponent(location), nullptr);
  EXPECT_FALSE(mManager.exists(location));
  EXPECT_EQ(support::messageOf(support::caught<mcs::cNoSuchModuleException>([&] { mManager.findComponent("b"); })),
            "Module (b) not found!");
  EXPECT_EQ(support::messageOf(support::caught<mcs::cNoSuchModuleException>([&] { mManager.findComponent(address); })),
            "Module (1:99) not found!");
  EXPECT_TRUE(support::caught<mcs::cNoSuchModuleException>([&] { mManager.findComponent(location); }).address() ==
              address);
}

TEST_F(cModuleMgrTest, AnAddressThatIsNotValidIsAnotherOne)
{
  cComponentAddr address = add("a").address();
  address.invalidate();
  EXPECT_EQ(mManager.hasComponent(address), nullptr);
}

TEST_F(cModuleMgrTest, AsksAllForTheirVoteAndTellsAllBeforeTheyGo)
{
  cApp app;
  cTestComponent& a = add("a");
  cTestComponent& b = add("b");
  EXPECT_TRUE(mManager.applicationCloseAdvisable(app));
  a.mAdvisable = false;
  EXPECT_FALSE(mManager.applicationCloseAdvisable(app));
  EXPECT_EQ(b.miAsked, 2u) << "also behind a refusal";
  b.mAdvisable = false;
  a.mAdvisable = true;
  EXPECT_FALSE(mManager.applicationCloseAdvisable(app));
  mManager.submitShortlyRemove();
  EXPECT_EQ(a.miShortlyRemove, 1u);
  EXPECT_EQ(b.miShortlyRemove, 1u);
  EXPECT_FALSE(a.toRemove());
}

TEST_F(cModuleMgrTest, ListsTheReferrersInTheirOrder)
{
  cTestComponent& a = add("a");
  cTestComponent& b = add("b");
  cTestComponent& c = add("c");
  mstd::tList<cAbstractComponent*> referrers;
  referrers.append(&a);
  mManager.componentsReferencedBy(b, referrers);
  EXPECT_TRUE(referrers.empty());
  c.addLocalRequiredComponent(&b);
  a.addLocalRequiredComponent(&b);
  a.addLocalRequiredComponent(&b);
  mManager.componentsReferencedBy(b, referrers);
  ASSERT_EQ(referrers.length(), 2u);
  EXPECT_EQ(referrers.first(), &a);
  EXPECT_EQ(referrers.last(), &c);
}

TEST_F(cModuleMgrTest, RemovesAllAtOnceInOrderWithoutASignal)
{
  cTestComponent& a = add("a");
  cTestComponent& b = add("b");
  cTestComponent& c = add("c");
  b.addLocalRequiredComponent(&a);
  c.addLocalRequiredComponent(&b);
  mTrace.take();
  mManager.removeAllComponentsNow();
  EXPECT_EQ(listed(), "");
  EXPECT_EQ(mDestroyed, (tLines{"c", "b", "a"}));
  EXPECT_TRUE(mTrace.take().empty());
}

TEST_F(cModuleMgrTest, RemovesAlsoWhatAComponentAddsWhenItGoes)
{
  cTestComponent& a = add("a");
  a.mOnDestroyed = [&] {
    mDestroyed.push_back("a");
    add("b");
  };
  mManager.removeAllComponentsNow();
  EXPECT_EQ(mDestroyed, (tLines{"a", "b"}));
}

TEST_F(cModuleMgrTest, MakesAnExceptionOfTheFirstComponentThatKnowsIt)
{
  mstd::tArray<char> bytes;
  msa::cDeserializeBinary deserializer(bytes);
  cComponentLocation const location(cComponentAddr(1, 5), "far", "", 3);
  mstd::cOSErrorException* const prototype = new mstd::cOSErrorException("op", 5);
  add("a");
  add("b").registerRemoteException(mstd::tAutoPtr<mstd::cAbstractException>(prototype));
  mstd::tAutoPtr<mstd::cAbstractException> const made =
      mManager.createRemoteException(location, prototype->typeName(), deserializer);
  ASSERT_NE(dynamic_cast<mstd::cOSErrorException*>(made.get()), nullptr);
  ASSERT_TRUE(made->isRemote());
  EXPECT_TRUE(made->remoteLocation() == location);
}

TEST_F(cModuleMgrTest, MakesARuntimeExceptionOfATypeThatNobodyKnows)
{
  mstd::tArray<char> bytes;
  msa::cDeserializeBinary deserializer(bytes);
  cComponentLocation const location(cComponentAddr(1, 5), "far", "", 3);
  add("a");
  mstd::tAutoPtr<mstd::cAbstractException> const made =
      mManager.createRemoteException(location, "far::cAway", deserializer);
  ASSERT_NE(dynamic_cast<mstd::cRuntimeException*>(made.get()), nullptr);
  EXPECT_EQ(support::messageOf(*made), "Unknown remote exception of type far::cAway!");
  ASSERT_TRUE(made->isRemote());
  EXPECT_TRUE(made->remoteLocation() == location);
}

TEST_F(cModuleMgrTest, DestroysWhatIsLeftWithoutASignalAndWithoutLookingAtRequirements)
{
  tLines destroyed;
  {
    cModuleMgr manager(mpi::system().extensions);
    support::cManagerTrace trace(manager);
    cTestComponent* const a = new cTestComponent(manager, "a");
    cTestComponent* const b = new cTestComponent(manager, "b");
    b->addLocalRequiredComponent(a);
    a->addLocalRequiredComponent(b);
    for (cTestComponent* const component : {a, b})
    {
      component->mOnDestroyed = [&destroyed, component] {
        destroyed.push_back(component->info().name().c_str());
        component->modifyInterfaceDep();
      };
      manager.addComponent(mstd::tAutoPtr<cAbstractComponent>(component), cComponentAddr());
    }
    trace.mOnLine = [](std::string const&, cAbstractComponent*) { ADD_FAILURE(); };
  }
  EXPECT_EQ(destroyed, (tLines{"a", "b"}));
}
