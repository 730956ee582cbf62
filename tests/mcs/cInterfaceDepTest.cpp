#include "mcs/cInterfaceDep.h"

#include "mcs/cNoSuchModuleException.h"
#include "mcs/cUnmatchedInterfaceException.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "std/cBugException.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>

using mcs::cComponentAddr;
using mcs::cComponentLocation;
using mcs::cInterfaceDep;
using support::cTestComponent;
using support::cTestInterface;
using support::wantedInterface;

namespace
{
typedef std::vector<std::string> tLines;

/// A dependency that writes down what it tells.
class cTracedDep : public cInterfaceDep
{
public:
  template <class Owner>
  cTracedDep(Owner& owner, char const* name, selectionAlgo eSelection = saUseFirstBest)
      : cInterfaceDep(owner, wantedInterface(name), &mInterface, eSelection), mInterface(name)
  {
    sigInterfaceAddress.connect(mrmi::cDirectLocalSlotCall1(*this, &cTracedDep::sltAddress));
    sigInterfaceLost.connect(mrmi::cDirectLocalSlotCall0(*this, &cTracedDep::sltLost));
    mInterface.mOnMatched = [this] { tell("interface matched"); };
    mInterface.mOnUnmatched = [this] { tell("interface unmatched"); };
  }

  void sltAddress(cComponentAddr const& address) { tell("address " + std::to_string(address.moduleID())); }
  void sltLost() { tell("lost"); }
  void tell(std::string const& what)
  {
    mLines.push_back(what + (matched() ? ", matched" : ", unmatched") + (hasAddress() ? ", address" : ""));
  }

  bool hasAddress() const
  {
    try
    {
      address();
      return true;
    }
    catch (mcs::cUnmatchedInterfaceException const&)
    {
      return false;
    }
  }
  bool validateMatch(mcs::cMatchedDependency const& match) override
  {
    return !mReject && cInterfaceDep::validateMatch(match);
  }
  tLines take() { return std::exchange(mLines, {}); }

  using cInterfaceDep::excludedLocations;
  using cInterfaceDep::possibleLocations;

  bool mReject = false;
  cTestInterface mInterface;
  tLines mLines;
};

class cInterfaceDepTest : public ::testing::Test
{
protected:
  cTestComponent& add(char const* name, char const* provides = nullptr, char const* host = nullptr)
  {
    mComponents.push_back(std::make_unique<cTestComponent>(mManager, name));
    cTestComponent& component = *mComponents.back();
    if (provides != nullptr)
    {
      component.provide(provides);
    }
    if (host != nullptr)
    {
      component.mLocal = false;
      component.componentLocation() =
          cComponentLocation(cComponentAddr(1, 50 + mComponents.size()), host, "", 1000 + mComponents.size());
    }
    mManager.addComponent(component, cComponentAddr());
    return component;
  }
  cComponentLocation at(char const* host, unsigned int iId = 1) const
  {
    return cComponentLocation(cComponentAddr(9, iId), host, "somewhere", 4);
  }

  support::cCaptureOut mOut;
  mcs::cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
  std::vector<std::unique_ptr<cTestComponent>> mComponents;
};

std::string addressRefusal(cInterfaceDep const& dependency)
{
  return support::messageOf(support::caught<mcs::cUnmatchedInterfaceException>([&] { dependency.address(); }));
}
} // namespace

TEST_F(cInterfaceDepTest, IsUnmatchedAtFirst)
{
  cInterfaceDep const dependency(mManager, wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  EXPECT_FALSE(dependency.matched());
  EXPECT_EQ(addressRefusal(dependency), "Unmatched interface!");
  EXPECT_EQ(dependency.owner(), nullptr);
  EXPECT_EQ(dependency.hasProvider(), nullptr);
  EXPECT_EQ(dependency.selection(), cInterfaceDep::saUseFirstBest);
  EXPECT_EQ(support::toString(dependency.wanted().name()), "x");
  EXPECT_FALSE(mPasses.isPending());
}

TEST_F(cInterfaceDepTest, TheSelectionsHaveTheirNumbers)
{
  EXPECT_EQ(static_cast<int>(cInterfaceDep::saUseExcplicit), 0);
  EXPECT_EQ(static_cast<int>(cInterfaceDep::saUseFirstBest), 1);
  EXPECT_EQ(static_cast<int>(cInterfaceDep::saUseInteractive), 2);
}

TEST_F(cInterfaceDepTest, JoinsItsOwnerAndLeavesIt)
{
  cTestComponent& owner = add("owner");
  mPasses.settle();
  {
    cTracedDep dependency(owner, "x");
    EXPECT_EQ(dependency.owner(), &owner);
    ASSERT_EQ(owner.interfaceDeps().length(), 1u);
    EXPECT_EQ(owner.interfaceDeps()[0], &dependency);
    EXPECT_TRUE(mPasses.isPending());
    mPasses.settle();
  }
  EXPECT_EQ(owner.interfaceDeps().length(), 0u);
  EXPECT_TRUE(owner.interfaceDepModified());
  EXPECT_TRUE(mPasses.isPending());
}

TEST_F(cInterfaceDepTest, MatchesARunningProviderInThePassAfterItsCreation)
{
  cTestComponent& provider = add("provider", "x");
  cTestComponent& owner = add("owner");
  mPasses.settle();
  cTracedDep dependency(owner, "x");
  EXPECT_FALSE(dependency.matched());
  mPasses.run();
  EXPECT_TRUE(dependency.matched());
  EXPECT_TRUE(dependency.address() == provider.address());
  EXPECT_EQ(dependency.hasProvider(), &provider);
  EXPECT_EQ(dependency.take(), (tLines{"interface matched, unmatched", "address 2, unmatched"}));
}

TEST_F(cInterfaceDepTest, OfAnUnannouncedOwnerWaitsForTheAnnouncement)
{
  bool isDelayed = true;
  cTestComponent& owner = add("owner");
  owner.mDelay = [&] { return isDelayed; };
  cTestComponent& provider = add("provider", "x");
  provider.setAnnounced(); // so that it is not announced to the dependency
  cTracedDep dependency(owner, "x");
  mPasses.run();
  mPasses.run();
  EXPECT_FALSE(dependency.matched());
  isDelayed = false;
  mPasses.run();
  EXPECT_TRUE(dependency.matched());
}

TEST_F(cInterfaceDepTest, WithoutOwnerMatchesOnlyByARecalculationOrAnAnnouncement)
{
  cTestComponent& provider = add("provider", "x");
  mPasses.settle();
  cTracedDep byRecalc(mManager, "x");
  cTracedDep byAnnouncement(mManager, "x");
  mManager.handleComponentIterationLater();
  mPasses.settle();
  EXPECT_FALSE(byRecalc.matched());

  byRecalc.recalc();
  EXPECT_TRUE(byRecalc.address() == provider.address());
  EXPECT_FALSE(byAnnouncement.matched());

  cTestComponent& second = add("second", "x");
  mPasses.settle();
  EXPECT_TRUE(byAnnouncement.address() == second.address());
  EXPECT_TRUE(byRecalc.address() == provider.address()) << "a match stays while it is good";
}

TEST_F(cInterfaceDepTest, IsOfferedAnAnnouncedComponentAtOnceWhetherOrNotItsOwnerIsInAPass)
{
  cTestComponent& owner = add("owner");
  owner.mDelay = [] { return true; };
  cTracedDep dependency(owner, "x");
  add("provider", "x");
  mPasses.run();
  EXPECT_TRUE(dependency.matched());
  EXPECT_FALSE(owner.announced());
}

TEST_F(cInterfaceDepTest, TheFirstQualifyingComponentInTheOrderOfTheManagerWins)
{
  add("other", "y");
  cTestComponent& first = add("first", "x");
  add("second", "x");
  cTracedDep dependency(mManager, "x");
  dependency.recalc();
  EXPECT_TRUE(dependency.address() == first.address());
  EXPECT_EQ(dependency.take().size(), 2u) << "matched once";
  dependency.recalc();
  EXPECT_TRUE(dependency.take().empty());
}

TEST_F(cInterfaceDepTest, AnInterfaceOfTheOwnTypeDoesNotFit)
{
  cTestComponent& same = add("same");
  same.addInterface(mstd::tAutoPtr<mcs::cAbstractInterface>(new cTestInterface("x", mcs::cInterfaceDesc::Requiring)));
  cTracedDep dependency(mManager, "x");
  dependency.recalc();
  EXPECT_FALSE(dependency.matched());
  EXPECT_EQ(dependency.hasPotentialyMatchingInterface(same), nullptr);
  EXPECT_EQ(dependency.hasMatchingInterface(same), nullptr);
}

TEST_F(cInterfaceDepTest, TheFirstFittingInterfaceOfAComponentIsGiven)
{
  cTestComponent& component = add("provider", "y");
  cTestInterface own("x", mcs::cInterfaceDesc::Requiring);
  cTestInterface first("x");
  cTestInterface second("x");
  component.addInterface(own);
  component.addInterface(first);
  component.addInterface(second);
  cTracedDep dependency(mManager, "x");
  EXPECT_EQ(dependency.hasPotentialyMatchingInterface(component), &first);
  EXPECT_EQ(dependency.hasMatchingInterface(component), &first);
}

TEST_F(cInterfaceDepTest, APossibleLocationExcludesOtherHosts)
{
  cTestComponent& near = add("near", "x", "near");
  cTestComponent& far = add("far", "x", "far");
  cTracedDep dependency(mManager, "x");
  dependency.addPossibleLocation(far.location(), true);
  EXPECT_EQ(dependency.hasMatchingInterface(near), nullptr);
  EXPECT_NE(dependency.hasPotentialyMatchingInterface(near), nullptr);
  dependency.recalc();
  EXPECT_TRUE(dependency.address() == far.location().address());
}

TEST_F(cInterfaceDepTest, OnlyTheHostOfAPossibleLocationCounts)
{
  cTestComponent& far = add("far", "x", "far");
  cTracedDep dependency(mManager, "x");
  dependency.addPossibleLocation(at("nowhere"), true);
  EXPECT_EQ(dependency.hasMatchingInterface(far), nullptr);
  dependency.addPossibleLocation(at("far"), true);
  EXPECT_NE(dependency.hasMatchingInterface(far), nullptr);
}

TEST_F(cInterfaceDepTest, AnExcludedLocationNeverQualifiesIfItAgreesInFull)
{
  cTestComponent& far = add("far", "x", "far");
  cTracedDep dependency(mManager, "x");
  dependency.addPossibleLocation(at("far"), true);
  dependency.excludedLocations().append(at("far"));
  EXPECT_NE(dependency.hasMatchingInterface(far), nullptr) << "the host alone does not exclude";
  dependency.excludedLocations().append(far.location());
  EXPECT_EQ(dependency.hasMatchingInterface(far), nullptr);
  EXPECT_NE(dependency.hasPotentialyMatchingInterface(far), nullptr);
}

TEST_F(cInterfaceDepTest, ToUseOtherHostsAllTheSameIsNotSupported)
{
  cTracedDep dependency(mManager, "x");
  mstd::cBugException const e =
      support::caught<mstd::cBugException>([&] { dependency.addPossibleLocation(at("far"), false); });
  EXPECT_NE(support::messageOf(e).find("cInterfaceDep::addPossibleLocation(useUnpredictable)"), std::string::npos);
  EXPECT_TRUE(dependency.possibleLocations().empty());
}

TEST_F(cInterfaceDepTest, AnInteractiveChoiceFailsWhenItIsToBeDone)
{
  cTracedDep dependency(mManager, "x", cInterfaceDep::saUseInteractive);
  dependency.recalc(); // there is nobody to look at
  cTestComponent& any = add("any");
  for (auto const& action :
       {std::function<void()>([&] { dependency.recalc(); }), std::function<void()>([&] { dependency.recalc(any); })})
  {
    mstd::cBugException const e = support::caught<mstd::cBugException>(action);
    EXPECT_NE(support::messageOf(e).find("cInterfaceDep::saUseInteractive"), std::string::npos);
  }
}

TEST_F(cInterfaceDepTest, AnExplicitOneNeverSearches)
{
  cTestComponent& provider = add("provider", "x");
  cTracedDep dependency(mManager, "x", cInterfaceDep::saUseExcplicit);
  dependency.recalc();
  mPasses.settle();
  EXPECT_FALSE(dependency.matched());

  dependency.setExplicit(provider.location());
  EXPECT_TRUE(dependency.address() == provider.address());
  EXPECT_EQ(dependency.take(),
            (tLines{"interface unmatched, unmatched", "interface matched, unmatched", "address 2, unmatched"}));
  dependency.recalc();
  EXPECT_TRUE(dependency.take().empty());

  dependency.mReject = true;
  dependency.recalc();
  EXPECT_EQ(dependency.take(), (tLines{"interface unmatched, matched", "lost, matched"}));
  dependency.mReject = false;
  dependency.recalc();
  EXPECT_FALSE(dependency.matched());
}

TEST_F(cInterfaceDepTest, SetExplicitTakesAnotherProviderAndDoesNotAskForPlaces)
{
  add("first", "x");
  cTestComponent& second = add("second", "x", "far");
  cTracedDep dependency(mManager, "x");
  dependency.recalc();
  dependency.addPossibleLocation(at("nowhere"), true);
  dependency.excludedLocations().append(second.location());
  dependency.take();
  dependency.setExplicit(second.location());
  EXPECT_TRUE(dependency.address() == second.location().address() || dependency.address() == second.address());
  EXPECT_EQ(dependency.hasProvider(), &second);
  EXPECT_EQ(dependency.selection(), cInterfaceDep::saUseExcplicit);
  EXPECT_EQ(dependency.take(), (tLines{"interface unmatched, matched", "lost, matched", "interface matched, unmatched",
                                       "address " + std::to_string(second.address().moduleID()) + ", unmatched"}));
}

TEST_F(cInterfaceDepTest, SetExplicitOnAComponentWithoutAFittingInterfaceStaysUnmatched)
{
  cTestComponent& component = add("none", "y");
  add("provider", "x");
  cTracedDep dependency(mManager, "x");
  dependency.recalc();
  dependency.setExplicit(component.location());
  EXPECT_FALSE(dependency.matched());
  EXPECT_EQ(dependency.selection(), cInterfaceDep::saUseExcplicit);
}

TEST_F(cInterfaceDepTest, SetExplicitOnAnUnknownLocationLeavesItUnmatchedAndSwitched)
{
  add("provider", "x");
  cTracedDep dependency(mManager, "x");
  dependency.recalc();
  mcs::cNoSuchModuleException const e =
      support::caught<mcs::cNoSuchModuleException>([&] { dependency.setExplicit(at("far", 3)); });
  EXPECT_TRUE(e.address() == cComponentAddr(9, 3));
  EXPECT_FALSE(dependency.matched());
  EXPECT_EQ(addressRefusal(dependency), "Unmatched interface!");
  EXPECT_EQ(dependency.selection(), cInterfaceDep::saUseExcplicit);
}

TEST_F(cInterfaceDepTest, InvalidatingTellsTheInterfaceAlwaysAndTheLossOnlyIfMatched)
{
  add("provider", "x");
  cTracedDep dependency(mManager, "x");
  dependency.invalidateMatch();
  EXPECT_EQ(dependency.take(), (tLines{"interface unmatched, unmatched"}));
  dependency.recalc();
  dependency.take();
  dependency.invalidateMatch();
  EXPECT_EQ(dependency.take(), (tLines{"interface unmatched, matched", "lost, matched"}));
  EXPECT_FALSE(dependency.matched());
}

TEST_F(cInterfaceDepTest, NeedsNeitherAnInterfaceNorListeners)
{
  cTestComponent& provider = add("provider", "x");
  cInterfaceDep dependency(mManager, wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  dependency.recalc();
  EXPECT_TRUE(dependency.address() == provider.address());
  dependency.invalidateMatch();
  EXPECT_FALSE(dependency.matched());
}

TEST_F(cInterfaceDepTest, StaysMatchedUntilItsOwnerIsRecalculatedWhenTheProviderLeaves)
{
  cTestComponent& owner = add("owner");
  cTracedDep dependency(owner, "x");
  cTestComponent& provider = add("provider", "x");
  mPasses.settle();
  dependency.take();
  provider.removeLater();
  mPasses.run();
  EXPECT_TRUE(dependency.matched());
  EXPECT_EQ(addressRefusal(dependency), "Unmatched interface!");
  EXPECT_EQ(dependency.hasProvider(), nullptr);
  EXPECT_TRUE(dependency.take().empty());
  EXPECT_TRUE(owner.interfaceDepModified());
  EXPECT_TRUE(mPasses.isPending());
  mPasses.run();
  EXPECT_FALSE(dependency.matched());
  EXPECT_EQ(dependency.take(), (tLines{"interface unmatched, matched", "lost, matched"}));
}

TEST_F(cInterfaceDepTest, MatchesAnotherProviderInTheSameSearchThatEndsTheMatch)
{
  cTestComponent& owner = add("owner");
  cTracedDep dependency(owner, "x");
  cTestComponent& first = add("first", "x");
  cTestComponent& second = add("second", "x");
  mPasses.settle();
  ASSERT_TRUE(dependency.address() == first.address());
  dependency.take();
  first.removeLater();
  mPasses.settle();
  EXPECT_TRUE(dependency.address() == second.address());
  EXPECT_EQ(dependency.take(), (tLines{"interface unmatched, matched", "lost, matched", "interface matched, unmatched",
                                       "address 4, unmatched"}));
}

TEST_F(cInterfaceDepTest, WithoutOwnerLearnsOfTheLossAtTheNextRecalculation)
{
  cTestComponent& provider = add("provider", "x");
  cTracedDep dependency(mManager, "x");
  mPasses.settle();
  ASSERT_TRUE(dependency.matched());
  dependency.take();
  provider.removeLater();
  mPasses.settle();
  EXPECT_TRUE(dependency.matched());
  EXPECT_FALSE(dependency.hasAddress());
  EXPECT_TRUE(dependency.take().empty());
  dependency.recalc(); // of no component
  EXPECT_TRUE(dependency.matched());
  add("other");
  dependency.recalc();
  EXPECT_FALSE(dependency.matched());
  EXPECT_EQ(dependency.take(), (tLines{"interface unmatched, matched", "lost, matched"}));
}

TEST_F(cInterfaceDepTest, MayMatchItsLeavingProviderAgainInTheSamePass)
{
  cTestComponent& provider = add("provider", "x");
  cTestComponent& owner = add("owner"); // reached behind the provider
  cTracedDep dependency(owner, "x");
  mPasses.settle();
  dependency.take();
  provider.removeLater();
  mPasses.run();
  EXPECT_EQ(dependency.take(), (tLines{"interface unmatched, matched", "lost, matched", "interface matched, unmatched",
                                       "address 2, unmatched"}));
  EXPECT_TRUE(dependency.matched());
  EXPECT_TRUE(mManager.components().length() == 1u);
}

TEST_F(cInterfaceDepTest, TheRemovalOfAnotherComponentChangesNothing)
{
  cTestComponent& owner = add("owner");
  cTracedDep dependency(owner, "x");
  add("first", "x");
  cTestComponent& second = add("second", "x");
  mPasses.settle();
  dependency.take();
  second.removeLater();
  mPasses.run();
  EXPECT_FALSE(owner.interfaceDepModified());
  EXPECT_TRUE(dependency.hasAddress());
}

TEST_F(cInterfaceDepTest, GoesWithoutAWord)
{
  add("provider", "x");
  cTestInterface interface("x", mcs::cInterfaceDesc::Requiring);
  {
    cInterfaceDep dependency(mManager, wantedInterface("x"), &interface, cInterfaceDep::saUseFirstBest);
    dependency.recalc();
  }
  EXPECT_EQ(interface.miMatched, 1u);
  EXPECT_EQ(interface.miUnmatched, 0u);
  add("second", "x");
  mPasses.settle();
  EXPECT_EQ(interface.miMatched, 1u);
}

TEST_F(cInterfaceDepTest, WhatASlotThrowsLeavesItUnmatched)
{
  cTestComponent& provider = add("provider", "x");
  cTracedDep dependency(mManager, "x");
  dependency.mInterface.mOnMatched = [] { throw std::runtime_error("no"); };
  EXPECT_THROW(dependency.recalc(provider), std::runtime_error);
  EXPECT_FALSE(dependency.matched());
  EXPECT_FALSE(dependency.hasAddress());
  dependency.mInterface.mOnMatched = {};
  dependency.recalc(provider);
  EXPECT_TRUE(dependency.matched());
}

TEST_F(cInterfaceDepTest, MayBeDestroyedByWhoeverItTells)
{
  enum
  {
    InInterfaceMatched,
    InAddress,
    InInterfaceUnmatched,
    InLost,
    Ways
  };
  struct cKiller : mrmi::cConnectable
  {
    void sltAddress(cComponentAddr const&) { mDep.reset(); }
    void sltLost() { mDep.reset(); }
    std::unique_ptr<cInterfaceDep> mDep;
  };
  cTestComponent& provider = add("provider", "x");
  cTestComponent& owner = add("owner");
  mPasses.settle();
  for (int way = 0; way < Ways; ++way)
  {
    for (int how = 0; how < 3; ++how)
    {
      cKiller killer;
      cTestInterface interface("x", mcs::cInterfaceDesc::Requiring);
      killer.mDep.reset(new cInterfaceDep(owner, wantedInterface("x"), &interface, cInterfaceDep::saUseFirstBest));
      if (way == InInterfaceMatched)
      {
        interface.mOnMatched = [&] { killer.mDep.reset(); };
      }
      else if (way == InInterfaceUnmatched)
      {
        interface.mOnUnmatched = [&] { killer.mDep.reset(); };
      }
      else if (way == InAddress)
      {
        killer.mDep->sigInterfaceAddress.connect(mrmi::cDirectLocalSlotCall1(killer, &cKiller::sltAddress));
      }
      else
      {
        killer.mDep->sigInterfaceLost.connect(mrmi::cDirectLocalSlotCall0(killer, &cKiller::sltLost));
      }
      how == 0 ? killer.mDep->recalc() : how == 1 ? killer.mDep->recalc(provider) : owner.recalcInterfaceDeps();
      if (killer.mDep != nullptr)
      {
        killer.mDep->setExplicit(provider.location());
      }
      EXPECT_EQ(killer.mDep, nullptr) << way << " " << how;
      EXPECT_EQ(owner.interfaceDeps().length(), 0u);
    }
  }
}
