#ifndef MORTISE_UCS_CENDECUTF16_H
#define MORTISE_UCS_CENDECUTF16_H

#include "ucs/cAbstractEnDec.h"

namespace mucs
{
/// UTF-16 in either byte order, as bytes or as 16-bit units.
///
/// Failures are cRuntimeException: an odd byte at the end, a missing or wrong byte order mark, a surrogate
/// without its partner, a code point that UTF-16 cannot hold.
class MORTISE_API cEnDecUTF16 : public cAbstractEnDec
{
public:
  enum Flags
  {
    LittleEndian = 1,
    BigEndian = 2, ///< Wins over LittleEndian.
    /// A mark stands at the start: encoding writes one, in the order of the other flags; decoding takes the
    /// order from it and ignores the other flags.
    ByteOrderMark = 4
  };

  /// `iFlags` is a sum of Flags. With no order given, decoding expects a mark and encoding writes
  /// little-endian without one.
  explicit cEnDecUTF16(unsigned int iFlags);

  using cAbstractEnDec::decode;
  using cAbstractEnDec::encode;
  using cAbstractEnDec::encodeCString;

  mstd::cAsciiString name() const override;
  void encode(cString const& sText, mstd::tArray<char>& aOut) const override;
  void encode(cString const& sText, mstd::tArray<unsigned short>& aOut) const override;
  void decode(mstd::tConstArrayRef<char> const& rBytes, cString& sOut) const override;

  /// As encode(), and one 0 unit behind the text.
  virtual void encodeCString(cString const& sText, mstd::tArray<unsigned short>& aOut) const;
  /// Appends the units up to the first 0 unit. Null raises cBugException.
  virtual void decodeCString(unsigned short const* pUnits, cString& sOut) const;

private:
  unsigned int miFlags;
};
} // namespace mucs

#endif
