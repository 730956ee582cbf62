#ifndef MORTISE_MCS_CREGISTEREDINTERFACE_H
#define MORTISE_MCS_CREGISTEREDINTERFACE_H

#include "std/tAutoPtr.h"

namespace mcs
{
class cAbstractInterface;

/// Entry of an interface in its provider; owns the interface if that was handed over.
class MORTISE_API cRegisteredInterface
{
public:
  /// Takes the interface over, unless the pointer does not own it either. No interface is an assertion failure.
  explicit cRegisteredInterface(mstd::tAutoPtr<cAbstractInterface> pInterface);
  /// The interface stays its owner's, and must live longer.
  explicit cRegisteredInterface(cAbstractInterface& interface);
  cRegisteredInterface(cRegisteredInterface const&) = delete; // one entry owns the interface
  cRegisteredInterface& operator=(cRegisteredInterface const&) = delete;
  ~cRegisteredInterface();

  cAbstractInterface& interface() const { return *mpInterface; }
  /// Both are entries of the same interface.
  bool operator==(cRegisteredInterface const& other) const { return mpInterface == other.mpInterface; }

private:
  cAbstractInterface* mpInterface;
  bool mOwned;
};

} // namespace mcs

#endif
