#include "cTextFile.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static size_t const LargestFile = 256u << 20; // devices that never end are files, too

bool cTextFile::fail()
{
  mError = strerror(errno);
  return false;
}

bool cTextFile::exists() const
{
  struct stat status;
  return stat(mPath.c_str(), &status) == 0;
}

bool cTextFile::read(std::string& text)
{
  text.clear();
  FILE* const pFile = fopen(mPath.c_str(), "rbe");
  if (pFile == nullptr)
  {
    return fail();
  }
  char piece[65536];
  size_t iRead = 0;
  while (text.size() <= LargestFile && (iRead = fread(piece, 1, sizeof piece, pFile)) != 0)
  {
    text.append(piece, iRead);
  }
  if (text.size() > LargestFile)
  {
    errno = EFBIG;
  }
  bool const bDone = (!ferror(pFile) && text.size() <= LargestFile) || fail();
  fclose(pFile);
  return bDone;
}

/// Into what is no regular file: a pipe or a device stays what it is.
bool cTextFile::writeInto(std::string const& text)
{
  FILE* const pFile = fopen(mPath.c_str(), "wbe");
  if (pFile == nullptr)
  {
    return fail();
  }
  bool const bDone = fwrite(text.data(), 1, text.size(), pFile) == text.size() || fail();
  return (fclose(pFile) == 0 || fail()) && bDone;
}

bool cTextFile::write(std::string const& text)
{
  struct stat status;
  if (stat(mPath.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
  {
    return writeInto(text);
  }
  std::string former;
  if (exists() && cTextFile(mPath).read(former) && former == text)
  {
    return true;
  }
  // What a link leads to is replaced, not the link.
  char* const pReal = realpath(mPath.c_str(), nullptr);
  std::string const path = pReal == nullptr ? mPath : pReal;
  free(pReal);
  std::string beside = path + ".XXXXXX";
  int const iFile = mkstemp(&beside[0]);
  if (iFile < 0)
  {
    return fail();
  }
  mode_t const iMask = umask(0);
  umask(iMask);
  mode_t const iMode = stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0666 & ~iMask;
  bool bDone = fchmod(iFile, iMode) == 0;
  for (size_t iDone = 0; bDone && iDone < text.size();)
  {
    ssize_t const iWritten = ::write(iFile, text.data() + iDone, text.size() - iDone);
    if (iWritten < 0 && errno == EINTR)
    {
      continue;
    }
    bDone = iWritten > 0;
    iDone += bDone ? static_cast<size_t>(iWritten) : 0;
  }
  bDone = (bDone && fsync(iFile) == 0) || fail();
  if (close(iFile) != 0 && bDone)
  {
    bDone = fail();
  }
  if (bDone && rename(beside.c_str(), path.c_str()) != 0)
  {
    bDone = fail();
  }
  if (!bDone)
  {
    unlink(beside.c_str());
  }
  return bDone;
}
