#include "cText.h"

#include "pi/cSystem.h"
#include "std/cAbstractException.h"
#include "std/cAsciiStringStream.h"
#include "std/cConstCStringRef.h"
#include "std/tConstArrayRef.h"
#include "ucs/cAbstractEnDec.h"

namespace
{
/// Length of the UTF-8 sequence at the front of the bytes, if it is well formed and stands for something that may be
/// shown; else 0.
unsigned int visibleSequence(char const* pBytes, unsigned int iSize)
{
  unsigned char const c = static_cast<unsigned char>(pBytes[0]);
  if (c < 0x80)
  {
    return (c >= 0x20 && c != 0x7F) || c == '\t' ? 1 : 0;
  }
  unsigned int const iLength = c >= 0xC2 && c < 0xE0 ? 2 : c >= 0xE0 && c < 0xF0 ? 3 : c >= 0xF0 && c < 0xF5 ? 4 : 0;
  if (iLength == 0 || iLength > iSize)
  {
    return 0;
  }
  for (unsigned int i = 1; i < iLength; i++)
  {
    if ((static_cast<unsigned char>(pBytes[i]) & 0xC0) != 0x80)
    {
      return 0;
    }
  }
  unsigned char const second = static_cast<unsigned char>(pBytes[1]);
  // Control characters, too long forms, surrogates, and what lies above the last code point.
  bool const bBad = (c == 0xC2 && second < 0xA0) || (c == 0xE0 && second < 0xA0) || (c == 0xED && second >= 0xA0) ||
                    (c == 0xF0 && second < 0x90) || (c == 0xF4 && second >= 0x90);
  return bBad ? 0 : iLength;
}
} // namespace

mucs::cString cText::decode(char const* text)
{
  try
  {
    mstd::cConstCStringRef const bytes(text);
    mucs::cString decoded;
    mpi::system().defaults.enDec.decode(mstd::tConstArrayRef<char>(bytes), decoded);
    return decoded;
  }
  catch (mstd::cAbstractException const&)
  {
    return mucs::cString(text);
  }
}

mstd::cAsciiString cText::label(mstd::cAsciiString const& name)
{
  mstd::cAsciiString label;
  for (unsigned int i = 0; i < name.length(); i++)
  {
    char const c = name.at(i);
    label += mstd::cAsciiString::isPrintable(c) && c != '"' && c != '\\' ? c : '_';
  }
  return label;
}

mstd::cAsciiString cText::visible(char const* pBytes, unsigned int iSize)
{
  static char const digits[] = "0123456789abcdef";
  mstd::cAsciiString text;
  unsigned int i = 0;
  while (i < iSize)
  {
    unsigned int const iLength = visibleSequence(pBytes + i, iSize - i);
    if (iLength != 0)
    {
      text.append(pBytes + i, iLength);
      i += iLength;
      continue;
    }
    unsigned char const c = static_cast<unsigned char>(pBytes[i++]);
    text += "\\x";
    text += digits[c >> 4];
    text += digits[c & 15];
  }
  return text;
}

mstd::cAsciiString cText::message(mstd::cAbstractException const& e)
{
  mucs::cString text;
  e.createMessage(text, mucs::cString(" "), mstd::cAbstractException::WithHistory, &mpi::system().locale);
  mstd::tArray<char> bytes;
  mpi::system().defaults.enDec.encodeCString(text, bytes);
  return mstd::cAsciiString(bytes.data());
}

mstd::cAsciiString cText::size(piUInt64 iBytes)
{
  static char const* const units[] = {" B", " kB", " MB", " GB", " TB", " PB", " EB"};
  unsigned int iUnit = 0;
  piUInt64 iTenths = 0; // of the unit, once there is one
  while (iBytes >= 1000)
  {
    iTenths = iBytes % 1000 / 100;
    iBytes /= 1000;
    iUnit++;
  }
  mstd::cAsciiString text;
  text << iBytes;
  if (iUnit != 0)
  {
    text << "." << iTenths;
  }
  text << units[iUnit];
  return text;
}
