#include "cMessage.h"

#include "pi/cSystem.h"
#include "std/cAbstractException.h"
#include "std/cConstCStringRef.h"
#include "std/tArray.h"
#include "std/tConstArrayRef.h"
#include "ucs/cAbstractEnDec.h"
#include "ucs/cString.h"

std::string cMessage::of(mstd::cAbstractException const& e)
{
  mucs::cString text;
  e.createMessage(text, mucs::cString(" "));
  return bytes(text);
}

std::string cMessage::bytes(mucs::cString const& text)
{
  mstd::tArray<char> encoded;
  mpi::system().defaults.enDec.encodeCString(text, encoded);
  return encoded.data();
}

mucs::cString cMessage::text(std::string const& bytes)
{
  mstd::cConstCStringRef const source(bytes.c_str());
  mucs::cString text;
  mpi::system().defaults.enDec.decode(mstd::tConstArrayRef<char>(source), text);
  return text;
}

std::string cMessage::clean(std::string const& text, char const* replacement)
{
  std::string result;
  size_t const size = text.size();
  for (size_t i = 0; i < size;)
  {
    unsigned char const first = static_cast<unsigned char>(text[i]);
    size_t const length = first < 0x80 ? 1 : first >= 0xC2 && first < 0xE0 ? 2 : first >= 0xE0 && first < 0xF0 ? 3 : 4;
    unsigned int code = length == 1 ? first : first & (0x7Fu >> length);
    bool bGood = (first >= 0x20 && first < 0x7F) || (first >= 0xC2 && first < 0xF5);
    for (size_t k = 1; bGood && k < length; ++k)
    {
      bGood = i + k < size && (static_cast<unsigned char>(text[i + k]) & 0xC0) == 0x80;
      code = bGood ? code << 6 | (static_cast<unsigned char>(text[i + k]) & 0x3Fu) : 0;
    }
    // Control characters, what could be written in fewer bytes, halves of pairs, and numbers beyond all characters.
    unsigned int const least = length == 4 ? 0x10000u : length == 3 ? 0x800u : length == 2 ? 0xA0u : 0x20u;
    bGood = bGood && code >= least && (code < 0xD800 || code > 0xDFFF) && code <= 0x10FFFF;
    result += bGood ? text.substr(i, length) : replacement;
    i += bGood ? length : 1;
  }
  return result;
}

std::string cMessage::harmless(std::string text)
{
  for (char& c : text)
  {
    if (c != '\n' && (c < 0x20 || c > 0x7E))
    {
      c = '?';
    }
  }
  return text;
}
