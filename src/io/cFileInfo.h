#ifndef MORTISE_IO_CFILEINFO_H
#define MORTISE_IO_CFILEINFO_H

#include "io/cFs.h"
#include "io/cPermissions.h"
#include "io/ioTypes.h"
#include "pi/piTypes.h"
#include "std/cDateTime.h"
#include "std/tAutoPtr.h"

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{

class cAbstractFileInfoImpl;
class cDirInfo;
class cPath;

/// What a file system knows about a path, and the operations on the name in it.
///
/// Nothing is kept: each query asks the file system anew. `followLinks` says whether a symbolic link stands for what it
/// leads to.
///
/// Errors:  every query but exists() and isDeadSymLink() raises what the file system raises for a path where nothing
///          is.
/// Threads: one object belongs to one thread.
class MORTISE_API cFileInfo
{
public:
  /// A path on the system's file system.
  cFileInfo(mucs::cString const& path);
  cFileInfo(char const* path);
  /// An entry of a directory, on its file system.
  cFileInfo(cDirInfo const& entry);
  cFileInfo(cFs const& fs, mucs::cString const& path);
  cFileInfo(cFileInfo const& other);
  ~cFileInfo();
  cFileInfo& operator=(cFileInfo const& other);
  void swap(cFileInfo& other) noexcept;

  cFs const& fs() const { return mFs; }
  mucs::cString fullPath() const;

  /// Whether something stands there. With `pDateTime` and if it does, the time that `stamp` selects goes there.
  bool exists(bool followLinks = true, mstd::cDateTime* pDateTime = nullptr,
              cFileInfoFlags::TimeStamp stamp = cFileInfoFlags::LastModification) const;
  cFileInfoFlags::Type type(bool followLinks = true) const;
  bool isDir(bool followLinks = true) const;
  bool isFile(bool followLinks = true) const;
  bool isSymLink() const;
  /// True for a link that leads nowhere; false if nothing stands there.
  bool isDeadSymLink() const;
  /// As the permissions say, with links followed.
  bool isHidden() const;
  /// In bytes.
  unsigned long long size(bool followLinks = true) const;
  mstd::cDateTime timeStamp(cFileInfoFlags::TimeStamp stamp = cFileInfoFlags::LastModification,
                            bool followLinks = true) const;
  cPermissions permissions(bool followLinks = true) const;
  /// Where a symbolic link leads; empty for anything else.
  mucs::cString readLink() const;

  /// \name The parts of the path
  /// A name begins behind the last separator.
  /// @{
  /// From the first dot of the name, with the dot; empty if there is none.
  mucs::cString fileExtension() const;
  /// The name up to its first dot.
  mucs::cString fileBaseName() const;
  /// Base name and extension.
  mucs::cString fileName() const;
  /// What stands in front of the name, with a separator at its end; empty if there is nothing.
  mucs::cString pathComponent() const;
  /// pathComponent(), normalised.
  cPath toPath() const;
  /// @}

  /// \name Changing a path in place
  /// @{
  /// Puts `name` behind the directory of `path`, or, with `keepPath`, behind all of it.
  static void setFileName(mucs::cString& path, mucs::cString const& name, bool keepPath);
  /// Puts the name of `path` behind `newDir`.
  static void setFilePath(mucs::cString& path, mucs::cString const& newDir);
  /// Replaces all from the first dot of the name on by `extension`, which brings its own dot.
  static void setFileNameExtension(mucs::cString& path, mucs::cString const& extension);
  /// Puts `suffix` in front of the first dot of the name, unless it stands there.
  static void setFileNameSuffix(mucs::cString& path, mucs::cString const& suffix);
  /// Puts `prefix` in front of the name, unless it stands there.
  static void setFileNamePrefix(mucs::cString& path, mucs::cString const& prefix);
  /// @}

private:
  cFs mFs;
  mstd::tAutoPtr<cAbstractFileInfoImpl> mpImpl;
};

} // namespace mio

#endif
