#include "io/cFile.h"

#include "io/cAbstractFileImpl.h"
#include "io/cFs.h"
#include "io/cIOExceptions.h"
#include "io/cReadAhead.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"
#include "std/cDateTime.h"
#include "std/debugLines.h"
#include "ucs/cString.h"

#include <string.h>
#include <utility>

namespace mio
{
namespace
{
char const* const SourceMark = "io/cFile";

// Counts the changes that this process makes to any file: two files may be the same, and nobody tells.
unsigned int sChanges = 0;

unsigned int changes()
{
  return __atomic_load_n(&sChanges, __ATOMIC_RELAXED);
}

void countChange()
{
  __atomic_fetch_add(&sChanges, 1, __ATOMIC_RELAXED);
}

bool isOver(mstd::cTime const* pStart, unsigned int timeoutMs)
{
  return pStart != nullptr && pStart->diff().toMSec() > timeoutMs;
}
} // namespace

cFile::cFile(mucs::cString const& path, OpenMode mode, CreateMode create, WriteMode write)
    : cFile(mpi::system().fs, path)
{
  open(path, mode, create, write, true);
}

cFile::cFile(char const* path, OpenMode mode, CreateMode create, WriteMode write)
    : cFile(mucs::cString(path), mode, create, write)
{
}

cFile::cFile(cFs& fs, mucs::cString const& path)
    : mpImpl(fs.createFileImpl(*this, path)), mpSharers(nullptr), mKind(Unknown)
{
}

cFile::cFile(cFile const& other)
    : cAbstractIOBlockDevice(settled(other)), mpImpl(other.mpImpl->deepCopy(*this)), mpSharers(nullptr),
      mKind(other.mKind)
{
  if (other.mpSharers == nullptr)
  {
    other.mpSharers = new unsigned int(1);
  }
  __atomic_fetch_add(other.mpSharers, 1, __ATOMIC_RELAXED);
  mpSharers = other.mpSharers;
}

cFile::cFile(cFile&& other) : cFile(other.fs(), other.name())
{
  swap(other);
}

cFile::~cFile()
{
  try
  {
    cFile::close();
  }
  catch (...)
  {
    mstd::writeCaughtException(SourceMark, __LINE__);
  }
  leaveSharers();
}

cFile& cFile::operator=(cFile const& other)
{
  cFile copy(other);
  swap(copy);
  return *this;
}

void cFile::swap(cFile& other) noexcept
{
  cAbstractIOBlockDevice::swap(other);
  std::swap(mpImpl, other.mpImpl);
  mpImpl->swapBD(*other.mpImpl);
  std::swap(mpReadAhead, other.mpReadAhead);
  std::swap(mpSharers, other.mpSharers);
  std::swap(mKind, other.mKind);
}

cFs& cFile::fs() const
{
  return mpImpl->fs();
}

bool cFile::readTextLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator,
                         unsigned int timeoutMs)
{
  mstd::cTime const start;
  line.truncate(0);
  return readLine(line, terminator, keepTerminator, &start, timeoutMs);
}

bool cFile::readTextLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator)
{
  line.truncate(0);
  return readLine(line, terminator, keepTerminator, nullptr, 0);
}

bool cFile::readTextLine(mstd::tArray<char>& line, unsigned int timeoutMs)
{
  if (timeoutMs == 0)
  {
    line.truncate(0);
    return readLine(line, nullptr, 0);
  }
  mstd::cTime const start;
  line.truncate(0);
  return readLine(line, &start, timeoutMs);
}

unsigned long long cFile::read(void* pTarget, unsigned long long size)
{
  giveBack();
  leaveWindow(false);
  return mpImpl->readBytes(static_cast<char*>(pTarget), size);
}

unsigned long long cFile::write(void const* pSource, unsigned long long size)
{
  giveBack();
  leaveWindow(true);
  countChange();
  return mpImpl->writeBytes(static_cast<char const*>(pSource), size);
}

mucs::cString cFile::name() const
{
  return mpImpl->name();
}

void cFile::seek(long long offset, SeekMode mode)
{
  giveBack();
  mpImpl->seek(offset, mode);
}

unsigned long long cFile::pos() const
{
  return mpReadAhead && mpReadAhead->isPlaced() ? mpReadAhead->position() : mpImpl->pos();
}

void cFile::truncate(unsigned int size)
{
  giveBack();
  leaveWindow(true);
  countChange();
  mpImpl->truncate(size);
}

void cFile::mmap()
{
  giveBack();
  mpImpl->mmap();
  setPreferredBlockSize(0);
}

void cFile::remove()
{
  mpImpl->remove();
}

void cFile::setRemoveOnClose()
{
  mpImpl->setRemoveOnClose();
}

void cFile::release()
{
  mpImpl->release();
}

void cFile::rename(mucs::cString const& name)
{
  mpImpl->rename(name);
}

mstd::cDateTime cFile::lastModified() const
{
  return mpImpl->lastModified();
}

void cFile::open(mucs::cString const& path, OpenMode mode, CreateMode create, WriteMode write, bool followLinks)
{
  try
  {
    close();
    if (mode != OpenReadOnly)
    {
      countChange();
    }
    mpImpl->open(path, mode, create, write, followLinks);
  }
  catch (mstd::cAbstractException const& e)
  {
    cIOExceptions::throwUnableOpenFile(e, path);
  }
}

void cFile::close()
{
  if (mpReadAhead)
  {
    mpReadAhead->drop(); // there will be no position to go back to
  }
  mpImpl->close();
  forgetFile();
}

void cFile::flush()
{
  giveBack();
  leaveWindow(false);
  mpImpl->flush();
}

// For a copy: what is kept here is brought to the file first, which both share then.
cFile const& cFile::settled(cFile const& file)
{
  file.giveBack();
  file.leaveWindow(false);
  return file;
}

bool cFile::isShared() const
{
  return mpSharers != nullptr && __atomic_load_n(mpSharers, __ATOMIC_RELAXED) != 1;
}

void cFile::leaveSharers() noexcept
{
  if (mpSharers != nullptr && __atomic_fetch_sub(mpSharers, 1, __ATOMIC_ACQ_REL) == 1)
  {
    delete mpSharers;
  }
  mpSharers = nullptr;
}

void cFile::forgetFile()
{
  dropWindow();
  touchSize();
  leaveSharers();
  mKind = Unknown;
}

void cFile::seekReader() const
{
  if (!mpReadAhead->isEmpty())
  {
    mpImpl->seek(static_cast<long long>(mpReadAhead->position()), SeekFromStart);
    mpReadAhead->setSmall();
  }
  mpReadAhead->drop();
}

// Makes sure that something is read ahead. False if that can't be: at the end, for a file that gives nothing back, and
// for one whose position others share.
bool cFile::readAhead()
{
  if (mpReadAhead && !mpReadAhead->isEmpty())
  {
    if (mpReadAhead->changes() == changes())
    {
      return true;
    }
    piUInt64 const position = mpReadAhead->position();
    giveBack();
    mpReadAhead->place(position);
  }
  if (mKind == Irregular || isShared())
  {
    return false;
  }
  leaveWindow(false);
  if (!mpReadAhead)
  {
    mpReadAhead.reinit(new cReadAhead);
  }
  cReadAhead& ahead = *mpReadAhead;
  if (!ahead.isPlaced())
  {
    try
    {
      piUInt64 const position = mpImpl->pos();
      if (mKind == Unknown)
      {
        mKind = size(true) > position ? Regular : Irregular;
      }
      ahead.place(position);
    }
    catch (mstd::cAbstractException const&)
    {
      mKind = Irregular;
    }
    if (mKind == Irregular)
    {
      return false;
    }
  }
  char* const pRoom = ahead.room();
  unsigned int const number = changes();
  piUInt64 const position = ahead.position();
  unsigned int const length = static_cast<unsigned int>(mpImpl->readBytes(pRoom, ahead.block()));
  ahead.place(position);
  ahead.setFilled(length, number);
  return length != 0;
}

bool cFile::readLine(mstd::tArray<char>& line, mstd::cTime const* pStart, unsigned int timeoutMs)
{
  while (readAhead() && !isOver(pStart, timeoutMs))
  {
    cReadAhead& ahead = *mpReadAhead;
    if (line.empty())
    {
      ahead.skipBlank();
    }
    unsigned int const length = ahead.lineLength();
    line.append(ahead.data(), length);
    if (length < ahead.length())
    {
      ahead.consume(length + 1);
      return true;
    }
    ahead.consume(length);
  }
  return continueLine(line, pStart, timeoutMs);
}

bool cFile::readLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator,
                     mstd::cTime const* pStart, unsigned int timeoutMs)
{
  unsigned int const ending = terminator.length();
  while (readAhead() && !isOver(pStart, timeoutMs))
  {
    cReadAhead& ahead = *mpReadAhead;
    char const* const pData = ahead.data();
    void const* const pLast = ending == 0 ? nullptr : memchr(pData, terminator[ending - 1], ahead.length());
    if (pLast == nullptr)
    {
      line.append(pData, ahead.length());
      ahead.consume(ahead.length());
      continue;
    }
    unsigned int const length = static_cast<unsigned int>(static_cast<char const*>(pLast) - pData) + 1;
    if (length >= ending && memcmp(pData + (length - ending), terminator.data(), ending) == 0)
    {
      line.append(pData, keepTerminator ? length : length - ending);
      ahead.consume(length);
      return true;
    }
    line.append(pData, length);
    ahead.consume(length);
    if (endsWith(line, terminator))
    {
      if (!keepTerminator)
      {
        line.truncate(line.length() - ending);
      }
      return true;
    }
  }
  return continueLine(line, terminator, keepTerminator, pStart, timeoutMs);
}

} // namespace mio
