#include "pi/cAbstractOut.h"

#include "std/cAsciiString.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"
#include "std/cSTDExceptions.h"

#include <stdio.h>

namespace mpi
{

namespace
{

char const carriageReturn = 13;
char const lineFeed = 10;

// Holds the decimal digits of 64 bits, a sign and the terminator.
unsigned int const decimalSize = 24;

unsigned int widthOf(NumberFmt format)
{
  switch (format)
  {
  case NumberHex16:
  case NumberNextHex16:
    return 16;
  case NumberHex8:
  case NumberNextHex8:
    return 8;
  case NumberHex4:
  case NumberNextHex4:
    return 4;
  case NumberHex2:
  case NumberNextHex2:
    return 2;
  case NumberHex:
  case NumberAsFormat:
    break;
  }
  return 0;
}

} // namespace

cAbstractOut::cAbstractOut()
    : mpLinked(0), mNumberMode(NumberAsFormat), mpDebugFile(0), miDebugLine(0), miIndentionLevel(0)
{
}

cAbstractOut::~cAbstractOut() = default;

void cAbstractOut::flush()
{
  if (mpLinked != 0)
  {
    mpLinked->flush();
  }
}

cAbstractOut& cAbstractOut::debugMessage(char const* file, unsigned int line)
{
  if (mpLinked != 0)
  {
    mpLinked->debugMessage(file, line);
  }
  mpDebugFile = file;
  miDebugLine = line;
  return *this;
}

cAbstractOut& cAbstractOut::operator<<(long long value)
{
  if (mpLinked != 0)
  {
    *mpLinked << value;
    return *this;
  }
  if (mpNumberFormat.get() != 0)
  {
    return writeNumber(mstd::cNumberConversion::toString(value, *mpNumberFormat));
  }
  char digits[decimalSize];
  snprintf(digits, sizeof(digits), "%lld", value);
  return *this << static_cast<char const*>(digits);
}

cAbstractOut& cAbstractOut::operator<<(unsigned long long value)
{
  if (mpLinked != 0)
  {
    *mpLinked << value;
    return *this;
  }
  if (mpNumberFormat.get() != 0)
  {
    return writeNumber(mstd::cNumberConversion::toString(value, *mpNumberFormat));
  }
  char digits[decimalSize];
  snprintf(digits, sizeof(digits), "%llu", value);
  return *this << static_cast<char const*>(digits);
}

cAbstractOut& cAbstractOut::operator<<(int value)
{
  if (mpLinked != 0)
  {
    *mpLinked << value;
    return *this;
  }
  return *this << static_cast<long long>(value);
}

cAbstractOut& cAbstractOut::operator<<(unsigned int value)
{
  if (mpLinked != 0)
  {
    *mpLinked << value;
    return *this;
  }
  return *this << static_cast<unsigned long long>(value);
}

cAbstractOut& cAbstractOut::operator<<(char const* text)
{
  if (mpLinked != 0)
  {
    *mpLinked << text;
    return *this;
  }
  if (text == 0)
  {
    return *this;
  }
  for (; *text != 0; ++text)
  {
    writeChar(*text);
  }
  return *this;
}

cAbstractOut& cAbstractOut::operator<<(mstd::cAsciiString const& text)
{
  if (mpLinked != 0)
  {
    *mpLinked << text;
    return *this;
  }
  // By length: a text with a zero inside is shown whole.
  char const* pText = text.c_str();
  unsigned int const length = text.length();
  for (unsigned int i = 0; i < length; ++i)
  {
    writeChar(pText[i]);
  }
  return *this;
}

cAbstractOut& cAbstractOut::operator<<(double value)
{
  if (mpLinked != 0)
  {
    *mpLinked << value;
    return *this;
  }
  mstd::cAsciiString digits;
  if (mpNumberFormat.get() != 0)
  {
    digits.addDouble(value, *mpNumberFormat);
  }
  else
  {
    digits.addDouble(value);
  }
  return *this << digits.c_str();
}

cAbstractOut& cAbstractOut::operator<<(NumberFmt format)
{
  if (mpLinked != 0)
  {
    *mpLinked << format;
    return *this;
  }
  if (mpNumberFormat.get() == 0)
  {
    mpNumberFormat.reinit(new mstd::cNumberConversionFormat(10));
  }
  if (format != NumberAsFormat)
  {
    mpNumberFormat->setBase(16);
  }
  unsigned int const width = widthOf(format);
  if (width != 0)
  {
    mpNumberFormat->setFixedWidth(width);
  }
  mNumberMode = format;
  return *this;
}

cAbstractOut& cAbstractOut::operator<<(mstd::cNumberConversionFormat const& format)
{
  if (mpLinked != 0)
  {
    *mpLinked << format;
    return *this;
  }
  mpNumberFormat.reinit(new mstd::cNumberConversionFormat(format));
  mNumberMode = NumberAsFormat;
  return *this;
}

cAbstractOut& cAbstractOut::operator<<(cAbstractOut::clearDebugMessage const& tag)
{
  if (mpLinked != 0)
  {
    *mpLinked << tag;
    return *this;
  }
  mpDebugFile = 0;
  miDebugLine = 0;
  return *this;
}

cAbstractOut& cAbstractOut::operator<<(cAbstractOut::indent const& tag)
{
  if (mpLinked != 0)
  {
    *mpLinked << tag;
    return *this;
  }
  ++miIndentionLevel;
  return *this;
}

cAbstractOut& cAbstractOut::operator<<(cAbstractOut::unindent const& tag)
{
  if (mpLinked != 0)
  {
    *mpLinked << tag;
    return *this;
  }
  if (miIndentionLevel != 0)
  {
    --miIndentionLevel;
  }
  return *this;
}

bool cAbstractOut::hasEnDec() const
{
  return mpLinked != 0 && mpLinked->hasEnDec();
}

void cAbstractOut::drawCharLinked(char c)
{
  cAbstractOut* pSink = this;
  while (pSink->mpLinked != 0)
  {
    pSink = pSink->mpLinked;
  }
  pSink->printChar(c);
}

void cAbstractOut::link(cAbstractOut* pOut)
{
  for (cAbstractOut const* pStream = pOut; pStream != 0; pStream = pStream->mpLinked)
  {
    if (!(pStream != this))
    {
      cSTDExceptions::throwAssertionFailed("pStream != this", "pi/cAbstractOut", __LINE__);
    }
  }
  mpLinked = pOut;
}

char const* cAbstractOut::debugFileName() const
{
  return mpLinked != 0 ? mpLinked->debugFileName() : mpDebugFile;
}

unsigned int cAbstractOut::debugFileLine() const
{
  return mpLinked != 0 ? mpLinked->debugFileLine() : miDebugLine;
}

unsigned int cAbstractOut::indentionLevel() const
{
  return mpLinked != 0 ? mpLinked->indentionLevel() : miIndentionLevel;
}

void cAbstractOut::writeChar(char c)
{
  if (c == lineFeed)
  {
    printChar(carriageReturn);
  }
  printChar(c);
}

cAbstractOut& cAbstractOut::writeNumber(mstd::cAsciiString const& digits)
{
  *this << digits.c_str();
  if (mNumberMode >= NumberNextHex16 && mNumberMode <= NumberNextHex2)
  {
    mpNumberFormat.reinit(0);
  }
  return *this;
}

} // namespace mpi
