#include "ucs/cAbstractEnDec.h"

#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "ucs/cUCSExceptions.h"

namespace mucs
{
cAbstractEnDec::~cAbstractEnDec() = default;

void cAbstractEnDec::encode(cString const&, mstd::tArray<char>&) const
{
  cUCSExceptions::throwNotImplemented("$MTR$Not implemented: %name%::encode (ucs32 -> ascii)", name());
}

void cAbstractEnDec::encode(cString const&, mstd::tArray<unsigned short>&) const
{
  cUCSExceptions::throwNotImplemented("$MTR$Not implemented: %name%::encode (ucs32 -> ucs16)", name());
}

void cAbstractEnDec::reEncode(cString const&, cString&) const {}

void cAbstractEnDec::encodeCString(cString const& sText, mstd::tArray<char>& aOut) const
{
  encode(sText, aOut);
  char const cTerminator = 0;
  aOut.append(&cTerminator, 1);
}

void cAbstractEnDec::decode(mstd::tConstArrayRef<char> const&, cString&) const
{
  cUCSExceptions::throwNotImplemented("$MTR$Not implemented: %name%::decode (ucs16 -> ascii)", name());
}

void cAbstractEnDec::decode(mstd::tConstArrayRef<unsigned short> const&, cString&) const
{
  cUCSExceptions::throwNotImplemented("$MTR$Not implemented: %name%::decode (ucs16 -> ucs32)", name());
}

void cAbstractEnDec::reDecode(cString const&, cString&) const {}
} // namespace mucs
