#include "cMeter.h"

#include "mcs/module.h"
#include "pi/schedule.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/tPublishedSlot.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"
#include "tComponentOf.h"

namespace
{
struct cFigure
{
  char const* mpName;
  char const* mpUnit;
};
// In the order of cMeter::Figure.
cFigure const figureTable[] = {{"cpu", "%"}, {"memory", "%"}, {"received", "B/s"}, {"sent", "B/s"}, {"disk", "%"}};
} // namespace

cMeter::cMeter(mcs::cAbstractComponent&, cSettings const& settings)
    : cOffer("meter", "measures figures of this machine"), mReader(settings.procFolder()),
      mDiskPath(settings.diskPath()), mLastCpu{0, 0}, mLastNet{0, 0}, mLastNetTime(0)
{
  static_assert(sizeof figureTable / sizeof *figureTable == Figures, "each figure has its row");
  mrmi::publishSlot(*this, "figures", &cMeter::figures, "", "how many figures there are");
  mrmi::publishSlot(*this, "figure", &cMeter::figure, "index, name, unit",
                    "describes a figure; false if there is none");
  mrmi::publishSlot(*this, "value", &cMeter::value, "name", "the last value of a figure");
  mrmi::publishSlot(*this, "setInterval", &cMeter::setInterval, "milliseconds", "time between two measurements");
  mMeasured.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mMeasured.exportSignal(*this, "measured", 0, "there are new values");

  measure();
  mWork.setName("plant: measure");
  mWork.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cMeter::sltMeasure));
  mpi::schedule(mWork);
  mWork.start(settings.intervalMSec(), mpi::cWork::Periodic);
}

void cMeter::shortlyRemove()
{
  mWork.stop();
}

bool cMeter::figure(unsigned int iIndex, mstd::cAsciiString& rName, mstd::cAsciiString& rUnit) const
{
  if (iIndex >= Figures)
  {
    return false;
  }
  rName = figureTable[iIndex].mpName;
  rUnit = figureTable[iIndex].mpUnit;
  return true;
}

double cMeter::value(mstd::cAsciiString const& name) const
{
  for (unsigned int i = 0; i < Figures; ++i)
  {
    if (name == figureTable[i].mpName)
    {
      cReading const& reading = mReadings[i];
      if (reading.mpFailure)
      {
        mstd::cRuntimeException e(mstd::exceptionMessage("$MTR$\"%figure%\" could not be measured!", name), nullptr, 0);
        e.link(*reading.mpFailure);
        throw e;
      }
      return reading.mValue;
    }
  }
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$There is no figure \"%figure%\"!", name), nullptr, 0);
}

void cMeter::setInterval(unsigned int iMSec)
{
  if (iMSec == 0)
  {
    throw mstd::cRuntimeException(
        mstd::exceptionMessage("$MTR$There is at least a millisecond between two measurements!"), nullptr, 0);
  }
  mWork.start(iMSec, mpi::cWork::Periodic);
}

void cMeter::sltMeasure()
{
  measure();
  mMeasured();
}

void cMeter::measure()
{
  measureCpu();
  measureMemory();
  measureNet();
  measureDisk();
}

void cMeter::set(Figure eFigure, double value)
{
  mReadings[eFigure].mValue = value;
  mReadings[eFigure].mpFailure.reinit(nullptr);
}

void cMeter::fail(Figure eFigure, mstd::cAbstractException const& e)
{
  mReadings[eFigure].mpFailure.reinit(e.createObject());
}

void cMeter::measureCpu()
{
  try
  {
    cProcReader::cCpu const cpu = mReader.cpu();
    // A machine that slept may count backwards.
    bool const isForward = cpu.miTotal > mLastCpu.miTotal && cpu.miBusy >= mLastCpu.miBusy;
    set(Cpu, isForward ? 100.0 * static_cast<double>(cpu.miBusy - mLastCpu.miBusy) /
                             static_cast<double>(cpu.miTotal - mLastCpu.miTotal)
                       : 0.0);
    mLastCpu = cpu;
  }
  catch (mstd::cAbstractException const& e)
  {
    fail(Cpu, e);
  }
}

void cMeter::measureMemory()
{
  try
  {
    cProcReader::cMemory const memory = mReader.memory();
    set(Memory, 100.0 * static_cast<double>(memory.miTotal - memory.miAvailable) / static_cast<double>(memory.miTotal));
  }
  catch (mstd::cAbstractException const& e)
  {
    fail(Memory, e);
  }
}

void cMeter::measureNet()
{
  try
  {
    cProcReader::cNet const net = mReader.net();
    mstd::cTime const now;
    double const seconds = static_cast<double>((now - mLastNetTime).toUSec()) / 1e6;
    // A device that is taken away takes its bytes along. The first time there is nothing to compare with.
    bool const isForward = mLastNetTime.get() != 0 && seconds > 0 && net.miReceived >= mLastNet.miReceived &&
                           net.miSent >= mLastNet.miSent;
    set(Received, isForward ? static_cast<double>(net.miReceived - mLastNet.miReceived) / seconds : 0.0);
    set(Sent, isForward ? static_cast<double>(net.miSent - mLastNet.miSent) / seconds : 0.0);
    mLastNet = net;
    mLastNetTime = now;
  }
  catch (mstd::cAbstractException const& e)
  {
    fail(Received, e);
    fail(Sent, e);
  }
}

void cMeter::measureDisk()
{
  try
  {
    set(Disk, cProcReader::diskPercent(mDiskPath));
  }
  catch (mstd::cAbstractException const& e)
  {
    fail(Disk, e);
  }
}

MORTISE_MODULE(1, 0, tComponentOf<cMeter>);
