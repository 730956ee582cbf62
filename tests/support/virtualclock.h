#ifndef MORTISE_TESTS_SUPPORT_VIRTUALCLOCK_H
#define MORTISE_TESTS_SUPPORT_VIRTUALCLOCK_H

#include <functional>
#include <vector>

namespace support
{

/// Virtual time for the whole process while an object of this class lives.
///
/// The source beside this header takes the place of gettimeofday(), time(), clock_gettime(), poll(), select() and
/// usleep(), also for the library under test. Without a living clock they are the C library's own. With one, reading
/// the clock gives virtual time, and waiting moves it on instead of taking real time: poll() and select() first look
/// at their descriptors for real, and only if nothing is ready does virtual time pass, up to the time-out or to
/// the next action planned with at().
///
/// Linked into a test program it is in force as it stands. As a shared library it goes first in the link order, or
/// into LD_PRELOAD.
///
/// Units: microseconds since 1 January 1970, UTC, unless a name says otherwise. One clock at a time.
class cVirtualClock
{
public:
  /// Begins at `iStart`, by default on 9 September 2001 at 01:46:40.
  explicit cVirtualClock(long long iStart = 1000000000000000LL);
  cVirtualClock(cVirtualClock const&) = delete;
  cVirtualClock& operator=(cVirtualClock const&) = delete;
  ~cVirtualClock();

  long long now() const;
  /// Sets the clock, back as well. Runs no planned actions.
  void set(long long iNow);
  /// Lets time pass as a sleep would, with the planned actions on the way.
  void advance(long long iUSec);
  void advanceMSec(long long iMSec) { advance(iMSec * 1000); }
  /// Each look at the clock moves it on by this much (0 at first).
  void setTick(long long iUSec);

  /// Plans `action` for the moment at which virtual time gets to `iTime` by waiting. A wait for descriptors looks at
  /// them again behind it.
  void at(long long iTime, std::function<void()> action);

  /// Time that passed in waits so far.
  long long blocked() const;
  long long blockedMSec() const { return blocked() / 1000; }

  unsigned int numPolls() const;
  unsigned int numSelects() const;
  /// Looks at the clock so far.
  unsigned int numReads() const;
  /// Time-out of the last poll(), in milliseconds.
  int lastPollTimeout() const;
  /// What the last poll() asked for: descriptors and events, in their order.
  struct cWatched
  {
    int fd;
    short events;
    bool operator==(cWatched const& other) const { return fd == other.fd && events == other.events; }
  };
  std::vector<cWatched> const& lastPolled() const;
  /// Parts of the time-out of the last select().
  long long lastSelectSec() const;
  long long lastSelectUSec() const;
  /// Lets the next poll() fail with EINTR.
  void interruptNextPoll();
};

} // namespace support

#endif
