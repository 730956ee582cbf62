#include "pi/platform/dependend/native_linux/cLinuxFileImpl.h"

#include "io/cAbstractIOBlockDevice.h"
#include "io/cFs.h"
#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "pi/platform/dependend/native_linux/cLinuxExceptions.h"
#include "pi/platform/dependend/native_linux/cLinuxFileInfoImpl.h"
#include "pi/platform/dependend/native_linux/cLinuxPath.h"
#include "std/cAsciiString.h"
#include "std/cDateTime.h"

#include <errno.h>
#include <fcntl.h>
#include <limits>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#ifndef O_LARGEFILE
#define O_LARGEFILE 0
#endif

namespace mpi
{

namespace
{

static_assert(sizeof(off_t) == 8, "files are larger than 32 bits on every processor");

unsigned long long const blockSize = 0x8000000;
unsigned int const retries = 3;
mode_t const newFileMode = 0644;

/// Moves up to `iCount` bytes in blocks through `callBlock`, which raises what isn't an interruption.
template <typename tCall>
unsigned long long moveBlocks(unsigned long long iCount, tCall const& callBlock)
{
  unsigned long long iDone = 0;
  unsigned int iRetriesLeft = retries;
  while (iDone != iCount)
  {
    unsigned long long const iLeft = iCount - iDone;
    unsigned long long const iBlock = iLeft < blockSize ? iLeft : blockSize;
    long long iResult = callBlock(iDone, iBlock);
    while (iResult < 0 && iRetriesLeft != 0)
    {
      --iRetriesLeft;
      iResult = callBlock(iDone, iBlock);
    }
    if (iResult < 0)
    {
      return iDone;
    }
    iDone += static_cast<unsigned long long>(iResult);
    if (static_cast<unsigned long long>(iResult) < iBlock)
    {
      return iDone;
    }
  }
  return iDone;
}

void reportReadError(mucs::cString const& name, unsigned long long iMax, unsigned long long iBlock, long long iResult,
                     int iError)
{
  cAbstractOut& out = system().out;
  mp::cLocker::cLock const lock(out.mutex());
  out.debugMessage("pi/cLinuxFileImpl", __LINE__)
      << "Error in cLinuxFileImpl::readBytes(char* pDst, piUInt64 iMax) " << name.ascii('?') << " /Max: " << iMax
      << " /Block: " << iBlock << " /R: " << iResult << " / " << static_cast<char const*>(strerror(iError)) << "\n"
      << cAbstractOut::clearDebugMessage();
}

} // namespace

cLinuxFileImpl::cLinuxFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device, mucs::cString const& name)
    : mio::cAbstractFileImpl(fs, device), miFD(0), mIsWriteable(false), mRemoveOnClose(false), msName(name),
      mpMapping(0), mMappedSize(0)
{
}

cLinuxFileImpl::cLinuxFileImpl(cLinuxFileImpl const& other, mio::cAbstractIOBlockDevice& device)
    : mio::cAbstractFileImpl(other.fs(), device), miFD(0), mIsWriteable(other.mIsWriteable),
      mRemoveOnClose(other.mRemoveOnClose), msName(other.msName), mpMapping(0), mMappedSize(0)
{
  if (other.miFD != 0)
  {
    int const iFD = cLinuxPath::avoidZero(dup(other.miFD));
    if (iFD < 0)
    {
      cLinuxExceptions::throwOSError("dup", msName);
    }
    miFD = iFD;
  }
}

cLinuxFileImpl::~cLinuxFileImpl()
{
  cLinuxFileImpl::munmap();
  if (miFD == 0)
  {
    return;
  }
  ::close(miFD);
  if (mRemoveOnClose)
  {
    try
    {
      cLinuxPath(msName, fs().endec()).unlink();
    }
    catch (...)
    {
      // No memory for the name: nobody is left who could be told.
    }
  }
}

mstd::tAutoPtr<mio::cAbstractFileImpl> cLinuxFileImpl::deepCopy(mio::cAbstractIOBlockDevice& device) const
{
  return mstd::tAutoPtr<mio::cAbstractFileImpl>(new cLinuxFileImpl(*this, device));
}

mucs::cString cLinuxFileImpl::name() const
{
  return msName;
}

void cLinuxFileImpl::remove()
{
  int const iResult = cLinuxPath(msName, fs().endec()).unlink();
  if (iResult != 0)
  {
    cLinuxExceptions::throwOSError("unlink", iResult, msName);
  }
}

void cLinuxFileImpl::setRemoveOnClose()
{
  mRemoveOnClose = true;
}

void cLinuxFileImpl::release()
{
  mRemoveOnClose = false;
}

void cLinuxFileImpl::rename(mucs::cString const& name)
{
  mucs::cString to(name);
  if (cLinuxPath(msName, fs().endec()).rename(cLinuxPath(to, fs().endec())) != 0)
  {
    cLinuxExceptions::throwOSError("rename", msName);
  }
  // Else remove() and the removal on close would hit whatever takes the old name.
  msName.swap(to);
}

mstd::cDateTime cLinuxFileImpl::lastModified() const
{
  requireOpen("stat");
  struct stat info;
  if (fstat(miFD, &info) != 0)
  {
    cLinuxExceptions::throwOSError("stat", msName);
  }
  mstd::cDateTime time(mstd::cTime(0ull), mstd::cDateTime::UTC);
  createLinuxTSFromStat(info, time, mio::cFileInfoFlags::LastModification);
  return time;
}

void cLinuxFileImpl::open(mucs::cString const& name, mio::OpenMode mode, mio::CreateMode create, mio::WriteMode write,
                          bool followLinks)
{
  mucs::cString wanted(name); // may be our own
  close();
  int iFlags = O_LARGEFILE;
  if (!followLinks)
  {
    iFlags |= O_NOFOLLOW;
  }
  bool const isWriteable = mode == mio::OpenWriteOnly || mode == mio::OpenReadWrite;
  if (isWriteable)
  {
    iFlags |= mode == mio::OpenWriteOnly ? O_WRONLY : O_RDWR;
    if (create == mio::CreateAlways || create == mio::CreateIfMissing)
    {
      iFlags |= O_CREAT;
    }
    iFlags |= write == mio::WriteAppend ? O_APPEND : write == mio::WriteTruncate ? O_TRUNC : 0;
  }
  int const iFD = cLinuxPath(wanted, fs().endec()).open(iFlags, newFileMode);
  if (iFD < 0)
  {
    cLinuxExceptions::throwOSError("open", wanted);
  }
  miFD = iFD;
  mIsWriteable = isWriteable;
  msName.swap(wanted);
}

void cLinuxFileImpl::close()
{
  if (miFD == 0)
  {
    return;
  }
  bd().touchSize();
  munmap();
  if (mIsWriteable)
  {
    flush();
  }
  int const iFD = miFD;
  miFD = 0;
  mIsWriteable = false;
  // The descriptor is gone even if this fails: what fails is only what was still to be done for the file.
  if (::close(iFD) < 0)
  {
    cLinuxExceptions::throwOSError("close", msName);
  }
  if (mRemoveOnClose)
  {
    remove();
  }
}

void cLinuxFileImpl::truncate(unsigned int size)
{
  requireOpen("truncate");
  if (ftruncate(miFD, static_cast<off_t>(size)) != 0)
  {
    cLinuxExceptions::throwOSError("truncate", msName);
  }
  bd().touchSize();
}

unsigned long long cLinuxFileImpl::readBytes(char* pData, unsigned long long count)
{
  requireOpen("read");
  return moveBlocks(count, [&](unsigned long long iDone, unsigned long long iBlock) -> long long {
    ssize_t const iResult = ::read(miFD, pData + iDone, static_cast<size_t>(iBlock));
    int const iError = errno;
    if (iResult < 0 && iError != EINTR)
    {
      reportReadError(msName, count, iBlock, iResult, iError);
      cLinuxExceptions::throwOSError("read", iError, msName);
    }
    return iResult;
  });
}

unsigned long long cLinuxFileImpl::writeBytes(char const* pData, unsigned long long count)
{
  requireOpen("write");
  bd().touchSize();
  return moveBlocks(count, [&](unsigned long long iDone, unsigned long long iBlock) -> long long {
    ssize_t const iResult = ::write(miFD, pData + iDone, static_cast<size_t>(iBlock));
    if (iResult < 0 && errno != EINTR)
    {
      cLinuxExceptions::throwOSError("write", msName);
    }
    return iResult;
  });
}

void cLinuxFileImpl::mmap()
{
  if (mIsWriteable)
  {
    cLinuxExceptions::throwUnableMapWriteable();
  }
  if (mpMapping != 0)
  {
    cLinuxExceptions::throwAlreadyMapped();
  }
  requireOpen("mmap");
  unsigned long long const iSize = bd().size(false);
  if (iSize > std::numeric_limits<size_t>::max())
  {
    cLinuxExceptions::throwOSError("mmap", EOVERFLOW, msName);
  }
  // What the system refuses is -1 and passes for a mapping: only null is a failure.
  void* const pMapping = ::mmap(0, static_cast<size_t>(iSize), PROT_READ, MAP_SHARED, miFD, 0);
  if (pMapping == 0)
  {
    cLinuxExceptions::throwOSError("mmap", msName);
  }
  mpMapping = pMapping;
  mMappedSize = static_cast<size_t>(iSize);
}

void cLinuxFileImpl::seek(long long offset, mio::SeekMode mode)
{
  requireOpen("seek");
  bd().touchSize();
  int const iFrom = mode == mio::SeekFromStart ? SEEK_SET : mode == mio::SeekFromCurrent ? SEEK_CUR : SEEK_END;
  if (lseek(miFD, static_cast<off_t>(offset), iFrom) < 0)
  {
    cLinuxExceptions::throwOSError("seek", msName);
  }
}

unsigned long long cLinuxFileImpl::pos() const
{
  requireOpen("seek");
  off_t const iPosition = lseek(miFD, 0, SEEK_CUR);
  if (iPosition < 0)
  {
    cLinuxExceptions::throwOSError("seek", msName);
  }
  return static_cast<unsigned long long>(iPosition);
}

void cLinuxFileImpl::flush()
{
  bd().flush();
  requireOpen("flush");
}

void cLinuxFileImpl::munmap()
{
  if (mpMapping != 0)
  {
    ::munmap(mpMapping, mMappedSize);
  }
  mpMapping = 0;
  mMappedSize = 0;
}

void cLinuxFileImpl::requireOpen(char const* operation) const
{
  if (miFD == 0)
  {
    cLinuxExceptions::throwOSError(operation, EBADFD, msName);
  }
}

} // namespace mpi
