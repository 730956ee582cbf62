#ifndef MORTISE_PI_CPIEXCEPTIONS_H
#define MORTISE_PI_CPIEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mstd
{
class cAsciiString;
} // namespace mstd

namespace mpi
{

/// The throw functions of the platform layer and of threads. None of them returns.
class MORTISE_API cPIExceptions
{
public:
  /// cUnsupportedPlatformException that names the operation.
  [[noreturn]] static void throwUnimplemented(mstd::cAsciiString const& operation);
  /// cRuntimeException.
  [[noreturn]] static void throwUnableGetCWD();
  /// cRuntimeException.
  [[noreturn]] static void throwUnableGetOSSpecificPath();
  /// cBugException. The copy constructor of a runnable raises throwRunnableCopyCode() instead.
  [[noreturn]] static void throwRunnableNotCopyable();
  /// cBugException. The assignment of a runnable raises throwRunnableCopyCode() instead.
  [[noreturn]] static void throwRunnableNotAssignable();
  /// The `int` 12: what copying or assigning a runnable raises.
  [[noreturn]] static void throwRunnableCopyCode();
  /// cBugException: a process data object was given to a second process.
  [[noreturn]] static void throwProcessDataInUse();
  /// cBugException: a work item has no asynchronous I/O data.
  [[noreturn]] static void throwNoAIOData();
  /// cBugException: asynchronous I/O data is of a kind without file descriptors.
  [[noreturn]] static void throwNoFDAIOData();
  /// cBugException: a work queue has no event processor.
  [[noreturn]] static void throwNoProcessEvents();
  /// cBugException: the work item of that name was stopped, since it ran amuck.
  [[noreturn]] static void throwAmuckWork(mstd::cAsciiString const& name);
  /// cBugException: the root has no application object.
  [[noreturn]] static void throwNoApplication();
  /// cOSErrorException of the operation "pthread_create", whose oldest cause tells that no thread was made.
  [[noreturn]] static void throwUnableCreateThread();
};

} // namespace mpi

#endif
