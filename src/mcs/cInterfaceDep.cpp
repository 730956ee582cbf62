#include "mcs/cInterfaceDep.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cComponentWalk.h"
#include "mcs/cModuleMgr.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "std/cSTDExceptions.h"

namespace mcs
{

cInterfaceDep::cInterfaceDep(cModuleMgr& manager, cInterfaceDesc const& wanted, cAbstractInterface* pInterface,
                             selectionAlgo eSelection)
    : mpOwner(nullptr), mManager(manager), mWanted(wanted), mSelection(eSelection), mState(Unmatched),
      mpInterface(pInterface)
{
  connectToManager();
}

cInterfaceDep::cInterfaceDep(cAbstractComponent& owner, cInterfaceDesc const& wanted, cAbstractInterface* pInterface,
                             selectionAlgo eSelection)
    : mpOwner(&owner), mManager(owner.moduleMgr()), mWanted(wanted), mSelection(eSelection), mState(Unmatched),
      mpInterface(pInterface)
{
  connectToManager();
  try
  {
    owner.addInterfaceDep(this);
  }
  catch (...)
  {
    owner.removeInterfaceDep(this); // it may have failed behind the adding
    throw;
  }
}

cInterfaceDep::~cInterfaceDep()
{
  if (mpOwner != nullptr)
  {
    mpOwner->removeInterfaceDep(this);
  }
}

void cInterfaceDep::connectToManager()
{
  sigInterfaceAddress.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  sigInterfaceLost.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mManager.sigComponentRegistered.connect(mrmi::cDirectLocalSlotCall1(*this, &cInterfaceDep::sltComponentRegistered));
  mManager.sigComponentRemoved.connect(mrmi::cDirectLocalSlotCall1(*this, &cInterfaceDep::sltComponentRemoved));
}

bool cInterfaceDep::validateMatch(cMatchedDependency const& match)
{
  return match.valid();
}

cComponentAddr const& cInterfaceDep::address() const
{
  return mMatch.location().address();
}

cAbstractComponent* cInterfaceDep::hasProvider() const
{
  return mState == Matched && mMatch.valid() ? mManager.hasComponent(mMatch.location()) : nullptr;
}

void cInterfaceDep::addPossibleLocation(cComponentLocation const& location, bool bUseOnly)
{
  if (!bUseOnly)
  {
    cSTDExceptions::throwUnsupportedOperation(
        mstd::cAsciiString("cInterfaceDep::addPossibleLocation(useUnpredictable)"));
  }
  mPossible.append(location);
}

void cInterfaceDep::setExplicit(cComponentLocation const& location)
{
  mstd::cLifeWatch const watch(mLife);
  invalidateMatch();
  if (watch.isOver())
  {
    return;
  }
  mSelection = saUseExcplicit;
  cAbstractComponent& component = mManager.findComponent(location);
  if (hasPotentialyMatchingInterface(component) != nullptr)
  {
    makeMatch(component);
  }
}

void cInterfaceDep::recalc()
{
  mstd::cLifeWatch const watch(mLife);
  for (cComponentWalk walk(mManager); !walk.isEnd() && !watch.isOver(); walk.next())
  {
    recalc(walk.component());
  }
}

void cInterfaceDep::recalc(cAbstractComponent& candidate)
{
  switch (mSelection)
  {
  case saUseExcplicit:
    recalcUseExcplicit();
    break;
  case saUseFirstBest:
    recalcUseFirstBest(candidate);
    break;
  case saUseInteractive:
    cSTDExceptions::throwUnsupportedOperation(mstd::cAsciiString("cInterfaceDep::saUseInteractive"));
  }
}

void cInterfaceDep::recalcUseExcplicit()
{
  if (mState == Matched && !validateMatch(mMatch))
  {
    invalidateMatch();
  }
}

void cInterfaceDep::recalcUseFirstBest(cAbstractComponent& candidate)
{
  mstd::cLifeWatch const watch(mLife);
  recalcUseExcplicit();
  if (!watch.isOver() && mState == Unmatched && hasMatchingInterface(candidate) != nullptr)
  {
    makeMatch(candidate);
  }
}

cAbstractInterface* cInterfaceDep::hasPotentialyMatchingInterface(cAbstractComponent& component) const
{
  return component.hasMatchingInterface(mWanted);
}

cAbstractInterface* cInterfaceDep::hasMatchingInterface(cAbstractComponent& component) const
{
  cAbstractInterface* const interface = hasPotentialyMatchingInterface(component);
  if (interface == nullptr)
  {
    return nullptr;
  }
  for (cComponentLocation const& excluded : mExcluded)
  {
    if (component.location() == excluded)
    {
      return nullptr;
    }
  }
  for (cComponentLocation const& possible : mPossible)
  {
    if (component.location().hostName() == possible.hostName())
    {
      return interface;
    }
  }
  return mPossible.empty() ? interface : nullptr;
}

void cInterfaceDep::makeMatch(cAbstractComponent& component)
{
  mstd::cLifeWatch const watch(mLife);
  cComponentWalk const keep(mManager); // whoever is told may remove the component
  if (mpInterface != nullptr)
  {
    mpInterface->interfaceMatched();
  }
  if (!watch.isOver())
  {
    sigInterfaceAddress(component.address());
  }
  if (!watch.isOver())
  {
    mMatch.set(component.location());
    mState = Matched;
  }
}

void cInterfaceDep::invalidateMatch()
{
  mstd::cLifeWatch const watch(mLife);
  mMatch.invalidate();
  if (mpInterface != nullptr)
  {
    mpInterface->interfaceUnmatched();
  }
  if (!watch.isOver() && mState == Matched)
  {
    sigInterfaceLost();
  }
  if (!watch.isOver())
  {
    mState = Unmatched;
  }
}

void cInterfaceDep::sltComponentRegistered(cAbstractComponent& component)
{
  recalc(component);
}

void cInterfaceDep::sltComponentRemoved(cAbstractComponent& component)
{
  if (mMatch.valid() && mMatch.location() == component.location())
  {
    mMatch.invalidate();
    if (mpOwner != nullptr)
    {
      mpOwner->modifyInterfaceDep();
    }
  }
}

} // namespace mcs
