#include "cText.h"

#include "pi/cSystem.h"
#include "std/cAbstractException.h"
#include "std/tConstArrayRef.h"
#include "ucs/cAbstractEnDec.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"

mucs::cString cText::decode(mstd::cAsciiString const& text)
{
  try
  {
    mucs::cString decoded;
    mpi::system().defaults.enDec.decode(mstd::tConstArrayRef<char>(text), decoded);
    return decoded;
  }
  catch (mstd::cAbstractException const&)
  {
    return mucs::cString(text.c_str());
  }
}

mstd::cAsciiString cText::encode(mucs::cString const& text)
{
  mstd::tArray<char> bytes;
  mpi::system().defaults.enDec.encodeCString(text, bytes);
  return mstd::cAsciiString(bytes.data());
}

mstd::cAsciiString cText::message(mucs::cLIMessage const& message)
{
  return encode(mpi::system().locale.translate(message));
}

mstd::cAsciiString cText::message(mstd::cAbstractException const& e)
{
  mucs::cString text;
  e.createMessage(text, mucs::cString(" "), mstd::cAbstractException::WithHistory, &mpi::system().locale);
  return encode(text);
}
