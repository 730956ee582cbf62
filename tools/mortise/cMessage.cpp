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
  mstd::tArray<char> bytes;
  mpi::system().defaults.enDec.encodeCString(text, bytes);
  return bytes.data();
}

mucs::cString cMessage::text(std::string const& bytes)
{
  mstd::cConstCStringRef const source(bytes.c_str());
  mucs::cString text;
  mpi::system().defaults.enDec.decode(mstd::tConstArrayRef<char>(source), text);
  return text;
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
