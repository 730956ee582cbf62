#include "mce/net++/cNETExceptions.h"

#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

using mce::cNETExceptions;
using support::caught;
using support::messageOf;

namespace
{
template <class Action>
void expectRuntime(Action const& action, std::string const& message, std::string const& cause)
{
  mstd::cRuntimeException const e = caught<mstd::cRuntimeException>(action);
  EXPECT_EQ(support::toString(e.typeName()), "cRuntimeException");
  EXPECT_EQ(messageOf(e), message);
  EXPECT_TRUE(e.liMessage()->isTranslatable());
  EXPECT_EQ(e.history() != nullptr ? messageOf(*e.history()) : "", cause);
}

TEST(cNETExceptions, RaisesItsMessages)
{
  expectRuntime([] { cNETExceptions::throwConnectionTxBusy(); }, "Unable to send packet - transmitter is busy!", "");
  expectRuntime([] { cNETExceptions::throwTransferTimeout(4294967295u); },
                "Transfer timeout after 4294967295 milliseconds!", "");
}

TEST(cNETExceptions, PutsTheCauseBehindTheMessage)
{
  mstd::cRuntimeException const cause =
      caught<mstd::cRuntimeException>([] { cNETExceptions::throwTransferTimeout(7); });
  std::string const text = "Transfer timeout after 7 milliseconds!";
  expectRuntime([&] { cNETExceptions::throwInvalidAddress(cause); }, "Invalid network address!", text);
  expectRuntime([&] { cNETExceptions::throwUnableToCompleteConnectionClosedUnexpectedly(cause); },
                "Unable to complete request - remote connection has been closed unexpectedly!", text);
  expectRuntime([&] { cNETExceptions::throwConnectionClosedUnexpectedly(cause); },
                "Remote connection has been closed unexpectedly!", text);
  EXPECT_EQ(messageOf(cause), text);
}
} // namespace
