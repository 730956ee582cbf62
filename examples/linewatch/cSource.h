#ifndef MORTISE_EXAMPLES_LINEWATCH_CSOURCE_H
#define MORTISE_EXAMPLES_LINEWATCH_CSOURCE_H

#include "cLineScanner.h"
#include "pi/cWork.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal1.h"
#include "rmi/localSignal3.h"

class cOptions;

/// One source of lines: a descriptor, the work that reads it, and what was found in it.
class cSource : public mrmi::cConnectable
{
public:
  enum State
  {
    Open,
    Ended,
    Failed,
    Stopped
  };

  /// A source for the path `sName`, or for standard input if that is "-". Nothing is opened yet.
  cSource(mstd::cAsciiString const& sName, cOptions const& options);
  cSource(cSource const&) = delete;
  cSource& operator=(cSource const&) = delete;
  ~cSource();

  /// Opens the descriptor and schedules the work as a child of `parent`. A path that can't be opened raises
  /// mstd::cOSErrorException.
  void open(mpi::cWork& parent);
  /// Closes the descriptor and lets the work rest. What was read so far counts.
  void close(State state);

  mstd::cAsciiString const& name() const { return mName; }
  mpi::cWork const& work() const { return mWork; }
  cLineScanner const& scanner() const { return mScanner; }
  State state() const { return mState; }
  char const* stateText() const;

  /// Fired at the end of input.
  mrmi::localSignal1<piVoid, cSource&> sigEnded;
  /// Fired for each line with a match: its source, its beginning, its whole length.
  mrmi::localSignal3<piVoid, cSource const&, mstd::tArray<char> const&, piUInt64> sigMatch;

private:
  void sltReady();
  void sltMatch(mstd::tArray<char> const& shown, piUInt64 iLength);

  mstd::cAsciiString mName;
  int miDescriptor;
  State mState;
  cLineScanner mScanner;
  mpi::cWork mWork;
};

#endif
