#ifndef MORTISE_IO_CABSTRACTFSIMPL_H
#define MORTISE_IO_CABSTRACTFSIMPL_H

#include "io/cFs.h"
#include "io/ioTypes.h"
#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mio
{

/// What stands behind a cFs. The platform has one; an application derives its own to mount something into the path
/// space, see cProxyFs.
///
/// Errors: whatever an implementation can't do, it raises.
class MORTISE_API cAbstractFsImpl
{
public:
  /// What a path is wanted for. The value 6 has no use.
  enum Operation
  {
    OpExists = 0,
    OpRemove = 1,
    OpCwd = 2, ///< With the empty path.
    OpMkdir = 3,
    OpRename = 4,           ///< Also for links; asked for both paths.
    OpSupportsSymLinks = 5, ///< With the empty path.
    OpSetPermissions = 7,
    OpCreateDir = 8,
    OpCreateFileInfo = 9,
    OpCreateFile = 10,
    OpBind = 11, ///< Whether this is a native implementation; with the empty path.
    OpUnbind = 12
  };

  /// An implementation for a handle.
  explicit cAbstractFsImpl(cFs& fs);
  cAbstractFsImpl(cAbstractFsImpl const&) = delete; // belongs to its handles
  cAbstractFsImpl& operator=(cAbstractFsImpl const&) = delete;
  virtual ~cAbstractFsImpl();

  virtual bool exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
                      cFileInfoFlags::TimeStamp stamp) const = 0;
  virtual void remove(mucs::cString const& path) = 0;
  virtual cPath cwd() const = 0;
  virtual void mkdir(mucs::cString const& path) = 0;
  virtual void rename(mucs::cString const& from, mucs::cString const& to) = 0;
  virtual bool supportsSymLinks() const = 0;
  virtual void createSymLink(mucs::cString const& target, mucs::cString const& link) = 0;
  virtual void setPermissions(mucs::cString const& path, cPermissions const& permissions, bool followLinks) = 0;
  virtual mstd::tAutoPtr<cAbstractDirImpl> createDirImpl(cFs const& fs, mucs::cString const& path, int flags) const = 0;
  virtual mstd::tAutoPtr<cAbstractFileInfoImpl> createFileInfoImpl(cFs const& fs, mucs::cString const& path) const = 0;
  virtual mstd::tAutoPtr<cAbstractFileImpl> createFileImpl(cFs& fs, cAbstractIOBlockDevice& device,
                                                           mucs::cString const& path) const = 0;
  /// Whether something of it is in use, so that it can't be unmounted. The base says yes: what shall go has to know.
  virtual bool isUsed() const;
  /// Whether it takes `path` for an operation; it may rewrite the path, which is then what it is called with. The base
  /// takes every path.
  virtual bool matches(mucs::cString& path, Operation operation);
  /// Mounts an implementation. The base raises cBugException.
  virtual void bind(mstd::tAutoPtr<cAbstractFsImpl> pImpl);
  /// Unmounts. The base raises cBugException.
  virtual void unbind(mucs::cString const& path);

  /// The handle that it was made for. When that is gone while others still hold the implementation, a handle in its
  /// place that has its encoder and nothing else.
  cFs& fs() const { return *mpFs; }

private:
  friend class cFs;

  void leave() noexcept;
  void join(cFs& fs) noexcept;

  cFs* mpFs;
  cFs mStandIn;
  cAbstractFsImpl* mpNext; // in the list of the handle
  cAbstractFsImpl** mppLink;
};

} // namespace mio

#endif
