#ifndef MORTISE_IO_CFILEWATCH_H
#define MORTISE_IO_CFILEWATCH_H

#include "io/cFile.h"
#include "pi/cWork.h"
#include "pi/piTypes.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal0.h"
#include "std/cTime.h"

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{

/// Tells when a file has changed, by asking for its time of modification again and again.
///
/// It holds the file open, and so watches the file that stood at the path when it was made, wherever that moves.
/// Changes that share one time stamp, which counts whole seconds, are told once for each stamp that a poll sees.
///
/// Ownership: owns the file; the system's work queue looks at its work while it lives.
/// Errors:    a file that can't be opened raises what cFile raises.
/// Threads:   belongs to the thread of the work queue, on which the signal fires. A slot must not destroy the watch.
class MORTISE_API cFileWatch : public mrmi::cConnectable
{
public:
  /// Watches a file of the system's file system, not before start().
  explicit cFileWatch(mucs::cString const& path);
  ~cFileWatch() override;

  /// Polls every `iMSec` milliseconds from now on.
  void start(unsigned int iMSec);
  void stop();
  /// Looks at the file now, as the work does: fires if its time is another than the last one seen.
  void poll();

  /// The file has changed.
  mrmi::localSignal0<piVoid> sigChanged;

  /// The time of modification that was seen last.
  mstd::cTime const& lastStamp() const { return mLastStamp; }
  mpi::cWork const& work() const { return mWork; }

private:
  cFile mFile;
  mstd::cTime mLastStamp;
  mpi::cWork mWork;
};

} // namespace mio

#endif
