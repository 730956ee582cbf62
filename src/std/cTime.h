#ifndef MORTISE_STD_CTIME_H
#define MORTISE_STD_CTIME_H

#include "pi/piTypes.h"

namespace mstd
{

/// Span or instant in microseconds.
///
/// An instant counts from 1 January 1970 UTC. Which of the two a value is, only its user knows.
///
/// Units:   microseconds, unless a name says otherwise.
/// Errors:  none. A difference is never negative, see the operators; a sum is taken modulo 2^64.
/// Threads: a plain value.
class MORTISE_API cTime
{
public:
  /// The present instant in UTC, as given by mpi::cSysTime::utcTime().
  cTime();
  /// `iUSec` microseconds.
  explicit constexpr cTime(piUInt64 iUSec) : miUSec(iUSec) {}
  /// The sum of both parts; neither is limited to its usual range.
  constexpr cTime(unsigned int iSec, unsigned int iUSec) : miUSec(iSec * usecPerSec() + iUSec) {}
  /// The sum of all parts; none is limited to its usual range.
  constexpr cTime(unsigned int iHour, unsigned int iMin, unsigned int iSec, unsigned int iUSec)
      : miUSec(((iHour * piUInt64(60) + iMin) * 60 + iSec) * usecPerSec() + iUSec)
  {
  }

  constexpr piUInt64 get() const { return miUSec; }      ///< Microseconds.
  constexpr void set(piUInt64 iUSec) { miUSec = iUSec; } ///< Microseconds.

  /// \name The whole span in one unit
  /// The coarser ones are truncated; nanoseconds are taken modulo 2^64 (reached after 584 years).
  /// @{
  constexpr piUInt64 toNSec() const { return miUSec * 1000; }
  constexpr piUInt64 toUSec() const { return miUSec; }
  constexpr piUInt64 toMSec() const { return miUSec / 1000; }
  constexpr piUInt64 toSec() const { return miUSec / usecPerSec(); }
  constexpr piUInt64 toMin() const { return miUSec / (60 * usecPerSec()); }
  constexpr piUInt64 toHour() const { return miUSec / (3600 * usecPerSec()); }
  /// @}

  /// \name The fields of a clock face
  /// @{
  constexpr unsigned int hour() const { return static_cast<unsigned int>(toHour() % 24); }      ///< 0 to 23.
  constexpr unsigned int minutes() const { return static_cast<unsigned int>(toMin() % 60); }    ///< 0 to 59.
  constexpr unsigned int sec() const { return static_cast<unsigned int>(toSec() % 60); }        ///< 0 to 59.
  constexpr unsigned int msec() const { return static_cast<unsigned int>(toMSec() % 1000); }    ///< 0 to 999.
  constexpr unsigned int usec() const { return static_cast<unsigned int>(toUSec() % 1000000); } ///< 0 to 999999.
  /// @}

  /// The time between this instant and now, whichever is earlier.
  cTime diff() const;

  constexpr cTime operator+(cTime const& time) const { return cTime(miUSec + time.miUSec); }
  /// The absolute difference.
  constexpr cTime operator-(cTime const& time) const
  {
    return cTime(miUSec < time.miUSec ? time.miUSec - miUSec : miUSec - time.miUSec);
  }
  /// Moves by `iUSec` microseconds; a result below 0 is 0.
  constexpr cTime operator+(long long iUSec) const
  {
    return iUSec < 0 ? earlier(piUInt64(0) - static_cast<piUInt64>(iUSec))
                     : cTime(miUSec + static_cast<piUInt64>(iUSec));
  }
  /// Moves back by `iUSec` microseconds; a result below 0 is 0.
  constexpr cTime operator-(long long iUSec) const
  {
    return iUSec < 0 ? cTime(miUSec + (piUInt64(0) - static_cast<piUInt64>(iUSec)))
                     : earlier(static_cast<piUInt64>(iUSec));
  }

  constexpr bool operator==(cTime const& time) const { return miUSec == time.miUSec; }
  constexpr bool operator!=(cTime const& time) const { return miUSec != time.miUSec; }
  constexpr bool operator<(cTime const& time) const { return miUSec < time.miUSec; }
  constexpr bool operator>(cTime const& time) const { return miUSec > time.miUSec; }
  constexpr bool operator<=(cTime const& time) const { return miUSec <= time.miUSec; }
  constexpr bool operator>=(cTime const& time) const { return miUSec >= time.miUSec; }

  /// Spins on the clock for `iMS` milliseconds, after a line on the debug output that says that this
  /// is no good way to wait. The clock is that of mpi::cSysTime::utcTime(): if it is set back during
  /// the wait, the wait ends.
  static void waitMS(piUInt64 iMS);
  /// As waitMS(), for `iUS` microseconds.
  static void waitUS(piUInt64 iUS);

private:
  static constexpr piUInt64 usecPerSec() { return 1000000; }

  constexpr cTime earlier(piUInt64 iUSec) const { return cTime(miUSec < iUSec ? 0 : miUSec - iUSec); }

  piUInt64 miUSec;
};

} // namespace mstd

#endif
