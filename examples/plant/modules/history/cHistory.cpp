#include "cHistory.h"

#include "cCall.h"
#include "mcs/module.h"
#include "rmi/tPublishedSlot.h"
#include "std/cAbstractException.h"
#include "tComponentOf.h"

cHistory::cHistory(mcs::cAbstractComponent& owner, cSettings const&)
    : cOffer("history", "keeps the values of the meter"), mMeter(owner, "plant.meter")
{
  mrmi::publishSlot(*this, "take", &cHistory::take, "", "adds the values of the meter");
  mrmi::publishSlot(*this, "samples", &cHistory::samples, "name", "how many values of a figure are kept");
  mrmi::publishSlot(*this, "mean", &cHistory::mean, "name, count, mean", "of the last values; false if there are none");
  mrmi::publishSlot(*this, "range", &cHistory::range, "name, lowest, highest",
                    "of the values; false if there are none");
  mTaken.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mTaken.exportSignal(*this, "taken", 0, "there are new values");
  mMeter.follow("measured", *this, "take");
}

void cHistory::take()
{
  mcs::cAbstractInterface* const pMeter = mMeter.provider();
  if (pMeter == nullptr)
  {
    return;
  }
  mstd::cAsciiString name;
  mstd::cAsciiString unit;
  bool isFigure = true;
  for (unsigned int i = 0; isFigure; ++i)
  {
    cCall(*pMeter, "figure").in(i).inOut(name).inOut(unit).result(isFigure);
    if (isFigure)
    {
      try
      {
        double value = 0;
        cCall(*pMeter, "value").in(name).result(value);
        append(findOrAdd(name), value);
      }
      catch (mstd::cAbstractException const&)
      {
        // A gap: who wants to know why asks the meter.
      }
    }
  }
  mTaken();
}

unsigned int cHistory::samples(mstd::cAsciiString const& name) const
{
  cSeries const* const pSeries = find(name);
  return pSeries == nullptr ? 0 : pSeries->mValues.length();
}

bool cHistory::mean(mstd::cAsciiString const& name, unsigned int iCount, double& rMean) const
{
  unsigned int const iSamples = samples(name);
  unsigned int const iUsed = iCount < iSamples ? iCount : iSamples;
  if (iUsed == 0)
  {
    return false;
  }
  mstd::tArray<double> const& values = find(name)->mValues;
  double sum = 0;
  for (unsigned int i = iSamples - iUsed; i < iSamples; ++i)
  {
    sum += values.at(i);
  }
  rMean = sum / iUsed;
  return true;
}

bool cHistory::range(mstd::cAsciiString const& name, double& rLowest, double& rHighest) const
{
  if (samples(name) == 0)
  {
    return false;
  }
  mstd::tArray<double> const& values = find(name)->mValues;
  rLowest = rHighest = values.at(0);
  for (unsigned int i = 1; i < values.length(); ++i)
  {
    double const value = values.at(i);
    rLowest = value < rLowest ? value : rLowest;
    rHighest = value > rHighest ? value : rHighest;
  }
  return true;
}

cHistory::cSeries const* cHistory::find(mstd::cAsciiString const& name) const
{
  for (unsigned int i = 0; i < mSeries.length(); ++i)
  {
    if (mSeries.at(i)->mName == name)
    {
      return mSeries.at(i);
    }
  }
  return nullptr;
}

cHistory::cSeries& cHistory::findOrAdd(mstd::cAsciiString const& name)
{
  if (cSeries const* const pSeries = find(name))
  {
    return const_cast<cSeries&>(*pSeries);
  }
  mstd::tAutoPtr<cSeries> pSeries(new cSeries);
  pSeries->mName = name;
  mSeries.append(pSeries.get());
  return *pSeries.release();
}

void cHistory::append(cSeries& rSeries, double value)
{
  if (rSeries.mValues.length() == MaxSamples)
  {
    rSeries.mValues.erase(0, MaxSamples / 2); // half at once, so that the rest is not moved for each value
  }
  rSeries.mValues.append(value);
}

MORTISE_MODULE(1, 0, tComponentOf<cHistory>);
