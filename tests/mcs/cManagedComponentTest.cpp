#include "mcs/cManagedComponent.h"

#include "support/cTestComponent.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

using mcs::cManagedComponent;
using support::cTestComponent;

namespace
{
class cManagedComponentTest : public ::testing::Test
{
protected:
  mcs::cModuleMgr mManager{mpi::system().extensions};
};
} // namespace

TEST_F(cManagedComponentTest, AnOwnedComponentGoesWithItsEntry)
{
  unsigned int destroyed = 0;
  cTestComponent* const component = new cTestComponent(mManager);
  component->mOnDestroyed = [&] { ++destroyed; };
  {
    cManagedComponent entry{mstd::tAutoPtr<mcs::cAbstractComponent>(component)};
    EXPECT_EQ(entry.component(), component);
    EXPECT_EQ(destroyed, 0u);
  }
  EXPECT_EQ(destroyed, 1u);
}

TEST_F(cManagedComponentTest, ABorrowedComponentStays)
{
  unsigned int destroyed = 0;
  {
    cTestComponent component(mManager);
    component.mOnDestroyed = [&] { ++destroyed; };
    {
      cManagedComponent entry(component);
      EXPECT_EQ(entry.component(), &component);
    }
    EXPECT_EQ(destroyed, 0u);
  }
  EXPECT_EQ(destroyed, 1u);
}

TEST_F(cManagedComponentTest, NoComponentIsAnAssertionFailure)
{
  std::string const message =
      support::bugMessageOf([] { cManagedComponent entry{mstd::tAutoPtr<mcs::cAbstractComponent>()}; });
  EXPECT_NE(message.find("mpComponentGuard.get()"), std::string::npos) << message;
  EXPECT_NE(message.find("mcs/cManagedComponent"), std::string::npos) << message;
}
