#include "cModule.h"

#include "cText.h"
#include "io/cSearchPaths.h"
#include "mcs/cAbstractComponent.h"
#include "mcs/cInterfaceDep.h"
#include "mcs/cModuleMgr.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cAbstractPlatformInfo.h"
#include "pi/cPlatform.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "sa/cReferenceFrame.h"
#include "std/cAsciiStringStream.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"

class cModule::cDepWatch : public mrmi::cConnectable
{
public:
  cDepWatch(cModule& module, mcs::cInterfaceDep& dep) : mModule(module), mDep(dep)
  {
    dep.sigInterfaceAddress.connect(mrmi::cDirectLocalSlotCall1(*this, &cDepWatch::sltMatched));
    dep.sigInterfaceLost.connect(mrmi::cDirectLocalSlotCall0(*this, &cDepWatch::sltLost));
  }

private:
  void sltMatched(mcs::cComponentAddr const& provider) { mModule.tellMatched(mDep, provider); }
  void sltLost() { mModule.tellLost(mDep); }

  cModule& mModule;
  mcs::cInterfaceDep& mDep;
};

cModule::cModule(mcs::cModuleMgr& manager, char const* pName) : mManager(manager), mName(pName)
{
  manager.sigComponentRemoved.connect(mrmi::cDirectLocalSlotCall1(*this, &cModule::sltRemoved));
}

cModule::~cModule() {}

void cModule::start(mio::cSearchPaths const& paths, msa::cReferenceFrame& frame)
{
  mucs::cString fileName(mName.c_str());
  mpi::cPlatform::createPlatformInfo()->osSpecificSOName(fileName);
  mucs::cString file;
  if (!paths.tryFindFile(fileName, file, mio::cSearchPaths::TypeFile))
  {
    mucs::cString folders;
    for (unsigned int i = 0; i < paths.size(); ++i)
    {
      folders += mucs::cString(i == 0 ? "" : ", ");
      folders += paths[i];
    }
    throw mstd::cRuntimeException(
        mstd::exceptionMessage("$MTR$There is no file \"%file%\" of the module \"%module%\" in: %folders%", fileName,
                               mName, folders),
        nullptr, 0);
  }
  mstd::tAutoPtr<mpi::cAbstractClassLoader> pLoader(mpi::cPlatform::createClassLoader(file));
  unsigned int iMajor = 0;
  unsigned int iMinor = 0;
  pLoader->getModuleVersion(iMajor, iMinor);
  mstd::cAsciiString version;
  version << iMajor << "." << iMinor;
  frame.restartReading();
  mstd::tAutoPtr<mcs::cAbstractComponent> pComponent(pLoader->instance(frame, mManager));
  mcs::cAbstractComponent& component = *pComponent;
  component.setClassLoader(pLoader.get(), mName);
  // The loader comes first: should the component not be taken, its library must still be there when it is destroyed.
  mManager.registerClassLoader(pLoader);
  mManager.addComponent(pComponent, mcs::cComponentAddr());
  mAddress = component.address();
  for (unsigned int i = 0; i < component.interfaceDeps().length(); ++i)
  {
    mstd::tAutoPtr<cDepWatch> pWatch(new cDepWatch(*this, *component.interfaceDeps().at(i)));
    mWatches.append(pWatch.get());
    pWatch.release();
  }
  sigTold(mstd::exceptionMessage("$MTR$start: %module% %version% is component %address%, from %file%", mName, version,
                                 mAddress.toString(), file));
}

void cModule::remove()
{
  mManager.removeComponent(mAddress);
}

void cModule::sltRemoved(mcs::cAbstractComponent& component)
{
  if (isThere() && component.address() == mAddress)
  {
    mWatches.clear();
    mstd::cAsciiString const address = mAddress.toString();
    mAddress.invalidate();
    sigTold(mstd::exceptionMessage("$MTR$removal: %module% (%address%) is gone", mName, address));
  }
}

void cModule::tellMatched(mcs::cInterfaceDep const& dep, mcs::cComponentAddr const& provider)
{
  sigTold(mstd::exceptionMessage("$MTR$match: %module% uses %interface% of %provider% (%address%)", mName,
                                 dep.wanted().name(), mManager.findComponent(provider).info().context(),
                                 provider.toString()));
}

void cModule::tellLost(mcs::cInterfaceDep const& dep)
{
  sigTold(mstd::exceptionMessage("$MTR$loss: %module% has no %interface% any more", mName, dep.wanted().name()));
}
