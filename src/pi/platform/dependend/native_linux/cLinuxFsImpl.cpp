#include "pi/platform/dependend/native_linux/cLinuxFsImpl.h"

#include "io/cPath.h"
#include "io/cPermissions.h"
#include "pi/cPIExceptions.h"
#include "pi/platform/dependend/native_linux/cLinuxDirImpl.h"
#include "pi/platform/dependend/native_linux/cLinuxExceptions.h"
#include "pi/platform/dependend/native_linux/cLinuxFileImpl.h"
#include "pi/platform/dependend/native_linux/cLinuxFileInfoImpl.h"
#include "pi/platform/dependend/native_linux/cLinuxPath.h"

#include <string.h>
#include <unistd.h>

namespace mpi
{

namespace
{

mode_t const newDirectoryMode = 0777;
size_t const cwdSize = 0x7FFF;

} // namespace

cLinuxFsImpl::cLinuxFsImpl(mio::cFs& fs) : mio::cAbstractFsImpl(fs) {}

cLinuxFsImpl::~cLinuxFsImpl() = default;

bool cLinuxFsImpl::exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
                          mio::cFileInfoFlags::TimeStamp stamp) const
{
  struct stat info;
  if (cLinuxPath(path, fs().endec()).stat(info, followLinks) != 0)
  {
    return false;
  }
  if (pDateTime != 0)
  {
    createLinuxTSFromStat(info, *pDateTime, stamp);
  }
  return true;
}

void cLinuxFsImpl::remove(mucs::cString const& path)
{
  if (cLinuxPath(path, fs().endec()).remove() != 0)
  {
    cLinuxExceptions::throwOSError("unlink", path);
  }
}

mio::cPath cLinuxFsImpl::cwd() const
{
  char bytes[cwdSize];
  if (getcwd(bytes, sizeof(bytes)) == 0)
  {
    cPIExceptions::throwUnableGetCWD();
  }
  mucs::cString path;
  appendDecoded(bytes, static_cast<unsigned int>(strlen(bytes)), fs().endec(), path);
  return mio::cPath(path, false); // normalising would take the dot off a name that ends in one
}

void cLinuxFsImpl::mkdir(mucs::cString const& path)
{
  if (cLinuxPath(path, fs().endec()).mkdir(newDirectoryMode) != 0)
  {
    cLinuxExceptions::throwOSError("mkdir", path);
  }
}

void cLinuxFsImpl::rename(mucs::cString const& from, mucs::cString const& to)
{
  if (cLinuxPath(from, fs().endec()).rename(cLinuxPath(to, fs().endec())) != 0)
  {
    cLinuxExceptions::throwOSError("rename", from);
  }
}

bool cLinuxFsImpl::supportsSymLinks() const
{
  return true;
}

void cLinuxFsImpl::createSymLink(mucs::cString const& target, mucs::cString const& link)
{
  if (cLinuxPath(link, fs().endec()).symlink(cLinuxPath(target, fs().endec())) != 0)
  {
    cLinuxExceptions::throwOSError("symlink", link);
  }
}

void cLinuxFsImpl::setPermissions(mucs::cString const& path, mio::cPermissions const& permissions, bool)
{
  if (cLinuxPath(path, fs().endec()).chmod(linuxModeOf(permissions)) != 0)
  {
    cLinuxExceptions::throwOSError("chmod", path);
  }
}

mstd::tAutoPtr<mio::cAbstractDirImpl> cLinuxFsImpl::createDirImpl(mio::cFs const& fs, mucs::cString const& path,
                                                                  int flags) const
{
  return mstd::tAutoPtr<mio::cAbstractDirImpl>(new cLinuxDirImpl(fs, path, flags));
}

mstd::tAutoPtr<mio::cAbstractFileInfoImpl> cLinuxFsImpl::createFileInfoImpl(mio::cFs const& fs,
                                                                            mucs::cString const& path) const
{
  return mstd::tAutoPtr<mio::cAbstractFileInfoImpl>(new cLinuxFileInfoImpl(fs, path));
}

mstd::tAutoPtr<mio::cAbstractFileImpl> cLinuxFsImpl::createFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device,
                                                                    mucs::cString const& path) const
{
  return mstd::tAutoPtr<mio::cAbstractFileImpl>(new cLinuxFileImpl(fs, device, path));
}

} // namespace mpi
