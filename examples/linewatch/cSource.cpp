#include "cSource.h"

#include "cOptions.h"
#include "cText.h"
#include "pi/cFDAIOData.h"
#include "pi/schedule.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "std/cOSErrorException.h"

#include <errno.h>
#include <fcntl.h>
#include <unistd.h>

cSource::cSource(mstd::cAsciiString const& sName, cOptions const& options)
    : mName(sName), miDescriptor(-1), mState(Stopped), mScanner(options.patterns(), options.isPrint())
{
  sigMatch.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mScanner.sigMatch.connect(mrmi::cDirectLocalSlotCall2(*this, &cSource::sltMatch));
  mWork.setName(cText::label(sName));
  mWork.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cSource::sltReady));
}

cSource::~cSource()
{
  close(mState);
}

void cSource::open(mpi::cWork& parent)
{
  if (mName == "-")
  {
    miDescriptor = STDIN_FILENO;
  }
  else
  {
    // Without O_NONBLOCK the opening of a FIFO would wait for its writer, and hold up all others.
    miDescriptor = ::open(mName.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (miDescriptor < 0)
    {
      mState = Failed;
      throw mstd::cOSErrorException("open", errno, cText::decode(mName.c_str()));
    }
  }
  mState = Open;
  mstd::tAutoPtr<mpi::cFDAIOData> pData(new mpi::cFDAIOData);
  pData->addFd(miDescriptor, mpi::tFdInfo::Readable);
  mWork.setAIOData(pData);
  mpi::schedule(mWork);
  mWork.reparent(&parent);
}

void cSource::close(State state)
{
  if (miDescriptor < 0)
  {
    return;
  }
  mWork.stop();
  if (miDescriptor != STDIN_FILENO)
  {
    ::close(miDescriptor);
  }
  miDescriptor = -1;
  mState = state;
  mScanner.finish();
}

char const* cSource::stateText() const
{
  switch (mState)
  {
  case Open:
    return "open";
  case Ended:
    return "end of input";
  case Failed:
    return "failed";
  default:
    return "stopped";
  }
}

void cSource::sltReady()
{
  // One piece for each turn, so that a fast source leaves time for the others.
  static char bytes[1u << 16];
  ssize_t const iRead = read(miDescriptor, bytes, sizeof bytes);
  if (iRead > 0)
  {
    mScanner.take(bytes, static_cast<unsigned int>(iRead));
  }
  else if (iRead == 0)
  {
    close(Ended);
    sigEnded(*this);
  }
  else if (errno != EAGAIN && errno != EINTR)
  {
    throw mstd::cOSErrorException("read", errno, cText::decode(mName.c_str()));
  }
}

void cSource::sltMatch(mstd::tArray<char> const& shown, piUInt64 iLength)
{
  sigMatch(*this, shown, iLength);
}
