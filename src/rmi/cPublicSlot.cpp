#include "rmi/cPublicSlot.h"

#include "rmi/cAbstractSlotCall.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"

namespace mrmi
{
cPublicSlot::cPublicSlot() : mpNextKept(0) {}

cPublicSlot::cPublicSlot(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                         mstd::cAsciiString const& paramTypes, mstd::cAsciiString const& description,
                         mstd::tAutoPtr<cAbstractSlotCall> call)
    : cPublicDescription(name, returnType, paramTypes, description), mSlot(call), mpNextKept(0)
{
}

cPublicSlot::cPublicSlot(msa::cAbstractDeserializer& deserializer, mstd::tAutoPtr<cAbstractSlotCall> call)
    : mSlot(call), mpNextKept(0)
{
  *this << deserializer;
}

cPublicSlot::~cPublicSlot() {}

msa::cAbstractSerializer& cPublicSlot::operator>>(msa::cAbstractSerializer& serializer) const
{
  storeTexts(serializer);
  storeValues(serializer);
  return serializer;
}

msa::cAbstractDeserializer& cPublicSlot::operator<<(msa::cAbstractDeserializer& deserializer)
{
  cPublicSlot loaded;
  loaded.loadTexts(deserializer);
  loaded.loadValues(deserializer);
  cPublicDescription::swap(loaded);
  return deserializer;
}
} // namespace mrmi
