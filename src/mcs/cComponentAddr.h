#ifndef MORTISE_MCS_CCOMPONENTADDR_H
#define MORTISE_MCS_CCOMPONENTADDR_H

#include "pi/piTypes.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mstd
{
class cAsciiString;
}

namespace mcs
{

/// Names a component inside one process: the work queue on which it lives, and its number in its module manager.
///
/// No number means "none": an address is valid or it is not. Its text is the queue, a colon and the module, "1:5".
class MORTISE_API cComponentAddr
{
public:
  /// Not valid, both numbers 0.
  cComponentAddr() noexcept : miModuleID(0), miQueueID(0), mValid(false) {}
  cComponentAddr(unsigned int iQueueID, unsigned int iModuleID) noexcept
      : miModuleID(iModuleID), miQueueID(iQueueID), mValid(true)
  {
  }
  /// As fromString().
  explicit cComponentAddr(mstd::cAsciiString const& text);

  unsigned int moduleID() const { return miModuleID; }
  unsigned int queueID() const { return miQueueID; }
  bool valid() const { return mValid; }
  /// Takes the validity and leaves the numbers.
  void invalidate() { mValid = false; }

  void swap(cComponentAddr& other) noexcept;

  /// Both numbers and the validity agree.
  bool operator==(cComponentAddr const& other) const;
  bool operator!=(cComponentAddr const& other) const { return !(*this == other); }
  /// Tells whether the address is valid, whatever it is compared with: `addr == false` is true for a valid one.
  bool operator==(bool const&) const { return mValid; }

  /// The text form, which does not show the validity.
  mstd::cAsciiString toString() const;
  /// Reads the text form and makes the address valid. What stands behind a second colon is not looked at. Numbers are
  /// what mstd::cAsciiString::toInt() takes, cut to 32 bits. Any failure raises mstd::cRuntimeException with its cause
  /// behind it, and the address stays.
  void fromString(mstd::cAsciiString const& text);

  /// The numbers, with labels unless the stream prefers none; the validity is not written, and what is read is valid.
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);

private:
  unsigned int miModuleID;
  unsigned int miQueueID;
  bool mValid;
};

} // namespace mcs

#endif
