// What a dependency compares when somebody leaves, and what it does not ask for.

#include "mcs/cInterfaceDep.h"

#include "mcs/cUnmatchedInterfaceException.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"

#include <gtest/gtest.h>

using mcs::cComponentAddr;
using mcs::cComponentLocation;
using mcs::cInterfaceDep;
using support::cTestComponent;

namespace
{
class InterfaceDepDetails : public ::testing::Test
{
protected:
  support::cCaptureOut mOut;
  mcs::cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
  cTestComponent mOwner{mManager, "owner"};
  cTestComponent mProvider{mManager, "provider"};
};
} // namespace

TEST_F(InterfaceDepDetails, TheSignalsStandInTheirOrder)
{
  cInterfaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  EXPECT_LT(static_cast<void const*>(&dependency.sigInterfaceAddress),
            static_cast<void const*>(&dependency.sigInterfaceLost));
}

TEST_F(InterfaceDepDetails, AComponentWithTheAddressOfTheProviderOnAnotherHostMayLeave)
{
  mProvider.provide("x");
  mManager.addComponent(mProvider, cComponentAddr());
  cTestComponent twin(mManager, "twin");
  twin.mLocal = false;
  twin.componentLocation() = cComponentLocation(mProvider.address(), "elsewhere", "", 1);
  mManager.addComponent(twin, cComponentAddr());
  mManager.addComponent(mOwner, cComponentAddr());
  cInterfaceDep dependency(mOwner, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  mPasses.settle();
  ASSERT_TRUE(dependency.matched());
  dependency.sltComponentRemoved(twin);
  EXPECT_FALSE(mOwner.interfaceDepModified());
  EXPECT_TRUE(dependency.address() == mProvider.address());
  EXPECT_FALSE(mPasses.isPending());
  dependency.sltComponentRemoved(mProvider);
  EXPECT_TRUE(mOwner.interfaceDepModified());
  EXPECT_TRUE(dependency.matched());
  EXPECT_THROW(dependency.address(), mcs::cUnmatchedInterfaceException);
  EXPECT_TRUE(mPasses.isPending());
}

TEST_F(InterfaceDepDetails, AnotherPossiblePlaceAsksForNoPass)
{
  mManager.addComponent(mOwner, cComponentAddr());
  cInterfaceDep dependency(mOwner, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  mPasses.settle();
  dependency.addPossibleLocation(cComponentLocation(), true);
  EXPECT_FALSE(mPasses.isPending());
  EXPECT_FALSE(mOwner.interfaceDepModified());
}

TEST_F(InterfaceDepDetails, AMatchIsTheLocationAsItWasThen)
{
  mProvider.provide("x");
  mManager.addComponent(mProvider, cComponentAddr());
  mPasses.settle();
  cInterfaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  dependency.recalc();
  cComponentAddr const address = mProvider.address();
  mProvider.setComponentID(500);
  EXPECT_TRUE(dependency.address() == address);
  dependency.sltComponentRemoved(mProvider); // which is somebody else now
  EXPECT_TRUE(dependency.address() == address);
}
