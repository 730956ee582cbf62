#include "pi/cPIExceptions.h"

#include "pi/cUnsupportedPlatformException.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "ucs/cLIMessage.h"

namespace mpi
{

namespace
{

// What a runnable raises when it is copied or assigned.
int const runnableCopyCode = 12;

[[noreturn]] void throwBug(char const* key)
{
  mucs::cLIMessage message;
  message << key;
  throw mstd::cBugException(message, 0, 0);
}

[[noreturn]] void throwRuntime(char const* key)
{
  mucs::cLIMessage message;
  message << key;
  throw mstd::cRuntimeException(message, 0, 0);
}

} // namespace

void cPIExceptions::throwUnimplemented(mstd::cAsciiString const& operation)
{
  throw cUnsupportedPlatformException(operation);
}

void cPIExceptions::throwUnableGetCWD()
{
  throwRuntime("$MTR$Unable to find out current working directory!");
}

void cPIExceptions::throwUnableGetOSSpecificPath()
{
  throwRuntime("$MTR$Unable to find out os specific path!");
}

void cPIExceptions::throwRunnableNotCopyable()
{
  throwBug("$MTR$Threads could not be copied!");
}

void cPIExceptions::throwRunnableNotAssignable()
{
  throwBug("$MTR$Threads could not be assigned!");
}

void cPIExceptions::throwRunnableCopyCode()
{
  throw runnableCopyCode;
}

void cPIExceptions::throwProcessDataInUse()
{
  throwBug("$MTR$Never use process data for more than one process!");
}

void cPIExceptions::throwNoAIOData()
{
  throwBug("$MTR$Work does not own asynchronous I/O data!");
}

void cPIExceptions::throwNoFDAIOData()
{
  throwBug("$MTR$Asynchronous I/O data does not have file descriptor information!");
}

void cPIExceptions::throwNoProcessEvents()
{
  throwBug("$MTR$No process event manager for workqueue!");
}

void cPIExceptions::throwAmuckWork(mstd::cAsciiString const& name)
{
  mucs::cLIMessage message;
  message << "$MTR$Stopping amuck work \"%name%\"!" << name;
  throw mstd::cBugException(message, 0, 0);
}

void cPIExceptions::throwNoApplication()
{
  throwBug("$MTR$No application object set!");
}

void cPIExceptions::throwUnableCreateThread()
{
  // The platform's result can't be told from its sign, so the error value is a mere 1 and the words say the rest.
  mstd::cOSErrorException error("pthread_create", 1);
  error.link(mstd::cRuntimeException(mucs::cLIMessage(mstd::cAsciiString("Unable to create thread!")), 0, 0));
  throw error;
}

} // namespace mpi
