#ifndef MORTISE_EXAMPLES_PLANT_SHARED_CNEED_H
#define MORTISE_EXAMPLES_PLANT_SHARED_CNEED_H

#include "mcs/cComponentAddr.h"
#include "mcs/cInterfaceDep.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"

namespace mcs
{
class cAbstractComponent;
class cAbstractInterface;
} // namespace mcs

/// What a module needs of another one: an interface by its name, of whichever component offers it.
///
/// A provider is only known by the address of its component, and is looked up at each use: it may be gone before the
/// dependency hears of it.
class cNeed : public mrmi::cConnectable
{
public:
  cNeed(mcs::cAbstractComponent& owner, char const* pInterface);

  /// A provider was found.
  mrmi::localSignal1<piVoid, mcs::cAbstractComponent&> sigFound;
  /// It is gone.
  mrmi::localSignal0<piVoid> sigLost;

  /// The component that offers the interface, or null.
  mcs::cAbstractComponent* component() const;
  /// Its interface, or null.
  mcs::cAbstractInterface* provider() const;
  /// Connects a signal without arguments of each provider, when it is found, to a published slot. Each end of the
  /// connection may go at any time.
  void follow(char const* pSignal, mrmi::cConnectable& receiver, char const* pSlot);

private:
  /// Does not match a component that goes: the manager still has it while it tells of its removal.
  class cDep : public mcs::cInterfaceDep
  {
  public:
    cDep(mcs::cAbstractComponent& owner, mcs::cInterfaceDesc const& wanted);

  private:
    void sltGoes(mcs::cAbstractComponent& component);
    void sltComes(mcs::cAbstractComponent& component);
  };

  void sltMatched(mcs::cComponentAddr const& address);
  void sltLost();

  mcs::cAbstractComponent& mOwner;
  cDep mDep;
  mcs::cComponentAddr mAddress; // not valid: there is none
  char const* mpSignal;
  char const* mpSlot;
  mrmi::cConnectable* mpReceiver;
};

#endif
