#include "cNeed.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cModuleMgr.h"
#include "rmi/cAbstractSignal.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"

cNeed::cDep::cDep(mcs::cAbstractComponent& owner, mcs::cInterfaceDesc const& wanted)
    : cInterfaceDep(owner, wanted, nullptr, saUseFirstBest)
{
  mcs::cModuleMgr& manager = owner.moduleMgr();
  manager.sigComponentRemoved.connect(mrmi::cDirectLocalSlotCall1(*this, &cDep::sltGoes));
  // In front, so that one which comes to the same place again qualifies when it is looked at.
  manager.sigComponentRegistered.connect(mrmi::cDirectLocalSlotCall1(*this, &cDep::sltComes),
                                         mrmi::cAbstractSignal::Prepend);
}

void cNeed::cDep::sltGoes(mcs::cAbstractComponent& component)
{
  excludedLocations().append(component.location());
}

void cNeed::cDep::sltComes(mcs::cAbstractComponent& component)
{
  mstd::tList<mcs::cComponentLocation>& excluded = excludedLocations();
  for (mstd::tList<mcs::cComponentLocation>::iterator it = excluded.begin(); it != excluded.end();)
  {
    it = *it == component.location() ? excluded.erase(it) : ++it;
  }
}

cNeed::cNeed(mcs::cAbstractComponent& owner, char const* pInterface)
    : mOwner(owner), mDep(owner, mcs::cInterfaceDesc(mcs::cInterfaceDesc::Requiring, pInterface, "mortise", 1, "")),
      mpSignal(nullptr), mpSlot(nullptr), mpReceiver(nullptr)
{
  sigFound.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  sigLost.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mDep.sigInterfaceAddress.connect(mrmi::cDirectLocalSlotCall1(*this, &cNeed::sltMatched));
  mDep.sigInterfaceLost.connect(mrmi::cDirectLocalSlotCall0(*this, &cNeed::sltLost));
}

mcs::cAbstractComponent* cNeed::component() const
{
  return mAddress.valid() ? mOwner.moduleMgr().hasComponent(mAddress) : nullptr;
}

mcs::cAbstractInterface* cNeed::provider() const
{
  mcs::cAbstractComponent* const pComponent = component();
  return pComponent == nullptr ? nullptr : mDep.hasPotentialyMatchingInterface(*pComponent);
}

void cNeed::follow(char const* pSignal, mrmi::cConnectable& receiver, char const* pSlot)
{
  mpSignal = pSignal;
  mpSlot = pSlot;
  mpReceiver = &receiver;
}

void cNeed::sltMatched(mcs::cComponentAddr const& address)
{
  mAddress = address;
  if (mpReceiver != nullptr)
  {
    provider()->findSignal(mpSignal).connect(*mpReceiver, mpSlot, mrmi::cAbstractSignal::ResolveOnConnect);
  }
  sigFound(*component());
}

void cNeed::sltLost()
{
  mAddress.invalidate();
  sigLost();
}
