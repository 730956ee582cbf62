#ifndef MORTISE_RMI_CUNCONNECTEDSIGNALEXCEPTION_H
#define MORTISE_RMI_CUNCONNECTEDSIGNALEXCEPTION_H

#include "std/cRuntimeException.h"

namespace mrmi
{
/// A signal without a slot was called.
class MORTISE_API cUnconnectedSignalException : public mstd::cRuntimeException
{
public:
  cUnconnectedSignalException();
  MORTISE_EXCEPTION(cUnconnectedSignalException)
};
} // namespace mrmi

#endif
