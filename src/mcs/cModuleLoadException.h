#ifndef MORTISE_MCS_CMODULELOADEXCEPTION_H
#define MORTISE_MCS_CMODULELOADEXCEPTION_H

#include "std/cRuntimeException.h"
#include "ucs/cString.h"

namespace mcs
{
/// A module library cannot be used.
class MORTISE_API cModuleLoadException : public mstd::cRuntimeException
{
public:
  enum KindOfProblem
  {
    NotLoadable = 0,  ///< the operating system refused the file
    NotAvailable = 1, ///< the library is a module, but does not deliver what was asked for
    InvalidModule = 2 ///< the library is no module
  };

  cModuleLoadException(KindOfProblem eKind, mucs::cString const& fileName, mucs::cLIMessage const& problem);
  MORTISE_EXCEPTION(cModuleLoadException)

  mucs::cString const& fileName() const { return mFileName; }
  /// The message again, as it was given.
  mucs::cLIMessage const& problem() const { return mProblem; }
  KindOfProblem kindOfProblem() const { return mKind; }

private:
  mucs::cString mFileName;
  mucs::cLIMessage mProblem;
  KindOfProblem mKind;
};
} // namespace mcs

#endif
