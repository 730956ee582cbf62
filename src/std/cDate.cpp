#include "std/cDate.h"

#include "std/cBugException.h"
#include "std/cDateTime.h"
#include "std/cSTDExceptions.h"
#include "std/cTime.h"
#include "ucs/cLIMessage.h"

#include <limits>
#include <utility>

namespace mstd
{

namespace
{

class cFailures
{
public:
  [[noreturn]] static void throwMonthOutOfRange(unsigned int iMonth)
  {
    mucs::cLIMessage message;
    message << "$MTR$Month %m% is out of range!" << iMonth;
    throw cBugException(message, nullptr, 0);
  }
  [[noreturn]] static void throwInvalidDate(unsigned int iDay, unsigned int iMonth, unsigned int iYear)
  {
    mucs::cLIMessage message;
    message << "$MTR$Invalid date %m%/%d%/%y%!" << iMonth << iDay << iYear;
    throw cBugException(message, nullptr, 0);
  }
  [[noreturn]] static void throwInvalidDate()
  {
    mucs::cLIMessage message;
    message << "$MTR$Invalid date!";
    throw cBugException(message, nullptr, 0);
  }
};

enum
{
  FirstGregorianYear = 1583,
  ReformDays = 10,        // that do not exist
  LastJulianDay = 577736, // 4 October 1582
  DaysTo1970 = 719164
};
unsigned int const iLastYear = 0xFFFFFFFFu;

/// Days of the years before `iYear`, the ten days of the reform included.
piUInt64 daysOfYearsBefore(unsigned int iYear)
{
  piUInt64 const n = iYear - 1;
  piUInt64 const iJulian = n * 365 + n / 4;
  // up to 1582 there were 12 leap years more than the Gregorian rule has
  return iYear < FirstGregorianYear ? iJulian : iJulian - n / 100 + n / 400 + 12;
}

unsigned int daysOfMonthsBefore(unsigned int iMonth, bool isLeap)
{
  static unsigned short const days[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
  return days[iMonth - 1] + (isLeap && iMonth > 2 ? 1u : 0u);
}

bool isInGap(unsigned int iDay, unsigned int iMonth, unsigned int iYear)
{
  return iYear == 1582 && iMonth == 10 && iDay >= 5 && iDay <= 14;
}

piUInt64 countDays(unsigned int iDay, unsigned int iMonth, unsigned int iYear)
{
  piUInt64 const iDays = daysOfYearsBefore(iYear) + daysOfMonthsBefore(iMonth, cDate::isLeapYear(iYear)) + (iDay - 1);
  return iDays > LastJulianDay ? iDays - ReformDays : iDays;
}

} // namespace

cDate::cDate() : cDate(cDateTime().localDate()) {}

cDate::cDate(unsigned int iDay, unsigned int iMonth, unsigned int iYear)
{
  set(iDay, iMonth, iYear, "cDate::cDate(..)");
}

cDate::cDate(piUInt64 iDaysPast)
{
  calcDate(iDaysPast);
}

cDate::cDate(cTime const& time)
{
  calcDate(time.toHour() / 24 + DaysTo1970);
}

void cDate::setYear(unsigned int iYear)
{
  cDate date(*this);
  date.set(miDay, miMonth, iYear, "setYear(..)");
  swap(date);
}

void cDate::setMonth(unsigned int iMonth)
{
  cDate date(*this);
  date.set(miDay, iMonth, miYear, "setMonth(..)");
  swap(date);
}

void cDate::setDay(unsigned int iDay)
{
  cDate date(*this);
  date.set(iDay, miMonth, miYear, "setDay(..)");
  swap(date);
}

void cDate::swap(cDate& date)
{
  std::swap(*this, date);
}

unsigned int cDate::calendarWeek() const
{
  piInt64 const iMonday = static_cast<piInt64>(miDaysPast) - static_cast<piInt64>(dayOfWeek());
  piInt64 const iDays = iMonday - static_cast<piInt64>(beginOfCalendarWeek(miYear, 1).miDaysPast);
  return static_cast<unsigned int>(iDays / 7 + 1);
}

char const* cDate::nameOfDay() const
{
  return nameOfDay(dayOfWeek());
}

char const* cDate::nameOfMonth() const
{
  return nameOfMonth(miMonth);
}

unsigned int cDate::age() const
{
  return cDate().age(*this);
}

unsigned int cDate::age(cDate const& birth) const
{
  if (*this < birth)
  {
    cFailures::throwInvalidDate();
  }
  bool const isBeforeBirthday = miMonth < birth.miMonth || (miMonth == birth.miMonth && miDay < birth.miDay);
  return miYear - birth.miYear - (isBeforeBirthday ? 1 : 0);
}

piInt64 cDate::operator-(cDate const& date) const
{
  return static_cast<piInt64>(miDaysPast) - static_cast<piInt64>(date.miDaysPast);
}

cDate cDate::operator+(piInt64 iDays) const
{
  if (iDays < 0)
  {
    return *this - (iDays == std::numeric_limits<piInt64>::min() ? std::numeric_limits<piInt64>::max() : -iDays);
  }
  return cDate(miDaysPast + static_cast<piUInt64>(iDays));
}

cDate cDate::operator-(piInt64 iDays) const
{
  if (iDays < 0)
  {
    return cDate(miDaysPast + (0 - static_cast<piUInt64>(iDays)));
  }
  if (static_cast<piUInt64>(iDays) > miDaysPast)
  {
    cSTDExceptions::throwOutOfRange("cDate", "operator-", cSTDExceptions::ValueOutOfRange, iDays, 0,
                                    static_cast<long long>(miDaysPast));
  }
  return cDate(miDaysPast - static_cast<piUInt64>(iDays));
}

cDate& cDate::operator+=(cDate const& date)
{
  cDate sum(miDaysPast + date.miDaysPast);
  swap(sum);
  return *this;
}

cDate& cDate::operator+=(cTime const& time)
{
  cDate sum(miDaysPast + time.toHour() / 24);
  swap(sum);
  return *this;
}

bool cDate::isLeapYear(unsigned int iYear)
{
  return iYear % 4 == 0 && (iYear < FirstGregorianYear || iYear % 100 != 0 || iYear % 400 == 0);
}

unsigned int cDate::daysPerMonth(unsigned int iMonth, unsigned int iYear)
{
  static unsigned char const days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (iMonth < 1 || iMonth > 12)
  {
    cFailures::throwMonthOutOfRange(iMonth);
  }
  return days[iMonth - 1] + (iMonth == 2 && isLeapYear(iYear) ? 1u : 0u);
}

piUInt64 cDate::calcDaysPast(unsigned int iDay, unsigned int iMonth, unsigned int iYear)
{
  // day 0 and year 0 would count to no date at all
  if (iMonth > 12 || iDay > daysPerMonth(iMonth, iYear) || isInGap(iDay, iMonth, iYear) || iDay == 0 || iYear == 0)
  {
    cFailures::throwInvalidDate(iDay, iMonth, iYear);
  }
  return countDays(iDay, iMonth, iYear);
}

unsigned int cDate::calenderWeeksPerYear(unsigned int iYear)
{
  unsigned int const iThursday = 3;
  return cDate(1, 1, iYear).dayOfWeek() == iThursday || cDate(31, 12, iYear).dayOfWeek() == iThursday ? 53 : 52;
}

cDate cDate::beginOfCalendarWeek(unsigned int iYear, unsigned int iWeek)
{
  cDate const inFirstWeek(4, 1, iYear);
  return inFirstWeek - static_cast<piInt64>(inFirstWeek.dayOfWeek()) + (static_cast<piInt64>(iWeek) - 1) * 7;
}

char const* cDate::nameOfDay(unsigned int iDayOfWeek)
{
  static char const* const names[] = {"Mon", "The", "Wed", "Thu", "Fri", "Sat", "Sun"};
  if (!(iDayOfWeek < 7))
  {
    cSTDExceptions::throwAssertionFailed("iDayOfWeek < 7", "std/cDate", __LINE__);
  }
  return names[iDayOfWeek];
}

char const* cDate::nameOfMonth(unsigned int iMonth)
{
  static char const* const names[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  if (!((iMonth < 13) && (iMonth > 0)))
  {
    cSTDExceptions::throwAssertionFailed("(iMonth < 13) && (iMonth > 0)", "std/cDate", __LINE__);
  }
  return names[iMonth - 1];
}

cDate cDate::calcEasterSunday(unsigned int iYear)
{
  unsigned int const y = iYear;
  unsigned int const g = y % 19;
  unsigned int m;
  if (y >= FirstGregorianYear)
  {
    unsigned int const c = y / 100;
    unsigned int const n = y % 100;
    unsigned int const h = (19 * g + c - y / 400 - (c - (c + 8) / 25 + 1) / 3 + 15) % 30;
    unsigned int const l = (2 * ((c & 3) + n / 4) - h - n % 4 + 32) % 7;
    m = h + l - 7 * ((11 * h + 22 * l + g) / 451) + 114;
  }
  else
  {
    unsigned int const h = (19 * g + 15) % 30;
    m = h + (2 * ((y & 3) + 2 * (y % 7)) - h + 34) % 7 + 114;
  }
  return cDate(m % 31 + 1, m / 31, y);
}

cDate cDate::calcAshWednesday(unsigned int iYear)
{
  return calcEasterSunday(iYear) - 46;
}

cDate cDate::calcWeiberfastnacht(unsigned int iYear)
{
  return calcEasterSunday(iYear) - 52;
}

cDate cDate::calcWhitsun(unsigned int iYear)
{
  return calcEasterSunday(iYear) + 49;
}

cDate cDate::calcAscensionDay(unsigned int iYear)
{
  return calcEasterSunday(iYear) + 39;
}

cDate cDate::calcCorpusChristi(unsigned int iYear)
{
  return calcEasterSunday(iYear) + 60;
}

cDate cDate::calcMothersDay(unsigned int iYear)
{
  cDate const firstOfMay(1, 5, iYear);
  cDate const secondSunday = firstOfMay + (13 - static_cast<piInt64>(firstOfMay.dayOfWeek()));
  return secondSunday == calcWhitsun(iYear) ? secondSunday - 7 : secondSunday;
}

void cDate::checkRanges(unsigned int iDay, unsigned int iMonth, unsigned int iYear, char const* pOperation)
{
  if (iYear == 0)
  {
    cSTDExceptions::throwOutOfRange("cDate", pOperation, cSTDExceptions::ValueOutOfRange, iYear, 1, iLastYear);
  }
  if (iMonth < 1 || iMonth > 12)
  {
    cSTDExceptions::throwOutOfRange("cDate", pOperation, cSTDExceptions::ValueOutOfRange, iMonth, 1, 12);
  }
  unsigned int const iLastDay = daysPerMonth(iMonth, iYear);
  if (iDay < 1 || iDay > iLastDay)
  {
    cSTDExceptions::throwOutOfRange("cDate", pOperation, cSTDExceptions::ValueOutOfRange, iDay, 1, iLastDay);
  }
  if (isInGap(iDay, iMonth, iYear))
  {
    cSTDExceptions::throwOutOfBounds("cDate", pOperation);
  }
}

void cDate::set(unsigned int iDay, unsigned int iMonth, unsigned int iYear, char const* pOperation)
{
  checkRanges(iDay, iMonth, iYear, pOperation);
  miDay = iDay;
  miMonth = iMonth;
  miYear = iYear;
  miDaysPast = countDays(iDay, iMonth, iYear);
}

void cDate::calcDate(piUInt64 iDaysPast)
{
  piUInt64 const iLastDay = countDays(31, 12, iLastYear);
  if (iDaysPast > iLastDay)
  {
    piUInt64 const iLargest = static_cast<piUInt64>(std::numeric_limits<long long>::max());
    cSTDExceptions::throwOutOfRange("cDate", "calcDate(..)", cSTDExceptions::ValueOutOfRange,
                                    static_cast<long long>(iDaysPast < iLargest ? iDaysPast : iLargest), 0,
                                    static_cast<long long>(iLastDay));
  }
  piUInt64 iDays = iDaysPast > LastJulianDay ? iDaysPast + ReformDays : iDaysPast;
  // a guess that is never too late and hardly ever a year too early
  unsigned int iYear = static_cast<unsigned int>(iDays * 400 / 146100) + 1;
  while (iYear != iLastYear && daysOfYearsBefore(iYear + 1) <= iDays)
  {
    ++iYear;
  }
  iDays -= daysOfYearsBefore(iYear);
  bool const isLeap = isLeapYear(iYear);
  unsigned int iMonth = 12;
  while (daysOfMonthsBefore(iMonth, isLeap) > iDays)
  {
    --iMonth;
  }
  miDaysPast = iDaysPast;
  miYear = iYear;
  miMonth = iMonth;
  miDay = static_cast<unsigned int>(iDays) - daysOfMonthsBefore(iMonth, isLeap) + 1;
}

} // namespace mstd
