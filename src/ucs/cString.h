#ifndef MORTISE_UCS_CSTRING_H
#define MORTISE_UCS_CSTRING_H

#include "pi/piTypes.h"
#include "std/tArray.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mstd
{
class cAsciiString;
class cNumberConversionFormat;
} // namespace mstd

namespace mucs
{
/// String of 32-bit code points, for all human-readable text and all file names.
///
/// One element is one code point, so an index, a length and a comparison need no decoding; bytes are
/// converted at the edges, by a cAbstractEnDec. There is no terminator and any value may stand in the
/// text, also 0. Strings grow in sectors of four code points and keep their pool when they are erased.
///
/// Units:     lengths, widths and indexes count code points.
/// Ownership: owns its pool. A copy takes grow step and fit-on-erase from its source.
/// Errors:    those of tArray; std::bad_alloc leaves the string as it was.
/// Threads:   no lock, belongs to one thread at a time.
class MORTISE_API cString : public mstd::tArray<unsigned int>
{
public:
  typedef mstd::tArray<unsigned int> cArray;

  cString();
  /// Each byte, taken as unsigned, becomes one code point: 0x80 to 0xFF read as Latin-1. Null gives an empty string.
  cString(char const* sText);
  /// Takes the elements up to a 0 element as they are. Null gives an empty string.
  cString(wchar_t const* sText);
  /// As fromAscii().
  cString(mstd::cAsciiString const& sText, char cReplacement);
  cString(cString const& sOther);
  cString(cString&& sOther) noexcept; ///< Takes pool and settings; leaves an empty string without a pool.
  ~cString() override;

  cString& operator=(cString const& sOther);
  cString& operator=(cString&& sOther) noexcept;
  cString& operator=(char const* sText);
  cString& operator=(cArray const& aElements); ///< The elements only: the settings are those of a fresh string.

  /// Appends `sText` with each byte widened, not decoded. Null appends nothing.
  void appendC(char const* sText);
  void appendC(char const* pText, unsigned int iLength);
  /// Replaces the contents; a byte with its top bit set becomes `iReplacement`.
  void fromAscii(mstd::cAsciiString const& sText, unsigned int iReplacement);
  /// Replaces the contents by the decoded bytes. If decoding fails (cRuntimeException) the string stays as it was.
  void fromUTF8(mstd::tConstArrayRef<char> const& rBytes);

  /// Appends to `sOut`; a code point above 127 becomes `cReplacement`.
  void toAscii(mstd::cAsciiString& sOut, char cReplacement) const;
  mstd::cAsciiString ascii(char cReplacement) const; ///< As toAscii(), as a new string.
  void toUTF8(mstd::tArray<char>& aOut) const;       ///< Appends the text in UTF-8, whatever the default encoder.
  mstd::tArray<char> toUTF8() const;

  bool operator==(cString const& sOther) const;
  bool operator==(wchar_t const* sText) const; ///< Same elements up to the 0 element, same length. Null: false.
  bool operator==(mstd::cAsciiString const& sText) const; ///< ccs() of its c_str().
  bool operator==(char const* sText) const;               ///< ccs().
  bool operator!=(cString const& sOther) const { return !(*this == sOther); }
  bool operator!=(wchar_t const* sText) const { return !(*this == sText); }
  bool operator!=(mstd::cAsciiString const& sText) const { return !(*this == sText); }
  bool operator!=(char const* sText) const { return !(*this == sText); }
  /// Compares with a text that ends at its 0 byte; its bytes count as unsigned. Null: false.
  bool ccs(char const* sText) const;

  static unsigned int upperCase(unsigned int iCodePoint); ///< Changes a to z only.
  static unsigned int lowerCase(unsigned int iCodePoint); ///< Changes A to Z only.
  void upperCase();                                       ///< In place, see the static form.
  void lowerCase();

  void ltrim(); ///< Removes code points 0x20 at the start, no other blanks.
  void rtrim();
  void trim();

  /// Appends; the right operand is copied first, so a string may be added to itself.
  cString& operator+=(cString const& sOther);
  cString& addString(cString const& sOther); ///< As operator+=.

  // The numeric forms without a format use the system's default one.
  cString& addNum(long long iValue);
  cString& addNum(long long iValue, mstd::cNumberConversionFormat const& fFormat);
  cString& addUNum(unsigned long long iValue);
  cString& addUNum(unsigned long long iValue, mstd::cNumberConversionFormat const& fFormat);
  cString& addNum32(int iValue);
  cString& addNum32(int iValue, mstd::cNumberConversionFormat const& fFormat);
  cString& addUNum32(unsigned int iValue);
  cString& addUNum32(unsigned int iValue, mstd::cNumberConversionFormat const& fFormat);
  cString& addDouble(double dValue);
  cString& addDouble(double dValue, mstd::cNumberConversionFormat const& fFormat);

  // As the forms above, replacing the contents.
  cString& setNum(long long iValue);
  cString& setNum(long long iValue, mstd::cNumberConversionFormat const& fFormat);
  cString& setUNum(unsigned long long iValue);
  cString& setUNum(unsigned long long iValue, mstd::cNumberConversionFormat const& fFormat);
  cString& setNum32(int iValue);
  cString& setNum32(int iValue, mstd::cNumberConversionFormat const& fFormat);
  cString& setUNum32(unsigned int iValue);
  cString& setUNum32(unsigned int iValue, mstd::cNumberConversionFormat const& fFormat);
  cString& setDouble(double dValue);
  cString& setDouble(double dValue, mstd::cNumberConversionFormat const& fFormat);

  /// A character that is no digit raises cRuntimeException with its index. Overflow wraps in 64 bits.
  long long toInt() const;
  long long toInt(mstd::cNumberConversionFormat const& fFormat) const;
  unsigned long long toUInt() const;
  unsigned long long toUInt(mstd::cNumberConversionFormat const& fFormat) const;
  double toDouble() const;
  double toDouble(mstd::cNumberConversionFormat const& fFormat) const;

  // Padding up to `iWidth`; a string that is as long or longer stays as it is.
  void leftAdjust(unsigned int iWidth, unsigned int iFill = 0x20);  ///< Text on the left.
  void rightAdjust(unsigned int iWidth, unsigned int iFill = 0x20); ///< Text on the right.
  void adjust(unsigned int iWidth, unsigned int iFill = 0x20);      ///< Text in the middle; an odd rest goes behind it.
  /// Exactly `iWidth` code points (or those of the suffix, if it is longer): a longer text is cut and ends in
  /// `sSuffix`, a shorter one is padded at its end.
  void setFixedLength(unsigned int iWidth, cString const& sSuffix, unsigned int iFill = 0x20);

  cString operator+(cString const& sOther) const;

  cArray& array() { return *this; }
  cArray const& array() const { return *this; }

  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& sSerializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& sDeserializer);

private:
  void initialize();
  template <typename Char>
  void appendWidened(Char const* pText, unsigned int iLength);
};

/// Puts `sText` in front of `sRight`, which is changed and returned.
MORTISE_API cString& operator+(char const* sText, cString& sRight);
MORTISE_API cString& operator+(wchar_t const* sText, cString& sRight);
} // namespace mucs

#endif
