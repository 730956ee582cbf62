#include "cPlant.h"

#include "cCall.h"
#include "cGraphFile.h"
#include "cOptions.h"
#include "cText.h"
#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/componentGraph.h"
#include "pi/cFDAIOData.h"
#include "pi/cSystem.h"
#include "pi/cWqDebug.h"
#include "pi/schedule.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "std/cOSErrorException.h"
#include "std/exceptionMessage.h"

#include <errno.h>
#include <limits.h>
#include <signal.h>
#include <stdio.h>
#include <sys/signalfd.h>
#include <unistd.h>

cPlant::cPlant(cOptions const& options)
    : mOptions(options), mSettings(options.intervalMSec(), options.procFolder(), options.diskPath()),
      mManager(mpi::system().extensions),
      mAlarm(mManager, mcs::cInterfaceDesc(mcs::cInterfaceDesc::Requiring, "plant.alarm", "mortise", 1, ""), nullptr,
             mcs::cInterfaceDep::saUseFirstBest),
      miStarted(0), miRemoved(0), miSignalDescriptor(-1), miSignal(0), mFinishing(false), mComplained(false),
      mOutputLost(false)
{
  mManager.setApp(*this);
  mAlarm.sigInterfaceAddress.connect(mrmi::cDirectLocalSlotCall1(*this, &cPlant::sltAlarmFound));
  for (char const* const* ppName = cOptions::modules(); *ppName != nullptr; ++ppName)
  {
    mstd::tAutoPtr<cModule> pModule(new cModule(mManager, *ppName));
    pModule->sigTold.connect(mrmi::cDirectLocalSlotCall1(*this, &cPlant::sltTold));
    mModules.append(pModule.get());
    pModule.release();
  }
  // Behind the modules, which know then whether they are there.
  mManager.sigComponentRemoved.connect(mrmi::cDirectLocalSlotCall1(*this, &cPlant::sltRemoved));
}

cPlant::~cPlant()
{
  if (miSignalDescriptor >= 0)
  {
    close(miSignalDescriptor);
  }
}

int cPlant::run()
{
  watchSignals();
  findFolders();
  try
  {
    for (unsigned int i = 0; i < mModules.length(); ++i)
    {
      start(*mModules.at(i));
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    complain(e);
    finish();
  }
  unsigned int const iMSec = mOptions.seconds() * 1000;
  if (iMSec != 0 && !mFinishing)
  {
    plan(mEnd, "plant: end", &cPlant::sltTimeIsUp, iMSec);
    if (!mOptions.removed().empty())
    {
      plan(mRemoval, "plant: remove modules", &cPlant::sltRemove, iMSec / 3);
      plan(mRestart, "plant: start modules again", &cPlant::sltRestart, iMSec / 3 * 2);
    }
  }
  while (!mFinishing || isAnyThere())
  {
    turn();
  }
  sltTold(
      mstd::exceptionMessage("$MTR$end: %started% modules started, %removed% removed, in order", miStarted, miRemoved));
  return miSignal != 0 ? 128 + miSignal : mComplained ? 1 : 0;
}

void cPlant::turn()
{
  try
  {
    mpi::cSystem::exec();
  }
  catch (mstd::cAbstractException const& e)
  {
    complain(e);
    if (ferror(stdout))
    {
      mOutputLost = true;
      finish();
    }
  }
}

void cPlant::watchSignals()
{
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  // A reader that goes away is an error of a write, and not the end of this program.
  signal(SIGPIPE, SIG_IGN);
  miSignalDescriptor = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
  if (miSignalDescriptor < 0)
  {
    throw mstd::cOSErrorException("signalfd", errno);
  }
  mstd::tAutoPtr<mpi::cFDAIOData> pData(new mpi::cFDAIOData);
  pData->addFd(miSignalDescriptor, mpi::tFdInfo::Readable);
  mSignals.setName("plant: signals");
  mSignals.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cPlant::sltSignal));
  mSignals.setAIOData(pData);
  mpi::schedule(mSignals);
}

void cPlant::findFolders()
{
  for (unsigned int i = 0; i < mOptions.paths().length(); ++i)
  {
    mPaths.addPath(cText::decode(mOptions.paths().at(i)));
  }
  if (mPaths.size() == 0)
  {
    char program[PATH_MAX];
    ssize_t const iLength = readlink("/proc/self/exe", program, sizeof program - 1);
    if (iLength < 0)
    {
      throw mstd::cOSErrorException("readlink", errno, mucs::cString("/proc/self/exe"));
    }
    program[iLength] = 0;
    mstd::cAsciiString folder(program);
    folder += "-modules";
    mPaths.addPath(cText::decode(folder));
  }
}

void cPlant::plan(mpi::cWork& work, char const* pName, void (cPlant::*pSlot)(), unsigned int iMSec)
{
  work.setName(pName);
  work.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, pSlot));
  mpi::schedule(work);
  work.start(iMSec, mpi::cWork::SingleTask);
}

void cPlant::start(cModule& module)
{
  msa::cReferenceFrame frame;
  mSettings.toFrame(frame);
  module.start(mPaths, frame);
  ++miStarted;
}

bool cPlant::isAnyThere() const
{
  for (unsigned int i = 0; i < mModules.length(); ++i)
  {
    if (mModules.at(i)->isThere())
    {
      return true;
    }
  }
  return false;
}

void cPlant::finish()
{
  if (mFinishing)
  {
    return;
  }
  mFinishing = true;
  writeGraphs();
  mEnd.stop();
  mRemoval.stop();
  mRestart.stop();
  try
  {
    mManager.submitShortlyRemove();
  }
  catch (mstd::cAbstractException const& e)
  {
    complain(e); // what cannot say its last words goes all the same
  }
  removeLast();
}

void cPlant::removeLast()
{
  for (unsigned int i = mModules.length(); i-- > 0;)
  {
    if (mModules.at(i)->isThere())
    {
      mModules.at(i)->remove();
      return;
    }
  }
}

void cPlant::sltSignal()
{
  signalfd_siginfo info;
  if (read(miSignalDescriptor, &info, sizeof info) != static_cast<ssize_t>(sizeof info))
  {
    return;
  }
  miSignal = static_cast<int>(info.ssi_signo);
  // A second one ends the process at once, should this orderly end not come to its own.
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigprocmask(SIG_UNBLOCK, &signals, nullptr);
  sltTold(mstd::exceptionMessage(miSignal == SIGINT ? "$MTR$end: interrupted" : "$MTR$end: terminated"));
  finish();
}

void cPlant::sltTimeIsUp()
{
  sltTold(mstd::exceptionMessage("$MTR$end: the time is up"));
  finish();
}

void cPlant::sltRemove()
{
  for (unsigned int i = 0; i < mModules.length(); ++i)
  {
    cModule& module = *mModules.at(i);
    for (unsigned int j = 0; j < mOptions.removed().length(); ++j)
    {
      if (module.isThere() && module.name() == mOptions.removed().at(j))
      {
        sltTold(mstd::exceptionMessage("$MTR$removal: %module% is to go", module.name()));
        module.remove();
      }
    }
  }
}

void cPlant::sltRestart()
{
  // Also those that went because they required one that was removed. One that fails does not hold up the others.
  for (unsigned int i = 0; i < mModules.length(); ++i)
  {
    try
    {
      if (!mModules.at(i)->isThere())
      {
        start(*mModules.at(i));
      }
    }
    catch (mstd::cAbstractException const& e)
    {
      complain(e);
    }
  }
}

void cPlant::sltRemoved(mcs::cAbstractComponent&)
{
  ++miRemoved;
  if (mFinishing)
  {
    removeLast();
  }
}

void cPlant::sltAlarmFound(mcs::cComponentAddr const& address)
{
  mcs::cAbstractInterface& alarm = mManager.findComponent(address).getMatchingInterface(mAlarm.wanted());
  for (unsigned int i = 0; i < mOptions.limits().length(); ++i)
  {
    cOptions::cLimit const& limit = mOptions.limits().at(i);
    cCall(alarm, "setLimit").in(limit.mName).in(limit.mLimit).run();
  }
}

void cPlant::sltTold(mucs::cLIMessage const& message)
{
  if (mOutputLost)
  {
    return;
  }
  errno = 0;
  if (printf("%s\n", cText::message(message).c_str()) < 0 || fflush(stdout) != 0)
  {
    mOutputLost = true;
    complain(mstd::cOSErrorException("write", errno, mucs::cString("standard output")));
    finish();
  }
}

void cPlant::writeGraphs()
{
  if (mOptions.graph().empty())
  {
    return;
  }
  try
  {
    cGraphFile const work(mOptions.graph());
    cGraphFile const components = work.beside("-components");
    work.write(mpi::cWqDebug::dot());
    components.write(mcs::componentGraph(mManager));
    if (!work.draw() || !components.draw())
    {
      sltTold(mstd::exceptionMessage("$MTR$There is no SVG of the graphs, since Graphviz is not there."));
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    complain(e);
  }
}

void cPlant::complain(mstd::cAbstractException const& e)
{
  mComplained = true;
  fflush(stdout);
  fprintf(stderr, "plant: %s\n", cText::message(e).c_str());
}
