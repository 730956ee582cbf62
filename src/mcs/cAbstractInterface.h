#ifndef MORTISE_MCS_CABSTRACTINTERFACE_H
#define MORTISE_MCS_CABSTRACTINTERFACE_H

#include "mcs/cInterfaceDesc.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal1.h"

namespace mrmi
{
class cAbstractRMIFactory;
}

namespace mcs
{

/// Base of all interfaces: a described collection of public slots and signals, which are those that it has registered
/// as a connectable. Modules offer interfaces, and interface dependencies search for them.
class MORTISE_API cAbstractInterface : public mrmi::cConnectable
{
public:
  explicit cAbstractInterface(cInterfaceDesc const& desc);
  ~cAbstractInterface() override;

  /// For derived classes that change while they live; the library never fires it. May stay unconnected.
  mrmi::localSignal1<piVoid, cAbstractInterface const&> sigInterfaceChanged;

  /// A dependency has found a provider for this interface.
  virtual void interfaceMatched() = 0;
  /// The provider is gone.
  virtual void interfaceUnmatched() = 0;

  cInterfaceDesc const& desc() const { return mDesc; }
  /// The other side of this interface: another type, the same name.
  bool matches(cInterfaceDesc const& desc) const;

  /// Writes the public face: the description, a context of all public slots, and one of all public signals.
  void store(msa::cAbstractSerializer& serializer) const;
  /// Makes this object stand for an interface that lives elsewhere: all that was public goes, the description and the
  /// slots and signals come from the stream, their calls and signals from the factory, which finds the description
  /// read when it is asked. A failure leaves the old description, and nothing that is public.
  void load(msa::cAbstractDeserializer& deserializer, mrmi::cAbstractRMIFactory& factory);

private:
  void loadPublic(msa::cAbstractDeserializer& deserializer, mrmi::cAbstractRMIFactory& factory);

  cInterfaceDesc mDesc;
};

} // namespace mcs

#endif
