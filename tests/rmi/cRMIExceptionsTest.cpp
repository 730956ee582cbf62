#include "rmi/cRMIExceptions.h"

#include "rmi/cUnconnectedSignalException.h"
#include "std/cBugException.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using mrmi::cRMIExceptions;
using support::messageOf;
using support::toString;

namespace
{
std::string bugOf(void (*thrower)())
{
  mstd::cBugException const e = support::caught<mstd::cBugException>(thrower);
  EXPECT_EQ("cBugException", toString(e.typeName()));
  EXPECT_TRUE(e.liMessage()->isTranslatable());
  return messageOf(e);
}
} // namespace

TEST(cRMIExceptions, EachFaultHasItsText)
{
  EXPECT_EQ("Indirect connections not possible with explicit local signals!",
            bugOf(&cRMIExceptions::throwIndirectLocalConnection));
  EXPECT_EQ("Slots connected to an explicit local signal cannot be called indirectly!",
            bugOf(&cRMIExceptions::throwIndirectLocalSlotCall));
  EXPECT_EQ("Indirect slots cannot be called by reference!", bugOf(&cRMIExceptions::throwIndirectCallSlotCallRef));
  EXPECT_EQ("Slot is not a public one!", bugOf(&cRMIExceptions::throwSlotNotPublic));
  EXPECT_EQ("Signal is not a public one!", bugOf(&cRMIExceptions::throwSignalNotPublic));
}

TEST(cUnconnectedSignalException, IsARuntimeExceptionWithItsText)
{
  mrmi::cUnconnectedSignalException const e =
      support::caught<mrmi::cUnconnectedSignalException>(&cRMIExceptions::throwUnconnectedSignal);
  EXPECT_EQ("Call of an unconnected signal", messageOf(e));
  EXPECT_EQ("cUnconnectedSignalException", toString(e.typeName()));
  EXPECT_STREQ("runtime", e.what());
  EXPECT_THROW(cRMIExceptions::throwUnconnectedSignal(), mstd::cRuntimeException);
}

TEST(cUnconnectedSignalException, CopySwapAndAssignmentCarryEverything)
{
  mrmi::cUnconnectedSignalException e;
  mucs::cLIMessage other;
  other << "other";
  e.setMessage(other);
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  mrmi::cUnconnectedSignalException assigned;
  assigned = dynamic_cast<mrmi::cUnconnectedSignalException const&>(*clone);
  mrmi::cUnconnectedSignalException swapped;
  swapped.swap(assigned);
  EXPECT_EQ("other", messageOf(swapped));
  EXPECT_EQ("Call of an unconnected signal", messageOf(assigned));
}
