#include "std/cAsciiString.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"
#include "std/tConstArrayRef.h"

namespace
{
mstd::cNumberConversionFormat const& defaultFormat()
{
  return mstd::cNumberConversionFormat::getGlobalDefaultNumberConversionFormat();
}
} // namespace

mstd::cAsciiString::cAsciiString(char const* text)
{
  append(text);
}

mstd::cAsciiString::cAsciiString(cAsciiString const& other, unsigned int start)
    : cAsciiString(tConstArrayRef<char, tArrayByteLevelTraits<char>>(other, start))
{
}

mstd::cAsciiString::cAsciiString(tConstArrayRef<char, tArrayByteLevelTraits<char>> const& bytes) : cBase(bytes.length())
{
  if (!bytes.empty())
  {
    bytes.proxyCopyPartTo(data(), 0, bytes.length());
  }
}

mstd::cAsciiString::~cAsciiString() {}

void mstd::cAsciiString::toUpper()
{
  char* const text = data();
  for (unsigned int i = 0; i < length(); ++i)
  {
    text[i] = upperCase(text[i]);
  }
}

void mstd::cAsciiString::toLower()
{
  char* const text = data();
  for (unsigned int i = 0; i < length(); ++i)
  {
    text[i] = lowerCase(text[i]);
  }
}

mstd::cAsciiString mstd::cAsciiString::upperCase() const
{
  cAsciiString result(*this);
  result.toUpper();
  return result;
}

void mstd::cAsciiString::ltrim()
{
  unsigned int blanks = 0;
  while (blanks < length() && c_str()[blanks] == ' ')
  {
    ++blanks;
  }
  if (blanks != 0)
  {
    erase(0, blanks);
  }
}

void mstd::cAsciiString::rtrim()
{
  unsigned int end = length();
  while (end != 0 && c_str()[end - 1] == ' ')
  {
    --end;
  }
  if (end != length())
  {
    truncate(end);
  }
}

void mstd::cAsciiString::trim()
{
  ltrim();
  rtrim();
}

bool mstd::cAsciiString::operator<(cAsciiString const& other) const
{
  unsigned int const common = length() < other.length() ? length() : other.length();
  int const order = memcmp(c_str(), other.c_str(), common);
  return order != 0 ? order < 0 : length() < other.length();
}

mstd::cAsciiString& mstd::cAsciiString::operator+=(char const* text)
{
  append(text);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::operator+=(cAsciiString const& other)
{
  append(other.c_str(), other.length());
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::addNum(long long value)
{
  return addNum(value, defaultFormat());
}

mstd::cAsciiString& mstd::cAsciiString::addNum(long long value, cNumberConversionFormat const& format)
{
  cNumberConversion::toString(*this, value, format);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::addUNum(unsigned long long value)
{
  return addUNum(value, defaultFormat());
}

mstd::cAsciiString& mstd::cAsciiString::addUNum(unsigned long long value, cNumberConversionFormat const& format)
{
  cNumberConversion::toString(*this, value, format);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::addNum32(int value)
{
  return addNum(value);
}

mstd::cAsciiString& mstd::cAsciiString::addNum32(int value, cNumberConversionFormat const& format)
{
  return addNum(value, format);
}

mstd::cAsciiString& mstd::cAsciiString::addUNum32(unsigned int value)
{
  return addUNum(value);
}

mstd::cAsciiString& mstd::cAsciiString::addUNum32(unsigned int value, cNumberConversionFormat const& format)
{
  return addUNum(value, format);
}

mstd::cAsciiString& mstd::cAsciiString::addDouble(double value)
{
  return addDouble(value, defaultFormat());
}

mstd::cAsciiString& mstd::cAsciiString::addDouble(double value, cNumberConversionFormat const& format)
{
  cAsciiString number; // the conversion of what is no number replaces its target
  cNumberConversion::toStringFromDouble(number, value, format);
  return *this += number;
}

mstd::cAsciiString& mstd::cAsciiString::operator=(cAsciiString const& other)
{
  cBase::operator=(other);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::operator=(cAsciiString&& other) noexcept
{
  swap(other);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::operator=(char const* text)
{
  cAsciiString copy(text);
  swap(copy);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::operator=(tArray<char, tArrayAsciiStringTraits<char>> const& other)
{
  cBase::operator=(other);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::operator=(tArray<char, tArrayByteLevelTraits<char>> const& other)
{
  cAsciiString copy;
  copy.setGrowStep(other.growStep());
  copy.setFitOnErase(other.fitOnErase());
  copy.append(other.data(true), other.length());
  swap(copy);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::setNum(long long value)
{
  return setNum(value, defaultFormat());
}

mstd::cAsciiString& mstd::cAsciiString::setNum(long long value, cNumberConversionFormat const& format)
{
  cAsciiString number;
  number.addNum(value, format);
  swap(number);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::setUNum(unsigned long long value)
{
  return setUNum(value, defaultFormat());
}

mstd::cAsciiString& mstd::cAsciiString::setUNum(unsigned long long value, cNumberConversionFormat const& format)
{
  cAsciiString number;
  number.addUNum(value, format);
  swap(number);
  return *this;
}

mstd::cAsciiString& mstd::cAsciiString::setNum32(int value)
{
  return setNum(value);
}

mstd::cAsciiString& mstd::cAsciiString::setNum32(int value, cNumberConversionFormat const& format)
{
  return setNum(value, format);
}

mstd::cAsciiString& mstd::cAsciiString::setUNum32(unsigned int value)
{
  return setUNum(value);
}

mstd::cAsciiString& mstd::cAsciiString::setUNum32(unsigned int value, cNumberConversionFormat const& format)
{
  return setUNum(value, format);
}

mstd::cAsciiString& mstd::cAsciiString::setDouble(double value)
{
  return setDouble(value, defaultFormat());
}

mstd::cAsciiString& mstd::cAsciiString::setDouble(double value, cNumberConversionFormat const& format)
{
  cAsciiString number;
  cNumberConversion::toStringFromDouble(number, value, format);
  swap(number);
  return *this;
}

long long mstd::cAsciiString::toInt() const
{
  return toInt(defaultFormat());
}

long long mstd::cAsciiString::toInt(cNumberConversionFormat const& format) const
{
  return cNumberConversion::fromString(*this, format);
}

unsigned long long mstd::cAsciiString::toUInt() const
{
  return toUInt(defaultFormat());
}

unsigned long long mstd::cAsciiString::toUInt(cNumberConversionFormat const& format) const
{
  return static_cast<unsigned long long>(cNumberConversion::fromString(*this, format));
}

double mstd::cAsciiString::toDouble() const
{
  return toDouble(defaultFormat());
}

double mstd::cAsciiString::toDouble(cNumberConversionFormat const& format) const
{
  return cNumberConversion::fromStringToDouble(*this, format);
}

void mstd::cAsciiString::leftAdjust(unsigned int width, char fill)
{
  unsigned int const end = length();
  if (end < width)
  {
    memset(extend(width - end), fill, width - end);
  }
}

void mstd::cAsciiString::rightAdjust(unsigned int width, char fill)
{
  if (length() < width)
  {
    fillBefore(width - length(), width - length(), fill);
  }
}

void mstd::cAsciiString::adjust(unsigned int width, char fill)
{
  if (length() < width)
  {
    fillBefore(width - length(), (width - length()) / 2, fill);
  }
}

void mstd::cAsciiString::fillBefore(unsigned int count, unsigned int position, char fill)
{
  cAsciiString result;
  result.setSize(count);
  result.cBase::fill(fill);
  result.insert(position, c_str(), length());
  swap(result);
}

void mstd::cAsciiString::setFixedLength(unsigned int width, cAsciiString const& suffix, char fill)
{
  if (suffix.length() > width)
  {
    width = suffix.length();
  }
  if (length() > width)
  {
    cAsciiString result(*this);
    result.truncate(width - suffix.length());
    result += suffix;
    swap(result);
    return;
  }
  leftAdjust(width, fill);
}

mstd::cAsciiString mstd::cAsciiString::operator+(cAsciiString const& other) const
{
  cAsciiString result(*this);
  result += other;
  return result;
}

mstd::cAsciiString& mstd::operator+(char const* text, cAsciiString& string)
{
  string.insert(0, text);
  return string;
}

msa::cAbstractSerializer& mstd::cAsciiString::operator>>(msa::cAbstractSerializer& serializer) const
{
  serializer.store(*this);
  return serializer;
}

msa::cAbstractDeserializer& mstd::cAsciiString::operator<<(msa::cAbstractDeserializer& deserializer)
{
  deserializer.load(*this);
  return deserializer;
}
