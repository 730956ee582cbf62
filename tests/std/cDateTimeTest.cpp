#include "std/cDateTime.h"

#include "pi/cSysTime.h"
#include "std/cAsciiString.h"
#include "support/cZone.h"
#include "support/virtualclock.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>

using mstd::cDate;
using mstd::cDateTime;
using mstd::cTime;
using support::cZone;

namespace
{

std::string format(cTime const& time, char const* text)
{
  return cDateTime::formatString(time, mstd::cAsciiString(text)).c_str();
}

unsigned long long const twoOClock = 7200000000ull;

} // namespace

TEST(cDateTime, IsATimeWithoutFieldsOfItsOwn)
{
  EXPECT_EQ(sizeof(cDateTime), sizeof(cTime));
  EXPECT_TRUE((std::is_base_of<cTime, cDateTime>::value));
  EXPECT_EQ(static_cast<int>(cDateTime::Local), 1);
}

TEST(cDateTime, ByDefaultItIsNow)
{
  support::cVirtualClock clock(1234567890123456ll);
  EXPECT_EQ(cDateTime().utcTime().get(), 1234567890123456ull);
}

TEST(cDateTime, AUTCTimeIsTakenAsItIs)
{
  cZone zone("XXX-5");
  EXPECT_EQ(cDateTime(cTime(twoOClock), cDateTime::UTC).get(), twoOClock);
  EXPECT_EQ(cDateTime(cTime(twoOClock), static_cast<cDateTime::ZoneInfo>(2)).get(), twoOClock);
}

TEST(cDateTime, TheZoneOfALocalTimeIsSubtractedAsASmallNumber)
{
  cZone zone("XXX-5");
  ASSERT_EQ(mpi::cSysTime::zoneOffset(), 5 * 3600);
  EXPECT_EQ(cDateTime(cTime(twoOClock), cDateTime::Local).get(), twoOClock - 18000);
  EXPECT_EQ(cDateTime(cTime(twoOClock), cDate(2, 1, 1970), cDateTime::Local).get(), twoOClock + 86400000000ull - 18000);
  EXPECT_EQ(cDateTime(cTime(17999ull), cDateTime::Local).get(), 0u) << "never below 0";
}

TEST(cDateTime, LocalTimeAddsTheZoneInMicroseconds)
{
  cZone zone("XXX-5");
  cDateTime const time(cTime(twoOClock), cDateTime::UTC);
  EXPECT_EQ(time.localTime().get(), twoOClock + 18000000000ull);
  EXPECT_EQ(cDateTime::localTime(cTime(1ull)).get(), 18000000001ull);
  EXPECT_EQ(time.utcTime().get(), twoOClock);
}

TEST(cDateTime, WestOfGreenwichLocalTimeIsEarlier)
{
  cZone zone("XXX+1");
  cDateTime const time(cTime(twoOClock), cDateTime::UTC);
  EXPECT_EQ(time.localTime().get(), twoOClock - 3600000000ull);
  EXPECT_EQ(cDateTime(cTime(twoOClock), cDateTime::Local).get(), twoOClock + 3600);
}

TEST(cDateTime, DatesAreThoseOfUTCAndOfLocalTime)
{
  cZone zone("XXX-5");
  cDateTime const evening(cTime(20, 0, 0, 0), cDate(28, 2, 2000), cDateTime::UTC);
  EXPECT_TRUE(evening.utcDate() == cDate(28, 2, 2000));
  EXPECT_TRUE(evening.localDate() == cDate(29, 2, 2000));
}

TEST(cDateTime, DateAndTimeOfDayMakeAnInstant)
{
  EXPECT_EQ(cDateTime(cTime(1, 2, 3, 4), cDate(1, 1, 1970), cDateTime::UTC).get(), 3723000004ull);
  EXPECT_EQ(cDateTime(cTime(0ull), cDate(1, 3, 2000), cDateTime::UTC).get(), 951868800000000ull);
  EXPECT_EQ(cDateTime(cTime(30, 0, 0, 0), cDate(31, 12, 1969), cDateTime::UTC).get(), 6 * 3600000000ull);
  EXPECT_EQ(cDateTime(cTime(1ull), cDate(1, 1, 1), cDateTime::UTC).get(), 0u);
}

TEST(cDateTime, InstantsAreCompared)
{
  cDateTime const early(cTime(1ull), cDateTime::UTC);
  cDateTime const late(cTime(2ull), cDateTime::UTC);
  EXPECT_TRUE(early < late);
  EXPECT_TRUE(late > early);
  EXPECT_FALSE(early == late);
  EXPECT_TRUE(early == early);
}

TEST(cDateTime, AllFieldsAreFormattedWithLeadingZeros)
{
  cDateTime const time(cTime(3, 4, 5, 0), cDate(2, 1, 1970), cDateTime::UTC);
  EXPECT_STREQ(time.formatString("yyyy-mm-dd HH:MM:SS").c_str(), "1970-01-02 03:04:05");
  EXPECT_EQ(format(time, "dn mn"), "Fri Jan");
  EXPECT_EQ(format(cDateTime(cTime(0ull), cDate(6, 3, 2001), cDateTime::UTC), "dn"), "The");
}

TEST(cDateTime, AFarYearTakesAllItsDigits)
{
  EXPECT_EQ(format(cDateTime(cTime(0ull), cDate(1, 1, 12345), cDateTime::UTC), "yyyy"), "12345");
}

TEST(cDateTime, MarksAreReplacedWhereverTheyStand)
{
  cTime const time(0ull);
  EXPECT_EQ(format(time, "hammer"), "ha01er");
  EXPECT_EQ(format(time, "HHHH"), "0000");
  EXPECT_EQ(format(time, "hh Dd yyy HM"), "hh Dd yyy HM");
  EXPECT_EQ(format(time, ""), "");
}

TEST(cDateTime, MarksAreReplacedInTheirOrder)
{
  // of "mmn" the month as a number comes first, of "ddn" the day
  cTime const time(0ull);
  EXPECT_EQ(format(time, "mmn"), "01n");
  EXPECT_EQ(format(time, "ddn"), "01n");
  EXPECT_EQ(format(time, "dmn"), "dJan");
}

TEST(cDateTime, TheDateIsThatOfTheTimeGiven)
{
  cZone zone("XXX-5");
  EXPECT_EQ(format(cTime(23, 0, 0, 0), "dd HH"), "01 23");
}
