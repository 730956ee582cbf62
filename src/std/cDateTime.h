#ifndef MORTISE_STD_CDATETIME_H
#define MORTISE_STD_CDATETIME_H

#include "std/cDate.h"
#include "std/cTime.h"

namespace msa
{
class cAbstractSerializer;
class cAbstractDeserializer;
} // namespace msa

namespace mstd
{
class cAsciiString;

/// Instant in UTC, with its date and its forms in local time.
///
/// Local time is UTC plus the zone offset of the present moment, daylight saving included, also for an
/// instant at which another offset was in force.
///
/// Errors:  std::bad_alloc from formatString().
/// Threads: a plain value.
class MORTISE_API cDateTime : public cTime
{
public:
  /// What the time given to a constructor is meant in. Any value but `Local` means UTC.
  enum ZoneInfo
  {
    UTC = 0,
    Local = 1
  };

  /// Now.
  cDateTime() = default;
  /// With `Local`, the zone offset is subtracted as the number of seconds that it is, from microseconds: to
  /// turn a local time into UTC subtract mpi::cSysTime::zoneOffset() times 1000000 and give `UTC`.
  cDateTime(cTime const& time, ZoneInfo iZone);
  /// The time of day `time` on `date`, which is not to be before 1970. `Local` as above.
  cDateTime(cTime const& time, cDate const& date, ZoneInfo iZone);

  cTime utcTime() const { return *this; }
  cTime localTime() const { return localTime(*this); }
  /// `time`, given in UTC, as local time.
  static cTime localTime(cTime const& time);
  cDate utcDate() const { return cDate(utcTime()); }
  cDate localDate() const { return cDate(localTime()); }

  /// As the static form, for this instant in UTC.
  cAsciiString formatString(cAsciiString const& format) const;
  /// `format` with these marks replaced, wherever they stand: "HH", "MM", "SS" (two digits), "dd", "mm" (two
  /// digits), "yyyy" (four digits), "dn", "mn" (short name of the day and of the month). They are replaced
  /// one kind after the other, so a mark is also found in the text that replaced an earlier one.
  static cAsciiString formatString(cTime const& time, cAsciiString const& format);

  /// Microseconds as `unsigned long long`, behind the label "DateTime" unless the stream prefers none.
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);
};

} // namespace mstd

#endif
