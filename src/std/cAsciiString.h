#ifndef MORTISE_STD_CASCIISTRING_H
#define MORTISE_STD_CASCIISTRING_H

#include "std/tArray.h"

namespace mstd
{
class cNumberConversionFormat;

/// Byte string for identifiers, type names and debug text; what people read is a mucs::cString.
///
/// A zero-terminated array of char: length(), at(), append(), insert(), erase(), find() and replace() are those of
/// tArray. Every string owns a pool of at least one sector from the start.
///
/// Units:   lengths and positions count bytes.
/// Errors:  those of tArray. A failed operation leaves the string as it was.
/// Threads: no lock.
class MORTISE_API cAsciiString : public tArray<char, tArrayAsciiStringTraits<char>>
{
  typedef tArray<char, tArrayAsciiStringTraits<char>> cBase;

public:
  cAsciiString() {}
  /// Copy of a zero-terminated text; null gives an empty string.
  cAsciiString(char const* text);
  cAsciiString(cAsciiString const&) = default;
  /// Takes the contents over; `other` is empty afterwards.
  cAsciiString(cAsciiString&&) = default;
  /// The tail of `other` from `start` on. Errors: a start behind its end is a size out of range.
  cAsciiString(cAsciiString const& other, unsigned int start);
  /// Copy of all bytes of a view.
  cAsciiString(tConstArrayRef<char, tArrayByteLevelTraits<char>> const& bytes);
  ~cAsciiString() override;

  /// The contents with a 0 behind them. Never null. Invalidated by every change.
  char const* c_str() const { return data(true); }
  /// Whether `c` is one of 0x20 to 0x7E.
  static bool isPrintable(char c) { return c >= 0x20 && c <= 0x7E; }

  /// \name Case
  /// Only a to z and A to Z are changed.
  /// @{
  static char upperCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }
  static char lowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
  void toUpper();
  void toLower();
  /// A changed copy.
  cAsciiString upperCase() const;
  /// @}

  /// \name Trimming
  /// Removes blanks (0x20), not tabs and line ends. Nothing happens, also to the pool, if there is none.
  /// @{
  void ltrim();
  void rtrim();
  void trim();
  /// @}

  /// \name Comparison
  /// Of equal length and equal up to an embedded 0; a null pointer equals nothing.
  /// @{
  bool operator==(char const* text) const { return isEqual(text, cArrayMemory::textLength(text)); }
  bool operator==(cAsciiString const& other) const { return cBase::operator==(other); }
  bool operator!=(char const* text) const { return !(*this == text); }
  bool operator!=(cAsciiString const& other) const { return !(*this == other); }
  /// Order of the bytes, taken as unsigned, over the whole lengths.
  bool operator<(cAsciiString const& other) const;
  /// @}

  /// \name Appending
  /// A string may be appended to itself; null appends nothing. The numeric forms without a format take the system's
  /// default.
  /// @{
  cAsciiString& operator+=(char const* text);
  cAsciiString& operator+=(cAsciiString const& other);
  cAsciiString& operator+=(char c)
  {
    append(c);
    return *this;
  }
  cAsciiString& addString(char const* text) { return *this += text; }
  cAsciiString& addString(cAsciiString const& other) { return *this += other; }
  cAsciiString& addNum(long long value);
  cAsciiString& addNum(long long value, cNumberConversionFormat const& format);
  cAsciiString& addUNum(unsigned long long value);
  cAsciiString& addUNum(unsigned long long value, cNumberConversionFormat const& format);
  cAsciiString& addNum32(int value);
  cAsciiString& addNum32(int value, cNumberConversionFormat const& format);
  cAsciiString& addUNum32(unsigned int value);
  cAsciiString& addUNum32(unsigned int value, cNumberConversionFormat const& format);
  cAsciiString& addDouble(double value);
  cAsciiString& addDouble(double value, cNumberConversionFormat const& format);
  /// @}

  /// \name Setting
  /// Builds a new string and takes it over. From text and numbers the string gets the default settings of the array,
  /// from a string or an array those of the source.
  /// @{
  cAsciiString& operator=(cAsciiString const& other);
  cAsciiString& operator=(cAsciiString&& other) noexcept;
  cAsciiString& operator=(char const* text);
  cAsciiString& operator=(tArray<char, tArrayAsciiStringTraits<char>> const& other);
  cAsciiString& operator=(tArray<char, tArrayByteLevelTraits<char>> const& other);
  cAsciiString& setNum(long long value);
  cAsciiString& setNum(long long value, cNumberConversionFormat const& format);
  cAsciiString& setUNum(unsigned long long value);
  cAsciiString& setUNum(unsigned long long value, cNumberConversionFormat const& format);
  cAsciiString& setNum32(int value);
  cAsciiString& setNum32(int value, cNumberConversionFormat const& format);
  cAsciiString& setUNum32(unsigned int value);
  cAsciiString& setUNum32(unsigned int value, cNumberConversionFormat const& format);
  cAsciiString& setDouble(double value);
  cAsciiString& setDouble(double value, cNumberConversionFormat const& format);
  /// @}

  /// \name Conversion
  /// As cNumberConversion does it, without a format with the system's default. Errors: cRuntimeException for
  /// a character that is no digit.
  /// @{
  long long toInt() const;
  long long toInt(cNumberConversionFormat const& format) const;
  unsigned long long toUInt() const;
  unsigned long long toUInt(cNumberConversionFormat const& format) const;
  double toDouble() const;
  double toDouble(cNumberConversionFormat const& format) const;
  /// @}

  /// \name Padding
  /// To `width` characters; nothing happens to a string that is that long already.
  /// @{
  /// Fills at the end.
  void leftAdjust(unsigned int width, char fill = ' ');
  /// Fills at the front. Builds a new string, with the array's default settings.
  void rightAdjust(unsigned int width, char fill = ' ');
  /// Fills on both sides, with the odd character behind. Builds a new string, with the array's default settings.
  void adjust(unsigned int width, char fill = ' ');
  /// Makes the string exactly `width` characters long, or as long as the suffix if that is more: fills at the end, or
  /// cuts and ends in `suffix`.
  void setFixedLength(unsigned int width, cAsciiString const& suffix, char fill = ' ');
  /// @}

  cAsciiString operator+(cAsciiString const& other) const;

  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);

private:
  void fillBefore(unsigned int count, unsigned int position, char fill);
};

/// Puts `text` in front of its right operand, which is changed and returned; null puts nothing.
MORTISE_API cAsciiString& operator+(char const* text, cAsciiString& string);
} // namespace mstd

#endif
