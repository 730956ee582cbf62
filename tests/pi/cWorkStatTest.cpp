#include "pi/cWorkStat.h"

#include "support/virtualclock.h"

#include <gtest/gtest.h>

TEST(cWorkStat, BeginsAtZeroWithoutDebugRecord)
{
  mpi::cWorkStat statistic;
  EXPECT_EQ(statistic.numStarted(), 0u);
  EXPECT_EQ(statistic.numTriggered(), 0u);
  EXPECT_EQ(statistic.hasDebugInfo(), nullptr);
}

TEST(cWorkStat, CountsStartsAndTriggersApart)
{
  mpi::cWorkStat statistic;
  statistic.notifyStart();
  statistic.notifyStart();
  statistic.notifyTrigger();
  EXPECT_EQ(statistic.numStarted(), 2u);
  EXPECT_EQ(statistic.numTriggered(), 1u);
  EXPECT_EQ(statistic.hasDebugInfo(), nullptr);
}

TEST(cWorkStat, CountingWithoutDebuggingDoesNotLookAtTheClock)
{
  support::cVirtualClock clock;
  mpi::cWorkStat statistic;
  statistic.notifyStart();
  statistic.notifyTrigger();
  EXPECT_EQ(clock.numReads(), 0u);
}

TEST(cWorkStat, DebugRecordBeginsWithTheCreationStackAndThePresentTime)
{
  support::cVirtualClock clock(7000000);
  mpi::cWorkStat statistic;
  statistic.setDebug(true);
  ASSERT_NE(statistic.hasDebugInfo(), nullptr);
  EXPECT_NE(statistic.hasDebugInfo()->creationStack().length(), 0u);
  EXPECT_EQ(statistic.hasDebugInfo()->lastStartStack().length(), 0u);
  EXPECT_EQ(statistic.hasDebugInfo()->lastStart().get(), 7000000u);
  EXPECT_EQ(statistic.hasDebugInfo()->lastTrigger().get(), 7000000u);
}

TEST(cWorkStat, DebugRecordFollowsStartsAndTriggers)
{
  support::cVirtualClock clock(7000000);
  mpi::cWorkStat statistic;
  statistic.setDebug(true);
  clock.set(8000000);
  statistic.notifyStart();
  EXPECT_EQ(statistic.hasDebugInfo()->lastStart().get(), 8000000u);
  EXPECT_EQ(statistic.hasDebugInfo()->lastTrigger().get(), 7000000u);
  EXPECT_NE(statistic.hasDebugInfo()->lastStartStack().length(), 0u);
  clock.set(9000000);
  statistic.notifyTrigger();
  EXPECT_EQ(statistic.hasDebugInfo()->lastStart().get(), 8000000u);
  EXPECT_EQ(statistic.hasDebugInfo()->lastTrigger().get(), 9000000u);
}

TEST(cWorkStat, SwitchingDebuggingOnTwiceKeepsTheRecord)
{
  mpi::cWorkStat statistic;
  statistic.setDebug(true);
  mpi::cWorkStat::cDebugInfo const* const pInfo = statistic.hasDebugInfo();
  statistic.setDebug(true);
  EXPECT_EQ(statistic.hasDebugInfo(), pInfo);
}

TEST(cWorkStat, SwitchingDebuggingOffDestroysTheRecordAndKeepsTheCounts)
{
  mpi::cWorkStat statistic;
  statistic.notifyStart();
  statistic.setDebug(true);
  statistic.setDebug(false);
  EXPECT_EQ(statistic.hasDebugInfo(), nullptr);
  EXPECT_EQ(statistic.numStarted(), 1u);
  statistic.setDebug(false);
  EXPECT_EQ(statistic.hasDebugInfo(), nullptr);
}
