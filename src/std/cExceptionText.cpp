#include "std/cExceptionText.h"

#include "std/tConstArrayRef.h"

namespace mstd
{
cExceptionText::cExceptionText(char const* text) : mBytes(text) {}

cExceptionText::cExceptionText(cAsciiString const& text)
{
  mBytes.append(text.c_str(), text.length());
}

cAsciiString cExceptionText::string() const
{
  return cAsciiString(tConstArrayRef<char, tArrayByteLevelTraits<char>>(mBytes));
}
} // namespace mstd
