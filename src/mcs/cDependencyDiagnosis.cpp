#include "mcs/cDependencyDiagnosis.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cInterfaceDep.h"
#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgr.h"
#include "mcs/componentName.h"

namespace mcs
{

cDependencyDiagnosis::cDependencyDiagnosis(cInterfaceDep const& dependency) : mReason(Matched), mpComponent(nullptr)
{
  judge(dependency);
  mReason = reasonOf(dependency);
  describe(dependency);
}

void cDependencyDiagnosis::judge(cInterfaceDep const& dependency)
{
  for (cManagedComponent* const managed : dependency.mManager.components())
  {
    cAbstractComponent& component = *managed->component();
    bool const isFitting = dependency.hasPotentialyMatchingInterface(component) != nullptr;
    if (isFitting || component.tryFindInterface(dependency.wanted().name()) != nullptr)
    {
      mCandidates.append(cCandidate{&component, isFitting ? verdict(dependency, component) : SameType});
    }
  }
}

cDependencyDiagnosis::Verdict cDependencyDiagnosis::verdict(cInterfaceDep const& dependency,
                                                            cAbstractComponent& component) const
{
  if (dependency.hasMatchingInterface(component) != nullptr)
  {
    return Fits;
  }
  for (cComponentLocation const& excluded : dependency.excludedLocations())
  {
    if (component.location() == excluded)
    {
      return PlaceIsExcluded;
    }
  }
  return HostNotPossible;
}

cAbstractComponent* cDependencyDiagnosis::firstWith(Verdict eVerdict) const
{
  for (cCandidate const& candidate : mCandidates)
  {
    if (candidate.mVerdict == eVerdict)
    {
      return candidate.mpComponent;
    }
  }
  return nullptr;
}

cDependencyDiagnosis::Reason cDependencyDiagnosis::reasonOf(cInterfaceDep const& dependency)
{
  cAbstractComponent const* const owner = dependency.owner();
  if (dependency.matched())
  {
    if (!dependency.mMatch.valid())
    {
      return ProviderGone;
    }
    mpComponent = dependency.hasProvider();
    return Matched;
  }
  mpComponent = firstWith(Fits);
  if (dependency.selection() == cInterfaceDep::saUseExcplicit)
  {
    return ChosenByHand;
  }
  if (dependency.selection() == cInterfaceDep::saUseInteractive)
  {
    return NotSearchable;
  }
  if (mpComponent == nullptr)
  {
    for (Verdict const verdict : {PlaceIsExcluded, HostNotPossible})
    {
      mpComponent = firstWith(verdict);
      if (mpComponent != nullptr)
      {
        return PlaceExcluded;
      }
    }
    mpComponent = firstWith(SameType);
    return mpComponent != nullptr ? OwnType : NoSuchInterface;
  }
  if (owner == nullptr)
  {
    return NobodyAsks;
  }
  if (!owner->address().valid())
  {
    return OwnerNotAdded;
  }
  if (owner->toRemove())
  {
    return OwnerLeaving;
  }
  if (!owner->announced())
  {
    return OwnerUnannounced;
  }
  return owner->interfaceDepModified() ? PassPending : NobodyAsks;
}

void cDependencyDiagnosis::describe(cInterfaceDep const& dependency)
{
  mstd::cAsciiString const& wanted = dependency.wanted().name();
  mstd::cAsciiString const component = mpComponent != nullptr ? componentName(*mpComponent) : mstd::cAsciiString();
  mstd::cAsciiString const owner =
      dependency.owner() != nullptr ? componentName(*dependency.owner()) : mstd::cAsciiString();
  switch (mReason)
  {
  case Matched:
    mMessage << "$MTR$The interface \"%interface%\" is provided by %component%." << wanted
             << (mpComponent != nullptr ? component : dependency.mMatch.location().toString());
    break;
  case ProviderGone:
    mMessage << "$MTR$The provider of the interface \"%interface%\" is gone. The next search ends the match." << wanted;
    break;
  case ChosenByHand:
    mMessage << "$MTR$The provider of the interface \"%interface%\" has to be chosen explicitly." << wanted;
    break;
  case NotSearchable:
    mMessage << "$MTR$An interactive choice of the provider of the interface \"%interface%\" is not supported."
             << wanted;
    break;
  case NoSuchInterface:
    mMessage << "$MTR$No component has an interface \"%interface%\"." << wanted;
    break;
  case OwnType:
    mMessage << "$MTR$The interface \"%interface%\" of %component% is of the same type as the one that is wanted, so "
                "that they do not fit together."
             << wanted << component;
    break;
  case PlaceExcluded:
    mMessage << "$MTR$The interface \"%interface%\" of %component% does not qualify, since the place %location% is not "
                "allowed."
             << wanted << component << mpComponent->location().toString();
    break;
  case OwnerNotAdded:
    mMessage << "$MTR$The interface \"%interface%\" of %component% is not searched for, since %owner% was not added to "
                "a manager."
             << wanted << component << owner;
    break;
  case OwnerLeaving:
    mMessage
        << "$MTR$The interface \"%interface%\" of %component% is not searched for any more, since %owner% is to be "
           "removed."
        << wanted << component << owner;
    break;
  case OwnerUnannounced:
    mMessage << "$MTR$The interface \"%interface%\" of %component% is matched when %owner% is announced." << wanted
             << component << owner;
    break;
  case PassPending:
    mMessage << "$MTR$The interface \"%interface%\" of %component% is matched in the next pass." << wanted << component;
    break;
  case NobodyAsks:
    mMessage << "$MTR$The interface \"%interface%\" of %component% is matched as soon as somebody asks for a search."
             << wanted << component;
    break;
  }
}

} // namespace mcs
