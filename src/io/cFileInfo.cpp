#include "io/cFileInfo.h"

#include "io/cAbstractFileInfoImpl.h"
#include "io/cDirInfo.h"
#include "pi/cSystem.h"
#include "ucs/cString.h"

#include <utility>

namespace mio
{

cFileInfo::cFileInfo(mucs::cString const& path) : cFileInfo(mpi::system().fs, path) {}

cFileInfo::cFileInfo(char const* path) : cFileInfo(mpi::system().fs, mucs::cString(path)) {}

cFileInfo::cFileInfo(cDirInfo const& entry) : cFileInfo(entry.fs(), entry.fullPath()) {}

cFileInfo::cFileInfo(cFs const& fs, mucs::cString const& path) : mFs(fs), mpImpl(mFs.createFileInfoImpl(path)) {}

cFileInfo::cFileInfo(cFileInfo const& other) : cFileInfo(other.mFs, other.fullPath()) {}

cFileInfo::~cFileInfo() {}

cFileInfo& cFileInfo::operator=(cFileInfo const& other)
{
  cFileInfo copy(other);
  swap(copy);
  return *this;
}

void cFileInfo::swap(cFileInfo& other) noexcept
{
  mFs.swap(other.mFs);
  std::swap(mpImpl, other.mpImpl);
}

mucs::cString cFileInfo::fullPath() const
{
  return mpImpl->filePath();
}

bool cFileInfo::exists(bool followLinks, mstd::cDateTime* pDateTime, cFileInfoFlags::TimeStamp stamp) const
{
  return mFs.exists(fullPath(), followLinks, pDateTime, stamp);
}

cFileInfoFlags::Type cFileInfo::type(bool followLinks) const
{
  return mpImpl->type(followLinks);
}

bool cFileInfo::isDir(bool followLinks) const
{
  return type(followLinks) == cFileInfoFlags::Directory;
}

bool cFileInfo::isFile(bool followLinks) const
{
  return type(followLinks) == cFileInfoFlags::File;
}

bool cFileInfo::isSymLink() const
{
  return type(false) == cFileInfoFlags::SymLink;
}

bool cFileInfo::isDeadSymLink() const
{
  return exists(false) && !exists(true);
}

bool cFileInfo::isHidden() const
{
  return (permissions(true).permissions() & cPermissions::Hidden) != 0;
}

unsigned long long cFileInfo::size(bool followLinks) const
{
  return mpImpl->size(followLinks);
}

mstd::cDateTime cFileInfo::timeStamp(cFileInfoFlags::TimeStamp stamp, bool followLinks) const
{
  return mpImpl->timeStamp(stamp, followLinks);
}

cPermissions cFileInfo::permissions(bool followLinks) const
{
  return mpImpl->readPermissions(followLinks);
}

mucs::cString cFileInfo::readLink() const
{
  return mpImpl->readLink();
}

} // namespace mio
