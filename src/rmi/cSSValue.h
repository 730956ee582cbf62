#ifndef MORTISE_RMI_CSSVALUE_H
#define MORTISE_RMI_CSSVALUE_H

#include "pi/piTypes.h"
#include "std/cAsciiString.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mrmi
{
/// One parameter or return value in the description of a published slot or signal. It is text for people and for the
/// other side of a connection: no call is checked against it.
class MORTISE_API cSSValue
{
public:
  /// Empty texts, not alterable, not void.
  cSSValue() : mAlterable(false), mVoid(false) {}

  mstd::cAsciiString const& typeName() const { return mTypeName; }
  mstd::cAsciiString const& description() const { return mDescription; }
  void setDescription(mstd::cAsciiString const& description);
  /// Whether the slot may write to it.
  bool isAlterable() const { return mAlterable; }
  /// Whether there is no value.
  bool isVoid() const { return mVoid; }
  /// Sets all but the description.
  void set(mstd::cAsciiString const& type, bool alterable, bool isVoid);

  /// All four are compared.
  bool operator==(cSSValue const& other) const { return !(*this != other); }
  bool operator!=(cSSValue const& other) const;

  void swap(cSSValue& other) noexcept;

  /// \name Streams
  /// Type name, description, alterable, void. What can't be read leaves the value as it was.
  /// @{
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);
  /// @}

private:
  mstd::cAsciiString mTypeName;
  mstd::cAsciiString mDescription;
  bool mAlterable;
  bool mVoid;
};
} // namespace mrmi

#endif
