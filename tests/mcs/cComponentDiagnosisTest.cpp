#include "mcs/cComponentDiagnosis.h"

#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

using mcs::cComponentAddr;
using mcs::cComponentDiagnosis;
using support::cTestComponent;

namespace
{
class cComponentDiagnosisTest : public ::testing::Test
{
protected:
  void expectAnnouncement(cTestComponent const& component, cComponentDiagnosis::Announcement state,
                          std::string const& sentence)
  {
    cComponentDiagnosis const diagnosis(component);
    EXPECT_EQ(diagnosis.announcement(), state);
    EXPECT_EQ(support::toString(diagnosis.announcementMessage()), sentence);
  }
  void expectRemoval(cTestComponent const& component, cComponentDiagnosis::Removal state, std::string const& sentence)
  {
    cComponentDiagnosis const diagnosis(component);
    EXPECT_EQ(diagnosis.removal(), state);
    EXPECT_EQ(support::toString(diagnosis.removalMessage()), sentence);
  }

  support::cCaptureOut mOut;
  mcs::cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
};
} // namespace

TEST_F(cComponentDiagnosisTest, FollowsAComponentToItsAnnouncement)
{
  cTestComponent a(mManager, "a");
  expectAnnouncement(a, cComponentDiagnosis::NotAdded, "a is not announced, since it is in no manager.");
  mManager.addComponent(a, cComponentAddr());
  expectAnnouncement(a, cComponentDiagnosis::AnnouncedNext, "a (1:2) is announced in the next pass.");
  a.mDelay = [] { return true; };
  expectAnnouncement(a, cComponentDiagnosis::Delayed,
                     "a (1:2) is not announced, since it delays its announcement itself.");
  a.mDelay = {};
  mPasses.settle();
  expectAnnouncement(a, cComponentDiagnosis::Announced, "a (1:2) is announced.");
}

TEST_F(cComponentDiagnosisTest, OneThatIsToBeRemovedIsNeverAnnounced)
{
  cTestComponent a(mManager);
  mManager.addComponent(a, cComponentAddr());
  a.removeLater();
  expectAnnouncement(a, cComponentDiagnosis::RemovedUnannounced,
                     "1:2 will not be announced, since it is to be removed.");
}

TEST_F(cComponentDiagnosisTest, FollowsAComponentToItsRemoval)
{
  cTestComponent unnamed(mManager);
  expectRemoval(unnamed, cComponentDiagnosis::NotInManager, "unnamed cannot be removed, since it is in no manager.");
  cTestComponent a(mManager, "a");
  cTestComponent b(mManager, "b");
  cTestComponent c(mManager, "c");
  for (cTestComponent* const component : {&a, &b, &c})
  {
    mManager.addComponent(*component, cComponentAddr());
  }
  b.addLocalRequiredComponent(&a);
  c.addLocalRequiredComponent(&a);
  expectRemoval(a, cComponentDiagnosis::NotRequested, "a (1:2) stays, since nobody has asked for its removal.");
  a.removeLater();
  expectRemoval(a, cComponentDiagnosis::WaitsForReferrers,
                "a (1:2) is removed after those that require it: b (1:3), c (1:4).");
  cComponentDiagnosis const diagnosis(a);
  ASSERT_EQ(diagnosis.referrers().length(), 2u);
  EXPECT_EQ(diagnosis.referrers().first(), &b);
  EXPECT_TRUE(diagnosis.cycle().empty());
  mPasses.run();
  expectRemoval(a, cComponentDiagnosis::RemovedNext, "a (1:2) is removed in the next pass.");
  mPasses.settle();
  expectRemoval(a, cComponentDiagnosis::NotInManager, "a (1:2) cannot be removed, since it is in no manager.");
}

TEST_F(cComponentDiagnosisTest, NamesTheCircleThatHoldsAComponent)
{
  cTestComponent a(mManager, "a");
  cTestComponent b(mManager, "b");
  cTestComponent c(mManager, "c");
  for (cTestComponent* const component : {&a, &b, &c})
  {
    mManager.addComponent(*component, cComponentAddr());
  }
  b.addLocalRequiredComponent(&a);
  b.addLocalRequiredComponent(&c);
  c.addLocalRequiredComponent(&b);
  a.removeLater();
  expectRemoval(a, cComponentDiagnosis::WaitsForItself,
                "a (1:2) will never be removed, since components require each other in a circle: b (1:3) -> c (1:4) "
                "-> b (1:3).");
  EXPECT_EQ(cComponentDiagnosis(a).cycle().length(), 2u);
}
