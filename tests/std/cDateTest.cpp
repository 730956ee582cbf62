#include "std/cDate.h"

#include "pi/cSysTime.h"
#include "std/cBugException.h"
#include "std/cTime.h"
#include "support/messageOf.h"
#include "support/rangeChecks.h"
#include "support/virtualclock.h"

#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#ifndef MORTISE_TEST_DATA_DIR
#define MORTISE_TEST_DATA_DIR "tests/reference"
#endif

using mstd::cDate;
using mstd::cTime;

namespace
{

/// Julian day number of a date, after the formulas of astronomers; it knows nothing of a count of days by years.
long long julianDayNumber(long long day, long long month, long long year)
{
  bool const isGregorian = year > 1582 || (year == 1582 && (month > 10 || (month == 10 && day >= 15)));
  long long const a = (14 - month) / 12;
  long long const y = year + 4800 - a;
  long long const m = month + 12 * a - 3;
  long long const julian = day + (153 * m + 2) / 5 + 365 * y + y / 4;
  return isGregorian ? julian - y / 100 + y / 400 - 32045 : julian - 32083;
}

std::string str(cDate const& date)
{
  return std::to_string(date.year()) + "-" + std::to_string(date.month()) + "-" + std::to_string(date.day());
}

std::string bug(void (*function)())
{
  return support::messageOf<mstd::cBugException>(function);
}

} // namespace

TEST(cDate, EveryDayOfFourThousandYearsIsCountedOneByOne)
{
  unsigned int const lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  long long const first = julianDayNumber(1, 1, 1);
  unsigned long long number = 0;
  for (unsigned int year = 1; year <= 4000; ++year)
  {
    bool const isLeap = julianDayNumber(1, 3, year) - julianDayNumber(28, 2, year) == 2;
    ASSERT_EQ(cDate::isLeapYear(year), isLeap) << year;
    for (unsigned int month = 1; month <= 12; ++month)
    {
      unsigned int const length = lengths[month - 1] + (month == 2 && isLeap ? 1 : 0);
      ASSERT_EQ(cDate::daysPerMonth(month, year), length);
      for (unsigned int day = 1; day <= length; ++day)
      {
        if (year == 1582 && month == 10 && day == 5)
        {
          day = 15;
        }
        ASSERT_EQ(number, static_cast<unsigned long long>(julianDayNumber(day, month, year) - first));
        ASSERT_EQ(cDate::calcDaysPast(day, month, year), number);
        cDate const byFields(day, month, year);
        cDate const byNumber(number);
        ASSERT_EQ(byFields.daysPast(), number);
        ASSERT_EQ(byNumber.daysPast(), number);
        ASSERT_EQ(byNumber.day(), day) << number;
        ASSERT_EQ(byNumber.month(), month) << number;
        ASSERT_EQ(byNumber.year(), year) << number;
        // day 0 of the Julian day number is a Monday
        ASSERT_EQ(byNumber.dayOfWeek(), static_cast<unsigned int>(julianDayNumber(day, month, year) % 7));
        ++number;
      }
    }
  }
  EXPECT_EQ(number, 1460972u) << "4000 years of the Gregorian rule, 12 leap days more, 10 days less";
}

TEST(cDate, EasterIsWhatTheReferenceSaysForTheYears326To4099)
{
  std::ifstream file(MORTISE_TEST_DATA_DIR "/easter.golden");
  ASSERT_TRUE(file.is_open());
  unsigned int year = 0;
  unsigned int month = 0;
  unsigned int day = 0;
  unsigned int expected = 326;
  while (file >> year >> month >> day)
  {
    ASSERT_EQ(year, expected);
    ASSERT_EQ(str(cDate::calcEasterSunday(year)), str(cDate(day, month, year)));
    ASSERT_EQ(cDate::calcEasterSunday(year).dayOfWeek(), 6u);
    ++expected;
  }
  EXPECT_EQ(expected, 4100u);
}

TEST(cDate, LeapYearsFollowTheCalendarOfTheirTime)
{
  EXPECT_TRUE(cDate::isLeapYear(1500));
  EXPECT_TRUE(cDate::isLeapYear(1600));
  EXPECT_FALSE(cDate::isLeapYear(1700));
  EXPECT_FALSE(cDate::isLeapYear(1900));
  EXPECT_TRUE(cDate::isLeapYear(2000));
  EXPECT_TRUE(cDate::isLeapYear(2024));
  EXPECT_FALSE(cDate::isLeapYear(2023));
  EXPECT_TRUE(cDate::isLeapYear(4));
}

TEST(cDate, TenDaysOf1582DoNotExist)
{
  EXPECT_EQ(cDate(4, 10, 1582).daysPast(), 577736u);
  EXPECT_EQ(cDate(15, 10, 1582).daysPast(), 577737u);
  EXPECT_EQ(str(cDate(577736ull)), "1582-10-4");
  EXPECT_EQ(str(cDate(577737ull)), "1582-10-15");
  for (unsigned int day = 5; day <= 14; ++day)
  {
    EXPECT_EQ(support::failureOf([=] { cDate date(day, 10, 1582); }), "bounds cDate/cDate::cDate(..)");
    EXPECT_EQ(support::messageOf<mstd::cBugException>([=] { cDate::calcDaysPast(day, 10, 1582); }),
              "Invalid date 10/" + std::to_string(day) + "/1582!");
  }
}

TEST(cDate, WellKnownDaysHaveTheirNumbers)
{
  EXPECT_EQ(cDate(1, 1, 1).daysPast(), 0u);
  EXPECT_EQ(cDate(1, 1, 1970).daysPast(), 719164u);
  EXPECT_EQ(cDate(1, 1, 2000).dayOfWeek(), 5u);
  EXPECT_STREQ(cDate(1, 1, 2000).nameOfDay(), "Sat");
}

TEST(cDate, ADateThatDoesNotExistIsOutOfRange)
{
  EXPECT_EQ(support::failureOf([] { cDate date(1, 0, 2000); }), "range cDate/cDate::cDate(..) 1 0 1 12");
  EXPECT_EQ(support::failureOf([] { cDate date(1, 13, 2000); }), "range cDate/cDate::cDate(..) 1 13 1 12");
  EXPECT_EQ(support::failureOf([] { cDate date(0, 1, 2000); }), "range cDate/cDate::cDate(..) 1 0 1 31");
  EXPECT_EQ(support::failureOf([] { cDate date(30, 2, 2000); }), "range cDate/cDate::cDate(..) 1 30 1 29");
  EXPECT_EQ(support::failureOf([] { cDate date(29, 2, 1900); }), "range cDate/cDate::cDate(..) 1 29 1 28");
  EXPECT_EQ(support::failureOf([] { cDate date(1, 1, 0); }), "range cDate/cDate::cDate(..) 1 0 1 4294967295");
}

TEST(cDate, CalcDaysPastRefusesDatesThatDoNotExist)
{
  EXPECT_EQ(bug([] { cDate::calcDaysPast(1, 13, 2000); }), "Invalid date 13/1/2000!");
  EXPECT_EQ(bug([] { cDate::calcDaysPast(32, 1, 2000); }), "Invalid date 1/32/2000!");
  EXPECT_EQ(bug([] { cDate::calcDaysPast(0, 1, 2000); }), "Invalid date 1/0/2000!");
  EXPECT_EQ(bug([] { cDate::calcDaysPast(1, 1, 0); }), "Invalid date 1/1/0!");
  EXPECT_EQ(bug([] { cDate::calcDaysPast(1, 0, 2000); }), "Month 0 is out of range!");
  EXPECT_EQ(bug([] { cDate::daysPerMonth(0, 2000); }), "Month 0 is out of range!");
  EXPECT_EQ(bug([] { cDate::daysPerMonth(13, 2000); }), "Month 13 is out of range!");
}

TEST(cDate, FieldsCanBeSetIfTheResultExists)
{
  cDate date(29, 2, 2000);
  date.setYear(2004);
  EXPECT_EQ(str(date), "2004-2-29");
  EXPECT_EQ(date.daysPast(), cDate::calcDaysPast(29, 2, 2004));
  date.setMonth(12);
  EXPECT_EQ(str(date), "2004-12-29");
  date.setDay(31);
  EXPECT_EQ(str(date), "2004-12-31");
  EXPECT_EQ(date.daysPast(), cDate::calcDaysPast(31, 12, 2004));
}

TEST(cDate, ASetterThatFailsChangesNothing)
{
  cDate date(29, 2, 2000);
  EXPECT_EQ(support::failureOf([&] { date.setYear(2001); }), "range cDate/setYear(..) 1 29 1 28");
  EXPECT_EQ(support::failureOf([&] { date.setMonth(13); }), "range cDate/setMonth(..) 1 13 1 12");
  EXPECT_EQ(support::failureOf([&] { date.setDay(30); }), "range cDate/setDay(..) 1 30 1 29");
  EXPECT_EQ(str(date), "2000-2-29");
  cDate october(10, 10, 1581);
  EXPECT_EQ(support::failureOf([&] { october.setYear(1582); }), "bounds cDate/setYear(..)");
  EXPECT_EQ(str(october), "1581-10-10");
}

TEST(cDate, NamesAreShort)
{
  char const* const days[] = {"Mon", "The", "Wed", "Thu", "Fri", "Sat", "Sun"};
  for (unsigned int i = 0; i < 7; ++i)
  {
    EXPECT_STREQ(cDate::nameOfDay(i), days[i]);
  }
  char const* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  for (unsigned int i = 1; i <= 12; ++i)
  {
    EXPECT_STREQ(cDate::nameOfMonth(i), months[i - 1]);
    EXPECT_STREQ(cDate(1, i, 2024).nameOfMonth(), months[i - 1]);
  }
  EXPECT_EQ(support::failureOf([] { cDate::nameOfDay(7); }).substr(0, 18), "bug iDayOfWeek < 7");
  EXPECT_NE(bug([] { cDate::nameOfMonth(0); }).find("((iMonth < 13) && (iMonth > 0))!"), std::string::npos);
  EXPECT_NE(bug([] { cDate::nameOfMonth(13); }).find("((iMonth < 13) && (iMonth > 0))!"), std::string::npos);
}

TEST(cDate, FeastsFollowEaster)
{
  EXPECT_EQ(str(cDate::calcEasterSunday(2000)), "2000-4-23");
  EXPECT_EQ(str(cDate::calcWeiberfastnacht(2000)), "2000-3-2");
  EXPECT_EQ(str(cDate::calcAshWednesday(2000)), "2000-3-8");
  EXPECT_EQ(str(cDate::calcAscensionDay(2000)), "2000-6-1");
  EXPECT_EQ(str(cDate::calcWhitsun(2000)), "2000-6-11");
  EXPECT_EQ(str(cDate::calcCorpusChristi(2000)), "2000-6-22");
}

TEST(cDate, MothersDayGivesWayToWhitSunday)
{
  EXPECT_EQ(str(cDate::calcMothersDay(2024)), "2024-5-12");
  EXPECT_EQ(str(cDate::calcMothersDay(2022)), "2022-5-8");
  EXPECT_EQ(str(cDate::calcWhitsun(2008)), "2008-5-11");
  EXPECT_EQ(str(cDate::calcMothersDay(2008)), "2008-5-4");
  for (unsigned int year = 1583; year < 2600; ++year)
  {
    cDate const day = cDate::calcMothersDay(year);
    ASSERT_EQ(day.dayOfWeek(), 6u);
    ASSERT_EQ(day.month(), 5u);
    ASSERT_FALSE(day == cDate::calcWhitsun(year));
  }
}

TEST(cDate, CalendarWeeksBeginWithTheWeekOfTheFourthOfJanuary)
{
  EXPECT_EQ(str(cDate::beginOfCalendarWeek(2000, 1)), "2000-1-3");
  EXPECT_EQ(str(cDate::beginOfCalendarWeek(2004, 1)), "2003-12-29");
  EXPECT_EQ(str(cDate::beginOfCalendarWeek(2004, 53)), "2004-12-27");
  EXPECT_EQ(cDate(3, 1, 2000).calendarWeek(), 1u);
  EXPECT_EQ(cDate(9, 1, 2000).calendarWeek(), 1u);
  EXPECT_EQ(cDate(10, 1, 2000).calendarWeek(), 2u);
  EXPECT_EQ(cDate(31, 12, 2004).calendarWeek(), 53u);
  EXPECT_EQ(cDate(1, 1, 2004).calendarWeek(), 1u);
}

TEST(cDate, CalendarWeeksAreCountedFromTheFirstWeekOfTheOwnYear)
{
  EXPECT_EQ(cDate(1, 1, 2000).calendarWeek(), 0u) << "still in the last week of 1999";
  EXPECT_EQ(cDate(31, 12, 2003).calendarWeek(), 53u) << "in week 1 of 2004 by ISO 8601";
}

TEST(cDate, LongYearsHave53Weeks)
{
  EXPECT_EQ(cDate::calenderWeeksPerYear(2000), 52u);
  EXPECT_EQ(cDate::calenderWeeksPerYear(2004), 53u); // 1 January is a Thursday
  EXPECT_EQ(cDate::calenderWeeksPerYear(2009), 53u);
  EXPECT_EQ(cDate::calenderWeeksPerYear(2020), 53u); // 31 December is a Thursday
  for (unsigned int year = 1583; year < 2600; ++year)
  {
    long long const weeks = (cDate::beginOfCalendarWeek(year + 1, 1) - cDate::beginOfCalendarWeek(year, 1)) / 7;
    ASSERT_EQ(cDate::calenderWeeksPerYear(year), static_cast<unsigned int>(weeks)) << year;
  }
}

TEST(cDate, AgeCountsFullYears)
{
  cDate const birth(15, 6, 1980);
  EXPECT_EQ(cDate(14, 6, 2000).age(birth), 19u);
  EXPECT_EQ(cDate(15, 6, 2000).age(birth), 20u);
  EXPECT_EQ(cDate(31, 5, 2000).age(birth), 19u);
  EXPECT_EQ(cDate(1, 7, 2000).age(birth), 20u);
  EXPECT_EQ(birth.age(birth), 0u);
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { cDate(14, 6, 1980).age(birth); }), "Invalid date!");
}

TEST(cDate, AgeWithoutADateCountsToToday)
{
  support::cVirtualClock clock(951868800000000ll); // 1 March 2000
  EXPECT_EQ(cDate(28, 2, 1990).age(), 10u);
  EXPECT_EQ(cDate(1, 6, 1990).age(), 9u);
  EXPECT_EQ(support::messageOf<mstd::cBugException>([] { cDate(1, 6, 2001).age(); }), "Invalid date!");
}

TEST(cDate, TodayIsInLocalTime)
{
  long long const day = 24ll * 60 * 60 * 1000000;
  support::cVirtualClock clock(11017 * day); // 1 March 2000
  long long const offset = mpi::cSysTime::zoneOffset();
  clock.set(11017 * day - offset * 1000000);
  EXPECT_EQ(str(cDate()), "2000-3-1");
  clock.set(11017 * day - offset * 1000000 - 1);
  EXPECT_EQ(str(cDate()), "2000-2-29");
}

TEST(cDate, AnInstantHasItsDateWithoutAZone)
{
  EXPECT_EQ(str(cDate(cTime(0ull))), "1970-1-1");
  EXPECT_EQ(str(cDate(cTime(86399999999ull))), "1970-1-1");
  EXPECT_EQ(str(cDate(cTime(86400000000ull))), "1970-1-2");
  EXPECT_EQ(cDate(cTime(std::numeric_limits<unsigned long long>::max())).daysPast(), 719164u + 213503982u);
}

TEST(cDate, DaysCanBeAddedAndTakenAway)
{
  cDate const date(28, 2, 2000);
  EXPECT_EQ(str(date + 2), "2000-3-1");
  EXPECT_EQ(str(date + -59), "1999-12-31");
  EXPECT_EQ(str(date - 59), "1999-12-31");
  EXPECT_EQ(str(date - -2), "2000-3-1");
  EXPECT_EQ(str(cDate(4, 10, 1582) + 1), "1582-10-15");
  EXPECT_EQ(cDate(1, 3, 2000) - date, 2);
  EXPECT_EQ(date - cDate(1, 3, 2000), -2);
  cDate sum(1, 1, 2000);
  sum += cDate(2, 1, 1);
  EXPECT_EQ(str(sum), "2000-1-2");
  sum += cTime(49, 0, 0, 0);
  EXPECT_EQ(str(sum), "2000-1-4");
}

TEST(cDate, MoreDaysThanTheCountHoldsCannotBeTakenAway)
{
  cDate const date(11ull);
  EXPECT_EQ((date - 11).daysPast(), 0u);
  EXPECT_EQ(support::failureOf([&] { date - 12; }), "range cDate/operator- 1 12 0 11");
  EXPECT_EQ(support::failureOf([&] { date + -12; }), "range cDate/operator- 1 12 0 11");
  long long const least = std::numeric_limits<long long>::min();
  EXPECT_EQ(support::failureOf([&] { date + least; }).substr(0, 23), "range cDate/operator- 1");
  EXPECT_EQ(date.daysPast(), 11u);
}

TEST(cDate, TheLastDateIsInTheLastYearThatANumberHolds)
{
  cDate const last(31, 12, 4294967295u);
  EXPECT_EQ(str(cDate(last.daysPast())), "4294967295-12-31");
  EXPECT_EQ(str(cDate(last.daysPast() - 365)), "4294967294-12-31");
  std::string const limit = std::to_string(last.daysPast());
  EXPECT_EQ(support::failureOf([&] { cDate date(last.daysPast() + 1); }),
            "range cDate/calcDate(..) 1 " + std::to_string(last.daysPast() + 1) + " 0 " + limit);
  EXPECT_EQ(support::failureOf([] { cDate date(std::numeric_limits<unsigned long long>::max()); }),
            "range cDate/calcDate(..) 1 9223372036854775807 0 " + limit);
  cDate date(last);
  EXPECT_EQ(support::failureOf([&] { date += last; }).substr(0, 26), "range cDate/calcDate(..) 1");
  EXPECT_TRUE(date == last);
  EXPECT_EQ(support::failureOf([&] { last - std::numeric_limits<long long>::min(); }).substr(0, 26),
            "range cDate/calcDate(..) 1");
}

TEST(cDate, DatesAreOrderedAndExchanged)
{
  cDate a(1, 1, 2000);
  cDate b(2, 1, 2000);
  EXPECT_TRUE(a < b);
  EXPECT_FALSE(b < a);
  EXPECT_TRUE(b > a);
  EXPECT_TRUE(a <= a);
  EXPECT_TRUE(b >= a);
  EXPECT_TRUE(a != b);
  EXPECT_FALSE(a == b);
  a.swap(b);
  EXPECT_EQ(str(a), "2000-1-2");
  EXPECT_EQ(str(b), "2000-1-1");
  EXPECT_TRUE(b == cDate(1, 1, 2000));
}
