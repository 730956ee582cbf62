#include "std/tSharedObjectData.h"

#include "std/cBugException.h"
#include "ucs/cLIMessage.h"

namespace mstd
{

void tSharedObjectData::destroy() noexcept
{
  delete this;
}

void tSharedObjectData::throwWrongSharedObjectDereference()
{
  throw cBugException(mucs::cLIMessage() << "$MTR$Invalid shared object dereference!", "std/tSharedObjectData",
                      __LINE__);
}

} // namespace mstd
