#include "mcs/cDependencyDiagnosis.h"

#include "mcs/cInterfaceDep.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>

using mcs::cComponentAddr;
using mcs::cComponentLocation;
using mcs::cDependencyDiagnosis;
using mcs::cInterfaceDep;
using support::cTestComponent;

namespace
{
class cPlaceDep : public cInterfaceDep
{
public:
  using cInterfaceDep::cInterfaceDep;
  using cInterfaceDep::excludedLocations;
};

class cDependencyDiagnosisTest : public ::testing::Test
{
protected:
  cTestComponent& add(char const* name, char const* provides = nullptr)
  {
    mComponents.push_back(std::make_unique<cTestComponent>(mManager, name));
    if (provides != nullptr)
    {
      mComponents.back()->provide(provides);
    }
    mManager.addComponent(*mComponents.back(), cComponentAddr());
    return *mComponents.back();
  }
  void expect(cInterfaceDep const& dependency, cDependencyDiagnosis::Reason reason,
              mcs::cAbstractComponent const* pComponent, std::string const& sentence)
  {
    cDependencyDiagnosis const diagnosis(dependency);
    EXPECT_EQ(diagnosis.reason(), reason);
    EXPECT_EQ(diagnosis.component(), pComponent);
    EXPECT_EQ(support::toString(diagnosis.message()), sentence);
  }

  support::cCaptureOut mOut;
  mcs::cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
  std::vector<std::unique_ptr<cTestComponent>> mComponents;
};
} // namespace

TEST_F(cDependencyDiagnosisTest, NobodyHasSuchAnInterface)
{
  add("other", "y");
  cInterfaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  expect(dependency, cDependencyDiagnosis::NoSuchInterface, nullptr, "No component has an interface \"x\".");
  EXPECT_TRUE(cDependencyDiagnosis(dependency).candidates().empty());
}

TEST_F(cDependencyDiagnosisTest, TheInterfaceIsOfTheOwnType)
{
  cTestComponent& same = add("same");
  support::cTestInterface interface("x", mcs::cInterfaceDesc::Requiring);
  same.addInterface(interface);
  cInterfaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  expect(dependency, cDependencyDiagnosis::OwnType, &same,
         "The interface \"x\" of same (1:2) is of the same type as the one that is wanted, so that they do not fit "
         "together.");
  ASSERT_EQ(cDependencyDiagnosis(dependency).candidates().length(), 1u);
  EXPECT_EQ(cDependencyDiagnosis(dependency).candidates().first().mVerdict, cDependencyDiagnosis::SameType);
}

TEST_F(cDependencyDiagnosisTest, TheHostIsExcluded)
{
  cTestComponent& far = add("far", "x");
  far.componentLocation() = cComponentLocation(cComponentAddr(1, 9), "far", "", 3);
  cPlaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  dependency.addPossibleLocation(cComponentLocation(cComponentAddr(1, 9), "near", "", 3), true);
  std::string const sentence = "The interface \"x\" of far (1:2) does not qualify, since the place 1:9-3@far is not "
                               "allowed.";
  expect(dependency, cDependencyDiagnosis::PlaceExcluded, &far, sentence);
  EXPECT_EQ(cDependencyDiagnosis(dependency).candidates().first().mVerdict, cDependencyDiagnosis::HostNotPossible);
  dependency.excludedLocations().append(far.location());
  expect(dependency, cDependencyDiagnosis::PlaceExcluded, &far, sentence);
  EXPECT_EQ(cDependencyDiagnosis(dependency).candidates().first().mVerdict, cDependencyDiagnosis::PlaceIsExcluded);
}

TEST_F(cDependencyDiagnosisTest, TheChoiceIsNotMadeByASearch)
{
  cTestComponent& provider = add("provider", "x");
  cInterfaceDep byHand(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseExcplicit);
  expect(byHand, cDependencyDiagnosis::ChosenByHand, &provider,
         "The provider of the interface \"x\" has to be chosen explicitly.");
  cInterfaceDep interactive(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseInteractive);
  expect(interactive, cDependencyDiagnosis::NotSearchable, &provider,
         "An interactive choice of the provider of the interface \"x\" is not supported.");
}

TEST_F(cDependencyDiagnosisTest, TheSearchWaitsForTheOwner)
{
  cTestComponent& provider = add("provider", "x");
  mPasses.settle();
  cTestComponent owner(mManager, "owner");
  bool isDelayed = true;
  owner.mDelay = [&] { return isDelayed; };
  cInterfaceDep dependency(owner, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  expect(dependency, cDependencyDiagnosis::OwnerNotAdded, &provider,
         "The interface \"x\" of provider (1:2) is not searched for, since owner was not added to a manager.");
  mManager.addComponent(owner, cComponentAddr());
  mPasses.run();
  expect(dependency, cDependencyDiagnosis::OwnerUnannounced, &provider,
         "The interface \"x\" of provider (1:2) is matched when owner (1:3) is announced.");
  isDelayed = false;
  owner.setAnnounced();
  expect(dependency, cDependencyDiagnosis::PassPending, &provider,
         "The interface \"x\" of provider (1:2) is matched in the next pass.");
  owner.resetInterfaceDepModification();
  expect(dependency, cDependencyDiagnosis::NobodyAsks, &provider,
         "The interface \"x\" of provider (1:2) is matched as soon as somebody asks for a search.");
  owner.removeLater();
  expect(dependency, cDependencyDiagnosis::OwnerLeaving, &provider,
         "The interface \"x\" of provider (1:2) is not searched for any more, since owner (1:3) is to be removed.");
}

TEST_F(cDependencyDiagnosisTest, NobodyAsksForASearchWithoutOwner)
{
  add("other", "y");
  cTestComponent& provider = add("provider", "x");
  cInterfaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  expect(dependency, cDependencyDiagnosis::NobodyAsks, &provider,
         "The interface \"x\" of provider (1:3) is matched as soon as somebody asks for a search.");
}

TEST_F(cDependencyDiagnosisTest, AMatchNamesItsProviderUntilThatIsGone)
{
  cTestComponent& provider = add("", "x");
  cInterfaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  dependency.recalc();
  expect(dependency, cDependencyDiagnosis::Matched, &provider, "The interface \"x\" is provided by 1:2.");
  mPasses.settle();
  provider.removeLater();
  mPasses.settle();
  expect(dependency, cDependencyDiagnosis::ProviderGone, nullptr,
         "The provider of the interface \"x\" is gone. The next search ends the match.");
}

TEST_F(cDependencyDiagnosisTest, ListsAllCandidatesInTheirOrder)
{
  support::cTestInterface interface("x", mcs::cInterfaceDesc::Requiring);
  add("same").addInterface(interface);
  add("other", "y");
  cTestComponent& provider = add("provider", "x");
  cInterfaceDep dependency(mManager, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  cDependencyDiagnosis const diagnosis(dependency);
  ASSERT_EQ(diagnosis.candidates().length(), 2u);
  EXPECT_EQ(diagnosis.candidates().first().mVerdict, cDependencyDiagnosis::SameType);
  EXPECT_EQ(diagnosis.candidates().last().mVerdict, cDependencyDiagnosis::Fits);
  EXPECT_EQ(diagnosis.candidates().last().mpComponent, &provider);
}
