#include "mcs/cModuleLoadException.h"

#include <utility>

namespace mcs
{
cModuleLoadException::cModuleLoadException(KindOfProblem eKind, mucs::cString const& fileName,
                                           mucs::cLIMessage const& problem)
    : cRuntimeException(problem, 0, 0), mFileName(fileName), mProblem(problem), mKind(eKind)
{
}

cModuleLoadException::cModuleLoadException(cModuleLoadException const& other)
    : cRuntimeException(other), mKind(other.mKind)
{
  copyField(mFileName, other.mFileName);
  copyField(mProblem, other.mProblem);
}

void cModuleLoadException::swap(cModuleLoadException& other) noexcept
{
  cRuntimeException::swap(other);
  mFileName.swap(other.mFileName);
  mProblem.swap(other.mProblem);
  std::swap(mKind, other.mKind);
}

MORTISE_EXCEPTION_BODY(cModuleLoadException)
} // namespace mcs
