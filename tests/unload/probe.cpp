// A module that uses the library, as a plug-in of a program that doesn't would.

#include "probe.h"

#include "pi/cAbstractOut.h"
#include "pi/cAbstractProcessEvents.h"
#include "pi/cGlobalCaches.h"
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/tPublishedSlot.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "sa/containerStream.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/tHash.h"
#include "std/tVector.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

class cAbstractKROApp
{
public:
  virtual ~cAbstractKROApp() {}
};

namespace
{

tNote noted = nullptr;
mpi::cSystem* pFacade = nullptr;

/// Goes with the module itself, which the library outlives.
struct cModule
{
  ~cModule()
  {
    if (noted != nullptr)
    {
      noted("module");
    }
  }
} module;

class cLateWork : public mpi::cWork
{
public:
  ~cLateWork() override
  {
    noted(&mpi::system() != pFacade ? "work, behind the facade" : "work, before the facade");
    mpi::cAbstractOut& out = mpi::system().out;
    out.debugMessage("probe.cpp", 1) << "late work goes\n" << mpi::cAbstractOut::clearDebugMessage();
  }
};

class cProcessor : public mpi::cAbstractProcessEvents
{
public:
  ~cProcessor() override { noted("event processor"); }
  bool supportsAIO() const override { return true; }
  bool isAsynchronous() const override { return false; }
  void yield(unsigned int, mstd::tList<mstd::tSharedObject<mpi::cWork>>&, unsigned int) override { sigFinished(); }
  void wakeUp() override {}
};

bool hasApplication()
{
  try
  {
    mpi::system().app();
    return true;
  }
  catch (mstd::cAbstractException const&)
  {
    return false;
  }
}

/// Uses templates of the headers, which the module then has copies of.
bool doSomeWork()
{
  mstd::tVector<mucs::cString> texts;
  texts.append(mucs::cString("text"));
  mstd::tHash<mucs::cString, mucs::cString, mstd::tArrayHashTraits<1024u>> hash;
  hash[texts.at(0)] = mucs::cString("value");
  msa::cSerializeBinary serializer;
  texts >> serializer;
  msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
  mstd::tVector<mucs::cString> read;
  read << deserializer;
  mstd::cAsciiString shown;
  (mucs::cLIMessage() << "$MTR$%a% and %b%" << read.at(0) << 12).untranslated(shown);
  return hash.has(read.at(0)) && shown == "text and 12";
}

} // namespace

extern "C" __attribute__((visibility("default"))) bool probeBuildRoot(tNote note)
{
  static cAbstractKROApp application;
  noted = note;
  pFacade = &mpi::system();
  bool const fresh = !hasApplication() && mpi::system().caches.hasPathFixupHash() == nullptr;
  pFacade->setApp(&application);
  pFacade->caches.createPathFixupHash();
  pFacade->wq.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cProcessor));
  pFacade->wq.addJob(mstd::tSharedObject<mpi::cWork>(mstd::tAutoPtr<mpi::cWork>(new cLateWork)));
  return fresh && hasApplication() && doSomeWork() && &mpi::system() == pFacade;
}
