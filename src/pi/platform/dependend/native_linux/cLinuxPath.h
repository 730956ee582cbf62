#ifndef MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXPATH_H
#define MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXPATH_H

#include "std/tArray.h"

#include <dirent.h>
#include <sys/stat.h>
#include <sys/types.h>

namespace mucs
{
class cAbstractEnDec;
class cString;
} // namespace mucs

namespace mpi
{

/// A path in the bytes of the system, with the system calls that take paths.
///
/// A path may be longer than the system takes at once: such a one is walked in pieces. A path with a 0 in it names
/// nothing; cut off at the 0 it would name something else, so the system gets the empty path and finds nothing there.
///
/// Errors: the calls return what the system's return, -1 or null, and leave the number in `errno`.
class cLinuxPath
{
public:
  cLinuxPath(mucs::cString const& path, mucs::cAbstractEnDec const& endec);

  int stat(struct stat& info, bool followLinks) const;
  /// The descriptor is never 0, which stands for "none" where descriptors are held.
  int open(int iFlags, mode_t mode) const;
  DIR* openDir() const;
  int mkdir(mode_t mode) const;
  int unlink() const;
  /// Removes a directory or anything else. What can't be looked at is left alone, and is no failure.
  int remove() const;
  int chmod(mode_t mode) const;
  int rename(cLinuxPath const& to) const;
  /// Makes this a link that leads to `target`.
  int symlink(cLinuxPath const& target) const;
  ssize_t readlink(char* pTarget, size_t size) const;

  /// `iFD`, or if that is 0 another descriptor for the same, or -1.
  static int avoidZero(int iFD);

private:
  class cPlace;

  char const* bytes() const { return mBytes.data(); }

  mstd::tArray<char> mBytes; // with a 0 behind
};

/// What the bytes that the system gave mean, put behind `text`: bytes that don't decode become code points of
/// their values, so that no name is ever lost.
void appendDecoded(char const* pBytes, unsigned int iLength, mucs::cAbstractEnDec const& endec, mucs::cString& text);

} // namespace mpi

#endif
