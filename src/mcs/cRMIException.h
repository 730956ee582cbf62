#ifndef MORTISE_MCS_CRMIEXCEPTION_H
#define MORTISE_MCS_CRMIEXCEPTION_H

#include "mcs/cComponentLocation.h"
#include "std/cExceptionText.h"
#include "std/cRuntimeException.h"

namespace mcs
{
/// A call to, or a connection with, an interface of another process failed.
class MORTISE_API cRMIException : public mstd::cRuntimeException
{
public:
  /// Any number may come out of a stream.
  enum Operation : unsigned int
  {
    CallSlot = 0,
    ConnectSignal = 1
  };

  /// The interface is known by its index at a location; its key is 0. An operation that is none leaves the message
  /// empty.
  cRMIException(cComponentLocation const& location, unsigned int iIndex, Operation eOperation,
                mstd::cAsciiString const& signalSlotName);
  /// The interface is known by its key; the location is this process, without a valid address, and the index 0.
  cRMIException(unsigned int iKey, Operation eOperation, mstd::cAsciiString const& signalSlotName);
  MORTISE_EXCEPTION(cRMIException)

  cComponentLocation location() const;
  unsigned int interfaceIndex() const { return miIndex; }
  unsigned int interfaceKey() const { return miKey; }
  Operation operation() const { return mOperation; }
  mstd::cAsciiString signalSlotName() const { return mName.string(); }

  /// Writes the fields; neither the class name nor the message travels. So a chain with such an exception can be
  /// written by storeRecursive(), but not rebuilt by createFromStream(), which looks for a class name.
  void store(msa::cAbstractSerializer& serializer) const override;
  /// Reads the fields and builds the message from them again: the form with the key if the key is not 0. Place, back
  /// trace and history go. A failure leaves the exception as it was.
  void load(msa::cAbstractDeserializer& deserializer) override;

private:
  cRMIException(cComponentLocation const& location, unsigned int iIndex, unsigned int iKey, Operation eOperation,
                mstd::cAsciiString const& signalSlotName, mucs::cLIMessage&& message);

  // The fields of the location, texts in the form that an exception can copy without memory.
  cComponentAddr mAddress;
  mstd::cExceptionText mHostName;
  mstd::cExceptionText mLocalId;
  unsigned int miPid;
  unsigned int miIndex;
  unsigned int miKey;
  Operation mOperation;
  mstd::cExceptionText mName;
};
} // namespace mcs

#endif
