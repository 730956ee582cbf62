#include "mcs/findRequirementCycle.h"

#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>

using mcs::cAbstractComponent;
using support::cTestComponent;

namespace
{
typedef mstd::tList<cAbstractComponent*> tMembers;

class findRequirementCycleTest : public ::testing::Test
{
protected:
  /// Components 0 to `iCount` - 1, named by a letter each.
  void make(unsigned int iCount)
  {
    for (unsigned int i = 0; i < iCount; ++i)
    {
      mComponents.push_back(
          std::make_unique<cTestComponent>(mManager, std::string(1, static_cast<char>('a' + i % 26))));
      mManager.addComponent(*mComponents.back(), mcs::cComponentAddr());
    }
  }
  void require(unsigned int iFrom, unsigned int iTo)
  {
    mComponents[iFrom]->addLocalRequiredComponent(mComponents[iTo].get());
  }
  /// The names of the circle, or "" for none.
  std::string found()
  {
    mstd::tList<cAbstractComponent*> cycle;
    cycle.append(nullptr); // replaced
    bool const isFound = mcs::findRequirementCycle(mManager, cycle);
    EXPECT_EQ(isFound, !cycle.empty());
    return names(cycle);
  }
  std::string foundFor(unsigned int i)
  {
    mstd::tList<cAbstractComponent*> cycle;
    bool const isFound = mcs::findRequirementCycle(mManager, *mComponents[i], cycle);
    EXPECT_EQ(isFound, !cycle.empty());
    return names(cycle);
  }
  static std::string names(tMembers const& cycle)
  {
    std::string text;
    for (cAbstractComponent* const component : cycle)
    {
      text += component->info().name().c_str();
    }
    return text;
  }

  support::cCaptureOut mOut;
  mcs::cModuleMgr mManager{mpi::system().extensions};
  std::vector<std::unique_ptr<cTestComponent>> mComponents;
};
} // namespace

TEST_F(findRequirementCycleTest, AnEmptyManagerHasNone)
{
  EXPECT_EQ(found(), "");
}

TEST_F(findRequirementCycleTest, ChainsDiamondsAndFansHaveNone)
{
  make(8);
  for (auto const& edge : {std::pair<int, int>{0, 1}, {1, 2}, {0, 3}, {3, 2}, {4, 5}, {4, 6}, {4, 7}, {7, 0}})
  {
    require(edge.first, edge.second);
  }
  EXPECT_EQ(found(), "");
  for (unsigned int i = 0; i < 8; ++i)
  {
    EXPECT_EQ(foundFor(i), "");
  }
}

TEST_F(findRequirementCycleTest, AComponentThatRequiresItselfIsOne)
{
  make(3);
  require(1, 1);
  EXPECT_EQ(found(), "b");
  EXPECT_EQ(foundFor(1), "b");
  EXPECT_EQ(foundFor(0), "");
}

TEST_F(findRequirementCycleTest, GivesTheMembersInTheOrderOfTheirRequirementsFromTheFirstAddedOn)
{
  make(6);
  require(5, 3); // leads in
  require(4, 2);
  require(2, 3);
  require(3, 1);
  require(1, 4);
  require(1, 0); // leads out
  EXPECT_EQ(found(), "becd");
  for (unsigned int i : {1u, 2u, 3u, 4u})
  {
    EXPECT_EQ(foundFor(i), "becd") << i;
  }
  EXPECT_EQ(foundFor(0), "becd") << "required by a member";
  EXPECT_EQ(foundFor(5), "") << "requires a member, and can go";
}

TEST_F(findRequirementCycleTest, AComponentAddedTwiceIsOneComponent)
{
  make(2);
  mManager.addComponent(*mComponents[0], mcs::cComponentAddr());
  require(0, 1);
  EXPECT_EQ(found(), "");
  require(1, 0);
  EXPECT_EQ(found(), "ab");
}

TEST_F(findRequirementCycleTest, ComponentsThatAreNotInTheManagerAreNotFollowed)
{
  make(1);
  {
    cTestComponent gone(mManager, "gone");
    gone.addLocalRequiredComponent(mComponents[0].get());
    mComponents[0]->addLocalRequiredComponent(&gone);
    EXPECT_EQ(found(), "");
    EXPECT_EQ(names([&] {
                tMembers cycle;
                mcs::findRequirementCycle(mManager, gone, cycle);
                return cycle;
              }()),
              "");
  }
  EXPECT_EQ(found(), "") << "a pointer to nothing";
}

TEST_F(findRequirementCycleTest, AVeryLongChainThatClosesNeedsNoDeepStack)
{
  unsigned int const count = 20000;
  make(count);
  for (unsigned int i = 0; i + 1 < count; ++i)
  {
    require(i, i + 1);
  }
  EXPECT_EQ(found().length(), 0u);
  require(count - 1, 0);
  EXPECT_EQ(found().length(), count);
  EXPECT_EQ(foundFor(count / 2).length(), count);
}

TEST_F(findRequirementCycleTest, ASentenceNamesTheCircle)
{
  make(3);
  tMembers cycle;
  EXPECT_EQ(support::toString(mcs::requirementCycleMessage(cycle)), "No component requires itself.");
  require(0, 2);
  require(2, 0);
  ASSERT_TRUE(mcs::findRequirementCycle(mManager, cycle));
  EXPECT_EQ(support::toString(mcs::requirementCycleMessage(cycle)),
            "Components require each other in a circle: a (1:2) -> c (1:4) -> a (1:2).");
}

TEST(findRequirementCycle, AgreesWithAPlainSearchOnRandomGraphs)
{
  unsigned int const seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  support::cCaptureOut mute;
  unsigned int cyclic = 0;
  for (int round = 0; round < 500; ++round)
  {
    mcs::cModuleMgr manager(mpi::system().extensions);
    unsigned int const count = 1 + random() % 9;
    std::vector<std::unique_ptr<cTestComponent>> components;
    for (unsigned int i = 0; i < count; ++i)
    {
      components.push_back(std::make_unique<cTestComponent>(manager));
      manager.addComponent(*components.back(), mcs::cComponentAddr());
    }
    std::vector<std::vector<bool>> reach(count, std::vector<bool>(count));
    for (unsigned int edges = random() % (count + 3); edges != 0; --edges)
    {
      unsigned int const from = random() % count;
      unsigned int const to = random() % count;
      reach[from][to] = true;
      components[from]->addLocalRequiredComponent(components[to].get());
    }
    for (unsigned int k = 0; k < count; ++k)
    {
      for (unsigned int i = 0; i < count; ++i)
      {
        for (unsigned int j = 0; j < count; ++j)
        {
          reach[i][j] = reach[i][j] || (reach[i][k] && reach[k][j]);
        }
      }
    }
    auto const check = [&](bool bExpected, bool bFound, tMembers const& cycle) {
      ASSERT_EQ(bFound, bExpected);
      ASSERT_EQ(cycle.empty(), !bExpected);
      cAbstractComponent* previous = bFound ? *--cycle.end() : nullptr;
      for (cAbstractComponent* const member : cycle)
      {
        EXPECT_TRUE(previous->requiresComponent(member));
        EXPECT_LE(cycle.first()->address().moduleID(), member->address().moduleID());
        previous = member;
      }
    };
    bool isCyclic = false;
    for (unsigned int i = 0; i < count; ++i)
    {
      isCyclic = isCyclic || reach[i][i];
    }
    cyclic += isCyclic;
    tMembers cycle;
    bool const isFound = mcs::findRequirementCycle(manager, cycle);
    check(isCyclic, isFound, cycle);
    for (unsigned int i = 0; i < count; ++i)
    {
      bool isHeld = false;
      for (unsigned int j = 0; j < count; ++j)
      {
        isHeld = isHeld || (reach[j][j] && (j == i || reach[j][i]));
      }
      bool const isFoundFor = mcs::findRequirementCycle(manager, *components[i], cycle);
      check(isHeld, isFoundFor, cycle);
    }
  }
  EXPECT_GT(cyclic, 50u);
  EXPECT_LT(cyclic, 450u);
}
