#ifndef MORTISE_STD_CNUMBERCONVERSIONFORMAT_H
#define MORTISE_STD_CNUMBERCONVERSIONFORMAT_H

#include "pi/piTypes.h"

namespace mstd
{
class cAsciiString;

/// How cNumberConversion writes and reads numbers.
///
/// Errors:  a base outside 2 to 36 raises cRuntimeException, a digit index beyond the set
///          cOutOfRangeException; the format stays as it was.
/// Threads: a plain value.
class MORTISE_API cNumberConversionFormat
{
public:
  /// Selects the alphabet of setDigitCase().
  enum DigitCase
  {
    UpperCase = 0,
    LowerCase = 1
  };

  /// A format for whole numbers in `iBase` (2 to 36) and for decimal fractions of up to 14 digits.
  explicit cNumberConversionFormat(unsigned int iBase);
  cNumberConversionFormat(cNumberConversionFormat const&) = default;
  cNumberConversionFormat& operator=(cNumberConversionFormat const&) = default;
  virtual ~cNumberConversionFormat();

  unsigned int base() const { return miBase; }
  /// 2 to 36.
  void setBase(unsigned int iBase);

  /// Least number of characters of a whole number, sign included; 0 means no padding.
  unsigned int fixedWidth() const { return miFixedWidth; }
  void setFixedWidth(unsigned int iWidth) { miFixedWidth = iWidth; }

  /// What pads a whole number on its left up to the fixed width.
  char leadingDigit() const { return mLeadingDigit; }
  void setLeadingDigit(char digit) { mLeadingDigit = digit; }

  DigitCase digitCase() const { return mDigitCase; }
  /// Replaces the whole set of digit symbols, also those set one by one.
  void setDigitCase(DigitCase digitCase);

  /// Whether reading steps over blanks (0x20) in front of the number.
  bool ignoreLeadingSpaces() const { return mIgnoreLeadingSpaces; }
  void setIgnoreLeadingSpaces(bool on) { mIgnoreLeadingSpaces = on; }

  /// Whether reading a whole number takes the base from a prefix such as "0x" or "<8>".
  bool baseDetectionEnabled() const { return mBaseDetectionEnabled; }
  void setBaseDetectionEnabled(bool on) { mBaseDetectionEnabled = on; }

  /// The 36 digits in order of their value, zero-terminated. Valid as long as the format.
  char const* getDigitSymbolSet() const { return mDigitSymbols; }
  /// Symbol of the digit `iDigit`; 36 gives the terminator.
  char digitChar(unsigned int iDigit) const;
  /// Replaces one symbol, so a format can write any alphabet.
  void setDigitSymbol(unsigned int iDigit, char symbol);

  /// Digits behind the point of a fraction.
  unsigned int precision() const { return miPrecision; }
  void setPrecision(unsigned int iPrecision) { miPrecision = iPrecision; }

  bool isRemoveTrainlingZeros() const { return mRemoveTrailingZeros; }
  void setRemoveTrailingZeros(bool on) { mRemoveTrailingZeros = on; }

  /// Whether a fractional number is written with its sign and its whole part.
  bool isAddIntegerPart() const { return mAddIntegerPart; }
  void addIntegerPart(bool on) { mAddIntegerPart = on; }

  /// Whether a fractional number is written with its point and the digits behind it.
  bool isAddFractionalPart() const { return mAddFractionalPart; }
  void addFractionalPart(bool on) { mAddFractionalPart = on; }

  /// Looks for a base prefix at the very start of `text`: "0x", "0h", "0d", "0b", a base from 1 to 36
  /// between angle brackets, or the same behind "<base:". If there is one, returns true, the base and
  /// the number of characters to step over; otherwise false and 0 for both.
  bool detectBase(cAsciiString const& text, unsigned int& iBase, unsigned int& iPrefixLength) const;

  /// The format that everything uses for which no other is given: the one of mpi::system().
  /// To be changed at start-up only.
  static cNumberConversionFormat& getGlobalDefaultNumberConversionFormat();

private:
  friend class cNumberConversion;

  enum
  {
    NumDigitSymbols = 36
  };

  unsigned int miBase;
  unsigned int miFixedWidth = 0;
  char mLeadingDigit = '0';
  DigitCase mDigitCase = LowerCase;
  bool mIgnoreLeadingSpaces = true;
  bool mBaseDetectionEnabled = true;
  char mDigitSymbols[NumDigitSymbols + 2]; // a 0 stays behind the terminator, which may be set like a digit
  bool mUsualDigits = true;                // 0 to 9 and the letters, in either case
  unsigned int miPrecision = 14;
  bool mRemoveTrailingZeros = true;
  bool mAddIntegerPart = true;
  bool mAddFractionalPart = true;
};

} // namespace mstd

#endif
