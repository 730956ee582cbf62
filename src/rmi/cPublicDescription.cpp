#include "rmi/cPublicDescription.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/containerStream.h"

namespace mrmi
{
cPublicDescription::cPublicDescription(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                                       mstd::cAsciiString const& paramTypes, mstd::cAsciiString const& description)
    : mName(name), mReturnTypeName(returnType), mParamTypeNames(paramTypes), mDescription(description)
{
}

cSSValue& cPublicDescription::addParameter()
{
  mParameters.append(cSSValue());
  return mParameters.at(mParameters.length() - 1);
}

void cPublicDescription::storeTexts(msa::cAbstractSerializer& serializer) const
{
  serializer.store(mName);
  serializer.store(mReturnTypeName);
  serializer.store(mParamTypeNames);
  serializer.store(mDescription);
}

void cPublicDescription::storeValues(msa::cAbstractSerializer& serializer) const
{
  mParameters >> serializer;
  mReturnValue >> serializer;
}

void cPublicDescription::loadTexts(msa::cAbstractDeserializer& deserializer)
{
  deserializer.load(mName);
  deserializer.load(mReturnTypeName);
  deserializer.load(mParamTypeNames);
  deserializer.load(mDescription);
}

void cPublicDescription::loadValues(msa::cAbstractDeserializer& deserializer)
{
  mParameters << deserializer;
  mReturnValue << deserializer;
}

void cPublicDescription::swap(cPublicDescription& other) noexcept
{
  mName.swap(other.mName);
  mReturnTypeName.swap(other.mReturnTypeName);
  mParamTypeNames.swap(other.mParamTypeNames);
  mDescription.swap(other.mDescription);
  mParameters.swap(other.mParameters);
  mReturnValue.swap(other.mReturnValue);
}
} // namespace mrmi
