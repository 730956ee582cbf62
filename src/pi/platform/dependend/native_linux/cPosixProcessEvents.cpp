#include "pi/platform/dependend/native_linux/cPosixProcessEvents.h"

#include "pi/cFDAIOData.h"
#include "pi/cWork.h"
#include "std/cSTDExceptions.h"

#include <poll.h>
#include <stdlib.h>
#include <sys/select.h>

#include <typeinfo>

namespace mpi
{

namespace
{

typedef mstd::tSharedObject<cWork> tJob;

short pollEvents(unsigned int iFlags)
{
  short events = 0;
  if ((iFlags & tFdInfo::Readable) != 0)
  {
    events |= POLLIN | POLLPRI | POLLRDNORM | POLLRDBAND;
  }
  if ((iFlags & tFdInfo::Writable) != 0)
  {
    events |= POLLOUT | POLLWRNORM | POLLWRBAND;
  }
  if ((iFlags & tFdInfo::Error) != 0)
  {
    events |= POLLERR | POLLHUP;
  }
  return events;
}

void sleepWithoutDescriptors(unsigned int iDelayMSec)
{
  timeval tv;
  tv.tv_sec = iDelayMSec / 1000;
  tv.tv_usec = static_cast<int>((iDelayMSec * 1000) % 1000000);
  select(0, nullptr, nullptr, nullptr, &tv);
}

} // namespace

// The descriptors of one wait and the entry of the queue that each belongs to. It is filled anew for each wait, unless
// nothing can have changed since the last one.
class cPosixProcessEvents::cPollSet
{
public:
  cPollSet() = default;
  cPollSet(cPollSet const&) = delete;
  cPollSet& operator=(cPollSet const&) = delete;
  ~cPollSet()
  {
    free(mpFds);
    free(mpJobs);
  }

  unsigned int length() const { return miLength; }
  void clear()
  {
    miLength = 0;
    mValid = false;
  }

  // True if the set was filled at this number of changes, and nothing can have changed it since.
  bool isValid(piUInt64 iChanges) const { return mValid && miChanges == iChanges; }
  void setValid(piUInt64 iChanges)
  {
    mValid = true;
    miChanges = iChanges;
  }

  void append(int fd, short events, tJob const& job)
  {
    if (miLength == miCapacity)
    {
      grow();
    }
    mpFds[miLength].fd = fd;
    mpFds[miLength].events = events;
    mpFds[miLength].revents = 0;
    mpJobs[miLength] = &job;
    ++miLength;
  }

  int wait(unsigned int iDelayMSec)
  {
    // A wait makes the system register with every descriptor, a mere look does not: so under load, with the last
    // wait not in vain, a look comes first.
    if (mBusy && iDelayMSec != 0)
    {
      int const iReady = ::poll(mpFds, miLength, 0);
      if (iReady != 0)
      {
        return iReady;
      }
    }
    int const iReady = ::poll(mpFds, miLength, static_cast<int>(iDelayMSec));
    mBusy = iDelayMSec != 0 ? iReady > 0 : mBusy;
    return iReady;
  }

  void setEvents(int iReady)
  {
    for (unsigned int i = 0; i < miLength && iReady >= 1; ++i)
    {
      if (mpFds[i].revents == 0)
      {
        continue;
      }
      mpFds[i].revents = 0;
      // Entries stay linked until the next walk of the queue: one whose work has gone reads as null.
      if (cWork* const pWork = mpJobs[i]->get())
      {
        pWork->aioData().setEvent(true);
      }
      --iReady;
    }
  }

private:
  void grow()
  {
    unsigned int const iCapacity = miCapacity != 0 ? miCapacity * 2 : 16;
    mpFds = resized(mpFds, iCapacity);
    mpJobs = resized(mpJobs, iCapacity);
    miCapacity = iCapacity;
  }

  template <class tElement>
  static tElement* resized(tElement* pOld, unsigned int iCapacity)
  {
    if (iCapacity > 0x7FFFFFFFu / sizeof(tElement))
    {
      cSTDExceptions::throwBadAlloc();
    }
    void* const pNew = realloc(static_cast<void*>(pOld), iCapacity * sizeof(tElement));
    if (pNew == nullptr)
    {
      cSTDExceptions::throwBadAlloc();
    }
    return static_cast<tElement*>(pNew);
  }

  pollfd* mpFds = nullptr;
  tJob const** mpJobs = nullptr;
  unsigned int miLength = 0;
  unsigned int miCapacity = 0;
  bool mValid = false;
  bool mBusy = false;
  piUInt64 miChanges = 0;
};

cPosixProcessEvents::cPosixProcessEvents() : mpPollSet(new cPollSet) {}

cPosixProcessEvents::~cPosixProcessEvents() = default;

bool cPosixProcessEvents::supportsAIO() const
{
  return true;
}

bool cPosixProcessEvents::isAsynchronous() const
{
  return false;
}

void cPosixProcessEvents::yield(unsigned int, mstd::tList<tJob>& jobs, unsigned int iDelayMSec)
{
  cPollSet& set = *mpPollSet;
  piUInt64 iChanges = 0;
  bool const bKnown = descriptorChanges(jobs, iChanges);
  if (!bKnown || !set.isValid(iChanges))
  {
    set.clear();
    if (fill(set, jobs) && bKnown)
    {
      set.setValid(iChanges);
    }
  }
  if (set.length() != 0)
  {
    set.setEvents(set.wait(iDelayMSec));
  }
  else
  {
    sleepWithoutDescriptors(iDelayMSec);
  }
  sigFinished();
}

// Returns false if the set may change without notice.
bool cPosixProcessEvents::fill(cPollSet& set, mstd::tList<tJob> const& jobs)
{
  bool bNoticed = true;
  for (tJob const& job : jobs)
  {
    cWork* const pWork = job.get();
    if (pWork == nullptr || pWork->type() != cWork::AIO || !pWork->isStarted())
    {
      continue;
    }
    cAbstractAIOData& data = pWork->aioData();
    cFDAIOData const& fdData = data.fdAIOData();
    mstd::tVector<tFdInfo> const& fds = fdData.fds();
    for (unsigned int i = 0, length = fds.length(); i < length; ++i)
    {
      tFdInfo const& info = fds.at(i);
      set.append(info.fd, pollEvents(info.flags), job);
    }
    // A derived class may give out other data each time.
    bNoticed = bNoticed && typeid(data) == typeid(cFDAIOData) && !fdData.isListShared();
  }
  return bNoticed;
}

void cPosixProcessEvents::wakeUp() {}

} // namespace mpi
