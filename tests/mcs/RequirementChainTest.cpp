#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace
{
/// How many passes it takes to remove a chain in which each requires the next one.
unsigned int passesOfChain(unsigned int iLength, bool bRequiringBehindRequired)
{
  support::cCaptureOut mute;
  mcs::cModuleMgr manager(mpi::system().extensions);
  support::cPasses passes;
  std::vector<support::cTestComponent*> chain;
  std::string gone;
  for (unsigned int i = 0; i < iLength; ++i)
  {
    chain.push_back(new support::cTestComponent(manager));
    manager.addComponent(mstd::tAutoPtr<mcs::cAbstractComponent>(chain.back()), mcs::cComponentAddr());
  }
  if (bRequiringBehindRequired)
  {
    std::reverse(chain.begin(), chain.end());
  }
  std::string order;
  for (unsigned int i = 0; i < iLength; ++i)
  {
    if (i + 1 < iLength)
    {
      chain[i]->addLocalRequiredComponent(chain[i + 1]);
    }
    order += std::to_string(i) + " ";
    chain[i]->mOnDestroyed = [&gone, i] { gone += std::to_string(i) + " "; };
  }
  passes.settle();
  chain.back()->removeLater();
  unsigned int const count = passes.settle();
  EXPECT_TRUE(manager.components().empty());
  EXPECT_EQ(gone, order) << "those that require go first";
  return count;
}
} // namespace

TEST(RequirementChain, InTheBestOrderNeedsAPassForEachMember)
{
  for (unsigned int length : {1u, 2u, 3u, 10u, 50u})
  {
    EXPECT_EQ(passesOfChain(length, true), length);
  }
}

TEST(RequirementChain, InTheWorstOrderNeedsAPassMoreForEachThatRequires)
{
  for (unsigned int length : {1u, 2u, 3u, 10u, 50u})
  {
    EXPECT_EQ(passesOfChain(length, false), 2 * length - 1);
  }
}
