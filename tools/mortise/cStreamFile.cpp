#include "cStreamFile.h"

#include <errno.h>
#include <string.h>
#include <sys/stat.h>

namespace
{
// One less than positions can express, so that the position behind the last byte is one, too.
unsigned int const LargestSize = 0xFFFFFFFEu;
unsigned int const FirstSize = 65536;
} // namespace

cStreamFile::cStreamFile(std::string const& path) : mPath(path), mName(path == "-" ? "standard input" : path) {}

bool cStreamFile::read()
{
  if (mPath == "-")
  {
    return readAll(stdin);
  }
  FILE* const pFile = fopen(mPath.c_str(), "rbe");
  if (pFile == nullptr)
  {
    mError = strerror(errno);
    return false;
  }
  bool const bDone = readAll(pFile);
  fclose(pFile);
  return bDone;
}

bool cStreamFile::readAll(FILE* pFile)
{
  mData.setFitOnErase(false);
  unsigned int iSize = FirstSize;
  struct stat status;
  if (fstat(fileno(pFile), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0 &&
      static_cast<unsigned long long>(status.st_size) < LargestSize)
  {
    iSize = static_cast<unsigned int>(status.st_size) + 1; // the byte more finds the end
  }
  unsigned int iRead = 0;
  for (;;)
  {
    mData.setSize(iSize);
    errno = 0;
    iRead += static_cast<unsigned int>(fread(mData.data() + iRead, 1, iSize - iRead, pFile));
    if (ferror(pFile))
    {
      mError = strerror(errno);
      return false;
    }
    if (iRead < iSize)
    {
      break;
    }
    if (iRead > LargestSize)
    {
      mError = "too large: positions in a stream have 32 bits";
      return false;
    }
    iSize = iSize > LargestSize / 2 ? LargestSize + 1 : 2 * iSize;
  }
  mData.truncate(iRead);
  return true;
}
