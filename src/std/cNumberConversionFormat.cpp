#include "std/cNumberConversionFormat.h"

#include "pi/cSystem.h"
#include "std/cAsciiString.h"
#include "std/cBasePrefix.h"
#include "std/cSTDExceptions.h"

#include <string.h>

namespace mstd
{

namespace
{

char const sUpperCaseDigits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
char const sLowerCaseDigits[] = "0123456789abcdefghijklmnopqrstuvwxyz";

void checkBase(unsigned int iBase)
{
  if (iBase < 2 || iBase > 36)
  {
    cSTDExceptions::throwInvalidDecimalBase(static_cast<int>(iBase), 2, 36);
  }
}

void checkDigitSymbol(unsigned int iDigit)
{
  if (iDigit > 36)
  {
    cSTDExceptions::throwOutOfRange("DigitSymbols", "at", cSTDExceptions::IndexOutOfRange, iDigit, 0, 36);
  }
}

} // namespace

cNumberConversionFormat::cNumberConversionFormat(unsigned int iBase) : miBase(iBase)
{
  checkBase(iBase);
  setDigitCase(LowerCase);
}

cNumberConversionFormat::~cNumberConversionFormat() = default;

void cNumberConversionFormat::setBase(unsigned int iBase)
{
  checkBase(iBase);
  miBase = iBase;
}

void cNumberConversionFormat::setDigitCase(DigitCase digitCase)
{
  mDigitCase = digitCase;
  memcpy(mDigitSymbols, digitCase == UpperCase ? sUpperCaseDigits : sLowerCaseDigits, NumDigitSymbols + 1);
  mDigitSymbols[NumDigitSymbols + 1] = 0;
  mUsualDigits = true;
}

char cNumberConversionFormat::digitChar(unsigned int iDigit) const
{
  checkDigitSymbol(iDigit);
  return mDigitSymbols[iDigit];
}

void cNumberConversionFormat::setDigitSymbol(unsigned int iDigit, char symbol)
{
  checkDigitSymbol(iDigit);
  mDigitSymbols[iDigit] = symbol;
  mUsualDigits = memcmp(mDigitSymbols, sLowerCaseDigits, NumDigitSymbols) == 0 ||
                 memcmp(mDigitSymbols, sUpperCaseDigits, NumDigitSymbols) == 0;
}

bool cNumberConversionFormat::detectBase(cAsciiString const& text, unsigned int& iBase,
                                         unsigned int& iPrefixLength) const
{
  char const namedPrefix[] = "<base:";
  unsigned int const iName = sizeof(namedPrefix) - 2; // the bracket belongs to both forms
  char const* const pText = text.c_str();
  unsigned int const iLength = text.length();
  iBase = 0;
  iPrefixLength = 0;
  if (iLength > 7 && memcmp(pText, namedPrefix, iName + 1) == 0)
  {
    iPrefixLength = cBasePrefix::bracketed(pText + iName, iLength - iName, iBase);
    iPrefixLength += iPrefixLength != 0 ? iName : 0;
  }
  else if (iLength > 2)
  {
    iPrefixLength = cBasePrefix::detect(pText, iLength, iBase);
  }
  return iPrefixLength != 0;
}

cNumberConversionFormat& cNumberConversionFormat::getGlobalDefaultNumberConversionFormat()
{
  return mpi::system().defaults.numberFormat;
}

} // namespace mstd
