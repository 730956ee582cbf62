#include "io/cDir.h"

#include "io/cAbstractDirImpl.h"
#include "io/cDirInfo.h"
#include "io/cFs.h"
#include "pi/cSystem.h"
#include "std/cSTDExceptions.h"
#include "ucs/cString.h"

#include <utility>

namespace mio
{

cDir::cDir(mucs::cString const& path, int flags) : cDir(mpi::system().fs, path, flags) {}

cDir::cDir(char const* path, int flags) : cDir(mpi::system().fs, mucs::cString(path), flags) {}

cDir::cDir(cFs const& fs, mucs::cString const& path, int flags) : mpImpl(fs.createDirectoryImpl(path, flags)) {}

cDir::cDir(cDir const& other) : mstd::tConstListRefNode(other), mpImpl(other.impl().createCopy()) {}

cDir::~cDir() {}

cDir& cDir::operator=(cDir const& other)
{
  cDir copy(other);
  swap(copy);
  return *this;
}

void cDir::swap(cDir& other) noexcept
{
  std::swap(mpImpl, other.mpImpl);
}

void cDir::setNext()
{
  impl().setNext();
}

cDirInfo cDir::element() const
{
  return impl().element();
}

bool cDir::isEnd() const
{
  return impl().isEnd();
}

bool cDir::operator==(cDir const& other) const
{
  return isEnd() || other.isEnd() ? isEnd() == other.isEnd() : element() == other.element();
}

mstd::tConstListRef<cDir> cDir::list() const
{
  return mstd::tConstListRef<cDir>(*this);
}

// A file system may fail to give a listing.
cAbstractDirImpl& cDir::impl() const
{
  if (!(mpImpl.get() != 0))
  {
    cSTDExceptions::throwAssertionFailed("mpImpl.get() != 0", "io/cDir", __LINE__);
  }
  return *mpImpl;
}

} // namespace mio
