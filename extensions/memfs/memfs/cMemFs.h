#ifndef MORTISE_MEMFS_CMEMFS_H
#define MORTISE_MEMFS_CMEMFS_H

#include "io/cAbstractFsImpl.h"
#include "pi/piTypes.h"
#include "std/tSharedObject.h"
#include "ucs/cString.h"

namespace mmem
{

class cMemTree;

/// A file system in memory. Mounted on a directory it serves all paths below:
///
///   mpi::system().fs.installProxy();
///   mpi::system().fs.bind(mstd::tAutoPtr<mio::cAbstractFsImpl>(new mmem::cMemFs(mpi::system().fs, "/mem/")));
///
/// Mounted on "/" it serves every path, relative ones too, which then begin at the root; it has a working directory,
/// "/", and can be the native file system of a proxy or stand behind a handle alone, see mio::cFs::setImpl(). Mounted
/// elsewhere it takes absolute paths only.
///
/// It knows files, directories, symbolic links, times and permissions, of which those of the owner are obeyed. A link's
/// absolute target is a path as everybody uses it, mount point included; one that leads elsewhere leads nowhere. Names
/// are taken as they are and end at 255 code points; a file ends just before 4 GiB.
///
/// Ownership: the files die with the last handle on the file system and the last open file.
/// Errors:    mstd::cOSErrorException with the same operations and error numbers as the platform's file system. Without
///            room that is ENOSPC: a write does what still fits, and fails when nothing does; everything else fails
///            as a whole.
/// Threads:   no lock: one thread, as all of mio.
class MORTISE_API cMemFs : public mio::cAbstractFsImpl
{
public:
  /// No limit.
  static constexpr unsigned long long unlimited = ~0ull;
  /// What each file, directory and link takes of the capacity beside its content.
  static constexpr unsigned int nodeCost = 256;

  /// An empty root directory at `mountPoint`, an absolute path. `capacity` is in bytes.
  explicit cMemFs(mio::cFs& fs, mucs::cString const& mountPoint = "/", unsigned long long capacity = unlimited);
  ~cMemFs() override;

  /// Ends in a slash.
  mucs::cString const& mountPoint() const;
  unsigned long long capacity() const;
  /// A smaller one than used() only keeps more from being added.
  void setCapacity(unsigned long long capacity);
  unsigned long long used() const;

  bool exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
              mio::cFileInfoFlags::TimeStamp stamp) const override;
  void remove(mucs::cString const& path) override;
  /// The mount point.
  mio::cPath cwd() const override;
  void mkdir(mucs::cString const& path) override;
  void rename(mucs::cString const& from, mucs::cString const& to) override;
  bool supportsSymLinks() const override;
  void createSymLink(mucs::cString const& target, mucs::cString const& link) override;
  void setPermissions(mucs::cString const& path, mio::cPermissions const& permissions, bool followLinks) override;
  mstd::tAutoPtr<mio::cAbstractDirImpl> createDirImpl(mio::cFs const& fs, mucs::cString const& path,
                                                      int flags) const override;
  mstd::tAutoPtr<mio::cAbstractFileInfoImpl> createFileInfoImpl(mio::cFs const& fs,
                                                                mucs::cString const& path) const override;
  mstd::tAutoPtr<mio::cAbstractFileImpl> createFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device,
                                                        mucs::cString const& path) const override;
  /// Whether a file is open or a directory is being listed.
  bool isUsed() const override;
  /// Paths at and below the mount point, which are left as they are; unmounting takes the mount point only.
  bool matches(mucs::cString& path, Operation operation) override;

private:
  mstd::tSharedObject<cMemTree> mpTree;
};

} // namespace mmem

#endif
