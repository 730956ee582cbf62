// A module that has everything that there is to show.

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cAbstractPlugIn.h"
#include "mcs/cInterfaceDep.h"
#include "mcs/module.h"
#include "rmi/localSignal1.h"
#include "rmi/tPublishedSlot.h"

namespace
{
class cGauge : public mcs::cAbstractInterface
{
public:
  cGauge()
      : cAbstractInterface(mcs::cInterfaceDesc(mcs::cInterfaceDesc::Providing, "gauge", "Jo", 3, "Measures the heat"))
  {
    mrmi::publishSlot(*this, "sltRead", &cGauge::read, "place, unit", "reads one place");
    registerSignal("sigChanged", "piVoid", "int", 0, "tells the new heat", sigChanged);
  }

  mrmi::localSignal1<piVoid, int> sigChanged;

  int read(int iPlace, mstd::cAsciiString& unit)
  {
    unit = "K";
    return iPlace;
  }

  void interfaceMatched() override {}
  void interfaceUnmatched() override {}
};

class cComponent : public mcs::cAbstractComponent
{
public:
  cComponent(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame)
      : cAbstractComponent(manager, frame),
        mClock(*this, mcs::cInterfaceDesc(mcs::cInterfaceDesc::Requiring, "clock", "Al", 2, "Tells the time"), nullptr,
               mcs::cInterfaceDep::saUseFirstBest)
  {
    moduleInfo().setName("shown \"one\"");
    moduleInfo().setAuthor("J\xC3\xB6\xFF\x1B[31m");
    moduleInfo().setDescription("has\neverything");
    moduleInfo().setBuildInfo(mstd::cBuildInfo("gcc", "12.2", "linux", "anvil", "2001-02-03", 77));
    addInterface(mstd::tAutoPtr<mcs::cAbstractInterface>(new cGauge));
  }

private:
  mcs::cInterfaceDep mClock;
};

class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame) { moduleInfo().setName("the other"); }
  mstd::cAsciiString pluginTypeName() const override { return mstd::cAsciiString("filter"); }
};
} // namespace

MORTISE_MODULE(7, 8, cComponent, cPlugIn);
