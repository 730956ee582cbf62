#include "cProcReader.h"

#include "io/cFile.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"
#include "ucs/cString.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>
#include <sys/statvfs.h>

namespace
{
[[noreturn]] void throwNotUnderstood(mstd::cAsciiString const& path)
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$\"%file%\" does not hold what it should!", path), nullptr,
                                0);
}

/// Lines of a text file.
class cLines
{
public:
  explicit cLines(mstd::cAsciiString const& path)
      : mFile(mucs::cString(path.c_str()), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend)
  {
  }

  /// The next line, or null. Valid until the next call.
  char const* next()
  {
    mstd::tArray<char> line;
    if (!mFile.readTextLine(line, 0))
    {
      return nullptr;
    }
    mLine = line;
    return mLine.c_str();
  }

private:
  mio::cFile mFile;
  mstd::cAsciiString mLine;
};
} // namespace

cProcReader::cProcReader(mstd::cAsciiString const& folder) : mFolder(folder) {}

mstd::cAsciiString cProcReader::path(char const* pName) const
{
  mstd::cAsciiString path(mFolder);
  path += "/";
  path += pName;
  return path;
}

cProcReader::cCpu cProcReader::cpu() const
{
  mstd::cAsciiString const file = path("stat");
  cLines lines(file);
  unsigned long long ticks[8] = {}; // user, nice, system, idle, waiting, interrupts, soft interrupts, stolen
  char const* const pLine = lines.next();
  if (pLine == nullptr || sscanf(pLine, "cpu %llu %llu %llu %llu %llu %llu %llu %llu", &ticks[0], &ticks[1], &ticks[2],
                                 &ticks[3], &ticks[4], &ticks[5], &ticks[6], &ticks[7]) < 4)
  {
    throwNotUnderstood(file);
  }
  cCpu cpu = {0, 0};
  for (unsigned long long iTicks : ticks)
  {
    cpu.miTotal += iTicks;
  }
  cpu.miBusy = cpu.miTotal - ticks[3] - ticks[4];
  return cpu;
}

cProcReader::cMemory cProcReader::memory() const
{
  mstd::cAsciiString const file = path("meminfo");
  cLines lines(file);
  unsigned long long iTotal = 0;
  unsigned long long iAvailable = 0;
  int iFound = 0;
  while (char const* const pLine = lines.next())
  {
    iFound += sscanf(pLine, "MemTotal: %llu", &iTotal) == 1;
    iFound += sscanf(pLine, "MemAvailable: %llu", &iAvailable) == 1;
  }
  if (iFound != 2 || iTotal == 0 || iAvailable > iTotal)
  {
    throwNotUnderstood(file);
  }
  return {iAvailable, iTotal};
}

cProcReader::cNet cProcReader::net() const
{
  mstd::cAsciiString const file = path("net/dev");
  cLines lines(file);
  cNet net = {0, 0};
  for (int i = 0; i < 2; ++i)
  {
    if (lines.next() == nullptr) // the headings
    {
      throwNotUnderstood(file);
    }
  }
  while (char const* const pLine = lines.next())
  {
    char const* const pColon = strchr(pLine, ':');
    unsigned long long iReceived = 0;
    unsigned long long iSent = 0;
    if (pColon == nullptr || sscanf(pColon + 1, "%llu %*u %*u %*u %*u %*u %*u %*u %llu", &iReceived, &iSent) != 2)
    {
      throwNotUnderstood(file);
    }
    char const* pName = pLine;
    pName += strspn(pName, " ");
    if (strncmp(pName, "lo:", 3) != 0)
    {
      net.miReceived += iReceived;
      net.miSent += iSent;
    }
  }
  return net;
}

double cProcReader::diskPercent(mstd::cAsciiString const& path)
{
  struct statvfs info;
  if (statvfs(path.c_str(), &info) != 0)
  {
    throw mstd::cOSErrorException("statvfs", errno, mucs::cString(path.c_str()));
  }
  double const used = static_cast<double>(info.f_blocks - info.f_bfree);
  double const usable = used + static_cast<double>(info.f_bavail);
  return usable > 0 ? 100.0 * used / usable : 0.0;
}
