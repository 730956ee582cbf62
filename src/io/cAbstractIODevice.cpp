#include "io/cAbstractIODevice.h"

#include "io/cIOExceptions.h"
#include "std/cAsciiString.h"
#include "std/cTime.h"

#include <string.h>

namespace mio
{
namespace
{
/// `pStart` is null if there is no limit.
void checkTime(mstd::cTime const* pStart, unsigned int timeoutMs)
{
  if (pStart != nullptr && pStart->diff().toMSec() > timeoutMs)
  {
    cIOExceptions::throwIOTimeout(timeoutMs);
  }
}
} // namespace

cAbstractIODevice::~cAbstractIODevice() {}

bool cAbstractIODevice::readTextLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator,
                                     bool keepTerminator, unsigned int timeoutMs)
{
  mstd::cTime const start;
  line.truncate(0);
  return continueLine(line, terminator, keepTerminator, &start, timeoutMs);
}

bool cAbstractIODevice::readTextLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator,
                                     bool keepTerminator)
{
  line.truncate(0);
  return continueLine(line, terminator, keepTerminator, nullptr, 0);
}

bool cAbstractIODevice::readTextLine(mstd::tArray<char>& line, unsigned int timeoutMs)
{
  if (timeoutMs == 0)
  {
    line.truncate(0);
    return continueLine(line, nullptr, 0);
  }
  mstd::cTime const start;
  line.truncate(0);
  return continueLine(line, &start, timeoutMs);
}

void cAbstractIODevice::writeTextLine(mstd::cAsciiString const& text, mstd::cAsciiString const& ending)
{
  if (write(text.c_str(), text.length()) != text.length())
  {
    cIOExceptions::throwUnableToWrite(text.length());
  }
  if (write(ending.c_str(), ending.length()) != ending.length())
  {
    cIOExceptions::throwUnableToWrite(ending.length());
  }
}

void cAbstractIODevice::writeTextLine(mstd::tConstArrayRef<char> const& text, mstd::cAsciiString const& ending)
{
  // Block by block, since the text may be that of a device too; an empty array may have nothing to provide.
  unsigned int const block = text.proxyPreferredBlockSize();
  for (unsigned int done = 0; done < text.length();)
  {
    unsigned int const left = text.length() - done;
    unsigned int const piece = block == 0 || block > left ? left : block;
    write(text.proxyProvideData(done, piece), piece);
    done += piece;
  }
  if (write(ending.c_str(), ending.length()) != ending.length())
  {
    cIOExceptions::throwUnableToWrite(ending.length());
  }
}

bool cAbstractIODevice::endsWith(mstd::tArray<char> const& line, mstd::tArray<char> const& terminator)
{
  unsigned int const length = terminator.length();
  return length != 0 && line.length() >= length &&
         memcmp(line.data() + (line.length() - length), terminator.data(), length) == 0;
}

bool cAbstractIODevice::continueLine(mstd::tArray<char>& line, mstd::cTime const* pStart, unsigned int timeoutMs)
{
  char c;
  while (read(&c, 1) != 0)
  {
    if (c == '\r' || c == '\n')
    {
      if (!line.empty())
      {
        return true;
      }
    }
    else
    {
      line.append(c);
    }
    checkTime(pStart, timeoutMs);
  }
  return false;
}

bool cAbstractIODevice::continueLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator,
                                     bool keepTerminator, mstd::cTime const* pStart, unsigned int timeoutMs)
{
  char c;
  while (read(&c, 1) != 0)
  {
    line.append(c);
    if (endsWith(line, terminator))
    {
      if (!keepTerminator)
      {
        line.truncate(line.length() - terminator.length());
      }
      return true;
    }
    checkTime(pStart, timeoutMs);
  }
  return false;
}

} // namespace mio
