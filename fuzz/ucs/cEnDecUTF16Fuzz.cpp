#include "std/cRuntimeException.h"
#include "std/tConstArrayRef.h"
#include "ucs/cEnDecUTF16.h"
#include "ucs/cString.h"

#include <stdlib.h>

/// Decodes the bytes behind the first, which gives the flags; what was read has to survive a round trip.
extern "C" int LLVMFuzzerTestOneInput(unsigned char const* pData, size_t size)
{
  if (size == 0)
  {
    return 0;
  }
  mucs::cEnDecUTF16 const enDec(pData[0] % 8);
  mucs::cEnDecUTF16 const marked((pData[0] % 8) | mucs::cEnDecUTF16::ByteOrderMark);
  mstd::tArray<char> bytes;
  bytes.append(reinterpret_cast<char const*>(pData) + 1, static_cast<unsigned int>(size - 1));
  mucs::cString text;
  try
  {
    enDec.decode(bytes, text);
  }
  catch (mstd::cRuntimeException const&)
  {
  }
  mstd::tArray<char> encoded;
  mucs::cString again;
  marked.encode(text, encoded);
  marked.decode(encoded, again);
  if (!(again == text))
  {
    abort();
  }
  mstd::tArray<unsigned short> units;
  marked.encodeCString(text, units);
  mucs::cString head;
  marked.decodeCString(units.data(), head);
  if (head.length() > text.length())
  {
    abort();
  }
  return 0;
}
