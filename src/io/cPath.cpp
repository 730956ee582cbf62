#include "io/cPath.h"

#include "io/cFs.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"

#include <string.h>
#include <utility>

namespace
{

// Built before, and so destroyed behind, the holders of the root, whose members may still work on paths when they go.
mucs::cString const here __attribute__((init_priority(201))) ("./");
mucs::cString const parent __attribute__((init_priority(202))) ("../");

unsigned int const Slash = '/';
unsigned int const Backslash = '\\';

void append(mucs::cString& sTarget, mucs::cString const& sText)
{
  sTarget.append(sText.data(true), sText.length());
}

/// Walks over the components of a path.
class cComponents
{
public:
  explicit cComponents(mucs::cString const& sPath)
      : mpText(sPath.data(true)), miLength(sPath.length()), miStart(0), miEnd(0)
  {
    next();
  }

  bool isEnd() const { return miStart == miLength; }

  void next()
  {
    miStart = miEnd;
    while (miStart != miLength && isSeparator(mpText[miStart]))
    {
      ++miStart;
    }
    miEnd = miStart;
    while (miEnd != miLength && !isSeparator(mpText[miEnd]))
    {
      ++miEnd;
    }
  }

  unsigned int length() const { return miEnd - miStart; }
  unsigned int const* data() const { return mpText + miStart; }

  bool isDot() const { return length() == 1 && *data() == '.'; }
  bool operator==(cComponents const& rOther) const
  {
    return length() == rOther.length() && memcmp(data(), rOther.data(), length() * sizeof(unsigned int)) == 0;
  }

private:
  static bool isSeparator(unsigned int c) { return c == Slash || c == Backslash; }

  unsigned int const* mpText;
  unsigned int miLength;
  unsigned int miStart; // of the component
  unsigned int miEnd;
};

} // namespace

namespace mio
{

cPath::cPath(tHash* pCache) : cPath(mpi::system().fs.cwd())
{
  fixup(pCache);
}

cPath::cPath(mucs::cString const& sPath, bool doFixup, tHash* pCache)
    : mDriveLetter(setPath(sPath, msPath, doFixup, pCache))
{
}

void cPath::set(mucs::cString const& sPath, bool doFixup, tHash* pCache)
{
  mDriveLetter = setPath(sPath, msPath, doFixup, pCache);
}

void cPath::fixup(tHash* pCache)
{
  bool isEscaped = false;
  fixupPath(msPath, isEscaped, pCache);
  if (isEscaped)
  {
    mDriveLetter = 0;
  }
}

bool cPath::isRelative() const
{
  return mDriveLetter == 0 && mio::isRelative(msPath);
}

mucs::cString cPath::path() const
{
  if (mDriveLetter == 0)
  {
    return msPath;
  }
  char const prefix[] = {mDriveLetter, ':', 0};
  mucs::cString result(prefix);
  append(result, msPath);
  return result;
}

mucs::cString cPath::osPath() const
{
  mucs::cString result(path());
  result.replace(Slash, static_cast<unsigned char>(mpi::cPlatform::osSpecificPathDelimiter()));
  return result;
}

mucs::cString cPath::getParts(unsigned int index) const
{
  mucs::cString result(path());
  unsigned int const* const pText = result.data(true);
  for (unsigned int i = 0; i < result.length(); ++i)
  {
    if (pText[i] == Slash && index-- == 0)
    {
      result.truncate(i + 1);
      return result;
    }
  }
  return mucs::cString();
}

mucs::cString cPath::getPart(unsigned int index) const
{
  mucs::cString const text(path());
  mucs::cString result;
  unsigned int const* const pText = text.data(true);
  unsigned int iStart = 0;
  for (unsigned int i = 0; i < text.length(); ++i)
  {
    if (pText[i] != Slash)
    {
      continue;
    }
    if (i != iStart && index-- == 0)
    {
      result.append(pText + iStart, i - iStart);
      return result;
    }
    iStart = i + 1;
  }
  if (index == 0)
  {
    result.append(pText + iStart, text.length() - iStart);
  }
  return result;
}

void cPath::cd(mucs::cString const& sPath)
{
  if (sPath.empty())
  {
    return;
  }
  if (!mio::isRelative(sPath))
  {
    set(sPath, true, nullptr);
    return;
  }
  mucs::cString text(msPath);
  append(text, sPath);
  unsigned int const iLast = text[text.length() - 1];
  if (iLast != Slash && iLast != Backslash)
  {
    text.append(Slash);
  }
  msPath.swap(text);
}

void cPath::cd(cPath const& rPath)
{
  cd(rPath.path());
}

mucs::cString cPath::relativeTo(mucs::cString const& sFile) const
{
  mucs::cString directory;
  storePathComponent(sFile, directory);
  if (!mio::isRelative(directory))
  {
    return sFile;
  }
  cPath place(*this);
  place.cd(directory);
  place.fixup(nullptr);
  if (place.isRelative())
  {
    place.makeAbsolute(cPath(), nullptr);
  }
  mucs::cString result(place.path());
  unsigned int const iName = pathComponentLength(sFile);
  result.append(sFile.data(true) + iName, sFile.length() - iName);
  return result;
}

cPath& cPath::makeAbsolute(cPath const& rBase, tHash* pCache)
{
  if (isAbsolute())
  {
    return *this;
  }
  cPath result(rBase);
  append(result.msPath, msPath);
  result.fixup(pCache);
  swap(result);
  return *this;
}

void cPath::makeRelative(cPath const& rBase)
{
  if (isRelative() || rBase.isRelative())
  {
    return;
  }
  cComponents own(msPath);
  cComponents base(rBase.msPath);
  while (!own.isEnd() && !base.isEnd() && own == base)
  {
    own.next();
    base.next();
  }
  mucs::cString result;
  for (; !base.isEnd(); base.next())
  {
    if (!base.isDot())
    {
      append(result, parent);
    }
  }
  for (; !own.isEnd(); own.next())
  {
    result.append(own.data(), own.length());
    result.append(Slash);
  }
  if (result.empty())
  {
    append(result, here);
  }
  msPath.swap(result);
}

void cPath::mkdir(cFs* pFs) const
{
  cFs& fs = pFs != nullptr ? *pFs : mpi::system().fs;
  fs.mkdir(path());
}

bool cPath::exists(cFs* pFs) const
{
  cFs const& fs = pFs != nullptr ? *pFs : mpi::system().fs;
  return fs.exists(path(), true, nullptr, cFileInfoFlags::LastModification);
}

void cPath::swap(cPath& rOther) noexcept
{
  msPath.swap(rOther.msPath);
  std::swap(mDriveLetter, rOther.mDriveLetter);
}

bool cPath::operator==(cPath const& rOther) const
{
  if (mDriveLetter != rOther.mDriveLetter)
  {
    return false;
  }
  mucs::cString left(msPath);
  mucs::cString right(rOther.msPath);
  bool isEscaped = false;
  fixupPath(left, isEscaped, nullptr);
  fixupPath(right, isEscaped, nullptr);
  return left == right;
}

} // namespace mio
