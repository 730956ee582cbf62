#ifndef MORTISE_EXAMPLES_PLANT_MODULES_METER_CMETER_H
#define MORTISE_EXAMPLES_PLANT_MODULES_METER_CMETER_H

#include "cOffer.h"
#include "cProcReader.h"
#include "cSettings.h"
#include "pi/cWork.h"
#include "rmi/signal0.h"
#include "std/cAbstractException.h"
#include "std/cTime.h"
#include "std/tAutoPtr.h"

namespace mcs
{
class cAbstractComponent;
}

/// Offers "plant.meter": see interfaces.h.
class cMeter : public cOffer
{
public:
  cMeter(mcs::cAbstractComponent& owner, cSettings const& settings);

  /// Measures no more.
  void shortlyRemove() override;

private:
  enum Figure : unsigned int
  {
    Cpu,
    Memory,
    Received,
    Sent,
    Disk,
    Figures
  };
  struct cReading
  {
    double mValue = 0;
    mstd::tAutoPtr<mstd::cAbstractException> mpFailure; // null: there is a value
  };

  // published
  unsigned int figures() const { return Figures; }
  bool figure(unsigned int iIndex, mstd::cAsciiString& rName, mstd::cAsciiString& rUnit) const;
  double value(mstd::cAsciiString const& name) const;
  void setInterval(unsigned int iMSec);

  void sltMeasure();
  void measure();
  void measureCpu();
  void measureMemory();
  void measureNet();
  void measureDisk();
  void set(Figure eFigure, double value);
  void fail(Figure eFigure, mstd::cAbstractException const& e);

  mrmi::signal0<piVoid> mMeasured;
  cProcReader const mReader;
  mstd::cAsciiString const mDiskPath;
  cReading mReadings[Figures];
  cProcReader::cCpu mLastCpu;
  cProcReader::cNet mLastNet;
  mstd::cTime mLastNetTime;
  mpi::cWork mWork;
};

#endif
