#include "pi/cSysTime.h"

#include "std/cTime.h"
#include "support/cZone.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <stdlib.h>
#include <time.h>

#include <string>

namespace
{

using support::cZone;

} // namespace

TEST(cSysTime, MicrosecondsSinceTheEpochJoinSecondsAndMicroseconds)
{
  support::cVirtualClock clock(1234567890123456LL);
  EXPECT_EQ(usecSinceEpoch(), 1234567890123456LL);
}

TEST(cSysTime, TimeBeyondTheYear2038Fits)
{
  support::cVirtualClock clock(4102444800000001LL); // 2100
  EXPECT_EQ(usecSinceEpoch(), 4102444800000001LL);
  EXPECT_EQ(mpi::cSysTime::utcTime().get(), 4102444800000001ULL);
}

TEST(cSysTime, UtcTimeIsTheClock)
{
  support::cVirtualClock clock(5000000);
  EXPECT_EQ(mpi::cSysTime::utcTime().get(), 5000000u);
  EXPECT_EQ(mstd::cTime().get(), 5000000u);
}

TEST(cSysTime, DiffTimeIsTheAbsoluteDistance)
{
  support::cVirtualClock clock(5000000);
  EXPECT_EQ(mpi::cSysTime::diffTime(mstd::cTime(piUInt64(4000000))).get(), 1000000u);
  EXPECT_EQ(mpi::cSysTime::diffTime(mstd::cTime(piUInt64(7000000))).get(), 2000000u);
  EXPECT_EQ(mpi::cSysTime::diffTime(mstd::cTime(piUInt64(5000000))).get(), 0u);
}

TEST(cSysTime, ZoneOffsetIsSecondsEastOfUtc)
{
  support::cVirtualClock clock(0);
  {
    cZone zone("UTC0");
    EXPECT_EQ(mpi::cSysTime::zoneOffset(), 0);
  }
  {
    cZone zone("EAST-5:30");
    EXPECT_EQ(mpi::cSysTime::zoneOffset(), 19800);
  }
  {
    cZone zone("WEST3");
    EXPECT_EQ(mpi::cSysTime::zoneOffset(), -10800);
  }
}

TEST(cSysTime, ZoneOffsetFollowsDaylightSaving)
{
  cZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  {
    support::cVirtualClock clock(1704067200000000LL); // January 2024
    EXPECT_EQ(mpi::cSysTime::zoneOffset(), 3600);
  }
  {
    support::cVirtualClock clock(1719792000000000LL); // July 2024
    EXPECT_EQ(mpi::cSysTime::zoneOffset(), 7200);
  }
}

TEST(cSysTime, TheRealClockRunsForward)
{
  piInt64 const before = usecSinceEpoch();
  piInt64 const after = usecSinceEpoch();
  EXPECT_GT(before, 1500000000000000LL);
  EXPECT_GE(after, before);
}
