#include "rmi/cAbstractSignal.h"

#include "rmi/cRMIExceptions.h"
#include "std/cAsciiString.h"
#include "std/debugLines.h"

#include <utility>

namespace mrmi
{
cAbstractSignal::cAbstractSignal() : mInvocationBehavior(ThrowIfUnconnected), mpPublicSignal(0) {}

cAbstractSignal::cAbstractSignal(cAbstractSignal const& other)
    : mInvocationBehavior(other.mInvocationBehavior), mpPublicSignal(other.mpPublicSignal)
{
}

cAbstractSignal::~cAbstractSignal() {}

mstd::cAsciiString cAbstractSignal::parametersTypeString() const
{
  return mstd::cAsciiString();
}

mstd::cAsciiString cAbstractSignal::returnTypeString() const
{
  return mstd::cAsciiString();
}

void cAbstractSignal::swap(cAbstractSignal& other) noexcept
{
  std::swap(mInvocationBehavior, other.mInvocationBehavior);
}

// As long as setPublicSignal() is only declared there is no public signal.
mstd::cAsciiString cAbstractSignal::publicSignalName() const
{
  cRMIExceptions::throwSignalNotPublic();
}

void cAbstractSignal::checkNIC(unsigned int count)
{
  if (count == 0)
  {
    return;
  }
  mstd::writeDebugLine("rmi/cAbstractSignal", 81, ">>>>>>>>> delete this situation in signal!");
  mstd::writeDebugStackTrace("rmi/cAbstractSignal", 82);
}
} // namespace mrmi
