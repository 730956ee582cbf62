#include "mcs/cInterfaceDesc.h"

#include "mcs/cMCSExceptions.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"

#include <utility>

namespace mcs
{

cInterfaceDesc::cInterfaceDesc(InterfaceType eType, mstd::cAsciiString const& name, mstd::cAsciiString const& author,
                               unsigned int iVersion, mstd::cAsciiString const& description)
    : mType(eType), mName(name), mAuthor(author), miVersion(iVersion), mDescription(description)
{
}

void cInterfaceDesc::swap(cInterfaceDesc& other) noexcept
{
  std::swap(mType, other.mType);
  mName.swap(other.mName);
  mAuthor.swap(other.mAuthor);
  std::swap(miVersion, other.miVersion);
  mDescription.swap(other.mDescription);
}

bool cInterfaceDesc::operator==(cInterfaceDesc const& other) const
{
  return mName == other.mName && mAuthor == other.mAuthor && miVersion == other.miVersion && mType == other.mType;
}

msa::cAbstractSerializer& cInterfaceDesc::operator>>(msa::cAbstractSerializer& serializer) const
{
  static_cast<unsigned int>(mType) >> serializer;
  mName >> serializer;
  mAuthor >> serializer;
  miVersion >> serializer;
  return mDescription >> serializer;
}

msa::cAbstractDeserializer& cInterfaceDesc::operator<<(msa::cAbstractDeserializer& deserializer)
{
  unsigned int type = 0;
  cInterfaceDesc read;
  type << deserializer;
  read.mName << deserializer;
  read.mAuthor << deserializer;
  read.miVersion << deserializer;
  read.mDescription << deserializer;
  if (type > Requiring)
  {
    cMCSExceptions::throwInterfaceLoadError(read.mName);
  }
  read.mType = static_cast<InterfaceType>(type);
  swap(read);
  return deserializer;
}

} // namespace mcs
