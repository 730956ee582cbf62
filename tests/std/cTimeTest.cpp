#include "std/cTime.h"

#include "support/cCaptureOut.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

using mstd::cTime;

TEST(cTime, ConstructorsAddTheirParts)
{
  EXPECT_EQ(cTime(77ull).get(), 77u);
  EXPECT_EQ(cTime(1, 500).get(), 1000500u);
  EXPECT_EQ(cTime(1, 2, 3, 4).get(), 3723000004ull);
  EXPECT_EQ(cTime(0, 3000000).get(), 3000000u) << "microseconds beyond a second";
  EXPECT_EQ(cTime(4294967295u, 4294967295u).get(), 4294967295ull * 1000001);
  EXPECT_EQ(cTime(4294967295u, 59, 59, 999999).get(), (4294967295ull * 3600 + 3599) * 1000000 + 999999);
}

TEST(cTime, SetReplacesTheValue)
{
  cTime time(5ull);
  time.set(18446744073709551615ull);
  EXPECT_EQ(time.get(), 18446744073709551615ull);
}

TEST(cTime, TheWholeSpanIsTruncatedToTheUnit)
{
  cTime const time(30, 59, 58, 999999);
  EXPECT_EQ(time.toNSec(), 111598999999000ull);
  EXPECT_EQ(time.toUSec(), 111598999999ull);
  EXPECT_EQ(time.toMSec(), 111598999ull);
  EXPECT_EQ(time.toSec(), 111598ull);
  EXPECT_EQ(time.toMin(), 1859ull);
  EXPECT_EQ(time.toHour(), 30ull);
}

TEST(cTime, TheFieldsStayWithinTheirRange)
{
  cTime const time(30, 59, 58, 999999);
  EXPECT_EQ(time.hour(), 6u);
  EXPECT_EQ(time.minutes(), 59u);
  EXPECT_EQ(time.sec(), 58u);
  EXPECT_EQ(time.msec(), 999u);
  EXPECT_EQ(time.usec(), 999999u);
  EXPECT_EQ(cTime(3, 1500).msec(), 1u);
  EXPECT_EQ(cTime(3, 1500).usec(), 1500u);
}

TEST(cTime, ADifferenceIsAbsolute)
{
  EXPECT_EQ((cTime(10ull) - cTime(3ull)).get(), 7u);
  EXPECT_EQ((cTime(3ull) - cTime(10ull)).get(), 7u);
  EXPECT_EQ((cTime(3ull) + cTime(10ull)).get(), 13u);
}

TEST(cTime, MicrosecondsMoveATimeNotBelow0)
{
  EXPECT_EQ((cTime(10ull) + 5).get(), 15u);
  EXPECT_EQ((cTime(10ull) - 5).get(), 5u);
  EXPECT_EQ((cTime(10ull) - 10).get(), 0u);
  EXPECT_EQ((cTime(10ull) - 11).get(), 0u);
  EXPECT_EQ((cTime(10ull) + -11).get(), 0u);
  EXPECT_EQ((cTime(10ull) + -3).get(), 7u);
  EXPECT_EQ((cTime(10ull) - -3).get(), 13u);
  long long const least = std::numeric_limits<long long>::min();
  EXPECT_EQ((cTime(10ull) + least).get(), 0u);
  EXPECT_EQ((cTime(10ull) - least).get(), 10u + (1ull << 63));
}

TEST(cTime, TimesAreOrdered)
{
  cTime const early(1ull);
  cTime const late(2ull);
  EXPECT_TRUE(early == cTime(1ull));
  EXPECT_FALSE(early == late);
  EXPECT_TRUE(early != late);
  EXPECT_TRUE(early < late);
  EXPECT_FALSE(late < early);
  EXPECT_TRUE(late > early);
  EXPECT_FALSE(early > early);
  EXPECT_TRUE(early <= early);
  EXPECT_TRUE(late >= early);
}

TEST(cTime, ADefaultTimeIsNow)
{
  support::cVirtualClock clock(1234567890123456ll);
  EXPECT_EQ(cTime().get(), 1234567890123456ull);
  clock.advance(10);
  EXPECT_EQ(cTime().get(), 1234567890123466ull);
}

TEST(cTime, DiffIsTheDistanceToNow)
{
  support::cVirtualClock clock(1000000);
  EXPECT_EQ(cTime(400000ull).diff().get(), 600000u);
  EXPECT_EQ(cTime(1700000ull).diff().get(), 700000u);
}

TEST(cTime, WaitingSpinsOnTheClockAndSaysSo)
{
  support::cVirtualClock clock(5000000);
  clock.setTick(100);
  support::cCaptureOut out;
  long long const start = clock.now();
  cTime::waitMS(3);
  EXPECT_GE(clock.now() - start, 3000);
  EXPECT_LT(clock.now() - start, 4000);
  ASSERT_EQ(out.lines().size(), 1u);
  EXPECT_EQ(out.lines()[0].text, "cTime::waitMS(piUInt64 iMS): TODO: More efficient wait...");
  EXPECT_EQ(out.lines()[0].file, "std/cTime");
  out.clear();
  long long const middle = clock.now();
  cTime::waitUS(700);
  EXPECT_GE(clock.now() - middle, 700);
  EXPECT_LT(clock.now() - middle, 1700);
  ASSERT_EQ(out.lines().size(), 1u);
  EXPECT_EQ(out.lines()[0].text, "cTime::waitMS(piUInt64 iUS): TODO: More efficient wait...");
}

TEST(cTime, AWaitEndsWhenTheClockIsSetBack)
{
  support::cVirtualClock clock(5000000);
  clock.setTick(-1);
  support::cCaptureOut out;
  cTime::waitMS(std::numeric_limits<unsigned long long>::max());
  EXPECT_GT(clock.now(), 4000000);
}
