#include "pi/platform/dependend/native_linux/cPosixProcessEvents.h"

#include "pi/cFDAIOData.h"
#include "pi/cWork.h"
#include "std/cSTDExceptions.h"

#include <poll.h>
#include <stdlib.h>
#include <sys/select.h>

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

// The descriptors of one wait and the entry of the queue that each belongs to. It is filled anew for each wait,
// since the data of the work may change without notice; only its memory stays from wait to wait.
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
  void clear() { miLength = 0; }

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

  int wait(unsigned int iDelayMSec) { return ::poll(mpFds, miLength, static_cast<int>(iDelayMSec)); }

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
  set.clear();
  for (tJob const& job : jobs)
  {
    cWork* const pWork = job.get();
    if (pWork == nullptr || pWork->type() != cWork::AIO || !pWork->isStarted())
    {
      continue;
    }
    mstd::tVector<tFdInfo> const& fds = pWork->aioData().fdAIOData().fds();
    for (unsigned int i = 0, length = fds.length(); i < length; ++i)
    {
      tFdInfo const& info = fds.at(i);
      set.append(info.fd, pollEvents(info.flags), job);
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

void cPosixProcessEvents::wakeUp() {}

} // namespace mpi
