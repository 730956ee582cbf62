#ifndef MORTISE_MCS_CINTERFACEDESC_H
#define MORTISE_MCS_CINTERFACEDESC_H

#include "std/cAsciiString.h"

namespace mcs
{

/// Describes an interface: which side of it this is, and its name, author, version and purpose.
class MORTISE_API cInterfaceDesc
{
public:
  /// The two sides of an interface. Which is which is the application's; a match needs both.
  enum InterfaceType
  {
    Providing = 0,
    Requiring = 1
  };

  /// Type 0, no texts, version 0.
  cInterfaceDesc() : mType(Providing), miVersion(0) {}
  cInterfaceDesc(InterfaceType eType, mstd::cAsciiString const& name, mstd::cAsciiString const& author,
                 unsigned int iVersion, mstd::cAsciiString const& description);

  InterfaceType type() const { return mType; }
  mstd::cAsciiString const& name() const { return mName; }
  mstd::cAsciiString const& author() const { return mAuthor; }
  unsigned int version() const { return miVersion; }
  mstd::cAsciiString const& description() const { return mDescription; }

  void swap(cInterfaceDesc& other) noexcept;

  /// Name, author, version and type agree; the description counts for nothing.
  bool operator==(cInterfaceDesc const& other) const;
  bool operator!=(cInterfaceDesc const& other) const { return !(*this == other); }

  /// The fields in their order, without labels. A type that is read and is none raises mstd::cRuntimeException with the
  /// name that came with it. A failed reading leaves the description as it was.
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);

private:
  InterfaceType mType;
  mstd::cAsciiString mName;
  mstd::cAsciiString mAuthor;
  unsigned int miVersion;
  mstd::cAsciiString mDescription;
};

} // namespace mcs

#endif
