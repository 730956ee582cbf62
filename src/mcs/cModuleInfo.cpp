#include "mcs/cModuleInfo.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/cNumberConversionFormat.h"

namespace mcs
{

void cModuleInfo::swap(cModuleInfo& other)
{
  mName.swap(other.mName);
  mAuthor.swap(other.mAuthor);
  mDescription.swap(other.mDescription);
  mBuildInfo.swap(other.mBuildInfo);
  mContext.swap(other.mContext);
}

mstd::cAsciiString cModuleInfo::toString() const
{
  mstd::cAsciiString text(mName);
  text += " (build ";
  text.addUNum(mBuildInfo.buildCount(), mstd::cNumberConversionFormat(10));
  text += ")";
  text += " Written by ";
  text += mAuthor;
  text += " builded on \"";
  text += mBuildInfo.buildHost();
  text += "\" (";
  text += mBuildInfo.buildDate();
  text += ") using ";
  text += mBuildInfo.compiler();
  text += " - ";
  text += mBuildInfo.compilerVersion();
  return text;
}

msa::cAbstractSerializer& cModuleInfo::operator>>(msa::cAbstractSerializer& serializer) const
{
  mName >> serializer;
  mAuthor >> serializer;
  mDescription >> serializer;
  mBuildInfo >> serializer;
  return mContext >> serializer;
}

msa::cAbstractDeserializer& cModuleInfo::operator<<(msa::cAbstractDeserializer& deserializer)
{
  cModuleInfo read;
  read.mName << deserializer;
  read.mAuthor << deserializer;
  read.mDescription << deserializer;
  read.mBuildInfo << deserializer;
  read.mContext << deserializer;
  swap(read);
  return deserializer;
}

} // namespace mcs
