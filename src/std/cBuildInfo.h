#ifndef MORTISE_STD_CBUILDINFO_H
#define MORTISE_STD_CBUILDINFO_H

#include "std/cAsciiString.h"

namespace msa
{
class cAbstractSerializer;
class cAbstractDeserializer;
} // namespace msa

namespace mstd
{

/// How a module was built: by which compiler, on which system and host, when, and for the how manyeth time.
///
/// Threads: a plain value.
class MORTISE_API cBuildInfo
{
public:
  /// Empty texts and a count of 0.
  cBuildInfo();
  /// The texts are copied; a null one is empty.
  cBuildInfo(char const* sCompiler, char const* sCompilerVersion, char const* sBuildSystem, char const* sBuildHost,
             char const* sBuildDate, unsigned int iBuildCount);
  cBuildInfo(cBuildInfo const& info);
  cBuildInfo& operator=(cBuildInfo const& info);
  virtual ~cBuildInfo();

  cAsciiString const& compiler() const { return mCompiler; }
  cAsciiString const& compilerVersion() const { return mCompilerVersion; }
  cAsciiString const& buildSystem() const { return mBuildSystem; }
  cAsciiString const& buildHost() const { return mBuildHost; }
  cAsciiString const& buildDate() const { return mBuildDate; }
  piUInt64 buildCount() const { return miBuildCount; }

  void swap(cBuildInfo& info);

  /// The five texts in the order of the constructor, then the count.
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);

private:
  cAsciiString mCompiler;
  cAsciiString mCompilerVersion;
  cAsciiString mBuildSystem;
  cAsciiString mBuildHost;
  cAsciiString mBuildDate;
  piUInt64 miBuildCount;
};

} // namespace mstd

#endif
