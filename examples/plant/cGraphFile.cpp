#include "cGraphFile.h"

#include "cText.h"
#include "std/cOSErrorException.h"

#include <errno.h>
#include <spawn.h>
#include <stdio.h>
#include <string.h>
#include <sys/wait.h>

extern char** environ;

cGraphFile::cGraphFile(mstd::cAsciiString const& path) : mPath(path), mName(path)
{
  unsigned int const iEnding = 4;
  if (path.length() > iEnding && strcmp(path.c_str() + path.length() - iEnding, ".dot") == 0)
  {
    mName.truncate(path.length() - iEnding);
  }
}

cGraphFile cGraphFile::beside(char const* pSuffix) const
{
  mstd::cAsciiString path(mName);
  path += pSuffix;
  path += ".dot";
  return cGraphFile(path);
}

void cGraphFile::write(mstd::cAsciiString const& dot) const
{
  FILE* const file = fopen(mPath.c_str(), "w");
  bool const isWritten = file != nullptr && fwrite(dot.c_str(), 1, dot.length(), file) == dot.length();
  int const iError = errno;
  if ((file != nullptr && fclose(file) != 0) || !isWritten)
  {
    throw mstd::cOSErrorException("write", isWritten ? errno : iError, cText::decode(mPath));
  }
}

bool cGraphFile::draw() const
{
  mstd::cAsciiString svg(mName);
  svg += ".svg";
  char program[] = "dot";
  char format[] = "-Tsvg";
  char output[] = "-o";
  mstd::cAsciiString input(mPath);
  char* const arguments[] = {program, format, output, svg.data(), input.data(), nullptr};
  pid_t child = 0;
  int iStatus = 0;
  return posix_spawnp(&child, program, nullptr, nullptr, arguments, environ) == 0 &&
         waitpid(child, &iStatus, 0) == child && iStatus == 0;
}
