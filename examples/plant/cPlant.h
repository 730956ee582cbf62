#ifndef MORTISE_EXAMPLES_PLANT_CPLANT_H
#define MORTISE_EXAMPLES_PLANT_CPLANT_H

#include "cModule.h"
#include "cSettings.h"
#include "io/cSearchPaths.h"
#include "mcs/cInterfaceDep.h"
#include "mcs/cModuleMgr.h"
#include "pi/cAbstractKROApp.h"
#include "pi/cWork.h"

class cOptions;

namespace mstd
{
class cAbstractException;
}

/// The program: starts all modules, removes and restarts some of them in the middle, and removes all at the end, the
/// one that was started last first.
///
/// It knows modules by their names and what they do by their interfaces only.
class cPlant : public cAbstractKROApp, public mrmi::cConnectable
{
public:
  explicit cPlant(cOptions const& options);
  cPlant(cPlant const&) = delete;
  cPlant& operator=(cPlant const&) = delete;
  ~cPlant() override;

  /// Runs to the end and returns the exit code.
  int run();

private:
  void watchSignals();
  void findFolders();
  void plan(mpi::cWork& work, char const* pName, void (cPlant::*pSlot)(), unsigned int iMSec);
  void start(cModule& module);
  void turn();
  void finish();
  void removeLast();
  bool isAnyThere() const;
  void sltSignal();
  void sltRemove();
  void sltRestart();
  void sltTimeIsUp();
  void sltRemoved(mcs::cAbstractComponent& component);
  void sltAlarmFound(mcs::cComponentAddr const& address);
  void sltTold(mucs::cLIMessage const& message);
  void writeGraphs();
  void complain(mstd::cAbstractException const& e);

  cOptions const& mOptions;
  cSettings mSettings;
  mio::cSearchPaths mPaths;
  mcs::cModuleMgr mManager;
  mcs::cInterfaceDep mAlarm; // before the modules, so that it has matched before they see each other
  mstd::tPtrVector<cModule> mModules;
  mpi::cWork mSignals;
  mpi::cWork mRemoval;
  mpi::cWork mRestart;
  mpi::cWork mEnd;
  unsigned int miStarted;
  unsigned int miRemoved;
  int miSignalDescriptor;
  int miSignal; // that ended the run, or 0
  bool mFinishing;
  bool mComplained;
  bool mOutputLost;
};

#endif
