#include "mcs/cAbstractComponent.h"

#include "mcs/cInterfaceDep.h"
#include "pi/cAbstractKROApp.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cReferenceFrame.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

using mcs::cAbstractComponent;
using mcs::cComponentAddr;
using mcs::cInterfaceDep;
using support::cTestComponent;

namespace
{
/// As it is without a word of its own.
class cPlainComponent : public cAbstractComponent
{
public:
  explicit cPlainComponent(mcs::cModuleMgr& manager) : cAbstractComponent(manager) {}
  cPlainComponent(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame) : cAbstractComponent(manager, frame) {}
};

class cApp : public cAbstractKROApp
{
};

class cAbstractComponentTest : public ::testing::Test
{
protected:
  mcs::cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
  support::cCaptureOut mOut;
};

std::string nameOf(mstd::tAutoPtr<mstd::cAbstractException> const& exception)
{
  return exception.get() != nullptr ? exception->typeName().c_str() : "(none)";
}
} // namespace

TEST_F(cAbstractComponentTest, IsNobodyBeforeItIsAdded)
{
  cPlainComponent component(mManager);
  EXPECT_EQ(&component.moduleMgr(), &mManager);
  EXPECT_FALSE(component.address().valid());
  EXPECT_FALSE(component.deployedBy().valid());
  EXPECT_TRUE(component.location() == mcs::cComponentLocation());
  EXPECT_FALSE(component.toRemove());
  EXPECT_FALSE(component.announced());
  EXPECT_FALSE(component.interfaceDepModified());
  EXPECT_FALSE(component.componentDepModified());
  EXPECT_TRUE(component.localRequiredComponents().empty());
  EXPECT_EQ(component.interfaceDeps().length(), 0u);
  EXPECT_EQ(component.interfaceDeps().type(), mstd::tAutoPtrType::NotOwned);
  EXPECT_FALSE(mPasses.isPending());
}

TEST_F(cAbstractComponentTest, HasModestDefaults)
{
  msa::cReferenceFrame frame;
  cPlainComponent component(mManager, frame);
  cApp app;
  EXPECT_EQ(&component.moduleMgr(), &mManager);
  EXPECT_FALSE(component.isPlugIn());
  EXPECT_TRUE(component.isComponent());
  EXPECT_TRUE(component.isStatic());
  EXPECT_EQ(component.isSpecific().length(), 0u);
  EXPECT_FALSE(component.explicitLocal());
  EXPECT_EQ(component.fixedQueueID(), 1u);
  EXPECT_EQ(component.fixedModuleID(), 0u);
  EXPECT_TRUE(component.isLocal());
  EXPECT_TRUE(component.applicationCloseAdvisable(app));
  EXPECT_FALSE(component.delayAnnouncement());
  component.notifyComponentRegistered();
  component.notifyShortlyRemove();
  EXPECT_FALSE(mPasses.isPending());
}

TEST_F(cAbstractComponentTest, TakesItsNumberIntoAddressAndLocation)
{
  cTestComponent component(mManager);
  component.miQueueID = 5;
  component.setComponentID(12);
  EXPECT_TRUE(component.address() == cComponentAddr(5, 12));
  EXPECT_TRUE(component.location().address() == cComponentAddr(5, 12));
  component.setDeployedBy(cComponentAddr(3, 4));
  EXPECT_TRUE(component.deployedBy() == cComponentAddr(3, 4));
}

TEST_F(cAbstractComponentTest, KeepsTheLocationThatIsItsOwnWhenItIsNotLocal)
{
  cTestComponent component(mManager);
  component.mLocal = false;
  component.componentLocation() = mcs::cComponentLocation(cComponentAddr(8, 9), "far", "", 77);
  component.setComponentID(12);
  EXPECT_TRUE(component.address() == cComponentAddr(1, 12));
  EXPECT_TRUE(component.location() == mcs::cComponentLocation(cComponentAddr(8, 9), "far", "", 77));
}

TEST_F(cAbstractComponentTest, EachRequestSetsItsMarkAndAsksForAPass)
{
  cPlainComponent component(mManager);
  component.modifyInterfaceDep();
  EXPECT_TRUE(component.interfaceDepModified());
  EXPECT_TRUE(mPasses.isPending());
  mPasses.run();

  component.modifyComponentDep();
  EXPECT_TRUE(component.componentDepModified());
  EXPECT_TRUE(mPasses.isPending());
  mPasses.run();

  component.removeLater();
  EXPECT_TRUE(component.toRemove());
  EXPECT_TRUE(mPasses.isPending());

  component.resetInterfaceDepModification();
  component.resetComponentDepModification();
  EXPECT_FALSE(component.interfaceDepModified());
  EXPECT_FALSE(component.componentDepModified());
  component.setAnnounced();
  EXPECT_TRUE(component.announced());
}

TEST_F(cAbstractComponentTest, ADependencyThatIsAddedIsHeldByPointerAndTold)
{
  cPlainComponent component(mManager);
  cInterfaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  component.addInterfaceDep(&dependency);
  ASSERT_EQ(component.interfaceDeps().length(), 1u);
  EXPECT_EQ(component.interfaceDeps()[0], &dependency);
  EXPECT_TRUE(component.interfaceDepModified());
  EXPECT_TRUE(mPasses.isPending());
  ASSERT_EQ(mOut.lines().size(), 1u);
  EXPECT_EQ(mOut.lines()[0].text, "cAbstractComponent::addInterfaceDep...");
}

TEST_F(cAbstractComponentTest, ADependencyThatIsRemovedLeavesAllItsPlacesAndTheOthersInOrder)
{
  cPlainComponent component(mManager);
  cInterfaceDep a(mManager, support::wantedInterface("a"), nullptr, cInterfaceDep::saUseFirstBest);
  cInterfaceDep b(mManager, support::wantedInterface("b"), nullptr, cInterfaceDep::saUseFirstBest);
  cInterfaceDep c(mManager, support::wantedInterface("c"), nullptr, cInterfaceDep::saUseFirstBest);
  for (cInterfaceDep* const dependency : {&b, &a, &b, &b, &c, &b})
  {
    component.addInterfaceDep(dependency);
  }
  component.resetInterfaceDepModification();
  mPasses.run();
  component.removeInterfaceDep(&b);
  ASSERT_EQ(component.interfaceDeps().length(), 2u);
  EXPECT_EQ(component.interfaceDeps()[0], &a);
  EXPECT_EQ(component.interfaceDeps()[1], &c);
  EXPECT_TRUE(component.interfaceDepModified());
  EXPECT_TRUE(mPasses.isPending());

  component.resetInterfaceDepModification();
  component.removeInterfaceDep(&b); // of which there is none any more
  EXPECT_EQ(component.interfaceDeps().length(), 2u);
  EXPECT_TRUE(component.interfaceDepModified());
}

TEST_F(cAbstractComponentTest, RecalculatesItsDependenciesInOrderAndThoseThatAreAddedMeanwhile)
{
  cTestComponent provider(mManager);
  provider.provide("x");
  mManager.addComponent(provider, cComponentAddr());
  cPlainComponent component(mManager);
  support::cTestInterface first("x", mcs::cInterfaceDesc::Requiring);
  support::cTestInterface second("x", mcs::cInterfaceDesc::Requiring);
  cInterfaceDep late(mManager, support::wantedInterface("x"), &second, cInterfaceDep::saUseFirstBest);
  cInterfaceDep early(component, support::wantedInterface("x"), &first, cInterfaceDep::saUseFirstBest);
  first.mOnMatched = [&] { component.addInterfaceDep(&late); };
  mOut.clear();
  component.recalcInterfaceDeps();
  EXPECT_TRUE(early.matched());
  EXPECT_TRUE(late.matched());
  ASSERT_EQ(mOut.lines().size(), 3u);
  EXPECT_EQ(mOut.lines()[0].text, "cAbstractComponent::Recalcing deps...");
  EXPECT_EQ(mOut.lines()[1].text, "cAbstractComponent::addInterfaceDep...");
  EXPECT_EQ(mOut.lines()[2].text, "cAbstractComponent::Recalcing deps...");
  component.removeInterfaceDep(&late);
}

TEST_F(cAbstractComponentTest, KeepsRequirementsThatAreSaidTwiceAndIgnoresNull)
{
  cPlainComponent component(mManager);
  cPlainComponent other(mManager);
  component.addLocalRequiredComponent(nullptr);
  EXPECT_TRUE(component.localRequiredComponents().empty());
  EXPECT_FALSE(component.componentDepModified());
  EXPECT_FALSE(mPasses.isPending());
  EXPECT_FALSE(component.requires(nullptr));

  component.addLocalRequiredComponent(&other);
  component.addLocalRequiredComponent(&other);
  EXPECT_EQ(component.localRequiredComponents().length(), 2u);
  EXPECT_TRUE(component.componentDepModified());
  EXPECT_TRUE(mPasses.isPending());
  EXPECT_TRUE(component.requires(&other));
  EXPECT_TRUE(component.requiresComponent(&other));
  EXPECT_FALSE(component.requires(&component));
  EXPECT_FALSE(other.requires(&component));
}

TEST_F(cAbstractComponentTest, MakesTheFirstRegisteredExceptionOfAName)
{
  cPlainComponent component(mManager);
  mstd::tArray<char> bytes;
  msa::cDeserializeBinary deserializer(bytes);
  EXPECT_EQ(nameOf(component.tryCreateRegisteredException("mstd::cRuntimeException", deserializer)), "(none)");

  mstd::cOSErrorException* const prototype = new mstd::cOSErrorException("op", 5);
  component.registerRemoteException(mstd::tAutoPtr<mstd::cAbstractException>(prototype));
  component.registerRemoteException(mstd::tAutoPtr<mstd::cAbstractException>(
      new mstd::cRuntimeException(mucs::cLIMessage() << "$MTR$one", nullptr, 0)));
  mstd::tAutoPtr<mstd::cAbstractException> const made =
      component.tryCreateRegisteredException(prototype->typeName(), deserializer);
  ASSERT_NE(made.get(), nullptr);
  EXPECT_NE(made.get(), prototype);
  EXPECT_NE(dynamic_cast<mstd::cOSErrorException*>(made.get()), nullptr);
  EXPECT_EQ(nameOf(component.tryCreateRegisteredException("unheard of", deserializer)), "(none)");
}
