#ifndef MORTISE_MCS_CUNMATCHEDINTERFACEEXCEPTION_H
#define MORTISE_MCS_CUNMATCHEDINTERFACEEXCEPTION_H

#include "std/cRuntimeException.h"

namespace mcs
{
/// An interface dependency was asked for its provider, and has none.
class MORTISE_API cUnmatchedInterfaceException : public mstd::cRuntimeException
{
public:
  cUnmatchedInterfaceException();
  MORTISE_EXCEPTION(cUnmatchedInterfaceException)
};
} // namespace mcs

#endif
