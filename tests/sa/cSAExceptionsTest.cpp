#include "sa/cSAExceptions.h"

#include "sa/cLabeledTypeMissmatchException.h"
#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "std/cTypeMissmatchException.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <typeinfo>

using msa::cSAExceptions;

namespace
{

/// The message of what `action` raises, which has to be exactly an `E`.
template <class E, class Action>
std::string messageOf(Action action)
{
  support::cCaptureOut mute;
  E const e = support::caught<E>(action);
  return support::messageOf(e);
}

template <class Action>
void expectRuntime(Action action, std::string const& message)
{
  EXPECT_EQ(messageOf<mstd::cRuntimeException>(action), message);
}

template <class Action>
void expectBug(Action action, std::string const& message)
{
  EXPECT_EQ(messageOf<mstd::cBugException>(action), message);
}

} // namespace

TEST(cSAExceptions, EveryRuntimeErrorHasItsText)
{
  expectRuntime([] { cSAExceptions::throwEndOfContext(); }, "Unable to deserialize - end of context!");
  expectRuntime([] { cSAExceptions::throwLabelNotFound("val"); },
                "Unable to deserialize - label (\"val\") not found in current context!");
  expectRuntime([] { cSAExceptions::throwInvalidTypeId(77); }, "Invalid type id (77) while deserializing!");
  expectRuntime([] { cSAExceptions::throwInvalidTypeId(0xFFFFFFFFu); },
                "Invalid type id (4294967295) while deserializing!");
}

TEST(cSAExceptions, EveryBugHasItsText)
{
  expectBug([] { cSAExceptions::throwContextRefNoImpl(); }, "cContextRef::unguardImpl(): no valid reference!");
  expectBug([] { cSAExceptions::throwUnserializable("cFoo"); }, "Attempt to serialize the local type cFoo!");
  expectBug([] { cSAExceptions::throwUnserializable(nullptr); }, "Attempt to serialize the local type unknown!");
  expectBug([] { cSAExceptions::throwSerializerClearWithOpenContexts(); },
            "Calling erase() with open contexts is invalid!");
  expectBug([] { cSAExceptions::throwSerializerDataWithOpenContexts(); },
            "Calling data() with open contexts is invalid!");
}

TEST(cSAExceptions, TheCauseOfACompoundsErrorIsLinkedBehindIt)
{
  support::cCaptureOut mute;
  mstd::cTypeMissmatchException const cause("piInt32", "piBool");
  auto const check = [&](auto raise, char const* message) {
    mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>(raise);
    EXPECT_EQ(support::messageOf(e), message);
    ASSERT_NE(e.history(), nullptr);
    mstd::cAbstractException const& history = *e.history();
    EXPECT_EQ(typeid(history), typeid(mstd::cTypeMissmatchException));
    EXPECT_EQ(support::messageOf(*e.history()), support::messageOf(cause));
    EXPECT_EQ(e.history()->history(), nullptr);
  };
  check([&] { cSAExceptions::throwSerializationError(cause, "cFoo"); }, "Serialization error (cFoo)!");
  check([&] { cSAExceptions::throwDeserializationError(cause, "cFoo"); }, "Deserialization error in (cFoo)!");
}

TEST(cSAExceptions, TheChainShowsTheNesting)
{
  support::cCaptureOut mute;
  mstd::cRuntimeException const inner =
      support::caught<mstd::cRuntimeException>([] { cSAExceptions::throwEndOfContext(); });
  mstd::cRuntimeException const middle =
      support::caught<mstd::cRuntimeException>([&] { cSAExceptions::throwDeserializationError(inner, "cInner"); });
  mstd::cRuntimeException const outer =
      support::caught<mstd::cRuntimeException>([&] { cSAExceptions::throwDeserializationError(middle, "cOuter"); });
  ASSERT_NE(outer.history(), nullptr);
  EXPECT_EQ(support::messageOf(*outer.history()), "Deserialization error in (cInner)!");
  ASSERT_NE(outer.history()->history(), nullptr);
  EXPECT_EQ(support::messageOf(*outer.history()->history()), "Unable to deserialize - end of context!");
}

TEST(cSAExceptions, AMismatchIsLabelledIfThereIsALabel)
{
  support::cCaptureOut mute;
  mstd::cTypeMissmatchException const plain =
      support::caught<mstd::cTypeMissmatchException>([] { cSAExceptions::throwTypeMissmatch("got", "wanted", ""); });
  EXPECT_EQ(support::messageOf(plain), "Type mismatch: Expecting type \"wanted\" but got object of type \"got\"!");
  msa::cLabeledTypeMissmatchException const labelled = support::caught<msa::cLabeledTypeMissmatchException>(
      [] { cSAExceptions::throwTypeMissmatch("got", "wanted", "val"); });
  EXPECT_EQ(support::toString(labelled.lastLabel()), "val");
}
