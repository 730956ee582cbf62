#include "rmi/cPublicSignal.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"

namespace mrmi
{
cPublicSignal::cPublicSignal(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                             mstd::cAsciiString const& paramTypes, cAbstractSignal::InterfaceType type,
                             mstd::cAsciiString const& description, cAbstractSignal& signal)
    : cPublicDescription(name, returnType, paramTypes, description), miType(type), mpSignal(&signal)
{
}

cPublicSignal::cPublicSignal(msa::cAbstractDeserializer& deserializer, cAbstractSignal& signal)
    : miType(0), mpSignal(&signal)
{
  *this << deserializer;
}

cPublicSignal::~cPublicSignal() {}

msa::cAbstractSerializer& cPublicSignal::operator>>(msa::cAbstractSerializer& serializer) const
{
  storeTexts(serializer);
  serializer.store(miType);
  storeValues(serializer);
  return serializer;
}

msa::cAbstractDeserializer& cPublicSignal::operator<<(msa::cAbstractDeserializer& deserializer)
{
  cPublicSignal loaded;
  loaded.loadTexts(deserializer);
  deserializer.load(loaded.miType);
  loaded.loadValues(deserializer);
  cPublicDescription::swap(loaded);
  miType = loaded.miType;
  return deserializer;
}
} // namespace mrmi
