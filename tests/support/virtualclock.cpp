#include "support/virtualclock.h"

#include <dlfcn.h>
#include <errno.h>
#include <stdint.h>
#include <stdlib.h>

#include <map>
#include <utility>

// No header that declares the replaced functions is included: on a 32-bit processor each of them exists in a form
// with 32-bit and one with 64-bit time, and both are defined here under their link names.

namespace
{

// Apart from the state, since the replaced functions are called long before and after everything else.
bool isOn = false;

struct tState
{
  long long miNow = 0;
  long long miTick = 0;
  long long miBlocked = 0;
  unsigned int miPolls = 0;
  unsigned int miSelects = 0;
  unsigned int miReads = 0;
  int miPollTimeout = 0;
  std::vector<support::cVirtualClock::cWatched> mPolled;
  long long miSelectSec = 0;
  long long miSelectUSec = 0;
  bool mInterrupt = false;
  std::multimap<long long, std::function<void()>> mActions;
};

tState& state()
{
  static tState* const pState = new tState;
  return *pState;
}

long long readClock()
{
  tState& s = state();
  ++s.miReads;
  long long const now = s.miNow;
  s.miNow += s.miTick;
  return now;
}

// Lets time pass up to `iUntil`, or up to the moment at which `isReady` has come true.
template <class tReady>
void passTime(long long iUntil, tReady const& isReady)
{
  tState& s = state();
  while (true)
  {
    auto const next = s.mActions.begin();
    long long const stop = next != s.mActions.end() && next->first <= iUntil ? next->first : iUntil;
    if (stop > s.miNow)
    {
      s.miBlocked += stop - s.miNow;
      s.miNow = stop;
    }
    if (next == s.mActions.end() || next->first > iUntil)
    {
      return;
    }
    std::function<void()> const action = std::move(next->second);
    s.mActions.erase(next);
    action();
    if (isReady())
    {
      return;
    }
  }
}

void sleepFor(long long iUSec)
{
  passTime(state().miNow + iUSec, [] { return false; });
}

template <class tFunction>
tFunction real(char const* pName, tFunction)
{
  return reinterpret_cast<tFunction>(dlsym(RTLD_NEXT, pName));
}

// time_t and long of the C library's plain names.
struct tTimeval
{
  long mSec;
  long mUSec;
};
struct tTimespec
{
  long mSec;
  long mNSec;
};
struct tTimeval64
{
  int64_t mSec;
  int64_t mUSec;
};
struct tTimespec64
{
  int64_t mSec;
  int32_t mNSec;
  int32_t mPadding;
};

int const ClockRealtime = 0;
int const ClockMonotonic = 1;
int const ClockRealtimeCoarse = 5;
int const ClockMonotonicCoarse = 6;
int const ClockBootTime = 7;

bool isVirtualClock(int iClock)
{
  return iClock == ClockRealtime || iClock == ClockMonotonic || iClock == ClockRealtimeCoarse ||
         iClock == ClockMonotonicCoarse || iClock == ClockBootTime;
}

template <class tTime>
int gettimeofdayAs(char const* pName, tTime* pTime, void* pZone)
{
  if (!isOn)
  {
    static auto const function = real(pName, static_cast<int (*)(tTime*, void*)>(nullptr));
    return function(pTime, pZone);
  }
  long long const now = readClock();
  pTime->mSec = static_cast<decltype(pTime->mSec)>(now / 1000000);
  pTime->mUSec = static_cast<decltype(pTime->mUSec)>(now % 1000000);
  return 0;
}

template <class tTime>
int clock_gettimeAs(char const* pName, int iClock, tTime* pTime)
{
  if (!isOn || !isVirtualClock(iClock))
  {
    static auto const function = real(pName, static_cast<int (*)(int, tTime*)>(nullptr));
    return function(iClock, pTime);
  }
  long long const now = readClock();
  pTime->mSec = static_cast<decltype(pTime->mSec)>(now / 1000000);
  pTime->mNSec = static_cast<decltype(pTime->mNSec)>(now % 1000000 * 1000);
  return 0;
}

template <class tSeconds>
tSeconds timeAs(char const* pName, tSeconds* pTime)
{
  if (!isOn)
  {
    static auto const function = real(pName, static_cast<tSeconds (*)(tSeconds*)>(nullptr));
    return function(pTime);
  }
  tSeconds const now = static_cast<tSeconds>(readClock() / 1000000);
  if (pTime != nullptr)
  {
    *pTime = now;
  }
  return now;
}

struct tPollFd
{
  int mFd;
  short mEvents;
  short mRevents;
};

int pollAs(tPollFd* pFds, unsigned long iLength, int iTimeout)
{
  static auto const function = real("poll", static_cast<int (*)(tPollFd*, unsigned long, int)>(nullptr));
  if (!isOn)
  {
    return function(pFds, iLength, iTimeout);
  }
  tState& s = state();
  ++s.miPolls;
  s.miPollTimeout = iTimeout;
  s.mPolled.clear();
  for (unsigned long i = 0; i < iLength; ++i)
  {
    s.mPolled.push_back(support::cVirtualClock::cWatched{pFds[i].mFd, pFds[i].mEvents});
  }
  if (s.mInterrupt)
  {
    s.mInterrupt = false;
    errno = EINTR;
    return -1;
  }
  int iReady = function(pFds, iLength, 0);
  if (iReady == 0 && iTimeout > 0)
  {
    passTime(s.miNow + iTimeout * 1000LL, [&] { return (iReady = function(pFds, iLength, 0)) != 0; });
  }
  // A wait without end in which nothing is planned could only hang: it comes back empty.
  while (iReady == 0 && iTimeout < 0 && !s.mActions.empty())
  {
    passTime(s.mActions.begin()->first, [&] { return (iReady = function(pFds, iLength, 0)) != 0; });
  }
  return iReady;
}

template <class tTime>
int selectAs(char const* pName, int iLength, void* pRead, void* pWrite, void* pExcept, tTime* pTimeout)
{
  static auto const function = real(pName, static_cast<int (*)(int, void*, void*, void*, tTime*)>(nullptr));
  if (!isOn || pTimeout == nullptr)
  {
    return function(iLength, pRead, pWrite, pExcept, pTimeout);
  }
  tState& s = state();
  ++s.miSelects;
  s.miSelectSec = pTimeout->mSec;
  s.miSelectUSec = pTimeout->mUSec;
  if (iLength != 0)
  {
    // Looked at once: the sets are overwritten by the look.
    tTime zero = {0, 0};
    int const iReady = function(iLength, pRead, pWrite, pExcept, &zero);
    if (iReady != 0)
    {
      return iReady;
    }
  }
  sleepFor(s.miSelectSec * 1000000 + s.miSelectUSec);
  return 0;
}

} // namespace

#define VIRTUALCLOCK_REPLACES(name) __asm__(name) __attribute__((visibility("default"), used))

extern "C" {
int virtualGettimeofday(tTimeval*, void*) VIRTUALCLOCK_REPLACES("gettimeofday");
int virtualClockGettime(int, tTimespec*) VIRTUALCLOCK_REPLACES("clock_gettime");
long virtualTime(long*) VIRTUALCLOCK_REPLACES("time");
int virtualPoll(tPollFd*, unsigned long, int) VIRTUALCLOCK_REPLACES("poll");
int virtualPollChecked(tPollFd*, unsigned long, int, size_t) VIRTUALCLOCK_REPLACES("__poll_chk");
int virtualSelect(int, void*, void*, void*, tTimeval*) VIRTUALCLOCK_REPLACES("select");
int virtualUSleep(unsigned int) VIRTUALCLOCK_REPLACES("usleep");

int virtualGettimeofday(tTimeval* pTime, void* pZone)
{
  return gettimeofdayAs("gettimeofday", pTime, pZone);
}

int virtualClockGettime(int iClock, tTimespec* pTime)
{
  return clock_gettimeAs("clock_gettime", iClock, pTime);
}

long virtualTime(long* pTime)
{
  return timeAs("time", pTime);
}

int virtualPoll(tPollFd* pFds, unsigned long iLength, int iTimeout)
{
  return pollAs(pFds, iLength, iTimeout);
}

int virtualPollChecked(tPollFd* pFds, unsigned long iLength, int iTimeout, size_t iSize)
{
  if (iLength > iSize / sizeof(tPollFd))
  {
    abort();
  }
  return pollAs(pFds, iLength, iTimeout);
}

int virtualSelect(int iLength, void* pRead, void* pWrite, void* pExcept, tTimeval* pTimeout)
{
  return selectAs("select", iLength, pRead, pWrite, pExcept, pTimeout);
}

int virtualUSleep(unsigned int iUSec)
{
  if (!isOn)
  {
    static auto const function = real("usleep", static_cast<int (*)(unsigned int)>(nullptr));
    return function(iUSec);
  }
  sleepFor(iUSec);
  return 0;
}

#if defined(__linux__) && !defined(__LP64__)
int virtualGettimeofday64(tTimeval64*, void*) VIRTUALCLOCK_REPLACES("__gettimeofday64");
int virtualClockGettime64(int, tTimespec64*) VIRTUALCLOCK_REPLACES("__clock_gettime64");
int64_t virtualTime64(int64_t*) VIRTUALCLOCK_REPLACES("__time64");
int virtualSelect64(int, void*, void*, void*, tTimeval64*) VIRTUALCLOCK_REPLACES("__select64");

int virtualGettimeofday64(tTimeval64* pTime, void* pZone)
{
  return gettimeofdayAs("__gettimeofday64", pTime, pZone);
}

int virtualClockGettime64(int iClock, tTimespec64* pTime)
{
  return clock_gettimeAs("__clock_gettime64", iClock, pTime);
}

int64_t virtualTime64(int64_t* pTime)
{
  return timeAs("__time64", pTime);
}

int virtualSelect64(int iLength, void* pRead, void* pWrite, void* pExcept, tTimeval64* pTimeout)
{
  return selectAs("__select64", iLength, pRead, pWrite, pExcept, pTimeout);
}
#endif
}

namespace support
{

cVirtualClock::cVirtualClock(long long iStart)
{
  tState& s = state();
  s = tState();
  s.miNow = iStart;
  isOn = true;
}

cVirtualClock::~cVirtualClock()
{
  isOn = false;
  state() = tState();
}

long long cVirtualClock::now() const
{
  return state().miNow;
}

void cVirtualClock::set(long long iNow)
{
  state().miNow = iNow;
}

void cVirtualClock::advance(long long iUSec)
{
  sleepFor(iUSec);
}

void cVirtualClock::setTick(long long iUSec)
{
  state().miTick = iUSec;
}

void cVirtualClock::at(long long iTime, std::function<void()> action)
{
  state().mActions.emplace(iTime, std::move(action));
}

long long cVirtualClock::blocked() const
{
  return state().miBlocked;
}

unsigned int cVirtualClock::numPolls() const
{
  return state().miPolls;
}

unsigned int cVirtualClock::numSelects() const
{
  return state().miSelects;
}

unsigned int cVirtualClock::numReads() const
{
  return state().miReads;
}

int cVirtualClock::lastPollTimeout() const
{
  return state().miPollTimeout;
}

std::vector<cVirtualClock::cWatched> const& cVirtualClock::lastPolled() const
{
  return state().mPolled;
}

long long cVirtualClock::lastSelectSec() const
{
  return state().miSelectSec;
}

long long cVirtualClock::lastSelectUSec() const
{
  return state().miSelectUSec;
}

void cVirtualClock::interruptNextPoll()
{
  state().mInterrupt = true;
}

} // namespace support
