#include "rmi/cPublicDescription.h"

#include "rmi/cAbstractSlotCall.h"
#include "rmi/cConnectable.h"
#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "rmi/cSSValue.h"
#include "rmi/localSignal0.h"
#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/tArrayRef.h"
#include "std/tConstArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/cPublishing.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using support::toString;

/// What `value` writes, as bytes.
template <class T>
mstd::tArray<char> bytesOf(T const& value)
{
  msa::cSerializeBinary stream;
  value >> stream;
  mstd::tArray<char> bytes;
  stream.swapData(bytes);
  return bytes;
}

mrmi::cSSValue valueOf(char const* pType, char const* pDescription, bool bAlterable, bool bVoid)
{
  mrmi::cSSValue value;
  value.set(pType, bAlterable, bVoid);
  value.setDescription(pDescription);
  return value;
}

mstd::tAutoPtr<mrmi::cAbstractSlotCall> anyCall(mrmi::cConnectable& object)
{
  return mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new support::cPokeCall(object, [] {}));
}

/// Slot call that counts its end.
class cMortalCall : public support::cPokeCall
{
public:
  cMortalCall(mrmi::cConnectable& object, int& iDeaths) : support::cPokeCall(object, [] {}), mDeaths(iDeaths) {}
  ~cMortalCall() override { ++mDeaths; }

private:
  int& mDeaths;
};

} // namespace

TEST(cSSValue, ANewOneIsEmpty)
{
  mrmi::cSSValue const value;
  EXPECT_EQ("", toString(value.typeName()));
  EXPECT_EQ("", toString(value.description()));
  EXPECT_FALSE(value.isAlterable());
  EXPECT_FALSE(value.isVoid());
}

TEST(cSSValue, SetLeavesTheDescription)
{
  mrmi::cSSValue value;
  value.setDescription("how many");
  value.set("piInt32", true, false);
  EXPECT_EQ("piInt32", toString(value.typeName()));
  EXPECT_EQ("how many", toString(value.description()));
  EXPECT_TRUE(value.isAlterable());
  EXPECT_FALSE(value.isVoid());
  value.set("piVoid", false, true);
  EXPECT_EQ("piVoid", toString(value.typeName()));
  EXPECT_FALSE(value.isAlterable());
  EXPECT_TRUE(value.isVoid());
}

TEST(cSSValue, EachFieldCountsInAComparison)
{
  mrmi::cSSValue const value = valueOf("a", "b", true, false);
  EXPECT_FALSE(value != valueOf("a", "b", true, false));
  EXPECT_TRUE(value == valueOf("a", "b", true, false));
  EXPECT_TRUE(value != valueOf("x", "b", true, false));
  EXPECT_TRUE(value != valueOf("a", "x", true, false));
  EXPECT_TRUE(value != valueOf("a", "b", false, false));
  EXPECT_TRUE(value != valueOf("a", "b", true, true));
}

TEST(cSSValue, SwapExchangesAllFour)
{
  mrmi::cSSValue left = valueOf("a", "b", true, false);
  mrmi::cSSValue right = valueOf("c", "d", false, true);
  left.swap(right);
  EXPECT_TRUE(left == valueOf("c", "d", false, true));
  EXPECT_TRUE(right == valueOf("a", "b", true, false));
}

TEST(cSSValue, ItsRecordIsTwoTextsAndTwoFlags)
{
  msa::cSerializeBinary expected;
  expected.store(mstd::cAsciiString("type"));
  expected.store(mstd::cAsciiString("text"));
  expected.store(true);
  expected.store(false);
  mstd::tArray<char> expectedBytes;
  expected.swapData(expectedBytes);
  mstd::tArray<char> const bytes = bytesOf(valueOf("type", "text", true, false));
  EXPECT_TRUE(bytes == expectedBytes);
  mrmi::cSSValue read = valueOf("other", "other", false, true);
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  read << reader;
  EXPECT_TRUE(read == valueOf("type", "text", true, false));
}

TEST(cSSValue, ARecordThatIsCutLeavesTheValue)
{
  mstd::tArray<char> const whole = bytesOf(valueOf("type", "text", true, false));
  for (unsigned int iLength = 0; iLength < whole.length(); ++iLength)
  {
    mstd::tArray<char> cut(whole);
    cut.truncate(iLength);
    mrmi::cSSValue read = valueOf("old", "older", false, true);
    msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(cut)));
    support::cCaptureOut mute;
    EXPECT_THROW(read << reader, mstd::cAbstractException) << iLength;
    EXPECT_TRUE(read == valueOf("old", "older", false, true)) << iLength;
  }
}

TEST(cPublicSlot, ItHoldsWhatItIsMadeOf)
{
  mrmi::cConnectable object;
  mstd::tAutoPtr<mrmi::cAbstractSlotCall> call(anyCall(object));
  mrmi::cAbstractSlotCall* const pCall = call.get();
  mrmi::cPublicSlot const slot("open", "piVoid", "piInt32", "opens", call);
  EXPECT_EQ("open", toString(slot.name()));
  EXPECT_EQ("piVoid", toString(slot.returnTypeName()));
  EXPECT_EQ("piInt32", toString(slot.paramTypeNames()));
  EXPECT_EQ("opens", toString(slot.description()));
  EXPECT_EQ(0u, slot.parameters().length());
  EXPECT_EQ(10u, slot.parameters().step());
  EXPECT_TRUE(slot.returnValue() == mrmi::cSSValue());
  EXPECT_EQ(pCall, slot.slot());
  EXPECT_EQ(nullptr, call.get());
}

TEST(cPublicSlot, ItsSlotCallGoesWithIt)
{
  mrmi::cConnectable object;
  int iDeaths = 0;
  {
    mrmi::cPublicSlot slot("x", "", "", "", mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new cMortalCall(object, iDeaths)));
    EXPECT_EQ(0, iDeaths);
  }
  EXPECT_EQ(1, iDeaths);
}

TEST(cPublicSlot, ItMatchesItsWholeNameOnly)
{
  mrmi::cConnectable object;
  mrmi::cPublicSlot const slot("open", "", "", "", anyCall(object));
  EXPECT_TRUE(slot.matchName("open"));
  EXPECT_FALSE(slot.matchName("ope"));
  EXPECT_FALSE(slot.matchName("opens"));
  EXPECT_FALSE(slot.matchName("Open"));
  EXPECT_FALSE(slot.matchName(""));
  mrmi::cPublicSlot const unnamed("", "", "", "", anyCall(object));
  EXPECT_TRUE(unnamed.matchName(""));
  mstd::cAsciiString sWithZero("open");
  sWithZero += '\0';
  EXPECT_FALSE(slot.matchName(sWithZero));
}

TEST(cPublicSlot, AddParameterAppendsADefaultOne)
{
  mrmi::cConnectable object;
  mrmi::cPublicSlot slot("x", "", "", "", anyCall(object));
  mrmi::cSSValue& first = slot.addParameter();
  EXPECT_TRUE(first == mrmi::cSSValue());
  first.set("piBool", false, false);
  slot.addParameter().set("piChar", false, false);
  ASSERT_EQ(2u, slot.parameters().length());
  EXPECT_EQ("piBool", toString(slot.parameters().at(0).typeName()));
  EXPECT_EQ("piChar", toString(slot.parameters().at(1).typeName()));
}

TEST(cPublicSlot, ItsRecordIsTextsParametersAndTheReturnValue)
{
  mrmi::cConnectable object;
  mrmi::cPublicSlot slot("n", "r", "p", "d", anyCall(object));
  slot.addParameter().set("a", true, false);
  slot.addParameter().set("b", false, false);
  slot.returnValue().set("piVoid", true, true);

  msa::cSerializeBinary expected;
  for (char const* pText : {"n", "r", "p", "d"})
  {
    expected.store(mstd::cAsciiString(pText));
  }
  {
    msa::cContext context(expected.newContext("unknown"));
    valueOf("a", "", true, false) >> expected;
    valueOf("b", "", false, false) >> expected;
    context.release();
  }
  valueOf("piVoid", "", true, true) >> expected;
  mstd::tArray<char> expectedBytes;
  expected.swapData(expectedBytes);
  mstd::tArray<char> const bytes = bytesOf(slot);
  EXPECT_TRUE(bytes == expectedBytes);

  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  mrmi::cPublicSlot const read(reader, anyCall(object));
  EXPECT_TRUE(reader.eoc());
  EXPECT_EQ("n", toString(read.name()));
  EXPECT_EQ("r", toString(read.returnTypeName()));
  EXPECT_EQ("p", toString(read.paramTypeNames()));
  EXPECT_EQ("d", toString(read.description()));
  ASSERT_EQ(2u, read.parameters().length());
  EXPECT_TRUE(read.parameters().at(0) == slot.parameters().at(0));
  EXPECT_TRUE(read.parameters().at(1) == slot.parameters().at(1));
  EXPECT_TRUE(read.returnValue() == slot.returnValue());
  EXPECT_NE(nullptr, read.slot());
}

TEST(cPublicSlot, ReadingReplacesAndKeepsTheSlotCall)
{
  mrmi::cConnectable object;
  mrmi::cPublicSlot source("n", "r", "p", "d", anyCall(object));
  source.addParameter().set("a", true, false);
  mstd::tArray<char> const bytes = bytesOf(source);
  mrmi::cPublicSlot slot("old", "", "", "", anyCall(object));
  slot.addParameter();
  slot.addParameter();
  mrmi::cAbstractSlotCall* const pCall = slot.slot();
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  slot << reader;
  EXPECT_EQ("n", toString(slot.name()));
  EXPECT_EQ(1u, slot.parameters().length());
  EXPECT_EQ(pCall, slot.slot());
}

TEST(cPublicSlot, ARecordThatIsCutLeavesItAndTakesTheSlotCallOfANewOneAlong)
{
  mrmi::cConnectable object;
  mrmi::cPublicSlot source("n", "r", "p", "d", anyCall(object));
  source.addParameter().set("a", true, false);
  mstd::tArray<char> const whole = bytesOf(source);
  for (unsigned int iLength = 0; iLength < whole.length(); ++iLength)
  {
    mstd::tArray<char> cut(whole);
    cut.truncate(iLength);
    support::cCaptureOut mute;
    mrmi::cPublicSlot slot("old", "", "", "", anyCall(object));
    slot.addParameter();
    msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(cut)));
    EXPECT_THROW(slot << reader, mstd::cAbstractException) << iLength;
    EXPECT_EQ("old", toString(slot.name()));
    EXPECT_EQ(1u, slot.parameters().length());
    int iDeaths = 0;
    reader.rewind();
    EXPECT_THROW(mrmi::cPublicSlot(reader, mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new cMortalCall(object, iDeaths))),
                 mstd::cAbstractException);
    EXPECT_EQ(1, iDeaths);
  }
}

TEST(cPublicSignal, ItHoldsWhatItIsMadeOf)
{
  mrmi::localSignal0<piVoid> signal;
  mrmi::cPublicSignal const published("opened", "piVoid", "piInt32", 77, "was opened", signal);
  EXPECT_EQ("opened", toString(published.name()));
  EXPECT_EQ("piVoid", toString(published.returnTypeName()));
  EXPECT_EQ("piInt32", toString(published.paramTypeNames()));
  EXPECT_EQ("was opened", toString(published.description()));
  EXPECT_EQ(77u, published.type());
  EXPECT_EQ(&signal, published.signal());
  EXPECT_EQ(0u, published.parameters().length());
  EXPECT_EQ(10u, published.parameters().step());
  EXPECT_TRUE(published.returnValue() == mrmi::cSSValue());
  EXPECT_TRUE(published.matchName("opened"));
  EXPECT_FALSE(published.matchName("open"));
}

TEST(cPublicSignal, ItsRecordHasTheTypeBehindTheTexts)
{
  mrmi::localSignal0<piVoid> signal;
  mrmi::cPublicSignal published("n", "r", "p", 77, "d", signal);
  published.addParameter().set("a", false, false);
  published.returnValue().set("piVoid", false, true);
  msa::cSerializeBinary expected;
  for (char const* pText : {"n", "r", "p", "d"})
  {
    expected.store(mstd::cAsciiString(pText));
  }
  expected.store(77u);
  {
    msa::cContext context(expected.newContext("unknown"));
    valueOf("a", "", false, false) >> expected;
    context.release();
  }
  valueOf("piVoid", "", false, true) >> expected;
  mstd::tArray<char> expectedBytes;
  expected.swapData(expectedBytes);
  mstd::tArray<char> const bytes = bytesOf(published);
  EXPECT_TRUE(bytes == expectedBytes);

  mrmi::localSignal0<piVoid> other;
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  mrmi::cPublicSignal read(reader, other);
  EXPECT_EQ("n", toString(read.name()));
  EXPECT_EQ(77u, read.type());
  EXPECT_EQ(&other, read.signal());
  ASSERT_EQ(1u, read.parameters().length());
  EXPECT_TRUE(read.returnValue() == published.returnValue());
  // a second reading replaces the parameters
  reader.rewind();
  read << reader;
  EXPECT_EQ(1u, read.parameters().length());
}

TEST(cPublicSignal, ARecordThatIsCutLeavesIt)
{
  mrmi::localSignal0<piVoid> signal;
  mrmi::cPublicSignal source("n", "r", "p", 77, "d", signal);
  mstd::tArray<char> const whole = bytesOf(source);
  for (unsigned int iLength = 0; iLength < whole.length(); ++iLength)
  {
    mstd::tArray<char> cut(whole);
    cut.truncate(iLength);
    support::cCaptureOut mute;
    mrmi::cPublicSignal published("old", "", "", 5, "", signal);
    published.addParameter();
    msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(cut)));
    EXPECT_THROW(published << reader, mstd::cAbstractException) << iLength;
    EXPECT_EQ("old", toString(published.name()));
    EXPECT_EQ(5u, published.type());
    EXPECT_EQ(1u, published.parameters().length());
  }
}
