#include "io/cSearchPaths.h"

#include "io/cFileInfo.h"
#include "io/cFs.h"
#include "pi/cSystem.h"

#include <utility>

namespace mio
{

cSearchPaths::cSearchPaths() : cSearchPaths(mpi::system().fs) {}

cSearchPaths::cSearchPaths(cFs const& rFs) : mpFs(&rFs), mPaths(mstd::tAutoPtrType::Object) {}

cSearchPaths::cSearchPaths(cSearchPaths const& rOther) : cSearchPaths(*rOther.mpFs)
{
  for (unsigned int i = 0; i < rOther.size(); ++i)
  {
    mPaths.append(mstd::tAutoPtr<mucs::cString>(new mucs::cString(rOther[i])));
  }
}

cSearchPaths::~cSearchPaths() = default;

cSearchPaths& cSearchPaths::operator=(cSearchPaths const& rOther)
{
  cSearchPaths copy(rOther);
  swap(copy);
  return *this;
}

void cSearchPaths::swap(cSearchPaths& rOther) noexcept
{
  std::swap(mpFs, rOther.mpFs);
  mPaths.swap(rOther.mPaths);
}

void cSearchPaths::clear()
{
  mPaths.clear();
}

unsigned int cSearchPaths::size() const
{
  return mPaths.length();
}

mucs::cString const& cSearchPaths::operator[](unsigned int index) const
{
  return *mPaths.at(index);
}

bool cSearchPaths::exists(mucs::cString const& sPath, Type type) const
{
  cFileInfo const info(mpFs->fileInfo(sPath));
  if (!info.exists(true, nullptr, cFileInfoFlags::LastModification))
  {
    return false;
  }
  switch (type)
  {
  case TypeFile:
    return info.isFile(true);
  case TypeDirectory:
    return info.isDir(true);
  case TypeAny:
    return true;
  }
  return false;
}

bool cSearchPaths::tryFindFile(mucs::cString const& sName, mucs::cString& sResult, Type type) const
{
  mucs::cString found;
  for (unsigned int i = 0; i < size(); ++i)
  {
    mucs::cString candidate((*this)[i]);
    cFileInfo::setFileName(candidate, sName, true);
    if (exists(candidate, type))
    {
      sResult.swap(candidate);
      return true;
    }
  }
  sResult.swap(found);
  return false;
}

mucs::cString cSearchPaths::tryFindFile(mucs::cString const& sName, Type type) const
{
  mucs::cString result;
  tryFindFile(sName, result, type);
  return result;
}

bool cSearchPaths::addPath(mucs::cString const& sPath)
{
  if (has(sPath))
  {
    return false;
  }
  mPaths.append(mstd::tAutoPtr<mucs::cString>(new mucs::cString(sPath)));
  return true;
}

void cSearchPaths::add(cSearchPaths const& rOther)
{
  cSearchPaths both(*this);
  for (unsigned int i = 0; i < rOther.size(); ++i)
  {
    both.addPath(rOther[i]);
  }
  swap(both);
}

void cSearchPaths::removePath(mucs::cString const& sPath)
{
  mucs::cString const path(sPath); // NOLINT(performance-unnecessary-copy-initialization): it may be an entry
  for (unsigned int i = size(); i-- != 0;)
  {
    if ((*this)[i] == path)
    {
      mPaths.erase(i);
    }
  }
}

bool cSearchPaths::has(mucs::cString const& sPath) const
{
  for (unsigned int i = 0; i < size(); ++i)
  {
    if ((*this)[i] == sPath)
    {
      return true;
    }
  }
  return false;
}

} // namespace mio
