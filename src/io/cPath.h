#ifndef MORTISE_IO_CPATH_H
#define MORTISE_IO_CPATH_H

#include "io/pathFixup.h"
#include "pi/piTypes.h"
#include "ucs/cString.h"

namespace mio
{

class cFs;

/// Path of a directory: a text that uses `/` alone and ends in `/`, and a drive letter held apart from it.
///
/// A path is normalised when it is set or when fixup() is called. What is built with cd() stays as it was put together
/// until then. With a drive letter a path is absolute, whatever its text. Normalising takes "./" out of a text wherever
/// it stands, see fixupPath(): a last name that ends in a dot loses dot and slash.
///
/// Errors:  every text is a path. No memory raises std::bad_alloc and leaves the path as it was.
/// Threads: a plain value. Normalising uses the process's table of fixed-up paths, if the application made one, and
///          then belongs to the thread of the main loop.
class MORTISE_API cPath
{
public:
  typedef tPathHash tHash;

  /// The working directory of the system's file system, normalised; `pCache` as for fixup(). Raises what that file
  /// system raises.
  explicit cPath(tHash* pCache = nullptr);
  /// As set().
  explicit cPath(mucs::cString const& sPath, bool doFixup = true, tHash* pCache = nullptr);

  /// Makes this the path `sPath`, with the drive letter that it begins with: each backslash becomes `/`, an empty text
  /// "./", and a missing `/` is put at the end. With `doFixup` the text is normalised, see fixup().
  void set(mucs::cString const& sPath, bool doFixup = true, tHash* pCache = nullptr);
  /// Normalises the text as fixupPath() does. The drive letter goes if the path climbs above its own start. The result
  /// is stored in `pCache` too, unless that is null.
  void fixup(tHash* pCache = nullptr);

  /// Whether there is neither a drive letter nor a `/` at the start.
  bool isRelative() const;
  bool isAbsolute() const { return !isRelative(); }
  char driveLetter() const { return mDriveLetter; } ///< In upper case; 0 for none.

  /// The text, without the drive letter. Valid until the path is changed.
  mucs::cString const& unixEquivalent() const { return msPath; }
  /// The text, behind drive letter and `:` if there is a drive letter.
  mucs::cString path() const;
  /// path() with the delimiter of the operating system instead of each `/`.
  mucs::cString osPath() const;
  /// path() up to and including its `/` number `index`, counted from 0; empty if it has fewer. The parts of `/a/b/` are
  /// `/`, `/a/` and `/a/b/`.
  mucs::cString getParts(unsigned int index) const;
  /// Component number `index` of path(), counted from 0, without slashes; empty if there are fewer. The components of
  /// `/a//b/` are `a` and `b`, a drive letter with its colon is a component.
  mucs::cString getPart(unsigned int index) const;

  /// Goes to `sPath`. A relative one is put behind the text as it is, with a `/` behind it unless it ends in `/` or
  /// `\`, and nothing is normalised; an empty one changes nothing. An absolute one is set and normalised.
  void cd(mucs::cString const& sPath);
  /// As cd() to the other's path().
  void cd(cPath const& rPath);

  /// The file `sFile` as seen from this directory: the normalised absolute path of its directory, followed by its name.
  /// A file whose own path is absolute comes back unchanged. If this path is relative, it counts from the working
  /// directory of the system's file system, and what that raises comes through.
  mucs::cString relativeTo(mucs::cString const& sFile) const;
  /// Puts `rBase` in front of a relative path and normalises; the drive letter is that of `rBase`, unless the outcome
  /// climbs above its own start. An absolute path stays. `pCache` as for fixup(). Returns this path.
  cPath& makeAbsolute(cPath const& rBase, tHash* pCache = nullptr);
  /// Makes the text the way from `rBase` to this path. The components, which both `/` and `\` divide, are compared as
  /// they stand; a "." in `rBase` needs no climb. The drive letters are neither compared nor changed. Unless both are
  /// absolute nothing happens.
  void makeRelative(cPath const& rBase);

  /// Makes this directory in `*pFs`, or in the system's file system if that is null. Raises what that raises.
  void mkdir(cFs* pFs = nullptr) const;
  /// Whether something exists at this path in `*pFs`, or in the system's file system if that is null. Symbolic links
  /// are followed.
  bool exists(cFs* pFs = nullptr) const;

  void swap(cPath& rOther) noexcept;

  /// Whether both have the same drive letter and the same normal form.
  bool operator==(cPath const& rOther) const;
  bool operator!=(cPath const& rOther) const { return !(*this == rOther); }

private:
  mucs::cString msPath;
  char mDriveLetter;
};

inline void swap(cPath& rLeft, cPath& rRight) noexcept
{
  rLeft.swap(rRight);
}

} // namespace mio

#endif
