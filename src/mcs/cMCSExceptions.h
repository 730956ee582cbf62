#ifndef MORTISE_MCS_CMCSEXCEPTIONS_H
#define MORTISE_MCS_CMCSEXCEPTIONS_H

#include "mcs/cModuleLoadException.h"

namespace mrmi
{
class cConnectable;
}

namespace mstd
{
class cAbstractException;
class cAsciiString;
} // namespace mstd

namespace mcs
{
class cComponentAddr;
class cComponentLocation;

/// The throw functions of modules and components. None of them returns.
class MORTISE_API cMCSExceptions
{
public:
  /// mstd::cRuntimeException: the text of an address has no colon where one is needed.
  [[noreturn]] static void throwExpectingColon();
  /// mstd::cRuntimeException with a copy of `cause` behind it.
  [[noreturn]] static void throwMalformedComponentAddress(mstd::cAsciiString const& text,
                                                          mstd::cAbstractException const& cause);
  /// mstd::cRuntimeException: the module is no core extension.
  [[noreturn]] static void throwNoCoreExtension(mucs::cString const& name);
  /// mstd::cRuntimeException, with a copy of `pCause` behind it unless that is null.
  [[noreturn]] static void throwNoSuchInterface(mstd::cAsciiString const& name,
                                                mstd::cAbstractException const* pCause = nullptr);
  /// mstd::cRuntimeException: a component insists on a number that is taken.
  [[noreturn]] static void throwComponentIdNotUnique(unsigned int iId);
  /// mstd::cRuntimeException: a stored interface description is damaged.
  [[noreturn]] static void throwInterfaceLoadError(mstd::cAsciiString const& name);
  /// cNoSuchModuleException.
  [[noreturn]] static void throwNoSuchModule(cComponentAddr const& address);
  [[noreturn]] static void throwNoSuchModule(cComponentLocation const& location);
  [[noreturn]] static void throwNoSuchModule(mstd::cAsciiString const& name);
  /// cModuleLoadException.
  [[noreturn]] static void throwModuleLoad(cModuleLoadException::KindOfProblem eKind, mucs::cString const& fileName,
                                           mucs::cLIMessage const& problem);
  /// cUnmatchedInterfaceException.
  [[noreturn]] static void throwUnmatchedInterface();
  /// cNoPublicInterfaceException; the connectable is not looked at.
  [[noreturn]] static void throwNoPublicInterface(mrmi::cConnectable const& connectable);
};
} // namespace mcs

#endif
