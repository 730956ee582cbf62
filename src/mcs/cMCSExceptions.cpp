#include "mcs/cMCSExceptions.h"

#include "mcs/cNoPublicInterfaceException.h"
#include "mcs/cNoSuchModuleException.h"
#include "mcs/cUnmatchedInterfaceException.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"

namespace mcs
{
void cMCSExceptions::throwExpectingColon()
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$Expecting \":\"!"), 0, 0);
}

void cMCSExceptions::throwMalformedComponentAddress(mstd::cAsciiString const& text,
                                                    mstd::cAbstractException const& cause)
{
  mstd::cRuntimeException malformed(mstd::exceptionMessage("$MTR$Malformed component address (\"%addr%\")!", text), 0,
                                    0);
  malformed.link(cause);
  throw malformed;
}

void cMCSExceptions::throwNoCoreExtension(mucs::cString const& name)
{
  throw mstd::cRuntimeException(
      mstd::exceptionMessage("$MTR$Module (\"%name%\") does not provide core extension functionality.", name), 0, 0);
}

void cMCSExceptions::throwNoSuchInterface(mstd::cAsciiString const& name, mstd::cAbstractException const* pCause)
{
  mstd::cRuntimeException missing(mstd::exceptionMessage("$MTR$No such interface (\"%interface%\")!", name), 0, 0);
  if (pCause != nullptr)
  {
    missing.link(*pCause);
  }
  throw missing;
}

void cMCSExceptions::throwComponentIdNotUnique(unsigned int iId)
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$Component id (%id%) not unique!", iId), 0, 0);
}

void cMCSExceptions::throwInterfaceLoadError(mstd::cAsciiString const& name)
{
  throw mstd::cRuntimeException(
      mstd::exceptionMessage("$MTR$Unable to deserialize interface description of \"%name%\"!", name), 0, 0);
}

void cMCSExceptions::throwNoSuchModule(cComponentAddr const& address)
{
  throw cNoSuchModuleException(address);
}

void cMCSExceptions::throwNoSuchModule(cComponentLocation const& location)
{
  throw cNoSuchModuleException(location);
}

void cMCSExceptions::throwNoSuchModule(mstd::cAsciiString const& name)
{
  throw cNoSuchModuleException(name);
}

void cMCSExceptions::throwModuleLoad(cModuleLoadException::KindOfProblem eKind, mucs::cString const& fileName,
                                     mucs::cLIMessage const& problem)
{
  throw cModuleLoadException(eKind, fileName, problem);
}

void cMCSExceptions::throwUnmatchedInterface()
{
  throw cUnmatchedInterfaceException();
}

void cMCSExceptions::throwNoPublicInterface(mrmi::cConnectable const&)
{
  throw cNoPublicInterfaceException();
}
} // namespace mcs
