#include "cText.h"

#include "cQuiet.h"
#include "std/cAbstractException.h"
#include "std/cConstCStringRef.h"
#include "std/tConstArrayRef.h"

#include <string.h>

mucs::cString cText::decode(char const* text)
{
  cQuiet const quiet;
  try
  {
    mstd::cConstCStringRef const bytes(text);
    mucs::cString decoded;
    decoded.fromUTF8(mstd::tConstArrayRef<char>(bytes));
    return decoded;
  }
  catch (mstd::cAbstractException const&)
  {
    return mucs::cString(text);
  }
}

bool cText::isText(char const* text)
{
  mstd::tArray<char> const bytes = decode(text).toUTF8();
  return bytes.length() == strlen(text) && (bytes.empty() || memcmp(bytes.data(), text, bytes.length()) == 0);
}

mstd::cAsciiString cText::visible(mucs::cString text)
{
  for (unsigned int i = 0; i < text.length(); i++)
  {
    unsigned int const c = text.at(i);
    if (c < 0x20 || (c >= 0x7F && c < 0xA0))
    {
      text.at(i) = 0xFFFD;
    }
  }
  mstd::tArray<char> const bytes = text.toUTF8();
  mstd::cAsciiString visible;
  if (!bytes.empty())
  {
    visible.append(bytes.data(), bytes.length());
  }
  return visible;
}

mstd::cAsciiString cText::message(mstd::cAbstractException const& e)
{
  mucs::cString text;
  e.createMessage(text, mucs::cString(" "));
  return visible(text);
}
