#ifndef MORTISE_IO_CPROXYFS_H
#define MORTISE_IO_CPROXYFS_H

#include "io/cAbstractFsImpl.h"
#include "pi/piTypes.h"
#include "std/tList.h"
#include "std/tSharedObject.h"

namespace mio
{

/// A file system without files of its own: a table of other implementations. Each operation goes to the first one that
/// takes the path, in the order of binding, and if none does, to the native one. So a part of the path space is mounted
/// on something else; what part that is, each implementation decides in its matches().
///
/// Errors: cBugException if nobody is there for a path. cRuntimeException for a rename or a link from one
///         implementation to another.
class MORTISE_API cProxyFs : public cAbstractFsImpl
{
public:
  explicit cProxyFs(cFs& fs);
  /// With a native implementation that handles may share.
  cProxyFs(cFs& fs, mstd::tSharedObject<cAbstractFsImpl> const& pNativeFs);
  ~cProxyFs() override;

  bool exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
              cFileInfoFlags::TimeStamp stamp) const override;
  void remove(mucs::cString const& path) override;
  cPath cwd() const override;
  void mkdir(mucs::cString const& path) override;
  void rename(mucs::cString const& from, mucs::cString const& to) override;
  bool supportsSymLinks() const override;
  void createSymLink(mucs::cString const& target, mucs::cString const& link) override;
  void setPermissions(mucs::cString const& path, cPermissions const& permissions, bool followLinks) override;
  mstd::tAutoPtr<cAbstractDirImpl> createDirImpl(cFs const& fs, mucs::cString const& path, int flags) const override;
  mstd::tAutoPtr<cAbstractFileInfoImpl> createFileInfoImpl(cFs const& fs, mucs::cString const& path) const override;
  mstd::tAutoPtr<cAbstractFileImpl> createFileImpl(cFs& fs, cAbstractIOBlockDevice& device,
                                                   mucs::cString const& path) const override;
  /// The first implementation that says of itself that it is native serves where no other takes a path. Any other goes
  /// to the end of the table, and so in front of the native one.
  void bind(mstd::tAutoPtr<cAbstractFsImpl> pImpl) override;
  /// Takes all implementations that take `path` out of the table, and with the empty path, if there is none such, the
  /// native one. One that is in use raises cRuntimeException, and all stay; those found before it go with the next
  /// successful call.
  void unbind(mucs::cString const& path) override;

  /// The native implementation. Raises cBugException if there is none.
  cAbstractFsImpl& nativeFs() const;

private:
  typedef mstd::tList<mstd::tSharedObject<cAbstractFsImpl>> cDelegates;

  cAbstractFsImpl* findDelegate(mucs::cString& path, Operation operation);
  cAbstractFsImpl const* findDelegate(mucs::cString& path, Operation operation) const;
  cAbstractFsImpl& delegate(mucs::cString& path, Operation operation);
  cAbstractFsImpl const& delegate(mucs::cString& path, Operation operation) const;
  cAbstractFsImpl& commonDelegate(mucs::cString& from, mucs::cString& to);

  cDelegates mDelegates;
  mstd::tSharedObject<cAbstractFsImpl> mNativeFs;
};

} // namespace mio

#endif
