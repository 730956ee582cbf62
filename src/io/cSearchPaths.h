#ifndef MORTISE_IO_CSEARCHPATHS_H
#define MORTISE_IO_CSEARCHPATHS_H

#include "pi/piTypes.h"
#include "std/tPtrVector.h"
#include "ucs/cString.h"

namespace mio
{

class cFs;

/// Ordered list of directories in which a name is looked for.
///
/// Directories are kept as the texts that they were added as: `/a` and `/a/` are two entries.
///
/// Ownership: owns copies of the texts. The file system must outlive the list.
/// Errors:    looking for something raises what the file system raises. An operation that fails leaves the list as it
///            was.
/// Threads:   a plain value without a lock.
class MORTISE_API cSearchPaths
{
public:
  /// What a name must lead to; symbolic links are followed.
  enum Type : int
  {
    TypeFile = 0,
    TypeDirectory = 1,
    TypeAny = 2 ///< whatever exists
  };

  /// Empty list on the system's file system.
  cSearchPaths();
  /// Empty list on `rFs`.
  explicit cSearchPaths(cFs const& rFs);
  cSearchPaths(cSearchPaths const& rOther); ///< On the same file system.
  ~cSearchPaths();

  cSearchPaths& operator=(cSearchPaths const& rOther); ///< Takes the other's file system, too.
  void swap(cSearchPaths& rOther) noexcept;            ///< Exchanges lists and file systems.

  /// Removes all directories.
  void clear();
  unsigned int size() const;
  /// Directory number `index` in the order of adding. Out of bounds: cOutOfRangeException. Valid until the list is
  /// changed.
  mucs::cString const& operator[](unsigned int index) const;

  /// Whether `sPath` exists and is what `type` asks for; false for a type that is none of the above.
  bool exists(mucs::cString const& sPath, Type type) const;
  /// Looks for `sName` in each directory in turn. The first place where exists() holds goes to `sResult` and the result
  /// is true; `sResult` is empty and the result false if there is none.
  bool tryFindFile(mucs::cString const& sName, mucs::cString& sResult, Type type) const;
  /// As above: the place, or an empty text.
  mucs::cString tryFindFile(mucs::cString const& sName, Type type) const;

  /// Puts a directory at the end; false, and no change, if the same text is in the list.
  bool addPath(mucs::cString const& sPath);
  /// addPath() for each directory of the other list, in order.
  void add(cSearchPaths const& rOther);
  /// Removes the directory with this text, if it is in the list.
  void removePath(mucs::cString const& sPath);

private:
  typedef mstd::tPtrVector<mucs::cString> tPaths;

  bool has(mucs::cString const& sPath) const;

  cFs const* mpFs;
  tPaths mPaths;
};

inline void swap(cSearchPaths& rLeft, cSearchPaths& rRight) noexcept
{
  rLeft.swap(rRight);
}

} // namespace mio

#endif
