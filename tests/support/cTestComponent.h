#ifndef MORTISE_TESTS_SUPPORT_CTESTCOMPONENT_H
#define MORTISE_TESTS_SUPPORT_CTESTCOMPONENT_H

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgr.h"
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace support
{

/// Calls a function if there is one.
inline void callIf(std::function<void()> const& function)
{
  if (function)
  {
    std::function<void()> const keep(function); // whoever owns it may go
    keep();
  }
}

/// An interface that counts what it is told.
class cTestInterface : public mcs::cAbstractInterface
{
public:
  explicit cTestInterface(char const* name, mcs::cInterfaceDesc::InterfaceType type = mcs::cInterfaceDesc::Providing)
      : cAbstractInterface(mcs::cInterfaceDesc(type, name, "test", 1, ""))
  {
  }

  void interfaceMatched() override
  {
    ++miMatched;
    callIf(mOnMatched);
  }
  void interfaceUnmatched() override
  {
    ++miUnmatched;
    callIf(mOnUnmatched);
  }

  unsigned int miMatched = 0;
  unsigned int miUnmatched = 0;
  std::function<void()> mOnMatched;
  std::function<void()> mOnUnmatched;
};

/// What a dependency searches for to be matched by a cTestInterface of this name.
inline mcs::cInterfaceDesc wantedInterface(char const* name)
{
  return mcs::cInterfaceDesc(mcs::cInterfaceDesc::Requiring, name, "", 0, "");
}

/// A component whose virtual operations are the test's.
class cTestComponent : public mcs::cAbstractComponent
{
public:
  explicit cTestComponent(mcs::cModuleMgr& manager, std::string name = "") : cAbstractComponent(manager)
  {
    moduleInfo().setName(name.c_str());
    moduleInfo().setContext(name.c_str());
  }
  ~cTestComponent() override { callIf(mOnDestroyed); }

  cTestComponent& provide(char const* name)
  {
    addInterface(mstd::tAutoPtr<mcs::cAbstractInterface>(new cTestInterface(name)));
    return *this;
  }

  unsigned int fixedQueueID() const override { return miQueueID; }
  unsigned int fixedModuleID() const override { return miModuleID; }
  bool isLocal() const override { return mLocal; }
  bool delayAnnouncement() const override { return mDelay && mDelay(); }
  void notifyComponentRegistered() override
  {
    ++miRegistered;
    callIf(mOnRegistered);
  }
  void notifyShortlyRemove() override
  {
    ++miShortlyRemove;
    callIf(mOnShortlyRemove);
  }
  bool applicationCloseAdvisable(cAbstractKROApp&) override
  {
    ++miAsked;
    callIf(mOnAsked);
    return mAdvisable;
  }

  unsigned int miQueueID = 1;
  unsigned int miModuleID = 0;
  bool mLocal = true;
  bool mAdvisable = true;
  unsigned int miRegistered = 0;
  unsigned int miShortlyRemove = 0;
  unsigned int miAsked = 0;
  std::function<bool()> mDelay;
  std::function<void()> mOnRegistered;
  std::function<void()> mOnShortlyRemove;
  std::function<void()> mOnAsked;
  std::function<void()> mOnDestroyed;
};

/// Slots for the signals of a manager; each line of the trace is the signal and the number of the component.
class cManagerTrace : public mrmi::cConnectable
{
public:
  explicit cManagerTrace(mcs::cModuleMgr& manager)
  {
    manager.sigComponentAdded.connect(mrmi::cDirectLocalSlotCall1(*this, &cManagerTrace::sltAdded));
    manager.sigComponentRegistered.connect(mrmi::cDirectLocalSlotCall1(*this, &cManagerTrace::sltRegistered));
    manager.sigComponentRemoved.connect(mrmi::cDirectLocalSlotCall1(*this, &cManagerTrace::sltRemoved));
    manager.sigComponentDepsModified.connect(mrmi::cDirectLocalSlotCall0(*this, &cManagerTrace::sltDepsModified));
    manager.sigInterfaceDepsModified.connect(
        mrmi::cDirectLocalSlotCall1(*this, &cManagerTrace::sltInterfaceDepsModified));
  }

  void sltAdded(mcs::cAbstractComponent& component) { tell("added", &component); }
  void sltRegistered(mcs::cAbstractComponent& component) { tell("registered", &component); }
  void sltRemoved(mcs::cAbstractComponent& component) { tell("removed", &component); }
  void sltDepsModified() { tell("requirements", nullptr); }
  void sltInterfaceDepsModified(mcs::cComponentLocation const& location)
  {
    record("dependencies " + std::to_string(location.address().moduleID()), nullptr);
  }

  std::vector<std::string> const& lines() const { return mLines; }
  /// The lines so far, which are forgotten.
  std::vector<std::string> take() { return std::exchange(mLines, {}); }

  /// Called with each line and the component that the signal carries, or null.
  std::function<void(std::string const&, mcs::cAbstractComponent*)> mOnLine;

private:
  void tell(std::string what, mcs::cAbstractComponent* pComponent)
  {
    record(pComponent != nullptr ? what + " " + std::to_string(pComponent->address().moduleID()) : what, pComponent);
  }
  void record(std::string const& line, mcs::cAbstractComponent* pComponent)
  {
    mLines.push_back(line);
    if (mOnLine)
    {
      auto const keep = mOnLine;
      keep(line, pComponent);
    }
  }

  std::vector<std::string> mLines;
};

/// The passes of the manager that was made last.
class cPasses
{
public:
  cPasses() : mpWork(nullptr)
  {
    for (mstd::tSharedObject<mpi::cWork> const& job : mpi::system().wq.jobs())
    {
      if (job.get() != nullptr && job->name() == mstd::cAsciiString("ComponentManagement"))
      {
        mpWork = job.get();
      }
    }
    if (mpWork == nullptr)
    {
      throw std::logic_error("there is no manager");
    }
  }

  mpi::cWork& work() const { return *mpWork; }
  /// True if a pass was asked for.
  bool isPending() const { return mpWork->isStarted(); }
  /// One turn of the queue, in which a pass must be due.
  void run()
  {
    if (!isPending())
    {
      throw std::logic_error("no pass was asked for");
    }
    mpi::system().wq.process();
  }
  /// Runs passes until none is asked for, and returns how many.
  unsigned int settle(unsigned int iLimit = 1000)
  {
    unsigned int passes = 0;
    while (isPending())
    {
      if (passes++ == iLimit)
      {
        throw std::logic_error("the passes do not end");
      }
      run();
    }
    return passes;
  }

private:
  mpi::cWork* mpWork;
};

} // namespace support

#endif
