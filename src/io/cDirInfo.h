#ifndef MORTISE_IO_CDIRINFO_H
#define MORTISE_IO_CDIRINFO_H

#include "io/cFs.h"
#include "pi/piTypes.h"
#include "ucs/cString.h"

namespace mio
{

/// Entry of a directory: its path, and the file system where that counts.
///
/// Threads: a plain value.
class MORTISE_API cDirInfo
{
public:
  /// Marks a path as one that leads through several file systems stacked on each other.
  enum StackedFsPath
  {
    Stacked
  };

  /// No path, on the system's file system.
  cDirInfo();
  /// `path` on the system's file system.
  cDirInfo(mucs::cString const& path);
  cDirInfo(mucs::cString const& path, StackedFsPath);
  cDirInfo(cFs const& fs, mucs::cString const& path);

  void swap(cDirInfo& other) noexcept;

  cFs const& fs() const { return mFs; }
  mucs::cString const& fullPath() const { return mPath; }
  bool isStackedPath() const { return mStacked; }
  operator mucs::cString const&() const { return mPath; }

  /// Whether path and mark are the same; the file systems are not compared.
  bool operator==(cDirInfo const& other) const;
  bool operator!=(cDirInfo const& other) const { return !(*this == other); }

  /// Puts `text` behind the path as it is, without a separator.
  void appendPath(char const* text);
  void appendPath(mucs::cString const& text);
  /// Makes the path empty and takes the mark away; the file system stays.
  void clear();

private:
  cFs mFs;
  mucs::cString mPath;
  bool mStacked;
};

} // namespace mio

#endif
