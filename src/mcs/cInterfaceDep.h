#ifndef MORTISE_MCS_CINTERFACEDEP_H
#define MORTISE_MCS_CINTERFACEDEP_H

#include "mcs/cInterfaceDesc.h"
#include "mcs/cMatchedDependency.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"
#include "std/cLife.h"
#include "std/tList.h"

namespace mcs
{
class cAbstractComponent;
class cAbstractInterface;
class cModuleMgr;

/// A standing search of a component for an interface that another one provides.
///
/// The search is done in the passes of the manager, and whenever a component is announced. A match stays until it
/// fails, also if a better provider turns up. When the provider goes, address() fails at once; matched() stays true,
/// and sigInterfaceLost waits, until the search is done again: in the next pass for a dependency with an owner, at the
/// next recalc() for one without.
///
/// Whoever is told of a match, or of its end, may destroy the dependency.
///
/// Ownership: nothing is owned. The owner and the interface on this side must outlive the dependency, and so must the
///            manager.
class MORTISE_API cInterfaceDep : public mrmi::cConnectable
{
public:
  /// How a provider is chosen.
  enum selectionAlgo
  {
    saUseExcplicit = 0,  ///< only setExplicit() does it
    saUseFirstBest = 1,  ///< the first that qualifies, in the order of the manager
    saUseInteractive = 2 ///< can be declared, and raises mstd::cBugException when it is to be done
  };

  /// Without owner. `pInterface`, which may be null, is told of matches.
  cInterfaceDep(cModuleMgr& manager, cInterfaceDesc const& wanted, cAbstractInterface* pInterface,
                selectionAlgo eSelection);
  /// Joins the dependencies of `owner`.
  cInterfaceDep(cAbstractComponent& owner, cInterfaceDesc const& wanted, cAbstractInterface* pInterface,
                selectionAlgo eSelection);
  /// Leaves the owner. The match is not ended, and no signal is fired.
  ~cInterfaceDep() override;

  /// A match was made, with the address of the provider. A slot sees the dependency still unmatched. May stay
  /// unconnected.
  mrmi::localSignal1<piVoid, cComponentAddr const&> sigInterfaceAddress;
  /// A match has ended. May stay unconnected.
  mrmi::localSignal0<piVoid> sigInterfaceLost;

  /// True if the match is still good. For derived classes that know more.
  virtual bool validateMatch(cMatchedDependency const& match);

  /// True until the end of the match was told, also if its provider is gone already.
  bool matched() const { return mState == Matched; }
  /// The provider. cUnmatchedInterfaceException if there is none, or if it is gone.
  cComponentAddr const& address() const;

  /// The component that provides what is wanted, or null if there is none. The first one at the location of the match.
  cAbstractComponent* hasProvider() const;

  cInterfaceDesc const& wanted() const { return mWanted; }
  selectionAlgo selection() const { return mSelection; }
  cAbstractComponent* owner() const { return mpOwner; }

  /// Only components on the host of one of these locations qualify, once there is one. To use other hosts all the same
  /// (`bUseOnly` false) is not supported: it raises mstd::cBugException and adds nothing.
  void addPossibleLocation(cComponentLocation const& location, bool bUseOnly);
  /// Takes this provider, and from now on no other one unless told. An unknown location raises cNoSuchModuleException;
  /// then, and if the component has no fitting interface, the dependency is without match.
  void setExplicit(cComponentLocation const& location);
  /// Looks at all components of the manager in their order.
  void recalc();
  /// Looks at this component.
  void recalc(cAbstractComponent& candidate);
  /// The first interface of the component that matches what is wanted, or null.
  cAbstractInterface* hasPotentialyMatchingInterface(cAbstractComponent& component) const;
  /// The same, if the component stands at a place that qualifies.
  cAbstractInterface* hasMatchingInterface(cAbstractComponent& component) const;
  /// Ends the match: tells the interface, and fires sigInterfaceLost if there was one.
  void invalidateMatch();

  void sltComponentRegistered(cAbstractComponent& component);
  void sltComponentRemoved(cAbstractComponent& component);

protected:
  mstd::tList<cComponentLocation>& possibleLocations() { return mPossible; }
  mstd::tList<cComponentLocation> const& possibleLocations() const { return mPossible; }
  /// A component at one of these never qualifies. Empty unless a derived class fills it.
  mstd::tList<cComponentLocation>& excludedLocations() { return mExcluded; }
  mstd::tList<cComponentLocation> const& excludedLocations() const { return mExcluded; }

private:
  friend class cDependencyDiagnosis;

  enum MatchState
  {
    Unmatched = 0,
    Matched = 1
  };

  void connectToManager();
  void makeMatch(cAbstractComponent& component);
  void recalcUseExcplicit();
  void recalcUseFirstBest(cAbstractComponent& candidate);

  cAbstractComponent* mpOwner;
  cModuleMgr& mManager;
  cInterfaceDesc mWanted;
  mstd::tList<cComponentLocation> mPossible;
  mstd::tList<cComponentLocation> mExcluded;
  selectionAlgo mSelection;
  MatchState mState;
  cMatchedDependency mMatch;
  cAbstractInterface* mpInterface;
  mstd::cLife mLife;
};

} // namespace mcs

#endif
