#include "pi/platform/dependend/native_linux/cLinuxDirImpl.h"

#include "io/cDirInfo.h"
#include "io/ioTypes.h"
#include "pi/platform/dependend/native_linux/cLinuxExceptions.h"

#include <errno.h>
#include <string.h>
#include <unistd.h>

namespace mpi
{

namespace
{

// Names that are read at once: those of some hundred entries. Behind them is room for one more, however long.
unsigned int const readAhead = 0x4000;
unsigned int const namesSize = readAhead + 0x1100;

} // namespace

bool cLinuxDirImpl::cStream::open(cLinuxPath const& path)
{
  mpDir = path.openDir();
  return mpDir != 0;
}

void cLinuxDirImpl::cStream::close()
{
  if (mpDir != 0)
  {
    closedir(mpDir);
    mpDir = 0;
  }
}

cLinuxDirImpl::cLinuxDirImpl(mio::cFs const& fs, mucs::cString const& path, int flags)
    : mio::cAbstractDirImpl(fs, path), mFs(fs), msPath(path), mPath(path, fs.endec()), mNames(namesSize), miCurrent(0),
      miUsed(0), miError(0), mIsEnd(false), mHideDot((flags & mio::DirHideDot) != 0),
      mHideDotDot((flags & mio::DirHideDotDot) != 0)
{
  open();
  if (msPath.empty() || msPath.at(msPath.length() - 1) != '/')
  {
    msPath.append('/');
  }
  setUpElement();
  mIsEnd = !fill();
}

cLinuxDirImpl::cLinuxDirImpl(cLinuxDirImpl const& other)
    : mio::cAbstractDirImpl(other), mFs(other.mFs), msPath(other.msPath), mPath(other.mPath),
      mNames(other.mIsEnd ? 0 : namesSize), miCurrent(0), miUsed(0), miError(0), mIsEnd(other.mIsEnd),
      mHideDot(other.mHideDot), mHideDotDot(other.mHideDotDot)
{
  if (mIsEnd)
  {
    return;
  }
  open();
  setUpElement();
  // The element is taken along: it may have left the directory since.
  tRecord const current = other.record();
  append(other.name(), current.iLength, current.iNext);
  if (lseek(dirfd(mStream.get()), static_cast<off_t>(current.iNext), SEEK_SET) < 0)
  {
    cLinuxExceptions::throwOSError("seekdir", msPath);
  }
  readOn();
}

cLinuxDirImpl::~cLinuxDirImpl() = default;

void cLinuxDirImpl::setNext()
{
  if (mIsEnd)
  {
    return;
  }
  unsigned int const iNext = miCurrent + recordSize + record().iLength;
  if (iNext < miUsed)
  {
    miCurrent = iNext;
    return;
  }
  mIsEnd = !fill();
}

mio::cDirInfo cLinuxDirImpl::element() const
{
  if (mIsEnd)
  {
    return mio::cDirInfo(mFs, mucs::cString());
  }
  msElement.truncate(msPath.length());
  appendDecoded(name(), record().iLength, mFs.endec(), msElement);
  return mio::cDirInfo(mFs, msElement);
}

bool cLinuxDirImpl::isEnd() const
{
  return mIsEnd;
}

mstd::tAutoPtr<mio::cAbstractDirImpl> cLinuxDirImpl::createCopy() const
{
  return mstd::tAutoPtr<mio::cAbstractDirImpl>(new cLinuxDirImpl(*this));
}

void cLinuxDirImpl::open()
{
  if (!mStream.open(mPath))
  {
    cLinuxExceptions::throwOSError("opendir", msPath);
  }
}

void cLinuxDirImpl::setUpElement()
{
  msElement = msPath;
  msElement.setFitOnErase(false);
}

bool cLinuxDirImpl::fill()
{
  if (mStream.get() == 0)
  {
    return false;
  }
  // The present names stay until there is another one.
  dirent const* const pFirst = miError != 0 ? 0 : readVisible();
  if (miError != 0)
  {
    int const iError = miError;
    miError = 0; // tried again next time
    cLinuxExceptions::throwOSError("readdir", iError, msPath);
  }
  if (pFirst == 0)
  {
    return false;
  }
  miCurrent = 0;
  miUsed = 0;
  append(pFirst->d_name, static_cast<unsigned int>(strlen(pFirst->d_name)), pFirst->d_off);
  readOn();
  return true;
}

void cLinuxDirImpl::readOn()
{
  while (miUsed < readAhead)
  {
    dirent const* const pEntry = readVisible();
    if (pEntry == 0)
    {
      return;
    }
    append(pEntry->d_name, static_cast<unsigned int>(strlen(pEntry->d_name)), pEntry->d_off);
  }
}

dirent const* cLinuxDirImpl::readVisible()
{
  for (;;)
  {
    errno = 0;
    dirent const* const pEntry = readdir(mStream.get());
    if (pEntry == 0)
    {
      miError = errno;
      if (miError == 0)
      {
        mStream.close();
      }
      return 0;
    }
    if (!isHidden(pEntry->d_name))
    {
      return pEntry;
    }
  }
}

void cLinuxDirImpl::append(char const* name, unsigned int iLength, long long iNext)
{
  tRecord const record = {iNext, iLength};
  char* const pTarget = mNames.data(miUsed, recordSize + iLength);
  memcpy(pTarget, &record, recordSize);
  memcpy(pTarget + recordSize, name, iLength);
  miUsed += recordSize + iLength;
}

cLinuxDirImpl::tRecord cLinuxDirImpl::record() const
{
  tRecord record;
  memcpy(&record, mNames.data() + miCurrent, recordSize);
  return record;
}

char const* cLinuxDirImpl::name() const
{
  return mNames.data() + miCurrent + recordSize;
}

bool cLinuxDirImpl::isHidden(char const* name) const
{
  return name[0] == '.' && ((mHideDot && name[1] == 0) || (mHideDotDot && name[1] == '.' && name[2] == 0));
}

} // namespace mpi
