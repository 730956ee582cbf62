// Components that come out of real libraries, under the module manager.

#include "mcs/cAbstractComponent.h"
#include "mcs/cModuleMgr.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "sa/cReferenceFrame.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"
#include "support/cTestModule.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using mcs::cAbstractComponent;
using support::cTestModule;

namespace
{
class LoadedComponent : public testing::Test
{
protected:
  /// Loads a library and has one component of it for each context, in the way of a program.
  mpi::cAbstractClassLoader& load(char const* pModule, std::initializer_list<char const*> contexts)
  {
    mstd::tAutoPtr<mpi::cAbstractClassLoader> loader = mpi::cPlatform::createClassLoader(cTestModule(pModule).file());
    mpi::cAbstractClassLoader& result = *loader;
    for (char const* const context : contexts)
    {
      msa::cReferenceFrame frame;
      frame.addRef(mNotes, true, true);
      mstd::tAutoPtr<cAbstractComponent> component(loader->instance(frame, *mpManager));
      component->setClassLoader(loader.get(), context);
      mpManager->addComponent(component, mcs::cComponentAddr());
    }
    mpManager->registerClassLoader(loader);
    return result;
  }
  void remove(char const* pContext) { mpManager->findComponent(pContext).removeLater(); }

  support::cCaptureOut mOut;
  mstd::cAsciiString mNotes;
  std::unique_ptr<mcs::cModuleMgr> mpManager{new mcs::cModuleMgr(mpi::system().extensions)};
  support::cPasses mPasses;
};
} // namespace

TEST_F(LoadedComponent, TakesItsLibraryAlongAtTheEndOfThePass)
{
  mpi::cAbstractClassLoader const& loader = load("component", {"one"});
  mPasses.settle();
  EXPECT_TRUE(mpManager->findComponent("one").announced());
  EXPECT_EQ(mpManager->findComponent("one").classLoader(), &loader);
  EXPECT_EQ(loader.numReferences(), 1u);
  remove("one");
  EXPECT_TRUE(cTestModule("component").isMapped());
  mPasses.settle();
  EXPECT_EQ(support::toString(mNotes), "component made;component gone;");
  EXPECT_FALSE(cTestModule("component").isMapped());
}

TEST_F(LoadedComponent, KeepsItsLibraryForTheOthersOfIt)
{
  mpi::cAbstractClassLoader const& loader = load("component", {"one", "two"});
  mPasses.settle();
  remove("one");
  mPasses.settle();
  EXPECT_EQ(loader.numReferences(), 1u);
  EXPECT_TRUE(cTestModule("component").isMapped());
  EXPECT_EQ(support::toString(mpManager->findComponent("two").info().name()), "component");
  remove("two");
  mPasses.settle();
  EXPECT_FALSE(cTestModule("component").isMapped());
}

TEST_F(LoadedComponent, KeepsItsLibraryForTheSameFileLoadedAnew)
{
  load("component", {"one"});
  load("component", {"two"});
  mPasses.settle();
  remove("one");
  mPasses.settle();
  EXPECT_TRUE(cTestModule("component").isMapped());
  remove("two");
  mPasses.settle();
  EXPECT_FALSE(cTestModule("component").isMapped());
}

TEST_F(LoadedComponent, IsOutlivedByALibraryThatIsNotInUseOnlyUntilTheNextPass)
{
  load("component", {});
  EXPECT_TRUE(cTestModule("component").isMapped());
  mpManager->handleComponentIterationLater();
  mPasses.settle();
  EXPECT_FALSE(cTestModule("component").isMapped());
}

TEST_F(LoadedComponent, IsRemovedInTheCallersStackWithoutItsLibrary)
{
  load("component", {"one", "two"});
  mpManager->removeAllComponentsNow();
  EXPECT_EQ(support::toString(mNotes), "component made;component made;component gone;component gone;");
  EXPECT_TRUE(cTestModule("component").isMapped());
  mpManager.reset();
  EXPECT_FALSE(cTestModule("component").isMapped());
}

TEST_F(LoadedComponent, GoesWithTheManagerBeforeItsLibrary)
{
  load("component", {"one", "two"});
  load("both", {"three"});
  mPasses.settle();
  mpManager.reset();
  EXPECT_EQ(support::toString(mNotes).substr(3 * 15), "component gone;component gone;component gone;");
  EXPECT_FALSE(cTestModule("component").isMapped());
  EXPECT_FALSE(cTestModule("both").isMapped());
}

TEST_F(LoadedComponent, LeavesNothingBehindInAThousandRounds)
{
  auto const round = [&] {
    mNotes = mstd::cAsciiString();
    load("component", {"one", "two"});
    mPasses.settle();
    remove("one");
    remove("two");
    mPasses.settle();
    ASSERT_TRUE(mpManager->components().empty());
    ASSERT_FALSE(cTestModule("component").isMapped());
    mOut.clear();
  };
  for (unsigned int i = 0; i < 10; ++i)
  {
    round();
  }
  support::cBlockBalance const balance;
  for (unsigned int i = 0; i < 1000 && !HasFatalFailure(); ++i)
  {
    round();
  }
  EXPECT_LE(balance.blocks(), 20);
}
