#ifndef MORTISE_UCS_CENDECUTF8_H
#define MORTISE_UCS_CENDECUTF8_H

#include "ucs/cAbstractEnDec.h"

namespace mucs
{
/// UTF-8, the encoder that the system uses by default.
///
/// Decoding is lenient: continuation bytes are not checked for their top bits, overlong forms are
/// accepted and a stray continuation byte is the character of its own value. Three things fail, as
/// cRuntimeException: a 0 byte anywhere, a sequence that the end of the data cuts off, and a sequence of
/// more than four bytes. Code points from 0x30D40 on are written as five bytes, which do not read back.
class MORTISE_API cEnDecUTF8 : public cAbstractEnDec
{
public:
  using cAbstractEnDec::decode;
  using cAbstractEnDec::encode;

  mstd::cAsciiString name() const override;
  void encode(cString const& sText, mstd::tArray<char>& aOut) const override;
  /// The bytes may lie in any proxy; a block size of 0 lets them be fetched in one run.
  void decode(mstd::tConstArrayRef<char> const& rBytes, cString& sOut) const override;

  /// Appends one code point, any value of 32 bits, in one to five bytes.
  static void encodeChar(unsigned int iCodePoint, mstd::tArray<char>& aOut);
};
} // namespace mucs

#endif
