#ifndef MORTISE_EXAMPLES_PLANT_MODULES_HISTORY_CHISTORY_H
#define MORTISE_EXAMPLES_PLANT_MODULES_HISTORY_CHISTORY_H

#include "cNeed.h"
#include "cOffer.h"
#include "cSettings.h"
#include "rmi/signal0.h"
#include "std/tArray.h"
#include "std/tPtrVector.h"

/// Offers "plant.history": see interfaces.h.
class cHistory : public cOffer
{
public:
  cHistory(mcs::cAbstractComponent& owner, cSettings const& settings);

private:
  enum : unsigned int
  {
    MaxSamples = 3600
  };
  /// The values of one figure.
  struct cSeries
  {
    mstd::cAsciiString mName;
    mstd::tArray<double> mValues;
  };

  // published
  void take();
  unsigned int samples(mstd::cAsciiString const& name) const;
  bool mean(mstd::cAsciiString const& name, unsigned int iCount, double& rMean) const;
  bool range(mstd::cAsciiString const& name, double& rLowest, double& rHighest) const;

  cSeries const* find(mstd::cAsciiString const& name) const;
  cSeries& findOrAdd(mstd::cAsciiString const& name);
  static void append(cSeries& rSeries, double value);

  mrmi::signal0<piVoid> mTaken;
  cNeed mMeter;
  mstd::tPtrVector<cSeries> mSeries;
};

#endif
