#ifndef MORTISE_PI_CWQDEBUG_H
#define MORTISE_PI_CWQDEBUG_H

#include "std/cAsciiString.h"

namespace mpi
{

class cWorkQueue;

/// Pictures of a work queue for people.
class MORTISE_API cWqDebug
{
public:
  /// The tree of work items of `pQueue`, or of the system's queue if that is null, as a graph in the
  /// dot language of Graphviz. Names go in as they stand: a name with a double quote breaks the text.
  static mstd::cAsciiString dot(cWorkQueue* pQueue = nullptr);

  cWqDebug() = delete;

private:
  static void dotDump(mstd::cAsciiString& out, cWorkQueue& queue);
};

} // namespace mpi

#endif
