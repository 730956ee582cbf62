#include "rmi/cCallParameterMissmatchException.h"
#include "rmi/cConnectable.h"
#include "rmi/cNoSuchSignalException.h"
#include "rmi/cNoSuchSlotException.h"
#include "rmi/cPublicSlot.h"
#include "rmi/cRMIExceptions.h"
#include "sa/cContext.h"
#include "sa/cReferenceFrame.h"
#include "sa/containerStream.h"
#include "std/cRuntimeException.h"
#include "std/tVector.h"
#include "support/cPublishing.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

using support::caught;
using support::messageOf;
using support::toString;

/// Copies, clones, assigns and swaps `e` and its rival, and gives both texts of each step to `text`.
template <class E, class Text>
void checkShape(E const& e, E const& rival, char const* pTypeName, Text text)
{
  EXPECT_EQ(pTypeName, toString(e.typeName()));
  E copy(e);
  EXPECT_EQ(text(e), text(copy));
  EXPECT_EQ(messageOf(e), messageOf(copy));
  std::unique_ptr<mstd::cAbstractException> const pClone(e.createObject());
  ASSERT_NE(nullptr, dynamic_cast<E*>(pClone.get()));
  EXPECT_EQ(text(e), text(static_cast<E&>(*pClone)));
  E other(rival);
  other.swap(copy);
  EXPECT_EQ(text(rival), text(copy));
  EXPECT_EQ(text(e), text(other));
  copy = e;
  EXPECT_EQ(text(e), text(copy));
  EXPECT_EQ(messageOf(e), messageOf(copy));
}

} // namespace

TEST(cNoSuchSlotException, WithATextItEndsInAnExclamationMark)
{
  mrmi::cNoSuchSlotException const e(mstd::cAsciiString("open"), mstd::cAsciiString("(?)"));
  EXPECT_EQ("Slot \"open((?))\" not found in interface!", messageOf(e));
  EXPECT_EQ("open", toString(e.slotName()));
  EXPECT_EQ("(?)", toString(e.slotArgs()));
  EXPECT_EQ(mstd::cAbstractException::Runtime, e.type());
}

TEST(cNoSuchSlotException, WithAFrameItDoesNot)
{
  int iValue = 0;
  mstd::cAsciiString sText;
  bool bResult = false;
  msa::cReferenceFrame frame;
  frame.addRef(iValue, false, true).addRef(sText, false, true);
  mrmi::cNoSuchSlotException const e("open", frame);
  EXPECT_EQ("Slot \"open((piInt32, cAsciiString))\" not found in interface", messageOf(e));
  EXPECT_EQ("(piInt32, cAsciiString)", toString(e.slotArgs()));
  frame.addRef(bResult, true, false); // a return value is the last of the arguments
  EXPECT_EQ("(piInt32, cAsciiString, piBool)", toString(mrmi::cNoSuchSlotException("open", frame).slotArgs()));
}

TEST(cNoSuchSlotException, AFrameWithAContextHasNoSignature)
{
  mstd::tVector<int> vector;
  msa::cReferenceFrame frame;
  frame.addRef(vector, true, true);
  mstd::cRuntimeException const e = caught<mstd::cRuntimeException>([&] { mrmi::cNoSuchSlotException("open", frame); });
  EXPECT_EQ("Serialization error (cReferenceFrame)!", messageOf(e));
  ASSERT_NE(nullptr, e.history());
  EXPECT_NE(std::string::npos, messageOf(*e.history()).find("cSerializeToTypeString::newContext(...)"));
}

TEST(cNoSuchSlotException, ItHasTheShapeOfAnException)
{
  checkShape(mrmi::cNoSuchSlotException(mstd::cAsciiString("a"), mstd::cAsciiString("b")),
             mrmi::cNoSuchSlotException(mstd::cAsciiString("c"), mstd::cAsciiString("d")), "cNoSuchSlotException",
             [](mrmi::cNoSuchSlotException const& e) { return toString(e.slotName()) + "|" + toString(e.slotArgs()); });
}

TEST(cNoSuchSignalException, ItTellsTheName)
{
  mrmi::cNoSuchSignalException const e("sigOpen");
  EXPECT_EQ("Signal \"sigOpen\" could not be found in interface!", messageOf(e));
  EXPECT_EQ("sigOpen", toString(e.signalName()));
  EXPECT_EQ(mstd::cAbstractException::Runtime, e.type());
  checkShape(e, mrmi::cNoSuchSignalException("other"), "cNoSuchSignalException",
             [](mrmi::cNoSuchSignalException const& x) { return toString(x.signalName()); });
}

TEST(cCallParameterMissmatchException, ItTellsTheNameOrThatThereIsNone)
{
  mrmi::cCallParameterMissmatchException const e("open");
  EXPECT_EQ("Slot parameter of (open) or return value missmatch!", messageOf(e));
  EXPECT_EQ("open", toString(e.slotName()));
  EXPECT_EQ(mstd::cAbstractException::Bug, e.type());
  mrmi::cCallParameterMissmatchException const none("");
  EXPECT_EQ("Slot parameter or return value missmatch on unregistered slot!", messageOf(none));
  EXPECT_EQ("", toString(none.slotName()));
  checkShape(e, none, "cCallParameterMissmatchException",
             [](mrmi::cCallParameterMissmatchException const& x) { return toString(x.slotName()); });
}

TEST(cRMIExceptions, TheWholeHistoryOfTheCauseStandsBehind)
{
  mstd::cRuntimeException cause(mucs::cLIMessage("cause"), nullptr, 0);
  cause.link(mstd::cRuntimeException(mucs::cLIMessage("root"), nullptr, 0));
  mrmi::cConnectable object;
  mrmi::cPublicSlot const slot("open", "piVoid", "piBool", "",
                               mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new support::cPokeCall(object, [] {})));
  auto const chainOf = [](auto const& e) {
    std::string text;
    for (mstd::cAbstractException const* pOlder = e.history(); pOlder != nullptr; pOlder = pOlder->history())
    {
      text += messageOf(*pOlder) + "|";
    }
    return text;
  };
  EXPECT_EQ("Definition: \"piVoid open(piBool)\"|cause|root|",
            chainOf(caught<mrmi::cCallParameterMissmatchException>(
                [&] { mrmi::cRMIExceptions::throwParameterMissmatch(&slot, cause); })));
  EXPECT_EQ("cause|root|", chainOf(caught<mrmi::cCallParameterMissmatchException>(
                               [&] { mrmi::cRMIExceptions::throwParameterMissmatch(nullptr, cause); })));
  EXPECT_EQ("cause|root|",
            chainOf(caught<mstd::cBugException>([&] { mrmi::cRMIExceptions::throwMissingReturnValue(cause); })));
}

TEST(cRMIExceptions, LookUpFailuresAreRaisedByTheirClass)
{
  msa::cReferenceFrame frame;
  EXPECT_EQ("Slot \"x((?))\" not found in interface!",
            messageOf(caught<mrmi::cNoSuchSlotException>([] { mrmi::cRMIExceptions::throwNoSuchSlot("x", "(?)"); })));
  EXPECT_EQ("Slot \"x(())\" not found in interface",
            messageOf(caught<mrmi::cNoSuchSlotException>([&] { mrmi::cRMIExceptions::throwNoSuchSlot("x", frame); })));
  EXPECT_EQ("x", toString(caught<mrmi::cNoSuchSignalException>([] {
                            mrmi::cRMIExceptions::throwNoSuchSignal("x");
                          }).signalName()));
}
