#include "support/foreignType.h"

#include "sa/cReferenceFrame.h"

namespace
{

struct cSeenTwice
{
  int miValue;
};

msa::cAbstractSerializer& operator>>(cSeenTwice const& value, msa::cAbstractSerializer& serializer)
{
  return value.miValue >> serializer;
}

msa::cAbstractDeserializer& operator<<(cSeenTwice& value, msa::cAbstractDeserializer& deserializer)
{
  return value.miValue << deserializer;
}

} // namespace

int& support::addForeign(msa::cReferenceFrame& frame)
{
  static cSeenTwice value = {0};
  frame.addRef(value, true, true);
  return value.miValue;
}
