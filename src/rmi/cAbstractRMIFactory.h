#ifndef MORTISE_RMI_CABSTRACTRMIFACTORY_H
#define MORTISE_RMI_CABSTRACTRMIFACTORY_H

#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mrmi
{
class cAbstractSignal;
class cAbstractSlotCall;
class cConnectable;

/// Makes the stand-ins for slots and signals of another process, from whose description a connectable is rebuilt. The
/// application implements it, for the connection that it uses.
///
/// A slot call made here answers callRef() so: it sends its name and the readable values of the frame,
/// `frame.store(serializer, false, true)`, waits for the answer, and loads the alterable ones,
/// `frame.load(deserializer, true, false)`. On the other side cConnectable::invokeIndirectRemoteSlot() runs the slot.
class MORTISE_API cAbstractRMIFactory
{
public:
  cAbstractRMIFactory() {}
  cAbstractRMIFactory(cAbstractRMIFactory const&) = delete;
  cAbstractRMIFactory& operator=(cAbstractRMIFactory const&) = delete;
  virtual ~cAbstractRMIFactory();

  /// A slot call that stands for a remote slot of `connectable`; the caller owns it.
  virtual mstd::tAutoPtr<cAbstractSlotCall> createRemoteSlotCall(cConnectable& connectable) = 0;
  /// A signal that fires when the remote one does; the factory owns it. `index` is that of the connectable.
  virtual cAbstractSignal* createRemoteSignal(unsigned int index) = 0;
};
} // namespace mrmi

#endif
