#include "mcs/cRMIException.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/exceptionMessage.h"

#include <utility>

namespace mcs
{
namespace
{
mucs::cLIMessage messageWithIndex(cRMIException::Operation eOperation, mstd::cAsciiString const& name,
                                  unsigned int iIndex)
{
  switch (eOperation)
  {
  case cRMIException::CallSlot:
    return mstd::exceptionMessage("$MTR$Unable to call slot \"%slot%\" on interface %idx%!", name, iIndex);
  case cRMIException::ConnectSignal:
    return mstd::exceptionMessage("$MTR$Unable to connect signal \"%signal%\" to interface %idx%!", name, iIndex);
  }
  return mucs::cLIMessage();
}

mucs::cLIMessage messageWithKey(cRMIException::Operation eOperation, mstd::cAsciiString const& name, unsigned int iKey)
{
  switch (eOperation)
  {
  case cRMIException::CallSlot:
    return mstd::exceptionMessage("$MTR$Unable to call slot \"%slot%\" on interface key %key%!", name, iKey);
  case cRMIException::ConnectSignal:
    return mstd::exceptionMessage("$MTR$Unable to connect signal \"%signal%\" to interface key %key%!", name, iKey);
  }
  return mucs::cLIMessage();
}
} // namespace

cRMIException::cRMIException(cComponentLocation const& location, unsigned int iIndex, unsigned int iKey,
                             Operation eOperation, mstd::cAsciiString const& signalSlotName, mucs::cLIMessage&& message)
    : cRuntimeException(std::move(message), 0, 0), mAddress(location.address()), mHostName(location.hostName()),
      mLocalId(location.localId()), miPid(location.pid()), miIndex(iIndex), miKey(iKey), mOperation(eOperation),
      mName(signalSlotName)
{
}

cRMIException::cRMIException(cComponentLocation const& location, unsigned int iIndex, Operation eOperation,
                             mstd::cAsciiString const& signalSlotName)
    : cRMIException(location, iIndex, 0, eOperation, signalSlotName,
                    messageWithIndex(eOperation, signalSlotName, iIndex))
{
}

cRMIException::cRMIException(unsigned int iKey, Operation eOperation, mstd::cAsciiString const& signalSlotName)
    : cRMIException(cComponentLocation(), 0, iKey, eOperation, signalSlotName,
                    messageWithKey(eOperation, signalSlotName, iKey))
{
}

cRMIException::cRMIException(cRMIException const& other)
    : cRuntimeException(other), mAddress(other.mAddress), miPid(other.miPid), miIndex(other.miIndex),
      miKey(other.miKey), mOperation(other.mOperation)
{
  copyField(mHostName, other.mHostName);
  copyField(mLocalId, other.mLocalId);
  copyField(mName, other.mName);
}

void cRMIException::swap(cRMIException& other) noexcept
{
  cRuntimeException::swap(other);
  mAddress.swap(other.mAddress);
  mHostName.swap(other.mHostName);
  mLocalId.swap(other.mLocalId);
  std::swap(miPid, other.miPid);
  std::swap(miIndex, other.miIndex);
  std::swap(miKey, other.miKey);
  std::swap(mOperation, other.mOperation);
  mName.swap(other.mName);
}

MORTISE_EXCEPTION_BODY(cRMIException)

cComponentLocation cRMIException::location() const
{
  return cComponentLocation(mAddress, mHostName.string(), mLocalId.string(), miPid);
}

void cRMIException::store(msa::cAbstractSerializer& serializer) const
{
  location() >> serializer;
  miIndex >> serializer;
  miKey >> serializer;
  static_cast<unsigned int>(mOperation) >> serializer;
  signalSlotName() >> serializer;
}

void cRMIException::load(msa::cAbstractDeserializer& deserializer)
{
  cComponentLocation location;
  unsigned int index = 0;
  unsigned int key = 0;
  unsigned int operation = 0;
  mstd::cAsciiString name;
  location << deserializer;
  index << deserializer;
  key << deserializer;
  operation << deserializer;
  name << deserializer;

  Operation const known = static_cast<Operation>(operation);
  cRMIException read(location, index, key, known, name,
                     key != 0 ? messageWithKey(known, name, key) : messageWithIndex(known, name, index));
  read.setMarks(cMarks{Runtime, false});
  swap(read);
}
} // namespace mcs
