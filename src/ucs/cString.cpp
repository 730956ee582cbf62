#include "ucs/cString.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/cArrayMemory.h"
#include "std/cAsciiString.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"
#include "std/cSTDExceptions.h"
#include "std/tConstArrayRef.h"
#include "ucs/cEnDecUTF8.h"

#include <limits>
#include <utility>

namespace
{
mstd::cNumberConversionFormat const& defaultFormat()
{
  return mstd::cNumberConversionFormat::getGlobalDefaultNumberConversionFormat();
}

unsigned int const cBlank = 0x20;

/// Elements in front of the 0 element; null has none.
unsigned int lengthOf(wchar_t const* sText)
{
  unsigned int iLength = 0;
  while (sText != 0 && sText[iLength])
  {
    if (++iLength == std::numeric_limits<unsigned int>::max())
    {
      cSTDExceptions::throwBadAlloc();
    }
  }
  return iLength;
}

/// Compares an array with a text that ends at a 0 element; `Unit` is the unsigned form of its elements.
template <typename Unit, typename Char>
bool isSameText(unsigned int const* pElements, unsigned int iLength, Char const* sText)
{
  if (sText == 0)
  {
    return false;
  }
  for (unsigned int i = 0; i < iLength; ++i)
  {
    unsigned int const c = static_cast<Unit>(sText[i]);
    if (c == 0 || c != pElements[i])
    {
      return false;
    }
  }
  return sText[iLength] == 0;
}

template <typename Char>
mucs::cString& putInFront(Char const* sText, mucs::cString& sRight)
{
  mucs::cString const sLeft(sText);
  sRight.insert(0, sLeft.data(true), sLeft.length());
  return sRight;
}
} // namespace

namespace mucs
{
// Strings are short and change often: small sectors, and no trimming when something is erased.
void cString::initialize()
{
  setGrowStep(2);
  setFitOnErase(false);
}

template <typename Char>
void cString::appendWidened(Char const* pText, unsigned int iLength)
{
  if (iLength == 0)
  {
    return;
  }
  unsigned int const iStart = length();
  proxyInsertDefaultObjects(iStart, iLength);
  unsigned int* const pTarget = data(true) + iStart;
  for (unsigned int i = 0; i < iLength; ++i)
  {
    pTarget[i] = static_cast<unsigned int>(pText[i]);
  }
}

cString::cString()
{
  initialize();
}

cString::cString(char const* sText)
{
  initialize();
  appendC(sText);
}

cString::cString(wchar_t const* sText)
{
  initialize();
  appendWidened(sText, lengthOf(sText));
}

cString::cString(mstd::cAsciiString const& sText, char cReplacement)
{
  initialize();
  fromAscii(sText, static_cast<unsigned char>(cReplacement));
}

cString::cString(cString const& sOther) = default;

cString::cString(cString&& sOther) noexcept
{
  initialize();
  swap(sOther);
}

cString::~cString() = default;

cString& cString::operator=(cString const& sOther)
{
  cString sCopy(sOther);
  swap(sCopy);
  return *this;
}

cString& cString::operator=(cString&& sOther) noexcept
{
  if (this != &sOther)
  {
    cString sTaken(std::move(sOther));
    swap(sTaken);
  }
  return *this;
}

cString& cString::operator=(char const* sText)
{
  cString sCopy(sText);
  swap(sCopy);
  return *this;
}

cString& cString::operator=(cArray const& aElements)
{
  cString sCopy;
  sCopy.append(aElements.data(true), aElements.length());
  swap(sCopy);
  return *this;
}

void cString::appendC(char const* sText)
{
  appendC(sText, mstd::cArrayMemory::textLength(sText));
}

void cString::appendC(char const* pText, unsigned int iLength)
{
  if (!(pText != 0 || iLength == 0))
  {
    cSTDExceptions::throwAssertionFailed("pText != 0 || iLength == 0", "ucs/cString", __LINE__);
  }
  appendWidened(reinterpret_cast<unsigned char const*>(pText), iLength);
}

void cString::fromAscii(mstd::cAsciiString const& sText, unsigned int iReplacement)
{
  cString sNew;
  sNew.appendC(sText.c_str(), sText.length());
  unsigned int* const pElements = sNew.data(true);
  for (unsigned int i = 0; i < sNew.length(); ++i)
  {
    if (pElements[i] > 0x7F)
    {
      pElements[i] = iReplacement;
    }
  }
  swap(sNew);
}

void cString::fromUTF8(mstd::tConstArrayRef<char> const& rBytes)
{
  cString sNew;
  cEnDecUTF8().decode(rBytes, sNew);
  swap(sNew);
}

void cString::toAscii(mstd::cAsciiString& sOut, char cReplacement) const
{
  if (empty())
  {
    return;
  }
  unsigned int const iStart = sOut.length();
  sOut.proxyInsertDefaultObjects(iStart, length());
  unsigned int const* const pSource = data();
  char* const pTarget = sOut.data() + iStart;
  for (unsigned int i = 0; i < length(); ++i)
  {
    pTarget[i] = pSource[i] > 0x7F ? cReplacement : static_cast<char>(pSource[i]);
  }
}

mstd::cAsciiString cString::ascii(char cReplacement) const
{
  mstd::cAsciiString sOut;
  toAscii(sOut, cReplacement);
  return sOut;
}

void cString::toUTF8(mstd::tArray<char>& aOut) const
{
  cEnDecUTF8().encode(*this, aOut);
}

mstd::tArray<char> cString::toUTF8() const
{
  mstd::tArray<char> aOut;
  toUTF8(aOut);
  return aOut;
}

bool cString::operator==(cString const& sOther) const
{
  return cArray::operator==(sOther);
}

bool cString::operator==(wchar_t const* sText) const
{
  return isSameText<unsigned int>(data(true), length(), sText);
}

bool cString::operator==(mstd::cAsciiString const& sText) const
{
  return ccs(sText.c_str());
}

bool cString::operator==(char const* sText) const
{
  return ccs(sText);
}

bool cString::ccs(char const* sText) const
{
  return isSameText<unsigned char>(data(true), length(), sText);
}

unsigned int cString::upperCase(unsigned int iCodePoint)
{
  return iCodePoint - 'a' < 26 ? iCodePoint - 'a' + 'A' : iCodePoint;
}

unsigned int cString::lowerCase(unsigned int iCodePoint)
{
  return iCodePoint - 'A' < 26 ? iCodePoint - 'A' + 'a' : iCodePoint;
}

void cString::upperCase()
{
  unsigned int* const pElements = data(true);
  for (unsigned int i = 0; i < length(); ++i)
  {
    pElements[i] = upperCase(pElements[i]);
  }
}

void cString::lowerCase()
{
  unsigned int* const pElements = data(true);
  for (unsigned int i = 0; i < length(); ++i)
  {
    pElements[i] = lowerCase(pElements[i]);
  }
}

void cString::ltrim()
{
  unsigned int const* const pElements = data(true);
  unsigned int iBlanks = 0;
  while (iBlanks < length() && pElements[iBlanks] == cBlank)
  {
    ++iBlanks;
  }
  if (iBlanks)
  {
    erase(0, iBlanks);
  }
}

void cString::rtrim()
{
  unsigned int const* const pElements = data(true);
  unsigned int iLength = length();
  while (iLength > 0 && pElements[iLength - 1] == cBlank)
  {
    --iLength;
  }
  if (iLength < length())
  {
    truncate(iLength);
  }
}

void cString::trim()
{
  ltrim();
  rtrim();
}

cString& cString::operator+=(cString const& sOther)
{
  append(sOther.data(true), sOther.length()); // which may point into this very string
  return *this;
}

cString& cString::addString(cString const& sOther)
{
  return *this += sOther;
}

cString& cString::addNum(long long iValue)
{
  return addNum(iValue, defaultFormat());
}

cString& cString::addNum(long long iValue, mstd::cNumberConversionFormat const& fFormat)
{
  mstd::cAsciiString sNumber;
  sNumber.addNum(iValue, fFormat);
  appendC(sNumber.c_str(), sNumber.length());
  return *this;
}

cString& cString::addUNum(unsigned long long iValue)
{
  return addUNum(iValue, defaultFormat());
}

cString& cString::addUNum(unsigned long long iValue, mstd::cNumberConversionFormat const& fFormat)
{
  mstd::cAsciiString sNumber;
  sNumber.addUNum(iValue, fFormat);
  appendC(sNumber.c_str(), sNumber.length());
  return *this;
}

cString& cString::addNum32(int iValue)
{
  return addNum(iValue);
}

cString& cString::addNum32(int iValue, mstd::cNumberConversionFormat const& fFormat)
{
  return addNum(iValue, fFormat);
}

cString& cString::addUNum32(unsigned int iValue)
{
  return addUNum(iValue);
}

cString& cString::addUNum32(unsigned int iValue, mstd::cNumberConversionFormat const& fFormat)
{
  return addUNum(iValue, fFormat);
}

cString& cString::addDouble(double dValue)
{
  return addDouble(dValue, defaultFormat());
}

cString& cString::addDouble(double dValue, mstd::cNumberConversionFormat const& fFormat)
{
  mstd::cAsciiString sNumber;
  sNumber.addDouble(dValue, fFormat);
  appendC(sNumber.c_str(), sNumber.length());
  return *this;
}

cString& cString::setNum(long long iValue)
{
  return setNum(iValue, defaultFormat());
}

cString& cString::setNum(long long iValue, mstd::cNumberConversionFormat const& fFormat)
{
  cString sNew;
  sNew.addNum(iValue, fFormat);
  swap(sNew);
  return *this;
}

cString& cString::setUNum(unsigned long long iValue)
{
  return setUNum(iValue, defaultFormat());
}

cString& cString::setUNum(unsigned long long iValue, mstd::cNumberConversionFormat const& fFormat)
{
  cString sNew;
  sNew.addUNum(iValue, fFormat);
  swap(sNew);
  return *this;
}

cString& cString::setNum32(int iValue)
{
  return setNum(iValue);
}

cString& cString::setNum32(int iValue, mstd::cNumberConversionFormat const& fFormat)
{
  return setNum(iValue, fFormat);
}

cString& cString::setUNum32(unsigned int iValue)
{
  return setUNum(iValue);
}

cString& cString::setUNum32(unsigned int iValue, mstd::cNumberConversionFormat const& fFormat)
{
  return setUNum(iValue, fFormat);
}

cString& cString::setDouble(double dValue)
{
  return setDouble(dValue, defaultFormat());
}

cString& cString::setDouble(double dValue, mstd::cNumberConversionFormat const& fFormat)
{
  cString sNew;
  sNew.addDouble(dValue, fFormat);
  swap(sNew);
  return *this;
}

long long cString::toInt() const
{
  return toInt(defaultFormat());
}

long long cString::toInt(mstd::cNumberConversionFormat const& fFormat) const
{
  return mstd::cNumberConversion::fromString(*this, fFormat);
}

unsigned long long cString::toUInt() const
{
  return toUInt(defaultFormat());
}

unsigned long long cString::toUInt(mstd::cNumberConversionFormat const& fFormat) const
{
  return static_cast<unsigned long long>(mstd::cNumberConversion::fromString(*this, fFormat));
}

double cString::toDouble() const
{
  return toDouble(defaultFormat());
}

double cString::toDouble(mstd::cNumberConversionFormat const& fFormat) const
{
  return mstd::cNumberConversion::fromStringToDouble(*this, fFormat);
}

void cString::leftAdjust(unsigned int iWidth, unsigned int iFill)
{
  unsigned int const iLength = length();
  if (iLength >= iWidth)
  {
    return;
  }
  proxyInsertDefaultObjects(iLength, iWidth - iLength);
  unsigned int* const pElements = data();
  for (unsigned int i = iLength; i < iWidth; ++i)
  {
    pElements[i] = iFill;
  }
}

void cString::rightAdjust(unsigned int iWidth, unsigned int iFill)
{
  if (length() >= iWidth)
  {
    return;
  }
  cString sNew;
  sNew.setSize(iWidth - length());
  sNew.fill(iFill);
  sNew.append(data(true), length());
  swap(sNew);
}

void cString::adjust(unsigned int iWidth, unsigned int iFill)
{
  if (length() >= iWidth)
  {
    return;
  }
  cString sNew;
  sNew.setSize(iWidth - length());
  sNew.fill(iFill);
  sNew.insert((iWidth - length()) / 2, data(true), length());
  swap(sNew);
}

void cString::setFixedLength(unsigned int iWidth, cString const& sSuffix, unsigned int iFill)
{
  unsigned int const iSuffix = sSuffix.length();
  if (iWidth < iSuffix)
  {
    iWidth = iSuffix;
  }
  if (length() <= iWidth)
  {
    leftAdjust(iWidth, iFill);
    return;
  }
  if (iSuffix)
  {
    proxyPatchData(iWidth - iSuffix, iSuffix, sSuffix.data());
  }
  truncate(iWidth);
}

cString cString::operator+(cString const& sOther) const
{
  cString sSum(*this);
  sSum += sOther;
  return sSum;
}

msa::cAbstractSerializer& cString::operator>>(msa::cAbstractSerializer& sSerializer) const
{
  sSerializer.store(*this);
  return sSerializer;
}

msa::cAbstractDeserializer& cString::operator<<(msa::cAbstractDeserializer& sDeserializer)
{
  sDeserializer.load(*this);
  return sDeserializer;
}

cString& operator+(char const* sText, cString& sRight)
{
  return putInFront(sText, sRight);
}

cString& operator+(wchar_t const* sText, cString& sRight)
{
  return putInFront(sText, sRight);
}
} // namespace mucs
