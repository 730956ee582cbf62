#ifndef MORTISE_TESTS_SUPPORT_CBYTEENDEC_H
#define MORTISE_TESTS_SUPPORT_CBYTEENDEC_H

#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tConstArrayRef.h"
#include "ucs/cAbstractEnDec.h"
#include "ucs/cString.h"

namespace support
{

/// One byte is one code point: nothing is lost on the way.
class cByteEnDec : public mucs::cAbstractEnDec
{
public:
  using mucs::cAbstractEnDec::decode;
  using mucs::cAbstractEnDec::encode;

  mstd::cAsciiString name() const override { return "bytes"; }
  void encode(mucs::cString const& sText, mstd::tArray<char>& aOut) const override
  {
    for (unsigned int i = 0; i < sText.length(); ++i)
    {
      aOut.append(static_cast<char>(sText[i]));
    }
  }
  void decode(mstd::tConstArrayRef<char> const& rBytes, mucs::cString& sOut) const override
  {
    for (unsigned int i = 0; i < rBytes.proxyLength(); ++i)
    {
      sOut.append(static_cast<unsigned char>(rBytes.proxyAt(i)));
    }
  }
};

} // namespace support

#endif
