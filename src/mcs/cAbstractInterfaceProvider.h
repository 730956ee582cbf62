#ifndef MORTISE_MCS_CABSTRACTINTERFACEPROVIDER_H
#define MORTISE_MCS_CABSTRACTINTERFACEPROVIDER_H

#include "mcs/cRegisteredInterface.h"
#include "std/tPtrList.h"
#include "std/tPtrVector.h"

namespace mrmi
{
class cConnectable;
}

namespace mstd
{
class cAsciiString;
}

namespace mcs
{
class cInterfaceDesc;

/// The interfaces of a module, in the order of their registration. Every search goes from the first on and ends at the
/// first hit; O(number of interfaces).
class MORTISE_API cAbstractInterfaceProvider
{
public:
  cAbstractInterfaceProvider();
  cAbstractInterfaceProvider(cAbstractInterfaceProvider const&) = delete; // it owns its interfaces
  cAbstractInterfaceProvider& operator=(cAbstractInterfaceProvider const&) = delete;
  /// Destroys the entries in their order, and with them the interfaces that they own.
  virtual ~cAbstractInterfaceProvider();

  /// Appends an interface and returns it; whether it is there already is not looked at. An interface that was handed
  /// over goes with the provider, any other one must live longer.
  virtual cAbstractInterface& addInterface(mstd::tAutoPtr<cAbstractInterface> pInterface);
  virtual cAbstractInterface& addInterface(cAbstractInterface& interface);
  /// Removes nothing: the search is for an entry that cannot be there. Interfaces leave a provider only with it.
  virtual void removeInterface(cAbstractInterface& interface);

  unsigned int numInterfaces() const { return mInterfaces.length(); }
  /// \name By index
  /// An index that is none raises mstd::cRuntimeException with the failed check behind it.
  /// @{
  cAbstractInterface& interface(unsigned int iIndex) const;
  cAbstractInterface& getInterface(unsigned int iIndex);
  /// @}
  /// \name By name
  /// What is missing is null, or raises mstd::cRuntimeException.
  /// @{
  cAbstractInterface const* tryFindInterface(mstd::cAsciiString const& name) const;
  cAbstractInterface* tryFindInterface(mstd::cAsciiString const& name);
  cAbstractInterface const& findInterface(mstd::cAsciiString const& name) const;
  cAbstractInterface& findInterface(mstd::cAsciiString const& name);
  /// @}
  /// \name By what it matches
  /// As cAbstractInterface::matches() tells.
  /// @{
  cAbstractInterface const* hasMatchingInterface(cInterfaceDesc const& desc) const;
  cAbstractInterface* hasMatchingInterface(cInterfaceDesc const& desc);
  cAbstractInterface& getMatchingInterface(cInterfaceDesc const& desc) const;
  /// @}
  /// \name By identity
  /// The interface that is this very object. What is missing is null, or raises cNoPublicInterfaceException.
  /// @{
  cAbstractInterface* hasInterface(mrmi::cConnectable const& connectable) const;
  cAbstractInterface& findInterface(mrmi::cConnectable const& connectable) const;
  /// @}
  /// All interfaces in a new list, which is never null and does not own them.
  mstd::tAutoPtr<mstd::tPtrList<cAbstractInterface>> interfaces() const;

private:
  mstd::tPtrVector<cRegisteredInterface> mInterfaces;
};

} // namespace mcs

#endif
