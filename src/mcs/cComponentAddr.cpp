#include "mcs/cComponentAddr.h"

#include "mcs/cMCSExceptions.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/cAbstractException.h"
#include "std/cAsciiStringTokenizer.h"
#include "std/cNumberConversionFormat.h"

#include <utility>

namespace mcs
{
namespace
{
enum
{
  Colon = 1
};

char const IdLabel[] = "ID";
char const QueueLabel[] = "Queue";

unsigned int readNumber(mstd::cAsciiStringTokenizer& tokenizer)
{
  mstd::cAsciiString piece;
  if (tokenizer.expectToken(piece) == Colon)
  {
    cMCSExceptions::throwExpectingColon(); // it stands where a number belongs
  }
  return static_cast<unsigned int>(piece.toInt());
}
} // namespace

cComponentAddr::cComponentAddr(mstd::cAsciiString const& text) : cComponentAddr()
{
  fromString(text);
}

void cComponentAddr::swap(cComponentAddr& other) noexcept
{
  std::swap(miModuleID, other.miModuleID);
  std::swap(miQueueID, other.miQueueID);
  std::swap(mValid, other.mValid);
}

bool cComponentAddr::operator==(cComponentAddr const& other) const
{
  return miModuleID == other.miModuleID && miQueueID == other.miQueueID && mValid == other.mValid;
}

mstd::cAsciiString cComponentAddr::toString() const
{
  mstd::cNumberConversionFormat const decimal(10);
  mstd::cAsciiString text;
  text.addUNum32(miQueueID, decimal);
  text += ':';
  text.addUNum32(miModuleID, decimal);
  return text;
}

void cComponentAddr::fromString(mstd::cAsciiString const& text)
{
  try
  {
    mstd::cAsciiStringTokenizerContext context;
    context.addKey(mstd::cAsciiString(":"), Colon);
    mstd::cAsciiStringTokenizer tokenizer(text, &context);

    unsigned int const queueID = readNumber(tokenizer);
    mstd::cAsciiString end;
    unsigned int id = 0;
    if (!tokenizer.getNextToken(end, id) || id != Colon)
    {
      cMCSExceptions::throwExpectingColon();
    }
    unsigned int const moduleID = readNumber(tokenizer);
    *this = cComponentAddr(queueID, moduleID);
  }
  catch (mstd::cAbstractException const& cause)
  {
    cMCSExceptions::throwMalformedComponentAddress(text, cause);
  }
}

msa::cAbstractSerializer& cComponentAddr::operator>>(msa::cAbstractSerializer& serializer) const
{
  if (serializer.noLabelsPreferred())
  {
    miModuleID >> serializer;
    return miQueueID >> serializer;
  }
  miModuleID >> serializer.newLabel(mstd::cAsciiString(IdLabel));
  return miQueueID >> serializer.newLabel(mstd::cAsciiString(QueueLabel));
}

msa::cAbstractDeserializer& cComponentAddr::operator<<(msa::cAbstractDeserializer& deserializer)
{
  cComponentAddr read(0, 0);
  if (deserializer.noLabelsPreferred())
  {
    read.miModuleID << deserializer;
    read.miQueueID << deserializer;
  }
  else
  {
    read.miModuleID << deserializer.findLabel(mstd::cAsciiString(IdLabel));
    read.miQueueID << deserializer.findLabel(mstd::cAsciiString(QueueLabel));
  }
  swap(read);
  return deserializer;
}

} // namespace mcs
