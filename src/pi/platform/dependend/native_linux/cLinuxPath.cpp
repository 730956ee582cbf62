#include "pi/platform/dependend/native_linux/cLinuxPath.h"

#include "std/cConstCStringRef.h"
#include "std/cRuntimeException.h"
#include "std/tConstArrayRef.h"
#include "ucs/cAbstractEnDec.h"
#include "ucs/cString.h"

#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

namespace mpi
{

/// Where a path begins for a system call: short ones at the working directory, long ones at a directory that all but
/// their last piece leads to.
class cLinuxPath::cPlace
{
public:
  /// With `toLast` all but the last name of a long path is walked: for more than one call on it.
  explicit cPlace(cLinuxPath const& path, bool toLast = false) : mpRest(path.bytes()), miDir(AT_FDCWD), mIsValid(true)
  {
    if (path.mBytes.length() > PATH_MAX)
    {
      mIsValid = walk(toLast);
    }
  }
  cPlace(cPlace const&) = delete;
  cPlace& operator=(cPlace const&) = delete;
  ~cPlace() { leave(); }

  /// False with the reason in `errno` if some directory on the way can't be walked through.
  bool isValid() const { return mIsValid; }
  bool isWhole() const { return miDir == AT_FDCWD; }
  int dir() const { return miDir; }
  char const* rest() const { return mpRest; }

private:
  bool walk(bool toLast)
  {
    size_t left = strlen(mpRest);
    while (left >= PATH_MAX)
    {
      if (!enter(pieceOf(PATH_MAX - 1), left))
      {
        return false;
      }
    }
    if (left == 0)
    {
      mpRest = "."; // only slashes were left
    }
    size_t const size = toLast ? pieceOf(lengthWithoutSlashes(left)) : 0;
    return size == 0 || enter(size, left);
  }

  size_t lengthWithoutSlashes(size_t size) const
  {
    while (size != 0 && mpRest[size - 1] == '/')
    {
      --size;
    }
    return size;
  }

  /// How much of the first `size` bytes are whole directories.
  size_t pieceOf(size_t size) const
  {
    while (size != 0 && mpRest[size - 1] != '/')
    {
      --size;
    }
    return size;
  }

  /// Goes into the directory that the first `size` of the `left` bytes name.
  bool enter(size_t size, size_t& left)
  {
    if (size == 0)
    {
      errno = ENAMETOOLONG;
      return false;
    }
    char piece[PATH_MAX];
    memcpy(piece, mpRest, size);
    piece[size] = 0;
    int const iNext = openat(miDir, piece, O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (iNext < 0)
    {
      return false;
    }
    leave();
    miDir = iNext;
    while (size != left && mpRest[size] == '/')
    {
      ++size;
    }
    mpRest += size;
    left -= size;
    return true;
  }

  void leave() const
  {
    if (miDir != AT_FDCWD)
    {
      int const iError = errno;
      close(miDir);
      errno = iError;
    }
  }

  char const* mpRest;
  int miDir;
  bool mIsValid;
};

cLinuxPath::cLinuxPath(mucs::cString const& path, mucs::cAbstractEnDec const& endec)
{
  endec.encodeCString(path, mBytes);
  if (strlen(mBytes.data()) + 1 != mBytes.length())
  {
    mBytes.at(0) = 0;
  }
}

int cLinuxPath::stat(struct stat& info, bool followLinks) const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return -1;
  }
  if (!place.isWhole())
  {
    return fstatat(place.dir(), place.rest(), &info, followLinks ? 0 : AT_SYMLINK_NOFOLLOW);
  }
  return followLinks ? ::stat(place.rest(), &info) : ::lstat(place.rest(), &info);
}

int cLinuxPath::open(int iFlags, mode_t mode) const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return -1;
  }
  return avoidZero(place.isWhole() ? ::open(place.rest(), iFlags, mode)
                                   : openat(place.dir(), place.rest(), iFlags, mode));
}

DIR* cLinuxPath::openDir() const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return 0;
  }
  if (place.isWhole())
  {
    return opendir(place.rest());
  }
  int const iFD = openat(place.dir(), place.rest(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
  if (iFD < 0)
  {
    return 0;
  }
  DIR* const pDir = fdopendir(iFD);
  if (pDir == 0)
  {
    int const iError = errno;
    close(iFD);
    errno = iError;
  }
  return pDir;
}

int cLinuxPath::mkdir(mode_t mode) const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return -1;
  }
  return place.isWhole() ? ::mkdir(place.rest(), mode) : mkdirat(place.dir(), place.rest(), mode);
}

int cLinuxPath::unlink() const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return -1;
  }
  return place.isWhole() ? ::unlink(place.rest()) : unlinkat(place.dir(), place.rest(), 0);
}

int cLinuxPath::remove() const
{
  cPlace const place(*this, true);
  struct stat info;
  if (!place.isValid())
  {
    return 0;
  }
  if (place.isWhole())
  {
    if (::lstat(place.rest(), &info) != 0)
    {
      return 0;
    }
    return S_ISDIR(info.st_mode) ? ::rmdir(place.rest()) : ::unlink(place.rest());
  }
  if (fstatat(place.dir(), place.rest(), &info, AT_SYMLINK_NOFOLLOW) != 0)
  {
    return 0;
  }
  return unlinkat(place.dir(), place.rest(), S_ISDIR(info.st_mode) ? AT_REMOVEDIR : 0);
}

int cLinuxPath::chmod(mode_t mode) const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return -1;
  }
  return place.isWhole() ? ::chmod(place.rest(), mode) : fchmodat(place.dir(), place.rest(), mode, 0);
}

int cLinuxPath::rename(cLinuxPath const& to) const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return -1;
  }
  cPlace const target(to);
  if (!target.isValid())
  {
    return -1;
  }
  return place.isWhole() && target.isWhole() ? ::rename(place.rest(), target.rest())
                                             : renameat(place.dir(), place.rest(), target.dir(), target.rest());
}

int cLinuxPath::symlink(cLinuxPath const& target) const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return -1;
  }
  return place.isWhole() ? ::symlink(target.bytes(), place.rest())
                         : symlinkat(target.bytes(), place.dir(), place.rest());
}

ssize_t cLinuxPath::readlink(char* pTarget, size_t size) const
{
  cPlace const place(*this);
  if (!place.isValid())
  {
    return -1;
  }
  return place.isWhole() ? ::readlink(place.rest(), pTarget, size)
                         : readlinkat(place.dir(), place.rest(), pTarget, size);
}

int cLinuxPath::avoidZero(int iFD)
{
  if (iFD != 0)
  {
    return iFD;
  }
  int const iOther = fcntl(iFD, F_DUPFD, 1);
  int const iError = errno;
  close(iFD);
  errno = iError;
  return iOther;
}

void appendDecoded(char const* pBytes, unsigned int iLength, mucs::cAbstractEnDec const& endec, mucs::cString& text)
{
  unsigned int const iStart = text.length();
  try
  {
    mstd::cConstCStringRef const bytes(pBytes, iLength);
    endec.decode(mstd::tConstArrayRef<char>(bytes), text);
  }
  catch (mstd::cRuntimeException const&)
  {
    text.truncate(iStart);
    text.appendC(pBytes, iLength);
  }
}

} // namespace mpi
