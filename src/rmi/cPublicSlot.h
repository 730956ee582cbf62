#ifndef MORTISE_RMI_CPUBLICSLOT_H
#define MORTISE_RMI_CPUBLICSLOT_H

#include "rmi/cPublicDescription.h"
#include "std/tAutoPtr.h"

namespace mrmi
{
class cAbstractSlotCall;

/// A slot that a connectable publishes under a name, and its description.
///
/// Ownership: owns the slot call. Stands in the list of its connectable, which owns it.
class MORTISE_API cPublicSlot : public cPublicDescription
{
public:
  cPublicSlot(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
              mstd::cAsciiString const& paramTypes, mstd::cAsciiString const& description,
              mstd::tAutoPtr<cAbstractSlotCall> call);
  /// With the description from the stream.
  cPublicSlot(msa::cAbstractDeserializer& deserializer, mstd::tAutoPtr<cAbstractSlotCall> call);
  ~cPublicSlot();

  /// The call, which stays owned.
  cAbstractSlotCall* slot() const { return mSlot.get(); }

  /// \name Streams
  /// Name, type of the result, types of the parameters, description, parameters, return value. The slot call is not
  /// part of it. Reading replaces everything else; what can't be read leaves the description as it was.
  /// @{
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);
  /// @}

private:
  friend class cConnectable;

  cPublicSlot();

  mstd::tAutoPtr<cAbstractSlotCall> mSlot;
  cPublicSlot* mpNextKept; // chain of those that were taken away while a slot of their connectable ran
};
} // namespace mrmi

#endif
