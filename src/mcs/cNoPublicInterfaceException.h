#ifndef MORTISE_MCS_CNOPUBLICINTERFACEEXCEPTION_H
#define MORTISE_MCS_CNOPUBLICINTERFACEEXCEPTION_H

#include "std/cBugException.h"

namespace mcs
{
/// An object was taken for an interface of somebody who does not offer it.
class MORTISE_API cNoPublicInterfaceException : public mstd::cBugException
{
public:
  cNoPublicInterfaceException();
  MORTISE_EXCEPTION(cNoPublicInterfaceException)
};
} // namespace mcs

#endif
