#ifndef MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXFSIMPL_H
#define MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXFSIMPL_H

#include "io/cAbstractFsImpl.h"

namespace mpi
{

/// The file system of Linux. Paths go to it in the encoding of the cFs and may be longer than a system call takes.
///
/// Errors: mstd::cOSErrorException with the name of the system call, its error number and the path; of two paths the
///         one that exists for rename(), and the link for createSymLink().
class cLinuxFsImpl : public mio::cAbstractFsImpl
{
public:
  explicit cLinuxFsImpl(mio::cFs& fs);
  ~cLinuxFsImpl() override;

  /// Time stamps to the second.
  bool exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
              mio::cFileInfoFlags::TimeStamp stamp) const override;
  /// Nothing happens for what can't be looked at, most of all for what isn't there. The operation of a failure is
  /// "unlink", also for directories.
  void remove(mucs::cString const& path) override;
  mio::cPath cwd() const override;
  void mkdir(mucs::cString const& path) override;
  void rename(mucs::cString const& from, mucs::cString const& to) override;
  bool supportsSymLinks() const override;
  void createSymLink(mucs::cString const& target, mucs::cString const& link) override;
  /// Links are always followed: they have no permissions of their own. The archive and hidden bits mean nothing.
  void setPermissions(mucs::cString const& path, mio::cPermissions const& permissions, bool followLinks) override;
  mstd::tAutoPtr<mio::cAbstractDirImpl> createDirImpl(mio::cFs const& fs, mucs::cString const& path,
                                                      int flags) const override;
  mstd::tAutoPtr<mio::cAbstractFileInfoImpl> createFileInfoImpl(mio::cFs const& fs,
                                                                mucs::cString const& path) const override;
  mstd::tAutoPtr<mio::cAbstractFileImpl> createFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device,
                                                        mucs::cString const& path) const override;
};

} // namespace mpi

#endif
