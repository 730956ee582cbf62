#include "mcs/cRegisteredInterface.h"

#include "mcs/cAbstractInterface.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

using mcs::cRegisteredInterface;

namespace
{
class cInterface : public mcs::cAbstractInterface
{
public:
  explicit cInterface(int& iDeaths) : cAbstractInterface(mcs::cInterfaceDesc()), miDeaths(iDeaths) {}
  ~cInterface() override { ++miDeaths; }
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}

private:
  int& miDeaths;
};

TEST(cRegisteredInterface, DestroysWhatWasHandedOver)
{
  int deaths = 0;
  {
    cInterface* const interface = new cInterface(deaths);
    mstd::tAutoPtr<mcs::cAbstractInterface> owner(interface);
    cRegisteredInterface const entry(owner);
    EXPECT_FALSE(owner);
    EXPECT_EQ(&entry.interface(), interface);
    EXPECT_EQ(deaths, 0);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(cRegisteredInterface, LeavesWhatItBorrowed)
{
  int deaths = 0;
  cInterface interface(deaths);
  {
    cRegisteredInterface const entry(interface);
    EXPECT_EQ(&entry.interface(), &interface);
  }
  {
    cRegisteredInterface const entry(mstd::tAutoPtr<mcs::cAbstractInterface>(&interface, mstd::tAutoPtrType::NotOwned));
    EXPECT_EQ(&entry.interface(), &interface);
  }
  EXPECT_EQ(deaths, 0);
}

TEST(cRegisteredInterface, RefusesNoInterface)
{
  support::expectAssertion([] { cRegisteredInterface entry{mstd::tAutoPtr<mcs::cAbstractInterface>()}; },
                           "mpPointer != 0", "std/tAutoPtr");
}

TEST(cRegisteredInterface, ComparesTheInterface)
{
  int deaths = 0;
  cInterface first(deaths);
  cInterface second(deaths);
  EXPECT_TRUE(cRegisteredInterface(first) == cRegisteredInterface(first));
  EXPECT_FALSE(cRegisteredInterface(first) == cRegisteredInterface(second));
}
} // namespace
