#include "pi/platform/dependend/native_linux/cLinuxFileInfoImpl.h"

#include "io/cFs.h"
#include "io/cPermissions.h"
#include "pi/platform/dependend/native_linux/cLinuxExceptions.h"
#include "std/cDateTime.h"

#include <errno.h>

namespace mpi
{

namespace
{

// Both have the same twelve bits, in opposite order.
unsigned int const permissionBits = 12;
unsigned long long const hiddenBit = 0x2000;
unsigned int const linkSizeAtFirst = 256;

unsigned long long permissionsOf(mode_t mode)
{
  unsigned long long bits = 0;
  for (unsigned int i = 0; i < permissionBits; ++i)
  {
    if (mode & (mode_t(1) << (permissionBits - 1 - i)))
    {
      bits |= 1ull << i;
    }
  }
  return bits;
}

/// Whether the last name of a path hides it.
bool isHidden(mucs::cString const& path)
{
  unsigned int end = path.length();
  while (end != 0 && path.at(end - 1) == '/')
  {
    --end;
  }
  unsigned int begin = end;
  while (begin != 0 && path.at(begin - 1) != '/')
  {
    --begin;
  }
  unsigned int const iLength = end - begin;
  if (iLength == 0 || path.at(begin) != '.')
  {
    return false;
  }
  return iLength > 2 || (iLength == 2 && path.at(begin + 1) != '.');
}

} // namespace

cLinuxFileInfoImpl::cLinuxFileInfoImpl(mio::cFs const& fs, mucs::cString const& path)
    : mio::cAbstractFileInfoImpl(fs), mEndec(fs.endec()), msPath(path), mPath(path, mEndec)
{
}

cLinuxFileInfoImpl::~cLinuxFileInfoImpl() = default;

mstd::cDateTime cLinuxFileInfoImpl::timeStamp(mio::cFileInfoFlags::TimeStamp stamp, bool followLinks) const
{
  struct stat info;
  look(info, followLinks);
  mstd::cDateTime time(mstd::cTime(0ull), mstd::cDateTime::UTC);
  createLinuxTSFromStat(info, time, stamp);
  return time;
}

mucs::cString cLinuxFileInfoImpl::filePath() const
{
  return msPath;
}

mucs::cString cLinuxFileInfoImpl::readLink() const
{
  struct stat info;
  look(info, false);
  mucs::cString target;
  if (!S_ISLNK(info.st_mode))
  {
    return target;
  }
  // The size that the look gave may be out of date, and some file systems tell none.
  mstd::tArray<char> bytes(linkSizeAtFirst);
  for (;;)
  {
    ssize_t const iSize = mPath.readlink(bytes.data(), bytes.length());
    if (iSize < 0)
    {
      cLinuxExceptions::throwOSError("readlink", msPath);
    }
    if (static_cast<unsigned int>(iSize) < bytes.length())
    {
      appendDecoded(bytes.data(), static_cast<unsigned int>(iSize), mEndec, target);
      return target;
    }
    bytes.setSize(bytes.length() * 2);
  }
}

unsigned long long cLinuxFileInfoImpl::size(bool followLinks) const
{
  struct stat info;
  int const iResult = mPath.stat(info, followLinks);
  if (iResult != 0)
  {
    cLinuxExceptions::throwOSError("stat", iResult, msPath);
  }
  return static_cast<unsigned long long>(info.st_size);
}

mio::cFileInfoFlags::Type cLinuxFileInfoImpl::type(bool followLinks) const
{
  struct stat info;
  look(info, followLinks);
  switch (info.st_mode & S_IFMT)
  {
  case S_IFDIR:
    return mio::cFileInfoFlags::Directory;
  case S_IFCHR:
    return mio::cFileInfoFlags::CharacterDevice;
  case S_IFBLK:
    return mio::cFileInfoFlags::BlockDevice;
  case S_IFIFO:
    return mio::cFileInfoFlags::Fifo;
  case S_IFLNK:
    return mio::cFileInfoFlags::SymLink;
  case S_IFSOCK:
    return mio::cFileInfoFlags::Socket;
  default:
    return mio::cFileInfoFlags::File;
  }
}

mio::cPermissions cLinuxFileInfoImpl::readPermissions(bool followLinks) const
{
  struct stat info;
  look(info, followLinks);
  return mio::cPermissions(permissionsOf(info.st_mode) | (isHidden(msPath) ? hiddenBit : 0));
}

void cLinuxFileInfoImpl::look(struct stat& info, bool followLinks) const
{
  if (mPath.stat(info, followLinks) != 0)
  {
    cLinuxExceptions::throwOSError("stat", msPath);
  }
}

void createLinuxTSFromStat(struct stat const& info, mstd::cDateTime& dateTime,
                           mio::cFileInfoFlags::TimeStamp const& stamp)
{
  time_t const iSec = stamp == mio::cFileInfoFlags::LastAccess         ? info.st_atime
                      : stamp == mio::cFileInfoFlags::LastStatusChange ? info.st_ctime
                                                                       : info.st_mtime;
  mstd::cTime const time(iSec < 0 ? 0 : static_cast<piUInt64>(iSec) * 1000000);
  dateTime = mstd::cDateTime(time, mstd::cDateTime::UTC);
}

mode_t linuxModeOf(mio::cPermissions const& permissions)
{
  unsigned long long const bits = permissions.permissions();
  mode_t mode = 0;
  for (unsigned int i = 0; i < permissionBits; ++i)
  {
    if (bits & (1ull << i))
    {
      mode |= mode_t(1) << (permissionBits - 1 - i);
    }
  }
  return mode;
}

} // namespace mpi
