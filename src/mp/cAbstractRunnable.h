#ifndef MORTISE_MP_CABSTRACTRUNNABLE_H
#define MORTISE_MP_CABSTRACTRUNNABLE_H

#include "pi/piTypes.h"

namespace mp
{

/// A thread object: `run()` of a derived class is executed on a thread of its own.
///
/// There is no cancellation: `run()` asks isStopInProgress() now and then and returns. A derived class calls stop()
/// in its own destructor, since run() must have returned before that class is gone.
///
/// Threads: state() and what derives from it may be called by any thread, but not while start() runs. start() and
/// stop()
///          belong to one thread, which isn't the one that executes run().
/// Errors:  an exception that leaves run() ends the process.
class MORTISE_API cAbstractRunnable
{
public:
  enum State
  {
    NeverStarted = 0,
    Started = 1,       ///< start() was called, the thread has not begun
    Running = 2,       ///< run() is being executed, and nobody has called stop()
    StopRequested = 3, ///< stop() was called; remains until run() returns, and without a thread until start()
    Finished = 4       ///< run() has returned
  };

  cAbstractRunnable();
  /// Raises the `int` 12, as does the assignment: a thread has no copy.
  cAbstractRunnable(cAbstractRunnable const&);
  cAbstractRunnable& operator=(cAbstractRunnable const&);
  virtual ~cAbstractRunnable();

  /// The work of the thread. Does nothing here.
  virtual void run();

  /// Executes run() on a new thread. Waits for the end of an earlier run first, without asking it to stop.
  /// Raises cOSErrorException if the platform reports a negative result; a positive one goes unnoticed, and the object
  /// stays at state 1.
  void start();
  /// Requests the end of run() and waits for it. A run() that doesn't return blocks for good.
  /// A request made after start() and before the thread has begun is kept: the state goes from 3 to 4 and never is 2,
  /// and run() starts with isStopInProgress() true. Were the state 2 then, run() would not learn of the request, and
  /// stop() would wait for good.
  void stop();

  State state() const;
  bool isRunning() const;        ///< state 2
  bool isStopInProgress() const; ///< state 3
  bool isActive() const;         ///< state 1, 2 or 3

private:
  struct cImpl;
  cImpl* mpImpl; // owned, never null
};

} // namespace mp

#endif
