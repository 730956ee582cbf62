#include "rmi/cAbstractSignal.h"

#include "rmi/cConnectable.h"
#include "rmi/cPublicSignal.h"
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

mstd::cAsciiString cAbstractSignal::publicSignalName() const
{
  if (mpPublicSignal == 0)
  {
    cRMIExceptions::throwSignalNotPublic();
  }
  return mpPublicSignal->name();
}

void cAbstractSignal::exportSignal(cConnectable& connectable, mstd::cAsciiString const& name, InterfaceType type,
                                   mstd::cAsciiString const& description)
{
  mstd::cAsciiString const returnType = returnTypeString();
  mstd::cAsciiString const paramTypes = parametersTypeString();
  cPublicSignal const* const former = mpPublicSignal;
  cPublicSignal& published = connectable.registerSignal(name, returnType, paramTypes, type, description, *this);
  try
  {
    addParameterInfo(published);
  }
  catch (...)
  {
    mpPublicSignal = former;
    mstd::tPtrList<cPublicSignal>& list = connectable.codRSignals();
    mstd::tPtrList<cPublicSignal>::iterator it = list.begin();
    while (it != list.end() && *it != &published)
    {
      ++it;
    }
    if (it != list.end()) // it may have been cleared away
    {
      list.erase(it);
    }
    throw;
  }
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
