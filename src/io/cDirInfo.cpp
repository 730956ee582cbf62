#include "io/cDirInfo.h"

#include "pi/cSystem.h"

#include <utility>

namespace mio
{

cDirInfo::cDirInfo() : mFs(mpi::system().fs), mStacked(false) {}

cDirInfo::cDirInfo(mucs::cString const& path) : mFs(mpi::system().fs), mPath(path), mStacked(false) {}

cDirInfo::cDirInfo(mucs::cString const& path, StackedFsPath) : mFs(mpi::system().fs), mPath(path), mStacked(true) {}

cDirInfo::cDirInfo(cFs const& fs, mucs::cString const& path) : mFs(fs), mPath(path), mStacked(false) {}

void cDirInfo::swap(cDirInfo& other) noexcept
{
  mFs.swap(other.mFs);
  mPath.swap(other.mPath);
  std::swap(mStacked, other.mStacked);
}

bool cDirInfo::operator==(cDirInfo const& other) const
{
  return mStacked == other.mStacked && mPath == other.mPath;
}

void cDirInfo::appendPath(char const* text)
{
  mPath += mucs::cString(text);
}

void cDirInfo::appendPath(mucs::cString const& text)
{
  mPath += text;
}

void cDirInfo::clear()
{
  mPath.clear();
  mStacked = false;
}

} // namespace mio
