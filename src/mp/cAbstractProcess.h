#ifndef MORTISE_MP_CABSTRACTPROCESS_H
#define MORTISE_MP_CABSTRACTPROCESS_H

#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mp
{

class cAbstractPollable;
class cAbstractProcessData;
class cAbstractRunnable;

/// A cooperative process: a piece of work with flags that tell whether it runs, is done or is unwanted.
///
/// Ownership: the default constructor makes data of its own; data given by reference stays its owner's, outlives
///            the process, and is free for another process when this one is destroyed.
class MORTISE_API cAbstractProcess
{
public:
  /// In what a process is executed.
  enum Context
  {
    NoContext = 0,       ///< the data serves no process
    PollableContext = 1, ///< called again and again by the thread that owns it
    RunnableContext = 2  ///< a thread of its own
  };

  cAbstractProcess();
  explicit cAbstractProcess(mp::cAbstractProcessData& data);
  cAbstractProcess(cAbstractProcess const&) = delete; // data serves one process at a time
  cAbstractProcess& operator=(cAbstractProcess const&) = delete;
  virtual ~cAbstractProcess();

  /// The work of the process. A pollable process does a piece of it for each call.
  virtual void work() = 0;
  /// This process as one that is polled, or null.
  virtual cAbstractPollable* isPollable() = 0;
  /// The thread that executes this process, or null.
  virtual cAbstractRunnable* isRunnable() = 0;
  /// Asks the process to break off what it does; `wait` asks for the return to come after that.
  virtual void interrupt(bool wait) = 0;

  bool isFinished() const;
  bool isRunning() const;
  mp::cAbstractProcessData& processData() const { return mData; }

private:
  mstd::tAutoPtr<mp::cAbstractProcessData> mpOwnData; // null if the data was given
  mp::cAbstractProcessData& mData;
};

} // namespace mp

#endif
