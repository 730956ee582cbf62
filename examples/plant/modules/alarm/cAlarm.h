#ifndef MORTISE_EXAMPLES_PLANT_MODULES_ALARM_CALARM_H
#define MORTISE_EXAMPLES_PLANT_MODULES_ALARM_CALARM_H

#include "cNeed.h"
#include "cOffer.h"
#include "cSettings.h"
#include "interfaces.h"
#include "rmi/signal0.h"
#include "std/tPtrVector.h"

/// Offers "plant.alarm": see interfaces.h.
///
/// It requires the component of its history: without the values no alarm could be trusted, so it goes before the
/// history does.
class cAlarm : public cOffer
{
public:
  cAlarm(mcs::cAbstractComponent& owner, cSettings const& settings);

private:
  enum : unsigned int
  {
    ComparedSamples = 3, // whose mean is compared
    MaxEvents = 1000
  };
  struct cLimit
  {
    mstd::cAsciiString mName;
    double mLimit;
    AlarmEvent mState; // what happened last
  };
  struct cEvent
  {
    mstd::cAsciiString mName;
    double mValue;
    AlarmEvent mKind;
  };

  // published
  void setLimit(mstd::cAsciiString const& name, double limit);
  bool removeLimit(mstd::cAsciiString const& name);
  bool limit(mstd::cAsciiString const& name, double& rLimit) const;
  void check();
  unsigned int raised() const;
  unsigned int events() const { return miForgotten + mEvents.length(); }
  unsigned int event(unsigned int iNumber, mstd::cAsciiString& rName, double& rValue) const;

  void sltFound(mcs::cAbstractComponent& component);
  cLimit* find(mstd::cAsciiString const& name) const;
  bool checkLimit(cLimit& rLimit, mcs::cAbstractInterface& history);

  mcs::cAbstractComponent& mOwner;
  mrmi::signal0<piVoid> mChanged;
  cNeed mHistory;
  mstd::tPtrVector<cLimit> mLimits;
  mstd::tPtrVector<cEvent> mEvents;
  unsigned int miForgotten; // events that were too many
};

#endif
