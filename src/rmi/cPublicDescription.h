#ifndef MORTISE_RMI_CPUBLICDESCRIPTION_H
#define MORTISE_RMI_CPUBLICDESCRIPTION_H

#include "pi/piTypes.h"
#include "rmi/cSSValue.h"
#include "std/cAsciiString.h"
#include "std/tVector.h"

#include <string.h>

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mrmi
{
/// What the descriptions of published slots and of published signals have in common. Use cPublicSlot and
/// cPublicSignal.
///
/// The names of types are free text of whoever publishes: no call is checked against them.
class MORTISE_API cPublicDescription
{
public:
  cPublicDescription(cPublicDescription const&) = delete;
  cPublicDescription& operator=(cPublicDescription const&) = delete;

  mstd::cAsciiString const& name() const { return mName; }
  mstd::cAsciiString const& returnTypeName() const { return mReturnTypeName; }
  mstd::cAsciiString const& paramTypeNames() const { return mParamTypeNames; }
  mstd::cAsciiString const& description() const { return mDescription; }
  mstd::tVector<cSSValue>& parameters() { return mParameters; }
  mstd::tVector<cSSValue> const& parameters() const { return mParameters; }
  cSSValue& returnValue() { return mReturnValue; }
  cSSValue const& returnValue() const { return mReturnValue; }

  /// Whether `name` is the name. The whole of both counts.
  bool matchName(mstd::cAsciiString const& name) const
  {
    return name.length() == mName.length() && ::memcmp(name.c_str(), mName.c_str(), name.length()) == 0;
  }
  /// Appends a parameter without any content yet. The reference holds until the parameters are loaded or erased.
  cSSValue& addParameter();

protected:
  cPublicDescription() {}
  cPublicDescription(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                     mstd::cAsciiString const& paramTypes, mstd::cAsciiString const& description);
  ~cPublicDescription() {}

  void storeTexts(msa::cAbstractSerializer& serializer) const;
  void storeValues(msa::cAbstractSerializer& serializer) const;
  void loadTexts(msa::cAbstractDeserializer& deserializer);
  void loadValues(msa::cAbstractDeserializer& deserializer);
  void swap(cPublicDescription& other) noexcept;

private:
  mstd::cAsciiString mName;
  mstd::cAsciiString mReturnTypeName;
  mstd::cAsciiString mParamTypeNames;
  mstd::cAsciiString mDescription;
  mstd::tVector<cSSValue> mParameters;
  cSSValue mReturnValue;
};
} // namespace mrmi

#endif
