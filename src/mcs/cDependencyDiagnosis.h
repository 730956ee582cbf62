#ifndef MORTISE_MCS_CDEPENDENCYDIAGNOSIS_H
#define MORTISE_MCS_CDEPENDENCYDIAGNOSIS_H

#include "std/tList.h"
#include "ucs/cLIMessage.h"

namespace mcs
{
class cAbstractComponent;
class cInterfaceDep;

/// Why an interface dependency is matched or not: as data for programs, as a sentence for people.
///
/// It tells of the moment at which it is made. It asks the components of the manager in their order, as the search
/// does, and changes nothing.
///
/// Validity: the components that it names must still be there when they are used.
/// Cost:     O(interfaces of all components).
class MORTISE_API cDependencyDiagnosis
{
public:
  enum Reason
  {
    Matched = 0,          ///< there is nothing to explain
    ProviderGone = 1,     ///< it was matched, and will be told of the end when it is searched again
    ChosenByHand = 2,     ///< cInterfaceDep::saUseExcplicit: it waits for setExplicit()
    NotSearchable = 3,    ///< cInterfaceDep::saUseInteractive
    NoSuchInterface = 4,  ///< no component has an interface of this name
    OwnType = 5,          ///< those of this name are of the same side
    PlaceExcluded = 6,    ///< those that fit are at an excluded place, or on a host that is not among the possible ones
    OwnerNotAdded = 7,    ///< there is a provider, but the owner is in no manager, and so in no pass
    OwnerLeaving = 8,     ///< there is a provider, but the owner is to be removed, and not searched for any more
    OwnerUnannounced = 9, ///< there is a provider; the search waits for the announcement of the owner
    PassPending = 10,     ///< there is a provider; the next pass makes the match
    NobodyAsks = 11       ///< there is a provider; nobody has asked for a search since it was there
  };

  /// What speaks against a component that has an interface of the name.
  enum Verdict
  {
    Fits = 0,
    SameType = 1,        ///< the interface is of the side that is wanted for
    PlaceIsExcluded = 2, ///< among the excluded locations
    HostNotPossible = 3  ///< there are possible locations, none on its host
  };

  struct cCandidate
  {
    cAbstractComponent* mpComponent;
    Verdict mVerdict;
  };

  explicit cDependencyDiagnosis(cInterfaceDep const& dependency);

  Reason reason() const { return mReason; }
  /// Every component that has an interface of the name that is wanted, in the order of the manager.
  mstd::tList<cCandidate> const& candidates() const { return mCandidates; }
  /// The provider if matched; else the candidate that decides, the first one that fits if there is one; may be null.
  cAbstractComponent* component() const { return mpComponent; }
  /// One sentence, or two.
  mucs::cLIMessage const& message() const { return mMessage; }

private:
  void judge(cInterfaceDep const& dependency);
  Verdict verdict(cInterfaceDep const& dependency, cAbstractComponent& component) const;
  cAbstractComponent* firstWith(Verdict eVerdict) const;
  Reason reasonOf(cInterfaceDep const& dependency);
  void describe(cInterfaceDep const& dependency);

  Reason mReason;
  mstd::tList<cCandidate> mCandidates;
  cAbstractComponent* mpComponent;
  mucs::cLIMessage mMessage;
};

} // namespace mcs

#endif
