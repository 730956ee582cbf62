#ifndef MORTISE_EXAMPLES_LINEWATCH_CWATCH_H
#define MORTISE_EXAMPLES_LINEWATCH_CWATCH_H

#include "cSource.h"
#include "pi/cWork.h"
#include "rmi/cConnectable.h"
#include "std/cTime.h"
#include "std/tPtrVector.h"

class cOptions;

/// The program: watches all sources until they have ended or a signal comes.
///
/// The work items of the sources are children of one work that handles their errors, so a source that fails ends alone.
class cWatch : public mrmi::cConnectable
{
public:
  explicit cWatch(cOptions const& options);
  cWatch(cWatch const&) = delete;
  cWatch& operator=(cWatch const&) = delete;
  ~cWatch();

  /// Runs to the end and returns the exit code.
  int run();

private:
  void openSources();
  void watchSignals();
  void sltRates();
  void sltSignal();
  void sltEnded(cSource& source);
  void sltFailed(mstd::cAbstractException const& e, bool bClimbed);
  void sltMatch(cSource const& source, mstd::tArray<char> const& shown, piUInt64 iLength);
  void finish();
  void finishIfAllEnded();
  void printTotals() const;
  void writeGraph();
  void complain(mstd::cAsciiString const& text);
  void print(mstd::cAsciiString const& text);

  cOptions const& mOptions;
  mpi::cWork mParent; // of the sources' work; never runs
  mpi::cWork mRates;
  mpi::cWork mSignals;
  mstd::tPtrVector<cSource> mSources;
  mstd::cTime mStart;
  mstd::cTime mLastTime;
  piUInt64 miLastLines;
  piUInt64 miLastBytes;
  int miSignalDescriptor;
  int miSignal; // that ended the run, or 0
  bool mComplained;
  bool mOutputLost;
};

#endif
