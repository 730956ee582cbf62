// A fused multiply-add rounds once where the digits are defined by rounding twice.
#if defined(__clang__)
#pragma STDC FP_CONTRACT OFF
#else
#pragma GCC optimize("fp-contract=off")
#endif

#include "std/cNumberConversion.h"

#include "std/cArrayMemory.h"
#include "std/cBasePrefix.h"
#include "std/cNumberConversionFormat.h"
#include "std/cRuntimeException.h"
#include "std/cSTDExceptions.h"
#include "std/tArrayRef.h"
#include "std/tConstArrayRef.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <float.h>
#include <string.h>

namespace mstd
{

static_assert(FLT_EVAL_METHOD == 0, "the digits are those of plain double arithmetic");

namespace
{

class cFailures
{
public:
  [[noreturn]] static void throwInvalidWholePart()
  {
    mucs::cLIMessage message;
    message << "$MTR$Invalid fractional number (non-factional part)!";
    throw cRuntimeException(message, nullptr, 0);
  }
  [[noreturn]] static void throwInvalidFraction()
  {
    mucs::cLIMessage message;
    message << "$MTR$Invalid fractional number!";
    throw cRuntimeException(message, nullptr, 0);
  }
  [[noreturn]] static void throwInvalidDecimal(char const* pText, unsigned int iLength, unsigned int iIndex)
  {
    mucs::cString text;
    text.appendC(pText, iLength);
    cSTDExceptions::throwInvalidDecimal(text, iIndex);
  }
  [[noreturn]] static void throwInvalidDecimal(unsigned int const* pText, unsigned int iLength, unsigned int iIndex)
  {
    mucs::cString text;
    text.append(pText, iLength);
    cSTDExceptions::throwInvalidDecimal(text, iIndex);
  }
};

// --- the strings that are written to ---

void appendTo(cAsciiString& target, char const* pText, unsigned int iLength)
{
  target.append(pText, iLength);
}

void appendTo(tArray<char>& target, char const* pText, unsigned int iLength)
{
  target.append(pText, iLength);
}

void appendTo(mucs::cString& target, char const* pText, unsigned int iLength)
{
  target.appendC(pText, iLength);
}

void appendTo(tArrayRef<char>& target, char const* pText, unsigned int iLength)
{
  target.proxyInsert(target.length(), pText, iLength);
}

/// Puts the new contents behind the old before it drops those, so that a failure changes nothing.
template <class Target>
void replaceIn(Target& target, char const* pText)
{
  unsigned int const iOldLength = target.length();
  appendTo(target, pText, cArrayMemory::textLength(pText));
  if (iOldLength != 0)
  {
    target.erase(0, iOldLength);
  }
}

// --- whole number to text ---

char const sDigitPairs[] = "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
                           "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
                           "8081828384858687888990919293949596979899";

void writePair(char* pPlace, unsigned int iPair)
{
  memcpy(pPlace, sDigitPairs + static_cast<size_t>(iPair) * 2, 2);
}

void writeFour(char* pPlace, unsigned int iFour)
{
  writePair(pPlace, iFour / 100);
  writePair(pPlace + 2, iFour % 100);
}

/// Groups of four digits in front of `pEnd`, as long as there are more than four. Leaves the rest in `iValue`.
template <class Unsigned>
inline char* writeFours(char* pEnd, Unsigned& iValue)
{
  while (iValue >= 10000)
  {
    unsigned int const iFour = static_cast<unsigned int>(iValue % 10000);
    iValue /= 10000;
    pEnd -= 4;
    writeFour(pEnd, iFour);
  }
  return pEnd;
}

/// `iDigits` is the number of decimal digits that the value has.
inline void writeUsualDecimal(char* pText, unsigned int iDigits, piUInt64 iValue)
{
  char* pEnd = pText + iDigits;
  unsigned int iHead;
  if (sizeof(void*) >= sizeof(piUInt64))
  {
    pEnd = writeFours(pEnd, iValue);
    iHead = static_cast<unsigned int>(iValue);
  }
  else
  {
    // a 32-bit processor has no 64-bit division: it pays once for each eight digits
    while (iValue > 0xFFFFFFFFu)
    {
      unsigned int const iEight = static_cast<unsigned int>(iValue % 100000000);
      iValue /= 100000000;
      pEnd -= 8;
      writeFour(pEnd, iEight / 10000);
      writeFour(pEnd + 4, iEight % 10000);
    }
    iHead = static_cast<unsigned int>(iValue);
    pEnd = writeFours(pEnd, iHead);
  }
  if (iHead >= 100)
  {
    pEnd -= 2;
    writePair(pEnd, iHead % 100);
    iHead /= 100;
  }
  if (iHead >= 10)
  {
    writePair(pEnd - 2, iHead);
  }
  else
  {
    pEnd[-1] = static_cast<char>('0' + iHead);
  }
}

unsigned int numBits(piUInt64 iValue)
{
  return 64 - static_cast<unsigned int>(__builtin_clzll(iValue | 1));
}

/// Decimal digits of a number; 1 for 0.
unsigned int numDecimalDigits(piUInt64 iValue)
{
  static piUInt64 const powers[] = {0,
                                    10,
                                    100,
                                    1000,
                                    10000,
                                    100000,
                                    1000000,
                                    10000000,
                                    100000000,
                                    1000000000,
                                    10000000000,
                                    100000000000,
                                    1000000000000,
                                    10000000000000,
                                    100000000000000,
                                    1000000000000000,
                                    10000000000000000,
                                    100000000000000000,
                                    1000000000000000000,
                                    10000000000000000000ull};
  unsigned int const iGuess = numBits(iValue) * 1233 >> 12; // bits times log10(2), at most one too few
  return iGuess + (iValue >= powers[iGuess] ? 1 : 0);
}

/// In a base known to the compiler, which then divides by multiplication or shift.
template <unsigned int Base>
char* writeInBase(char* pEnd, piUInt64 iValue, char const* pSymbols)
{
  while (iValue > 0xFFFFFFFFu)
  {
    *--pEnd = pSymbols[iValue % Base];
    iValue /= Base;
  }
  unsigned int iRest = static_cast<unsigned int>(iValue);
  do
  {
    *--pEnd = pSymbols[iRest % Base];
    iRest /= Base;
  } while (iRest != 0);
  return pEnd;
}

typedef char* (*tWriteInBase)(char*, piUInt64, char const*);

tWriteInBase const sWriteInBase[] = {
    writeInBase<2>,  writeInBase<3>,  writeInBase<4>,  writeInBase<5>,  writeInBase<6>,  writeInBase<7>,
    writeInBase<8>,  writeInBase<9>,  writeInBase<10>, writeInBase<11>, writeInBase<12>, writeInBase<13>,
    writeInBase<14>, writeInBase<15>, writeInBase<16>, writeInBase<17>, writeInBase<18>, writeInBase<19>,
    writeInBase<20>, writeInBase<21>, writeInBase<22>, writeInBase<23>, writeInBase<24>, writeInBase<25>,
    writeInBase<26>, writeInBase<27>, writeInBase<28>, writeInBase<29>, writeInBase<30>, writeInBase<31>,
    writeInBase<32>, writeInBase<33>, writeInBase<34>, writeInBase<35>, writeInBase<36>};

char* writeDigits(char* pEnd, piUInt64 iValue, unsigned int iBase, char const* pSymbols, bool isUsual)
{
  if (iBase == 10 && isUsual)
  {
    unsigned int const iDigits = numDecimalDigits(iValue);
    writeUsualDecimal(pEnd - iDigits, iDigits, iValue);
    return pEnd - iDigits;
  }
  return sWriteInBase[iBase - 2](pEnd, iValue, pSymbols);
}

enum
{
  MaxWholeDigits = 64 // of 64 bits in base 2
};

piUInt64 magnitude(long long value)
{
  return value < 0 ? 0 - static_cast<piUInt64>(value) : static_cast<piUInt64>(value);
}

/// Eight digits of base 16 in the order of memory. `iLetters` is what letters have above digits.
inline void hexCharacters(char* pCharacters, unsigned int iValue, unsigned int iLetters)
{
  piUInt64 const iOnes = 0x0101010101010101ull;
  piUInt64 iDigits = iValue;
  iDigits = (iDigits | iDigits << 16) & 0x0000FFFF0000FFFFull;
  iDigits = (iDigits | iDigits << 8) & 0x00FF00FF00FF00FFull;
  iDigits = (iDigits | iDigits << 4) & 0x0F0F0F0F0F0F0F0Full;
  piUInt64 const iAreLetters = ((iDigits + 6 * iOnes) >> 4) & iOnes;
  piUInt64 const iText = iDigits + '0' * iOnes + iAreLetters * iLetters;
  piUInt64 const iInOrder = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? __builtin_bswap64(iText) : iText;
  memcpy(pCharacters, &iInOrder, sizeof(iInOrder));
}

/// The usual digits in base 16 without a loop: the parts overlap, so that only few lengths are told apart.
inline void writeUsualHex(char* pText, unsigned int iDigits, piUInt64 iValue, bool isUpperCase)
{
  unsigned int const iLetters = (isUpperCase ? 'A' : 'a') - '9' - 1;
  unsigned int const iLow = static_cast<unsigned int>(iValue);
  if (iDigits > 8)
  {
    hexCharacters(pText, static_cast<unsigned int>(iValue >> (iDigits - 8) * 4), iLetters);
    hexCharacters(pText + iDigits - 8, iLow, iLetters);
    return;
  }
  char first[8];
  hexCharacters(first, iLow << (8 - iDigits) * 4, iLetters);
  if (iDigits >= 4)
  {
    char last[8];
    hexCharacters(last, iLow << 16, iLetters);
    memcpy(pText, first, 4);
    memcpy(pText + iDigits - 4, last, 4);
    return;
  }
  pText[0] = first[0];
  if (iDigits > 1)
  {
    pText[1] = first[1];
    pText[iDigits - 1] = first[iDigits - 1];
  }
}

/// Any alphabet, any base, any width, by way of a buffer.
template <class Target>
__attribute__((noinline)) void writePadded(Target& target, piUInt64 iMagnitude, bool isNegative,
                                           cNumberConversionFormat const& format, bool isUsual)
{
  unsigned int const iWidth = format.fixedWidth();
  char const padding = format.leadingDigit();
  char buffer[MaxWholeDigits + 1];
  char* const pEnd = buffer + sizeof(buffer);
  char* pBegin = writeDigits(pEnd, iMagnitude, format.base(), format.getDigitSymbolSet(), isUsual);
  unsigned int const iDigits = static_cast<unsigned int>(pEnd - pBegin);
  if (iWidth <= iDigits + isNegative)
  {
    if (isNegative)
    {
      *--pBegin = '-';
    }
    appendTo(target, pBegin, iDigits + isNegative);
    return;
  }
  if (iWidth <= sizeof(buffer))
  {
    memset(pEnd - iWidth, padding, iWidth - iDigits);
    if (isNegative)
    {
      *(pEnd - iWidth) = '-';
    }
    appendTo(target, pEnd - iWidth, iWidth);
    return;
  }
  cAsciiString text;
  text.append(pBegin, iDigits);
  text.rightAdjust(iWidth, padding);
  if (isNegative)
  {
    text.at(0) = '-';
  }
  appendTo(target, text.c_str(), text.length());
}

template <class Target>
inline void writeDecimalTo(Target& target, piUInt64 iMagnitude, bool isNegative)
{
  unsigned int const iDigits = numDecimalDigits(iMagnitude);
  char* const pText = target.extend(iDigits + isNegative);
  *pText = '-';
  writeUsualDecimal(pText + isNegative, iDigits, iMagnitude);
}

template <class Target>
__attribute__((noinline)) void writeHexTo(Target& target, piUInt64 iMagnitude, bool isNegative, bool isUpperCase)
{
  unsigned int const iDigits = (numBits(iMagnitude) + 3) / 4;
  char* const pText = target.extend(iDigits + isNegative);
  *pText = '-';
  writeUsualHex(pText + isNegative, iDigits, iMagnitude, isUpperCase);
}

/// For a target that stores bytes: the frequent formats need no buffer.
template <class Target>
inline void writeWhole(Target& target, piUInt64 iMagnitude, bool isNegative, cNumberConversionFormat const& format,
                       bool isUsual)
{
  bool const isPlain = isUsual && format.fixedWidth() == 0;
  if (isPlain && format.base() == 10)
  {
    writeDecimalTo(target, iMagnitude, isNegative);
  }
  else if (isPlain && format.base() == 16)
  {
    writeHexTo(target, iMagnitude, isNegative, format.getDigitSymbolSet()[10] == 'A');
  }
  else
  {
    writePadded(target, iMagnitude, isNegative, format, isUsual);
  }
}

inline void writeWhole(mucs::cString& target, piUInt64 iMagnitude, bool isNegative,
                       cNumberConversionFormat const& format, bool isUsual)
{
  writePadded(target, iMagnitude, isNegative, format, isUsual);
}

// --- text to whole number ---

enum
{
  NoDigit = 0xFF
};

/// Values of the usual digits by character.
struct cDigitValues
{
  unsigned char mValues[256];
  constexpr cDigitValues() : mValues()
  {
    for (unsigned int i = 0; i < 256; ++i)
    {
      mValues[i] = NoDigit;
    }
    for (unsigned int i = 0; i < 36; ++i)
    {
      if (i < 10)
      {
        mValues['0' + i] = static_cast<unsigned char>(i);
        continue;
      }
      mValues['a' + i - 10] = static_cast<unsigned char>(i);
      mValues['A' + i - 10] = static_cast<unsigned char>(i);
    }
  }
};
constexpr cDigitValues sDigitValues;

unsigned int codeOf(char c)
{
  return static_cast<unsigned char>(c);
}

unsigned int codeOf(unsigned int iCodePoint)
{
  return iCodePoint;
}

/// Value of a digit of any alphabet, NoDigit if it is none of the first `iBase`.
unsigned int digitOf(unsigned int iCode, unsigned int iBase, char const* pSymbols)
{
  if (iCode > 0xFF)
  {
    return NoDigit;
  }
  char const symbol = cAsciiString::upperCase(static_cast<char>(iCode));
  for (unsigned int i = 0; i < iBase; ++i)
  {
    if (cAsciiString::upperCase(pSymbols[i]) == symbol)
    {
      return i;
    }
  }
  return NoDigit;
}

template <class Char>
unsigned int skipBlanks(Char const* pText, unsigned int iLength)
{
  unsigned int i = 0;
  while (i < iLength && pText[i] == 0x20)
  {
    ++i;
  }
  return i;
}

/// The characters of a view as one run; null for an empty view, which need not show anything.
char const* runOf(tConstArrayRef<char> const& text)
{
  return text.length() == 0 ? nullptr : text.proxyProvideData(0, text.length());
}

enum DigitKind
{
  DecimalDigits, // base 10 and the usual digits
  UsualDigits,
  SymbolDigits // of any alphabet
};

/// Takes digits from `i` on as long as there are any, and returns where they end.
template <DigitKind Kind, class Char>
inline unsigned int readDigits(Char const* pText, unsigned int i, unsigned int iLength, unsigned int iBase,
                               char const* pSymbols, piUInt64& iResult)
{
  piUInt64 iValue = 0;
  for (; i < iLength; ++i)
  {
    unsigned int const iCode = codeOf(pText[i]);
    unsigned int iDigit;
    if (Kind == DecimalDigits)
    {
      iDigit = iCode - '0';
    }
    else if (Kind == UsualDigits)
    {
      iDigit = iCode > 0xFF ? static_cast<unsigned int>(NoDigit) : sDigitValues.mValues[iCode];
    }
    else
    {
      iDigit = digitOf(iCode, iBase, pSymbols);
    }
    if (iDigit >= (Kind == DecimalDigits ? 10 : iBase))
    {
      break;
    }
    iValue = iValue * (Kind == DecimalDigits ? 10 : iBase) + iDigit;
  }
  iResult = iValue;
  return i;
}

template <class Char>
long long readWhole(Char const* pText, unsigned int iLength, cNumberConversionFormat const& format, bool isUsual)
{
  unsigned int i = format.ignoreLeadingSpaces() ? skipBlanks(pText, iLength) : 0;
  unsigned int iBase = format.base();
  char const* const pSymbols = format.getDigitSymbolSet();
  bool isNegative = false;
  if (i < iLength && pText[i] == '-')
  {
    isNegative = true;
    ++i;
  }
  if (format.baseDetectionEnabled() && iLength - i > 2)
  {
    i += cBasePrefix::detect(pText + i, iLength - i, iBase);
  }
  while (i < iLength && pText[i] == '-')
  {
    isNegative = !isNegative;
    ++i;
  }
  piUInt64 iResult = 0;
  i = !isUsual      ? readDigits<SymbolDigits>(pText, i, iLength, iBase, pSymbols, iResult)
      : iBase == 10 ? readDigits<DecimalDigits>(pText, i, iLength, iBase, pSymbols, iResult)
                    : readDigits<UsualDigits>(pText, i, iLength, iBase, pSymbols, iResult);
  if (i < iLength)
  {
    cFailures::throwInvalidDecimal(pText, iLength, i);
  }
  return static_cast<long long>(isNegative ? 0 - iResult : iResult);
}

// --- fraction to text ---

/// start, start / 10, start / 10 / 10 and so on, each rounded, until 0 is reached.
struct cTenths
{
  enum
  {
    NumTenths = 326
  };
  double mValues[NumTenths];
  explicit constexpr cTenths(double start) : mValues()
  {
    for (unsigned int i = 0; i < NumTenths; ++i)
    {
      mValues[i] = start;
      start /= 10;
    }
  }
  constexpr double at(unsigned int i) const { return i < NumTenths ? mValues[i] : 0; }
};
constexpr cTenths sHalves(0.5);
constexpr cTenths sUnits(1.0);
static_assert(sUnits.mValues[cTenths::NumTenths - 1] == 0, "the table reaches 0");

double const sExactIntegers = 9007199254740992.0; // 2^53: below, a division by 10 never comes to the next integer

/// What a double reads as: up to 309 whole digits and, after at most 323 zeros and 53 digits, no rest.
class cFractionText
{
public:
  cFractionText() : miLength(0), miZeros(0) {}

  void addSign() { mText[miLength++] = '-'; }

  /// The digits of `value`, least significant first, by division. Returns what is behind the point.
  double addWhole(double value, char const* pSymbols, bool isUsual)
  {
    if (value < sExactIntegers)
    {
      // the divisions would give the very digits of the integer
      piUInt64 const iWhole = static_cast<piUInt64>(value);
      char digits[MaxWholeDigits];
      char* const pEnd = digits + sizeof(digits);
      char* const pBegin = writeDigits(pEnd, iWhole, 10, pSymbols, isUsual);
      memcpy(mText + miLength, pBegin, static_cast<size_t>(pEnd - pBegin));
      miLength += static_cast<unsigned int>(pEnd - pBegin);
      return value - static_cast<double>(iWhole);
    }
    unsigned int iFirst = miLength;
    while (value >= 1)
    {
      mText[miLength++] = pSymbols[lastDigit(value)];
      value /= 10;
    }
    for (unsigned int iLast = miLength - 1; iFirst < iLast; ++iFirst, --iLast)
    {
      char const digit = mText[iFirst];
      mText[iFirst] = mText[iLast];
      mText[iLast] = digit;
    }
    return 0;
  }

  void addFraction(double rest, unsigned int iPrecision, bool removeZeros, char const* pSymbols)
  {
    unsigned int iKeep = miLength;
    mText[miLength++] = '.';
    unsigned int i = 0;
    for (; i < iPrecision && rest > 0; ++i)
    {
      rest *= 10;
      unsigned int const iDigit = static_cast<unsigned int>(rest);
      rest -= iDigit;
      mText[miLength++] = pSymbols[iDigit];
      if (iDigit != 0)
      {
        iKeep = miLength;
      }
    }
    if (removeZeros)
    {
      miLength = iKeep;
    }
    else
    {
      miZeros = iPrecision - i;
    }
  }

  template <class Target>
  void appendTo(Target& target, char zero) const
  {
    if (miZeros == 0)
    {
      mstd::appendTo(target, mText, miLength);
      return;
    }
    cAsciiString text;
    text.append(mText, miLength);
    text.leftAdjust(cArrayMemory::addLengths(miLength, miZeros), zero);
    mstd::appendTo(target, text.c_str(), text.length());
  }

private:
  /// `value` modulo 10, exactly. An integer of 2^53 and more has the form m * 2^e, and the last digits of
  /// the powers of two repeat.
  static unsigned int lastDigit(double value)
  {
    if (value < sExactIntegers)
    {
      return static_cast<unsigned int>(static_cast<piUInt64>(value) % 10);
    }
    piUInt64 iBits;
    memcpy(&iBits, &value, sizeof(iBits));
    unsigned int const iExponent = static_cast<unsigned int>(iBits >> 52) - 1075;
    piUInt64 const iMantissa = (iBits & 0xFFFFFFFFFFFFFull) | 0x10000000000000ull;
    static unsigned char const powers[] = {6, 2, 4, 8};
    unsigned int const iPower = iExponent == 0 ? 1 : powers[iExponent % 4];
    return static_cast<unsigned int>(iMantissa % 10) * iPower % 10;
  }

  char mText[800];
  unsigned int miLength;
  unsigned int miZeros; // that follow the text
};

template <class Target>
void writeFraction(Target& target, double value, cNumberConversionFormat const& format, bool isUsual)
{
  if (!(value >= -DBL_MAX && value <= DBL_MAX))
  {
    replaceIn(target, value > 0 ? "+inf" : value < 0 ? "-inf" : "nan");
    return;
  }
  char const* const pSymbols = format.getDigitSymbolSet();
  cFractionText text;
  if (value < 0)
  {
    if (format.isAddIntegerPart())
    {
      text.addSign();
    }
    value = -value;
  }
  value += sHalves.at(format.precision());
  // the largest values can be rounded to infinity if the processor was told to round upwards
  bool const isFinite = value <= DBL_MAX;
  double rest = 0;
  if (format.isAddIntegerPart())
  {
    if (!isFinite)
    {
      cFailures::throwInvalidWholePart();
    }
    rest = text.addWhole(value, pSymbols, isUsual);
  }
  else if (value < sExactIntegers)
  {
    rest = value - static_cast<double>(static_cast<piUInt64>(value));
  }
  if (format.isAddFractionalPart())
  {
    if (!isFinite)
    {
      cFailures::throwInvalidFraction();
    }
    text.addFraction(rest, format.precision(), format.isRemoveTrainlingZeros(), pSymbols);
  }
  text.appendTo(target, pSymbols[0]);
}

// --- text to fraction ---

/// 10 to the power of `iExponent` (below 256), by repeated squaring over its bits.
double powerOfTen(unsigned int iExponent)
{
  double result = 1;
  double power = 10;
  while (iExponent != 0)
  {
    if ((iExponent & 1) != 0)
    {
      result *= power;
    }
    power *= power;
    iExponent >>= 1;
  }
  return result;
}

double applyExponent(double value, unsigned int iExponent, bool isNegative)
{
  // in steps, since 10^309 is infinite where the result need not be
  while (iExponent != 0 && value > 0 && value <= DBL_MAX)
  {
    unsigned int const iStep = iExponent > 255 ? 256 : iExponent;
    double const power = iStep == 256 ? powerOfTen(128) * powerOfTen(128) : powerOfTen(iStep);
    value = isNegative ? value / power : value * power;
    iExponent -= iStep;
  }
  return value;
}

/// Digits of a fraction as they come. The first 15 whole digits are exact, so integers do for them.
class cFractionReader
{
public:
  cFractionReader() : miWhole(0), miWholeDigits(0), mValue(0), miFractionDigits(0), miExponent(0) {}

  void addWholeDigit(unsigned int iDigit)
  {
    if (miWholeDigits < 15)
    {
      miWhole = miWhole * 10 + iDigit;
      mValue = 0;
      ++miWholeDigits;
      return;
    }
    if (miWholeDigits == 15)
    {
      mValue = static_cast<double>(miWhole);
      ++miWholeDigits;
    }
    mValue = mValue * 10 + iDigit;
  }

  void endWhole()
  {
    if (miWholeDigits <= 15)
    {
      mValue = static_cast<double>(miWhole);
      miWholeDigits = 16;
    }
  }

  void addFractionDigit(unsigned int iDigit)
  {
    if (miFractionDigits < cTenths::NumTenths - 1)
    {
      ++miFractionDigits;
      mValue = mValue + iDigit * sUnits.mValues[miFractionDigits];
    }
  }

  void addExponentDigit(unsigned int iDigit)
  {
    // from 1000 on every value but 0 has become infinite or 0
    if (miExponent < 1000)
    {
      miExponent = miExponent * 10 + iDigit;
    }
  }

  double result(bool isExponentNegative) const { return applyExponent(mValue, miExponent, isExponentNegative); }

private:
  piUInt64 miWhole;
  unsigned int miWholeDigits;
  double mValue;
  unsigned int miFractionDigits;
  unsigned int miExponent;
};

template <class Char>
double readFraction(Char const* pText, unsigned int iLength, bool skipSpaces)
{
  enum
  {
    Whole,
    Fraction,
    Exponent
  } state = Whole;
  cFractionReader reader;
  bool isNegative = false;
  bool isExponentNegative = false;
  for (unsigned int i = skipSpaces ? skipBlanks(pText, iLength) : 0; i < iLength; ++i)
  {
    unsigned int const iCode = codeOf(pText[i]);
    unsigned int const iDigit = iCode - '0';
    if (iDigit < 10)
    {
      switch (state)
      {
      case Whole:
        reader.addWholeDigit(iDigit);
        break;
      case Fraction:
        reader.addFractionDigit(iDigit);
        break;
      case Exponent:
        reader.addExponentDigit(iDigit);
        break;
      }
    }
    else if (iCode == '-')
    {
      bool& negative = state == Exponent ? isExponentNegative : isNegative;
      negative = !negative;
    }
    else if (iCode == '.' && state == Whole)
    {
      reader.endWhole();
      state = Fraction;
    }
    else if ((iCode == 'e' || iCode == 'E') && state != Exponent)
    {
      reader.endWhole();
      state = Exponent;
    }
    else if (iCode != '+')
    {
      cFailures::throwInvalidDecimal(pText, iLength, i);
    }
  }
  reader.endWhole();
  double const value = reader.result(isExponentNegative);
  return isNegative ? -value : value;
}

} // namespace

// The forms of the class are thin: each template above is written once for all strings.

void cNumberConversion::toString(cAsciiString& target, unsigned long long value, cNumberConversionFormat const& format)
{
  writeWhole(target, value, false, format, format.mUsualDigits);
}

void cNumberConversion::toString(cAsciiString& target, long long value, cNumberConversionFormat const& format)
{
  writeWhole(target, magnitude(value), value < 0, format, format.mUsualDigits);
}

void cNumberConversion::toString(mucs::cString& target, unsigned long long value, cNumberConversionFormat const& format)
{
  writeWhole(target, value, false, format, format.mUsualDigits);
}

void cNumberConversion::toString(mucs::cString& target, long long value, cNumberConversionFormat const& format)
{
  writeWhole(target, magnitude(value), value < 0, format, format.mUsualDigits);
}

void cNumberConversion::toString(tArray<char>& target, unsigned long long value, cNumberConversionFormat const& format)
{
  writeWhole(target, value, false, format, format.mUsualDigits);
}

void cNumberConversion::toString(tArray<char>& target, long long value, cNumberConversionFormat const& format)
{
  writeWhole(target, magnitude(value), value < 0, format, format.mUsualDigits);
}

cAsciiString cNumberConversion::toString(unsigned long long value, cNumberConversionFormat const& format)
{
  cAsciiString result;
  toString(result, value, format);
  return result;
}

cAsciiString cNumberConversion::toString(long long value, cNumberConversionFormat const& format)
{
  cAsciiString result;
  toString(result, value, format);
  return result;
}

void cNumberConversion::toStringFromDouble(cAsciiString& target, double value, cNumberConversionFormat const& format)
{
  writeFraction(target, value, format, format.mUsualDigits);
}

void cNumberConversion::toStringFromDouble(mucs::cString& target, double value, cNumberConversionFormat const& format)
{
  writeFraction(target, value, format, format.mUsualDigits);
}

void cNumberConversion::toStringFromDouble(tArrayRef<char>& target, double value, cNumberConversionFormat const& format)
{
  writeFraction(target, value, format, format.mUsualDigits);
}

cAsciiString cNumberConversion::toStringFromDouble(double value, cNumberConversionFormat const& format)
{
  cAsciiString result;
  toStringFromDouble(result, value, format);
  return result;
}

long long cNumberConversion::fromString(cAsciiString const& text, cNumberConversionFormat const& format)
{
  return readWhole(text.c_str(), text.length(), format, format.mUsualDigits);
}

long long cNumberConversion::fromString(mucs::cString const& text, cNumberConversionFormat const& format)
{
  return readWhole(text.data(true), text.length(), format, format.mUsualDigits);
}

long long cNumberConversion::fromString(tConstArrayRef<char> const& text, cNumberConversionFormat const& format)
{
  return readWhole(runOf(text), text.length(), format, format.mUsualDigits);
}

double cNumberConversion::fromStringToDouble(cAsciiString const& text, cNumberConversionFormat const& format)
{
  return readFraction(text.c_str(), text.length(), format.ignoreLeadingSpaces());
}

double cNumberConversion::fromStringToDouble(mucs::cString const& text, cNumberConversionFormat const& format)
{
  return readFraction(text.data(true), text.length(), format.ignoreLeadingSpaces());
}

double cNumberConversion::fromStringToDouble(tConstArrayRef<char> const& text, cNumberConversionFormat const& format)
{
  return readFraction(runOf(text), text.length(), format.ignoreLeadingSpaces());
}

} // namespace mstd
