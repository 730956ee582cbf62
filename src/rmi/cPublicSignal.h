#ifndef MORTISE_RMI_CPUBLICSIGNAL_H
#define MORTISE_RMI_CPUBLICSIGNAL_H

#include "rmi/cAbstractSignal.h"
#include "rmi/cPublicDescription.h"

namespace mrmi
{
/// A signal that a connectable publishes under a name, and its description.
///
/// Ownership: refers to the signal. Stands in the list of its connectable, which owns it.
/// Validity:  signal() holds as long as the signal, which the description does not watch.
class MORTISE_API cPublicSignal : public cPublicDescription
{
public:
  cPublicSignal(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                mstd::cAsciiString const& paramTypes, cAbstractSignal::InterfaceType type,
                mstd::cAsciiString const& description, cAbstractSignal& signal);
  /// With the description from the stream.
  cPublicSignal(msa::cAbstractDeserializer& deserializer, cAbstractSignal& signal);
  ~cPublicSignal();

  /// A number that is carried along and not interpreted.
  cAbstractSignal::InterfaceType type() const { return miType; }
  cAbstractSignal* signal() const { return mpSignal; }

  /// \name Streams
  /// Name, type of the result, types of the parameters, description, type(), parameters, return value. The signal is
  /// not part of it. Reading replaces everything else; what can't be read leaves the description as it was.
  /// @{
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);
  /// @}

private:
  cPublicSignal() : miType(0), mpSignal(0) {}

  cAbstractSignal::InterfaceType miType;
  cAbstractSignal* mpSignal; // not owned
};
} // namespace mrmi

#endif
