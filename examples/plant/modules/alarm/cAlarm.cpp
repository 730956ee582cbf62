#include "cAlarm.h"

#include "cCall.h"
#include "mcs/module.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/tPublishedSlot.h"
#include "tComponentOf.h"

cAlarm::cAlarm(mcs::cAbstractComponent& owner, cSettings const&)
    : cOffer("alarm", "compares the mean of the last values with limits"), mOwner(owner),
      mHistory(owner, "plant.history"), miForgotten(0)
{
  mrmi::publishSlot(*this, "setLimit", &cAlarm::setLimit, "name, limit", "sets the limit of a figure");
  mrmi::publishSlot(*this, "removeLimit", &cAlarm::removeLimit, "name", "removes a limit; false if there was none");
  mrmi::publishSlot(*this, "limit", &cAlarm::limit, "name, limit", "the limit of a figure; false if there is none");
  mrmi::publishSlot(*this, "check", &cAlarm::check, "", "compares");
  mrmi::publishSlot(*this, "raised", &cAlarm::raised, "", "how many figures are above their limits");
  mrmi::publishSlot(*this, "events", &cAlarm::events, "", "how many things have happened");
  mrmi::publishSlot(*this, "event", &cAlarm::event, "number, name, value", "one of them; 0 if it is not there");
  mChanged.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mChanged.exportSignal(*this, "changed", 0, "something has happened");
  mHistory.sigFound.connect(mrmi::cDirectLocalSlotCall1(*this, &cAlarm::sltFound));
  mHistory.follow("taken", *this, "check");
}

void cAlarm::sltFound(mcs::cAbstractComponent& component)
{
  mOwner.addLocalRequiredComponent(&component);
}

void cAlarm::setLimit(mstd::cAsciiString const& name, double limit)
{
  if (cLimit* const pLimit = find(name))
  {
    pLimit->mLimit = limit;
    return;
  }
  mstd::tAutoPtr<cLimit> pLimit(new cLimit{name, limit, NoEvent});
  mLimits.append(pLimit.get());
  pLimit.release();
}

bool cAlarm::removeLimit(mstd::cAsciiString const& name)
{
  for (unsigned int i = 0; i < mLimits.length(); ++i)
  {
    if (mLimits.at(i)->mName == name)
    {
      mLimits.erase(i);
      return true;
    }
  }
  return false;
}

bool cAlarm::limit(mstd::cAsciiString const& name, double& rLimit) const
{
  cLimit const* const pLimit = find(name);
  if (pLimit == nullptr)
  {
    return false;
  }
  rLimit = pLimit->mLimit;
  return true;
}

void cAlarm::check()
{
  mcs::cAbstractInterface* const pHistory = mHistory.provider();
  if (pHistory == nullptr)
  {
    return;
  }
  bool isChanged = false;
  for (unsigned int i = 0; i < mLimits.length(); ++i)
  {
    isChanged = checkLimit(*mLimits.at(i), *pHistory) || isChanged;
  }
  if (isChanged)
  {
    mChanged();
  }
}

bool cAlarm::checkLimit(cLimit& rLimit, mcs::cAbstractInterface& history)
{
  unsigned int const iCount = ComparedSamples;
  bool isMeasured = false;
  double value = 0;
  cCall(history, "mean").in(rLimit.mName).in(iCount).inOut(value).result(isMeasured);
  AlarmEvent const state = !isMeasured ? Unknown : value > rLimit.mLimit ? Raised : Cleared;
  // Nothing is told of a figure that was below its limit from the start.
  bool const isEvent = state != rLimit.mState && !(state == Cleared && rLimit.mState != Raised);
  rLimit.mState = state;
  if (!isEvent)
  {
    return false;
  }
  if (mEvents.length() == MaxEvents)
  {
    mEvents.erase(0);
    ++miForgotten;
  }
  mstd::tAutoPtr<cEvent> pEvent(new cEvent{rLimit.mName, value, state});
  mEvents.append(pEvent.get());
  pEvent.release();
  return true;
}

unsigned int cAlarm::raised() const
{
  unsigned int iRaised = 0;
  for (unsigned int i = 0; i < mLimits.length(); ++i)
  {
    iRaised += mLimits.at(i)->mState == Raised;
  }
  return iRaised;
}

unsigned int cAlarm::event(unsigned int iNumber, mstd::cAsciiString& rName, double& rValue) const
{
  if (iNumber < miForgotten || iNumber >= events())
  {
    return NoEvent;
  }
  cEvent const& event = *mEvents.at(iNumber - miForgotten);
  rName = event.mName;
  rValue = event.mValue;
  return event.mKind;
}

cAlarm::cLimit* cAlarm::find(mstd::cAsciiString const& name) const
{
  for (unsigned int i = 0; i < mLimits.length(); ++i)
  {
    if (mLimits.at(i)->mName == name)
    {
      return mLimits.at(i);
    }
  }
  return nullptr;
}

MORTISE_MODULE(1, 0, tComponentOf<cAlarm>);
