// What look-ups compare, which exception wins, and when libraries go.

#include "mcs/cModuleMgr.h"

#include "pi/cAbstractClassLoader.h"
#include "sa/cDeserializeBinary.h"
#include "std/cOSErrorException.h"
#include "support/cTestComponent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>

using mcs::cAbstractComponent;
using mcs::cComponentAddr;
using mcs::cComponentLocation;
using support::cTestComponent;

namespace
{
typedef std::vector<std::string> tLines;

/// A library that writes down its end.
class cLoader : public mpi::cAbstractClassLoader
{
public:
  cLoader(tLines& lines, std::string name)
      : cAbstractClassLoader(mucs::cString(name.c_str())), mLines(lines), mName(std::move(name))
  {
  }
  ~cLoader() override { mLines.push_back("library " + mName); }

  mcs::cAbstractPlugIn* instance(msa::cReferenceFrame&) override { return nullptr; }
  cAbstractComponent* instance(msa::cReferenceFrame&, mcs::cModuleMgr&) override { return nullptr; }
  void getModuleVersion(unsigned int& iMajor, unsigned int& iMinor) const override { iMajor = iMinor = 0; }
  void getModuleKROVersion(unsigned int& iMajor, unsigned int& iMinor) const override { iMajor = iMinor = 0; }

private:
  tLines& mLines;
  std::string mName;
};

class cNamed : public cTestComponent
{
public:
  using cTestComponent::cTestComponent;
  using cTestComponent::moduleInfo;
};

class ModuleMgrDetails : public ::testing::Test
{
protected:
  cTestComponent& add(std::string const& name)
  {
    cTestComponent* const component = new cTestComponent(mManager, name);
    component->mOnDestroyed = [this, name] { mLines.push_back("component " + name); };
    mManager.addComponent(mstd::tAutoPtr<cAbstractComponent>(component), cComponentAddr());
    return *component;
  }
  cLoader& load(char const* name)
  {
    cLoader* const loader = new cLoader(mLines, name);
    mpManager->registerClassLoader(mstd::tAutoPtr<mpi::cAbstractClassLoader>(loader));
    return *loader;
  }

  tLines mLines;
  std::unique_ptr<mcs::cModuleMgr> mpManager{new mcs::cModuleMgr(mpi::system().extensions)};
  mcs::cModuleMgr& mManager{*mpManager}; // also while it goes
  support::cPasses mPasses;
};
} // namespace

TEST_F(ModuleMgrDetails, TheSignalsStandInTheirOrder)
{
  void const* const signals[] = {
      &mpManager->sigCompatIdle,       &mpManager->sigComponentAdded,        &mpManager->sigComponentRegistered,
      &mpManager->sigComponentRemoved, &mpManager->sigComponentDepsModified, &mpManager->sigInterfaceDepsModified};
  EXPECT_TRUE(std::is_sorted(std::begin(signals), std::end(signals)));
  EXPECT_EQ(reinterpret_cast<char const*>(signals[0]), reinterpret_cast<char const*>(mpManager.get()) + sizeof(void*));
}

TEST_F(ModuleMgrDetails, NoSignalNeedsAListener)
{
  cTestComponent& component = add("a");
  cTestComponent& required = add("b");
  component.addLocalRequiredComponent(&required);
  component.modifyInterfaceDep();
  component.removeLater();
  add("c").addLocalRequiredComponent(&required);
  EXPECT_NO_THROW(mPasses.settle());
  EXPECT_FALSE(mpManager->findComponent("c").componentDepModified());
}

TEST_F(ModuleMgrDetails, ATextIsComparedWithTheContextAndNotWithTheName)
{
  cNamed component(*mpManager, "name");
  component.moduleInfo().setContext("context");
  mpManager->addComponent(component, cComponentAddr());
  EXPECT_EQ(mpManager->hasComponent("context"), &component);
  EXPECT_EQ(mpManager->hasComponent("name"), nullptr);
  mpManager->removeAllComponentsNow();
}

TEST_F(ModuleMgrDetails, ALocationAgreesOnlyInFull)
{
  cTestComponent& component = add("a");
  component.componentLocation() = cComponentLocation(component.address(), "host", "process", 4);
  EXPECT_EQ(mpManager->hasComponent(cComponentLocation(component.address(), "host", "process", 4)), &component);
  EXPECT_FALSE(mpManager->exists(cComponentLocation(cComponentAddr(1, 77), "host", "process", 4)));
  EXPECT_FALSE(mpManager->exists(cComponentLocation(component.address(), "other", "process", 4)));
  EXPECT_FALSE(mpManager->exists(cComponentLocation(component.address(), "host", "other", 4)));
  EXPECT_FALSE(mpManager->exists(cComponentLocation(component.address(), "host", "process", 5)));
}

TEST_F(ModuleMgrDetails, TheAddressIsTheOneOfTheLastNumberThatWasGiven)
{
  cTestComponent component(*mpManager, "a");
  component.setComponentID(12);
  component.setComponentID(13);
  EXPECT_TRUE(component.address() == cComponentAddr(1, 13));
  EXPECT_TRUE(component.location().address() == cComponentAddr(1, 13));
}

TEST_F(ModuleMgrDetails, TheFirstComponentThatKnowsAnExceptionMakesIt)
{
  mstd::tArray<char> bytes;
  msa::cDeserializeBinary deserializer(bytes);
  mstd::cOSErrorException const example("op", 5);
  add("a").registerRemoteException(mstd::tAutoPtr<mstd::cAbstractException>(new mstd::cOSErrorException("op", 5)));
  add("b"); // does not know it
  mstd::tAutoPtr<mstd::cAbstractException> const made =
      mpManager->createRemoteException(cComponentLocation(), example.typeName(), deserializer);
  EXPECT_NE(dynamic_cast<mstd::cOSErrorException*>(made.get()), nullptr);
}

TEST_F(ModuleMgrDetails, ALibraryGoesBehindItsComponentsWhateverElseIsThere)
{
  cLoader& first = load("first");
  load("second").incRef();
  first.incRef();
  add("stays");
  cTestComponent& goes = add("goes");
  goes.mOnDestroyed = [&] {
    mLines.push_back("component goes");
    first.decRef();
  };
  mPasses.settle();
  EXPECT_TRUE(mLines.empty());
  goes.removeLater();
  mPasses.settle();
  EXPECT_EQ(mLines, (tLines{"component goes", "library first"}));
}

TEST_F(ModuleMgrDetails, LibrariesGoInTheOrderOfTheirRegistration)
{
  load("b");
  load("a");
  load("c");
  mpManager->handleComponentIterationLater();
  mPasses.settle();
  EXPECT_EQ(mLines, (tLines{"library b", "library a", "library c"}));
}

TEST_F(ModuleMgrDetails, TheManagerTakesComponentsFirstAndLibrariesThenAlsoForWhatIsAddedMeanwhile)
{
  load("late").incRef();
  cTestComponent& parent = add("parent");
  parent.mOnDestroyed = [this] {
    mLines.push_back("component parent");
    add("child");
  };
  mPasses.settle();
  mpManager.reset();
  EXPECT_EQ(mLines, (tLines{"component parent", "component child", "library late"}));
}

TEST_F(ModuleMgrDetails, ALibraryWhoseComponentIsStillBeingCalledGoesWithAPassMore)
{
  cLoader& loader = load("called");
  loader.incRef();
  cTestComponent& component = add("called");
  component.mOnDestroyed = [&] {
    mLines.push_back("component called");
    loader.decRef();
  };
  component.mOnShortlyRemove = [&] {
    component.removeLater();
    mPasses.settle();
    EXPECT_TRUE(mManager.components().empty());
    EXPECT_TRUE(mLines.empty());
  };
  mPasses.settle();
  mManager.submitShortlyRemove();
  EXPECT_EQ(mLines, tLines{"component called"});
  EXPECT_EQ(mPasses.settle(), 1u);
  EXPECT_EQ(mLines, (tLines{"component called", "library called"}));
}

TEST_F(ModuleMgrDetails, TheWorksLeaveTheQueueBeforeTheComponentsGo)
{
  auto const worksOfManagers = [] {
    unsigned int count = 0;
    for (mstd::tSharedObject<mpi::cWork> const& job : mpi::system().wq.jobs())
    {
      count += job.get() != nullptr && (job->name() == mstd::cAsciiString("ComponentManagement") ||
                                        job->name() == mstd::cAsciiString("ComapatIdle"));
    }
    return count;
  };
  EXPECT_EQ(worksOfManagers(), 2u);
  unsigned int worksAtTheEnd = 99;
  add("a").mOnDestroyed = [&] { worksAtTheEnd = worksOfManagers(); };
  mpManager.reset();
  EXPECT_EQ(worksAtTheEnd, 0u);
}
