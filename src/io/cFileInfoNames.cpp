/// The operations of cFileInfo on names, which look at no file.
#include "io/cFileInfo.h"
#include "io/cPath.h"
#include "io/pathFixup.h"

#include <string.h>

namespace
{

typedef mucs::cString cString;

/// Place of the first dot of the name, or the end.
unsigned int extensionStart(cString const& sPath)
{
  unsigned int const iLength = sPath.length();
  unsigned int i = mio::pathComponentLength(sPath);
  while (i != iLength && sPath[i] != '.')
  {
    ++i;
  }
  return i;
}

bool stands(cString const& sPath, unsigned int iPlace, cString const& sText)
{
  unsigned int const iLength = sText.length();
  return iLength == 0 || (iLength <= sPath.length() - iPlace &&
                          memcmp(sPath.data() + iPlace, sText.data(), iLength * sizeof(unsigned int)) == 0);
}

cString part(cString const& sPath, unsigned int iStart, unsigned int iEnd)
{
  cString result;
  result.append(sPath.data(true) + iStart, iEnd - iStart);
  return result;
}

void append(cString& sTarget, cString const& sText)
{
  sTarget.append(sText.data(true), sText.length());
}

void appendName(cString& sDirectory, cString const& sName)
{
  if (!sDirectory.empty())
  {
    unsigned int const iLast = sDirectory[sDirectory.length() - 1];
    if (iLast != '/' && iLast != '\\')
    {
      sDirectory.append('/');
    }
  }
  append(sDirectory, sName);
}

/// `sPath` with `sText` between what stands in front of and behind `iPlace`.
cString withInserted(cString const& sPath, unsigned int iPlace, cString const& sText)
{
  cString result(part(sPath, 0, iPlace));
  append(result, sText);
  result.append(sPath.data(true) + iPlace, sPath.length() - iPlace);
  return result;
}

} // namespace

namespace mio
{

mucs::cString cFileInfo::fileExtension() const
{
  mucs::cString const path(fullPath());
  return part(path, extensionStart(path), path.length());
}

mucs::cString cFileInfo::fileBaseName() const
{
  mucs::cString const path(fullPath());
  return part(path, pathComponentLength(path), extensionStart(path));
}

mucs::cString cFileInfo::fileName() const
{
  mucs::cString const path(fullPath());
  return part(path, pathComponentLength(path), path.length());
}

mucs::cString cFileInfo::pathComponent() const
{
  mucs::cString result;
  storePathComponent(fullPath(), result);
  return result;
}

cPath cFileInfo::toPath() const
{
  return cPath(pathComponent(), true, nullptr);
}

void cFileInfo::setFileName(mucs::cString& path, mucs::cString const& name, bool keepPath)
{
  mucs::cString result(keepPath ? path : part(path, 0, pathComponentLength(path)));
  appendName(result, name);
  path.swap(result);
}

void cFileInfo::setFilePath(mucs::cString& path, mucs::cString const& newDir)
{
  mucs::cString result(newDir);
  appendName(result, part(path, pathComponentLength(path), path.length()));
  path.swap(result);
}

void cFileInfo::setFileNameExtension(mucs::cString& path, mucs::cString const& extension)
{
  mucs::cString result(part(path, 0, extensionStart(path)));
  append(result, extension);
  path.swap(result);
}

void cFileInfo::setFileNameSuffix(mucs::cString& path, mucs::cString const& suffix)
{
  unsigned int const iEnd = extensionStart(path);
  if (suffix.length() <= iEnd && stands(path, iEnd - suffix.length(), suffix))
  {
    return;
  }
  mucs::cString result(withInserted(path, iEnd, suffix));
  path.swap(result);
}

void cFileInfo::setFileNamePrefix(mucs::cString& path, mucs::cString const& prefix)
{
  unsigned int const iStart = pathComponentLength(path);
  if (stands(path, iStart, prefix))
  {
    return;
  }
  mucs::cString result(withInserted(path, iStart, prefix));
  path.swap(result);
}

} // namespace mio
