#include "io/cFileWatch.h"

#include "io/cFs.h"
#include "pi/cSystem.h"
#include "pi/schedule.h"
#include "rmi/cAbstractSignal.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "std/cAsciiString.h"
#include "std/cDateTime.h"
#include "ucs/cString.h"

namespace mio
{

cFileWatch::cFileWatch(mucs::cString const& path)
    : mFile(mpi::system().fs.fileOpenRead(path)), mLastStamp(mFile.lastModified().utcTime())
{
  sigChanged.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mstd::cAsciiString name("File I/O change notifier (");
  name += path.ascii('?');
  name += ")";
  mWork.setName(name);
  mWork.sigAction.connect(mrmi::cDirectLocalSlotCall0<cFileWatch, piVoid>(*this, &cFileWatch::poll));
}

cFileWatch::~cFileWatch() {}

void cFileWatch::start(unsigned int iMSec)
{
  mWork.start(iMSec, mpi::cWork::Periodic);
  mpi::schedule(mWork); // work that is there already is not added again
}

void cFileWatch::stop()
{
  mWork.stop();
}

void cFileWatch::poll()
{
  mstd::cTime const stamp = mFile.lastModified().utcTime();
  if (stamp != mLastStamp)
  {
    mLastStamp = stamp;
    sigChanged();
  }
}

} // namespace mio
