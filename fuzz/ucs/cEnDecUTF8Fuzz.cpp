#include "std/cRuntimeException.h"
#include "std/tConstArrayRef.h"
#include "ucs/cEnDecUTF8.h"
#include "ucs/cString.h"

#include <stdlib.h>

/// Decodes the bytes; what reads well within the range of four bytes has to survive a round trip.
extern "C" int LLVMFuzzerTestOneInput(unsigned char const* pData, size_t size)
{
  mstd::tArray<char> bytes;
  bytes.append(reinterpret_cast<char const*>(pData), static_cast<unsigned int>(size));
  mucs::cString text;
  try
  {
    mucs::cEnDecUTF8().decode(bytes, text);
  }
  catch (mstd::cRuntimeException const&)
  {
  }
  bool readable = text.length() <= size;
  for (unsigned int i = 0; i < text.length() && readable; ++i)
  {
    readable = text.at(i) != 0 && text.at(i) < 0x30D40;
  }
  mucs::cString again;
  if (readable)
  {
    again.fromUTF8(text.toUTF8());
  }
  if (text.length() > size || (readable && !(again == text)))
  {
    abort();
  }
  return 0;
}
