#include "std/cBuildInfo.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"

#include <utility>

namespace mstd
{

cBuildInfo::cBuildInfo() : miBuildCount(0) {}

cBuildInfo::cBuildInfo(char const* sCompiler, char const* sCompilerVersion, char const* sBuildSystem,
                       char const* sBuildHost, char const* sBuildDate, unsigned int iBuildCount)
    : mCompiler(sCompiler), mCompilerVersion(sCompilerVersion), mBuildSystem(sBuildSystem), mBuildHost(sBuildHost),
      mBuildDate(sBuildDate), miBuildCount(iBuildCount)
{
}

cBuildInfo::cBuildInfo(cBuildInfo const& info) = default;

cBuildInfo& cBuildInfo::operator=(cBuildInfo const& info)
{
  cBuildInfo copy(info);
  swap(copy);
  return *this;
}

cBuildInfo::~cBuildInfo() = default;

void cBuildInfo::swap(cBuildInfo& info)
{
  mCompiler.swap(info.mCompiler);
  mCompilerVersion.swap(info.mCompilerVersion);
  mBuildSystem.swap(info.mBuildSystem);
  mBuildHost.swap(info.mBuildHost);
  mBuildDate.swap(info.mBuildDate);
  std::swap(miBuildCount, info.miBuildCount);
}

msa::cAbstractSerializer& cBuildInfo::operator>>(msa::cAbstractSerializer& serializer) const
{
  mCompiler >> serializer;
  mCompilerVersion >> serializer;
  mBuildSystem >> serializer;
  mBuildHost >> serializer;
  mBuildDate >> serializer;
  return miBuildCount >> serializer;
}

msa::cAbstractDeserializer& cBuildInfo::operator<<(msa::cAbstractDeserializer& deserializer)
{
  cBuildInfo info;
  info.mCompiler << deserializer;
  info.mCompilerVersion << deserializer;
  info.mBuildSystem << deserializer;
  info.mBuildHost << deserializer;
  info.mBuildDate << deserializer;
  info.miBuildCount << deserializer;
  swap(info);
  return deserializer;
}

} // namespace mstd
