#include "pi/cLibraryHolder.h"

#include "std/exceptionMessage.h"

namespace mpi
{

mucs::cLIMessage cLibraryHolder::message() const
{
  switch (mReason)
  {
  case UniqueSymbol:
    return mstd::exceptionMessage("$MTR$It has the unique symbol %symbol%, which the process keeps until its end.",
                                  mName);
  case Thread:
    return mstd::exceptionMessage(
        "$MTR$Every thread that has used a variable of its own in it keeps it until its end.");
  case Library:
    return mstd::exceptionMessage("$MTR$The library %library% needs it.", mName);
  case Link:
    break;
  }
  return mstd::exceptionMessage("$MTR$It is linked so that it stays in memory.");
}

} // namespace mpi
