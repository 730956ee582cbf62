#ifndef MORTISE_MCS_CMODULEINFO_H
#define MORTISE_MCS_CMODULEINFO_H

#include "std/cBuildInfo.h"

namespace mcs
{

/// What a module tells about itself.
class MORTISE_API cModuleInfo
{
public:
  mstd::cAsciiString const& name() const { return mName; }
  mstd::cAsciiString const& author() const { return mAuthor; }
  mstd::cAsciiString const& description() const { return mDescription; }
  mstd::cBuildInfo const& buildInfo() const { return mBuildInfo; }
  /// The build information, to be changed.
  mstd::cBuildInfo& bi() { return mBuildInfo; }
  /// By which a module manager finds the module when it is given a plain name.
  mstd::cAsciiString const& context() const { return mContext; }

  void setName(mstd::cAsciiString const& name) { mName = name; }
  void setAuthor(mstd::cAsciiString const& author) { mAuthor = author; }
  void setDescription(mstd::cAsciiString const& description) { mDescription = description; }
  void setBuildInfo(mstd::cBuildInfo const& info) { mBuildInfo = info; }
  void setContext(mstd::cAsciiString const& context) { mContext = context; }

  void swap(cModuleInfo& other);

  /// One line for people: name, build, author, host, date and compiler.
  mstd::cAsciiString toString() const;

  /// All fields in their order, never with labels.
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);

private:
  mstd::cAsciiString mName;
  mstd::cAsciiString mAuthor;
  mstd::cAsciiString mDescription;
  mstd::cBuildInfo mBuildInfo;
  mstd::cAsciiString mContext;
};

} // namespace mcs

#endif
