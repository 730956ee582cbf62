#include "rmi/cSSValue.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"

#include <utility>

namespace mrmi
{
void cSSValue::setDescription(mstd::cAsciiString const& description)
{
  mDescription = description;
}

void cSSValue::set(mstd::cAsciiString const& type, bool alterable, bool isVoid)
{
  mTypeName = type; // the only step that can fail comes first
  mAlterable = alterable;
  mVoid = isVoid;
}

bool cSSValue::operator!=(cSSValue const& other) const
{
  return mTypeName != other.mTypeName || mDescription != other.mDescription || mAlterable != other.mAlterable ||
         mVoid != other.mVoid;
}

msa::cAbstractSerializer& cSSValue::operator>>(msa::cAbstractSerializer& serializer) const
{
  serializer.store(mTypeName);
  serializer.store(mDescription);
  serializer.store(mAlterable);
  serializer.store(mVoid);
  return serializer;
}

msa::cAbstractDeserializer& cSSValue::operator<<(msa::cAbstractDeserializer& deserializer)
{
  cSSValue value;
  deserializer.load(value.mTypeName);
  deserializer.load(value.mDescription);
  deserializer.load(value.mAlterable);
  deserializer.load(value.mVoid);
  swap(value);
  return deserializer;
}

void cSSValue::swap(cSSValue& other) noexcept
{
  mTypeName.swap(other.mTypeName);
  mDescription.swap(other.mDescription);
  std::swap(mAlterable, other.mAlterable);
  std::swap(mVoid, other.mVoid);
}
} // namespace mrmi
