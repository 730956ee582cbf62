#ifndef MORTISE_STD_CNUMBERCONVERSION_H
#define MORTISE_STD_CNUMBERCONVERSION_H

#include "std/cAsciiString.h"
#include "std/tArrayTraits.h"

namespace mucs
{
class cString;
}

namespace mstd
{
class cNumberConversionFormat;

/// Turns numbers into text and back, without the platform's help: the results are the same on every
/// processor and under every locale, to the last digit.
///
/// A target is appended to. If a conversion fails, it stays as it was.
///
/// Errors:  a character that is no digit raises cRuntimeException with the text and the index of the
///          character; no memory raises std::bad_alloc.
/// Threads: no state.
/// Cost:    O(length of the text).
class MORTISE_API cNumberConversion
{
public:
  /// \name Whole number to text
  /// In the format's base, padded on the left to its fixed width; a sign stands in front of the padding.
  /// @{
  static void toString(cAsciiString& target, unsigned long long value, cNumberConversionFormat const& format);
  static void toString(cAsciiString& target, long long value, cNumberConversionFormat const& format);
  static void toString(mucs::cString& target, unsigned long long value, cNumberConversionFormat const& format);
  static void toString(mucs::cString& target, long long value, cNumberConversionFormat const& format);
  static void toString(tArray<char, tArrayByteLevelTraits<char>>& target, unsigned long long value,
                       cNumberConversionFormat const& format);
  static void toString(tArray<char, tArrayByteLevelTraits<char>>& target, long long value,
                       cNumberConversionFormat const& format);
  static cAsciiString toString(unsigned long long value, cNumberConversionFormat const& format);
  static cAsciiString toString(long long value, cNumberConversionFormat const& format);
  /// @}

  /// \name Fraction to text
  /// Always decimal, rounded half up at the last digit of the format's precision. What is infinite or no
  /// number reads "+inf", "-inf", "nan" and replaces what the target held.
  ///
  /// The digits are those of double arithmetic, one by one: half a unit of the last place is added, whole
  /// digits come by division by 10, digits behind the point by multiplication with 10.
  /// @{
  static void toStringFromDouble(cAsciiString& target, double value, cNumberConversionFormat const& format);
  static void toStringFromDouble(mucs::cString& target, double value, cNumberConversionFormat const& format);
  static void toStringFromDouble(tArrayRef<char, tArrayByteLevelTraits<char>>& target, double value,
                                 cNumberConversionFormat const& format);
  static cAsciiString toStringFromDouble(double value, cNumberConversionFormat const& format);
  /// @}

  /// \name Text to whole number
  /// Blanks, signs, a base prefix where the format allows one, digits in either case. An empty text is 0.
  /// What does not fit 64 bits wraps round.
  /// @{
  static long long fromString(cAsciiString const& text, cNumberConversionFormat const& format);
  static long long fromString(mucs::cString const& text, cNumberConversionFormat const& format);
  static long long fromString(tConstArrayRef<char, tArrayByteLevelTraits<char>> const& text,
                              cNumberConversionFormat const& format);
  /// @}

  /// \name Text to fraction
  /// Always decimal: digits, a point, digits, "e" or "E", exponent. An empty text is 0. What is too large
  /// is infinite, what is too small is 0; an exponent of any length is read in bounded time.
  /// @{
  static double fromStringToDouble(cAsciiString const& text, cNumberConversionFormat const& format);
  static double fromStringToDouble(mucs::cString const& text, cNumberConversionFormat const& format);
  static double fromStringToDouble(tConstArrayRef<char, tArrayByteLevelTraits<char>> const& text,
                                   cNumberConversionFormat const& format);
  /// @}
};

} // namespace mstd

#endif
