#include "mcs/cInterfaceDep.h"
#include "mcs/cModuleMgr.h"
#include "pi/cAbstractKROApp.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"

#include <gtest/gtest.h>

#include <memory>

// Components and slots that do their worst in each of their callbacks.

using mcs::cAbstractComponent;
using mcs::cComponentAddr;
using mcs::cInterfaceDep;
using mcs::cModuleMgr;
using support::cTestComponent;
using support::cTestInterface;
using support::wantedInterface;

namespace
{
enum Place
{
  InAdded,
  InDelay,
  InRegisteredSlot,
  InNotified,
  InInterfaceMatched,
  InInterfaceUnmatched,
  InInterfaceDepsSlot,
  InComponentDepsSlot,
  InShortlyRemove,
  InCloseAdvisable,
  InRemovedSlot,
  Places
};

class cApp : public cAbstractKROApp
{
};

/// A component with a dependency, and the interface that is told of it.
class cDependent : public cTestComponent
{
public:
  explicit cDependent(cModuleMgr& manager, char const* name)
      : cTestComponent(manager, name), mInterface("x", mcs::cInterfaceDesc::Requiring),
        mDependency(*this, wantedInterface("x"), &mInterface, cInterfaceDep::saUseFirstBest)
  {
  }
  ~cDependent() override { --sLive; }

  static int sLive;
  cTestInterface mInterface;
  cInterfaceDep mDependency;

private:
  int const miCounted = ++sLive;
};
int cDependent::sLive = 0;

/// A world in which `mDeed` is done at one place of the second of three components.
class cWorld
{
public:
  cWorld()
  {
    mTrace.mOnLine = [this](std::string const& line, cAbstractComponent* pComponent) {
      if (pComponent != nullptr && pComponent == mpBad)
      {
        at(line.find("added") == 0 ? InAdded : line.find("registered") == 0 ? InRegisteredSlot : InRemovedSlot);
      }
      else if (line.find("dependencies 4") == 0)
      {
        at(InInterfaceDepsSlot);
      }
      else if (line == "requirements")
      {
        at(InComponentDepsSlot);
      }
    };
  }

  void at(Place ePlace)
  {
    if (ePlace == mPlace && !mDone)
    {
      mDone = true;
      mDeed();
    }
  }

  /// Everything that a component can go through.
  void live(bool bOwned)
  {
    guarded([&] { add("provider").provide("x"); });
    guarded([&] { add("first"); });
    auto bad = std::make_unique<cDependent>(mManager, "bad");
    mpBad = bad.get();
    bad->mDelay = [this] {
      at(InDelay);
      return false;
    };
    bad->mOnRegistered = [this] { at(InNotified); };
    bad->mOnShortlyRemove = [this] { at(InShortlyRemove); };
    bad->mOnAsked = [this] { at(InCloseAdvisable); };
    bad->mInterface.mOnMatched = [this] { at(InInterfaceMatched); };
    bad->mInterface.mOnUnmatched = [this] { at(InInterfaceUnmatched); };
    bad->modifyComponentDep();
    guarded([&] {
      if (bOwned)
      {
        mManager.addComponent(mstd::tAutoPtr<cAbstractComponent>(bad.release()), cComponentAddr());
      }
      else
      {
        mBorrowed = std::move(bad);
        mManager.addComponent(*mBorrowed, cComponentAddr());
      }
    });
    guarded([&] { add("last"); });
    passes();
    cApp app;
    guarded([&] { mManager.submitShortlyRemove(); });
    guarded([&] { mManager.applicationCloseAdvisable(app); });
    passes();
    if (cAbstractComponent* const provider = mManager.hasComponent("provider"))
    {
      provider->removeLater();
    }
    passes();
    if (cAbstractComponent* const still = mManager.hasComponent("bad"))
    {
      still->removeLater();
    }
    passes();
  }

  template <class Action>
  void guarded(Action const& action)
  {
    try
    {
      action();
    }
    catch (std::runtime_error const&)
    {
      ++miFailures;
    }
  }
  void passes()
  {
    for (int limit = 0; mPasses.isPending(); ++limit)
    {
      ASSERT_LT(limit, 100);
      guarded([&] { mPasses.run(); });
    }
  }
  cTestComponent& add(char const* name)
  {
    cTestComponent* const component = new cTestComponent(mManager, name);
    mManager.addComponent(mstd::tAutoPtr<cAbstractComponent>(component), cComponentAddr());
    return *component;
  }

  support::cCaptureOut mOut;
  cModuleMgr mManager{mpi::system().extensions};
  std::unique_ptr<cDependent> mBorrowed; // goes first: its dependency knows the manager
  support::cPasses mPasses;
  support::cManagerTrace mTrace{mManager};
  cDependent* mpBad = nullptr;
  int mPlace = Places;
  bool mDone = false;
  unsigned int miFailures = 0;
  std::function<void()> mDeed;
};

class HostileComponents : public ::testing::TestWithParam<std::tuple<int, bool>>
{
protected:
  void SetUp() override
  {
    mWorld = std::make_unique<cWorld>();
    mWorld->mPlace = std::get<0>(GetParam());
  }
  void TearDown() override
  {
    EXPECT_TRUE(mWorld->mDone) << "the place was never reached";
    mWorld.reset();
    EXPECT_EQ(cDependent::sLive, 0);
  }
  void live() { mWorld->live(std::get<1>(GetParam())); }

  std::unique_ptr<cWorld> mWorld;
};
} // namespace

TEST_P(HostileComponents, RemoveThemselvesAndAreGoneAfterwards)
{
  mWorld->mDeed = [this] { mWorld->mpBad->removeLater(); };
  live();
  EXPECT_EQ(mWorld->mManager.hasComponent("bad"), nullptr);
  EXPECT_NE(mWorld->mManager.hasComponent("first"), nullptr);
  EXPECT_TRUE(mWorld->mManager.findComponent("last").announced());
  EXPECT_EQ(mWorld->miFailures, 0u);
}

TEST_P(HostileComponents, ThrowAndStopNobodyElse)
{
  mWorld->mDeed = [] { throw std::runtime_error("bad"); };
  live();
  mWorld->mManager.handleComponentIterationLater();
  mWorld->passes();
  EXPECT_EQ(mWorld->miFailures, 1u);
  EXPECT_NE(mWorld->mManager.hasComponent("first"), nullptr);
  EXPECT_TRUE(mWorld->mManager.findComponent("first").announced());
  EXPECT_TRUE(mWorld->mManager.findComponent("last").announced());
}

TEST_P(HostileComponents, RemoveAllComponentsInsideAndLiveToTheEndOfTheCall)
{
  bool wasAlive = false;
  mWorld->mDeed = [&] {
    mWorld->mManager.removeAllComponentsNow();
    EXPECT_TRUE(mWorld->mManager.components().empty());
    wasAlive = cDependent::sLive == 1 && mWorld->mpBad->toRemove();
  };
  live();
  EXPECT_TRUE(wasAlive);
  EXPECT_EQ(mWorld->miFailures, 0u);
}

TEST_P(HostileComponents, RemoveAllComponentsInsideAndThrow)
{
  mWorld->mDeed = [&] {
    mWorld->mManager.removeAllComponentsNow();
    throw std::runtime_error("bad");
  };
  live();
  EXPECT_EQ(mWorld->miFailures, 1u);
}

TEST_P(HostileComponents, RemoveAllComponentsInsideAndAddAnother)
{
  mWorld->mDeed = [&] {
    mWorld->mManager.removeAllComponentsNow();
    mWorld->add("phoenix");
  };
  live();
  ASSERT_NE(mWorld->mManager.hasComponent("phoenix"), nullptr);
  EXPECT_TRUE(mWorld->mManager.findComponent("phoenix").announced());
}

TEST_P(HostileComponents, EnterThePassFromInside)
{
  mWorld->mDeed = [&] { mWorld->mPasses.work().action(); };
  live();
  EXPECT_EQ(mWorld->miFailures, 0u);
  EXPECT_EQ(mWorld->mManager.hasComponent("bad"), nullptr);
  EXPECT_TRUE(mWorld->mManager.findComponent("last").announced());
}

TEST(HostileRequirements, ACircleStaysForEverWhileTheOthersLive)
{
  support::cCaptureOut mute;
  cModuleMgr manager(mpi::system().extensions);
  support::cPasses passes;
  cTestComponent a(manager, "a");
  cTestComponent b(manager, "b");
  cTestComponent c(manager, "c");
  for (cTestComponent* const component : {&a, &b, &c})
  {
    manager.addComponent(*component, cComponentAddr());
  }
  a.addLocalRequiredComponent(&b);
  b.addLocalRequiredComponent(&a);
  a.removeLater();
  for (int i = 0; i < 10; ++i)
  {
    passes.run(); // each asks for the next one
  }
  EXPECT_TRUE(b.toRemove());
  EXPECT_TRUE(c.announced());
  EXPECT_EQ(manager.components().length(), 3u);
}

INSTANTIATE_TEST_SUITE_P(AtEachPlace, HostileComponents,
                         ::testing::Combine(::testing::Range(0, static_cast<int>(Places)), ::testing::Bool()));

TEST(HostileBorrowedComponents, MayBeDestroyedWhenTheyWereRemovedInTheirOwnCallback)
{
  for (int place : {InRegisteredSlot, InNotified, InInterfaceMatched, InInterfaceUnmatched, InInterfaceDepsSlot,
                    InComponentDepsSlot, InRemovedSlot})
  {
    cWorld world;
    world.mPlace = place;
    world.mDeed = [&] {
      world.mManager.removeAllComponentsNow();
      world.mpBad = nullptr;
      world.mBorrowed.reset();
    };
    world.live(false);
    EXPECT_TRUE(world.mDone) << place;
    EXPECT_EQ(world.mBorrowed, nullptr);
    EXPECT_TRUE(world.mManager.components().empty());
  }
}

TEST(HostileListeners, OfTheAddingMayRemoveAllAndTheOthersCanStillUseTheComponent)
{
  support::cCaptureOut mute;
  cModuleMgr manager(mpi::system().extensions);
  support::cManagerTrace first(manager);
  support::cManagerTrace second(manager);
  first.mOnLine = [&](std::string const&, cAbstractComponent*) { manager.removeAllComponentsNow(); };
  std::string seen;
  second.mOnLine = [&](std::string const&, cAbstractComponent* pComponent) {
    seen = pComponent->info().name().c_str();
  };
  manager.addComponent(mstd::tAutoPtr<cAbstractComponent>(new cTestComponent(manager, "a")), cComponentAddr());
  EXPECT_EQ(seen, "a");
}

TEST(HostileListeners, AChainOfAdditionsInsideOnePassIsFollowedToItsEnd)
{
  support::cCaptureOut mute;
  cModuleMgr manager(mpi::system().extensions);
  support::cPasses passes;
  support::cManagerTrace trace(manager);
  trace.mOnLine = [&](std::string const& line, cAbstractComponent*) {
    if (line.find("registered") == 0 && manager.components().length() < 1000)
    {
      manager.addComponent(mstd::tAutoPtr<cAbstractComponent>(new cTestComponent(manager)), cComponentAddr());
    }
  };
  manager.addComponent(mstd::tAutoPtr<cAbstractComponent>(new cTestComponent(manager)), cComponentAddr());
  passes.run();
  EXPECT_EQ(manager.components().length(), 1000u);
  for (mcs::cManagedComponent* const managed : manager.components())
  {
    EXPECT_TRUE(managed->component()->announced());
  }
}
