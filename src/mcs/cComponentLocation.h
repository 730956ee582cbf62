#ifndef MORTISE_MCS_CCOMPONENTLOCATION_H
#define MORTISE_MCS_CCOMPONENTLOCATION_H

#include "mcs/cComponentAddr.h"
#include "std/cAsciiString.h"

namespace mcs
{

/// Names a component across processes and hosts: its address, and the process and the host where that address counts.
///
/// Its text is "queue:module-pid@host", with ":localid" behind it if there is a local id. A host name with "-" and a
/// local id with ":" do not survive being read back: the parser takes every "-", "@" and ":" for a border.
class MORTISE_API cComponentLocation
{
public:
  /// This process, with an address that is not valid.
  cComponentLocation();
  cComponentLocation(cComponentAddr const& address, mstd::cAsciiString const& hostName,
                     mstd::cAsciiString const& localId, unsigned int iPid);
  /// As fromString().
  explicit cComponentLocation(mstd::cAsciiString const& text);

  /// Sets host name and process number to those of this process and empties the local id; the address stays.
  void provide();

  cComponentAddr const& address() const { return mAddress; }
  void setAddress(cComponentAddr const& address) { mAddress = address; }
  mstd::cAsciiString const& hostName() const { return mHostName; }
  /// For a finer distinction than the process; empty unless somebody gives one.
  mstd::cAsciiString const& localId() const { return mLocalId; }
  unsigned int pid() const { return miPid; }

  void swap(cComponentLocation& other) noexcept;
  cComponentLocation(cComponentLocation const& other) = default;
  cComponentLocation& operator=(cComponentLocation const& other);

  /// Address, host name, local id and process number agree.
  bool operator==(cComponentLocation const& other) const;
  bool operator!=(cComponentLocation const& other) const { return !(*this == other); }

  mstd::cAsciiString toString() const;
  /// Reads the text form. What is missing behind the address is empty or 0. Fails as cComponentAddr::fromString(), or
  /// as the conversion of the process number; the location stays then.
  void fromString(mstd::cAsciiString const& text);

  /// All fields, with labels unless the stream prefers none. An address that was not valid comes back valid.
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);

private:
  cComponentAddr mAddress;
  mstd::cAsciiString mHostName;
  mstd::cAsciiString mLocalId;
  unsigned int miPid;
};

} // namespace mcs

#endif
