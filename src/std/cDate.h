#ifndef MORTISE_STD_CDATE_H
#define MORTISE_STD_CDATE_H

#include "pi/piTypes.h"

namespace mstd
{
class cTime;

/// Calendar date with its day count. The Julian calendar reaches up to 4 October 1582, and the Gregorian
/// begins with the day after it, 15 October 1582.
///
/// Units:   days are counted from 1 January of the year 1, which has the number 0. Years, months and days
///          of the month begin with 1. The last date is in the year 4294967295.
/// Errors:  a date that does not exist is a bug of the caller: check before. cOutOfRangeException or
///          cOutOfBoundsException (days of the gap) with the container "cDate", or cBugException. The object
///          stays as it was.
/// Threads: a plain value.
/// Cost:    all operations are O(1), whatever the year.
class MORTISE_API cDate
{
public:
  /// Today, in local time.
  cDate();
  cDate(unsigned int iDay, unsigned int iMonth, unsigned int iYear);
  explicit cDate(piUInt64 iDaysPast);
  /// The date of an instant, without a zone.
  explicit cDate(cTime const& time);

  unsigned int day() const { return miDay; }
  unsigned int month() const { return miMonth; }
  unsigned int year() const { return miYear; }
  /// Days since 1 January of the year 1.
  piUInt64 daysPast() const { return miDaysPast; }

  void setYear(unsigned int iYear);
  void setMonth(unsigned int iMonth);
  void setDay(unsigned int iDay);
  void swap(cDate& date);

  /// 0 for Monday to 6 for Sunday.
  unsigned int dayOfWeek() const { return static_cast<unsigned int>((miDaysPast + 5) % 7); }
  /// Week of the year as in ISO 8601, but always counted from the first week of this date's own year: days
  /// in front of that week are in week 0, and days that already belong to week 1 of the next year are in
  /// week 53.
  unsigned int calendarWeek() const;
  char const* nameOfDay() const;   ///< See the static form.
  char const* nameOfMonth() const; ///< See the static form.

  /// Years from this date as a birth to today. A date in the future raises cBugException.
  unsigned int age() const;
  /// Years from `birth` to this date. A birth after this date raises cBugException.
  unsigned int age(cDate const& birth) const;

  bool operator==(cDate const& date) const { return miDaysPast == date.miDaysPast; }
  bool operator!=(cDate const& date) const { return miDaysPast != date.miDaysPast; }
  bool operator<(cDate const& date) const { return miDaysPast < date.miDaysPast; }
  bool operator>(cDate const& date) const { return miDaysPast > date.miDaysPast; }
  bool operator<=(cDate const& date) const { return miDaysPast <= date.miDaysPast; }
  bool operator>=(cDate const& date) const { return miDaysPast >= date.miDaysPast; }

  /// Days from `date` to this date, negative if `date` is the later one.
  piInt64 operator-(cDate const& date) const;
  /// The date that many days later, or earlier if negative.
  cDate operator+(piInt64 iDays) const;
  /// The date that many days earlier. More days than the count holds are out of range.
  cDate operator-(piInt64 iDays) const;
  /// Adds the day count of `date`.
  cDate& operator+=(cDate const& date);
  /// Adds the whole days of the span `time`.
  cDate& operator+=(cTime const& time);

  static bool isLeapYear(unsigned int iYear);
  /// 28 to 31. A month outside of 1 to 12 raises cBugException.
  static unsigned int daysPerMonth(unsigned int iMonth, unsigned int iYear);
  /// The day count of a date. One that does not exist raises cBugException.
  static piUInt64 calcDaysPast(unsigned int iDay, unsigned int iMonth, unsigned int iYear);
  /// 52 or 53.
  static unsigned int calenderWeeksPerYear(unsigned int iYear);
  /// Monday of the week `iWeek` (1 and up) of a year.
  static cDate beginOfCalendarWeek(unsigned int iYear, unsigned int iWeek);
  /// Short name of a day, 0 to 6. Anything else is an assertion failure.
  static char const* nameOfDay(unsigned int iDayOfWeek);
  /// Short name of a month, 1 to 12. Anything else is an assertion failure.
  static char const* nameOfMonth(unsigned int iMonth);

  /// \name Feasts of a year
  /// Julian up to 1582, Gregorian from 1583 on.
  /// @{
  static cDate calcEasterSunday(unsigned int iYear);
  static cDate calcAshWednesday(unsigned int iYear);
  static cDate calcWeiberfastnacht(unsigned int iYear);
  static cDate calcWhitsun(unsigned int iYear);
  static cDate calcAscensionDay(unsigned int iYear);
  static cDate calcCorpusChristi(unsigned int iYear);
  /// The second Sunday in May, or the first if the second is Whit Sunday.
  static cDate calcMothersDay(unsigned int iYear);
  /// @}

private:
  static void checkRanges(unsigned int iDay, unsigned int iMonth, unsigned int iYear, char const* pOperation);
  void set(unsigned int iDay, unsigned int iMonth, unsigned int iYear, char const* pOperation);
  void calcDate(piUInt64 iDaysPast);

  unsigned int miDay;
  unsigned int miMonth;
  unsigned int miYear;
  piUInt64 miDaysPast;
};

} // namespace mstd

#endif
