#include "mcs/cRMIException.h"

#include "pi/cPlatform.h"
#include "sa/cDeserializeBinary.h"
#include "std/cAbstractExceptionFactory.h"
#include "std/cBugException.h"
#include "std/cTypeErrorException.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <string>

using mcs::cComponentAddr;
using mcs::cComponentLocation;
using mcs::cRMIException;
using support::messageOf;
using support::toString;

namespace
{
cComponentLocation const Bench(cComponentAddr(1, 5), mstd::cAsciiString("bench"), mstd::cAsciiString("left"), 812);

cRMIException byIndex(cRMIException::Operation eOperation)
{
  return cRMIException(Bench, 3, eOperation, mstd::cAsciiString("reset"));
}

cRMIException byKey(cRMIException::Operation eOperation)
{
  return cRMIException(7, eOperation, mstd::cAsciiString("reset"));
}

std::string keyOf(cRMIException const& e)
{
  return (e.liMessage()->isTranslatable() ? "$MTR$" : "") + toString(e.liMessage()->key());
}

std::string fieldsOf(cRMIException const& e)
{
  return toString(e.location().toString()) + " " + std::to_string(e.interfaceIndex()) + " " +
         std::to_string(e.interfaceKey()) + " " + std::to_string(e.operation()) + " " + toString(e.signalSlotName());
}

std::string stored(cRMIException const& e, bool bLabels)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(!bLabels);
  e.store(serializer);
  return support::written(serializer);
}

void load(cRMIException& e, std::string const& bytes, bool bLabels)
{
  mstd::tArray<char> const data = support::arrayOf(bytes);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  deserializer.setPreferNoLabels(!bLabels);
  e.load(deserializer);
  EXPECT_TRUE(deserializer.eoc());
}

/// The record of an exception as a stream may hold it.
std::string record(unsigned int iIndex, unsigned int iKey, unsigned int iOperation)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(false);
  Bench >> serializer;
  iIndex >> serializer;
  iKey >> serializer;
  iOperation >> serializer;
  mstd::cAsciiString("reset") >> serializer;
  return support::written(serializer);
}

TEST(cRMIException, HasTwoOperationsWithFixedNumbers)
{
  EXPECT_EQ(static_cast<unsigned int>(cRMIException::CallSlot), 0u);
  EXPECT_EQ(static_cast<unsigned int>(cRMIException::ConnectSignal), 1u);
}

TEST(cRMIException, MadeByIndexKeepsLocationAndIndex)
{
  EXPECT_EQ(fieldsOf(byIndex(cRMIException::CallSlot)), "1:5-812@bench:left 3 0 0 reset");
  EXPECT_EQ(fieldsOf(byIndex(cRMIException::ConnectSignal)), "1:5-812@bench:left 3 0 1 reset");
  EXPECT_TRUE(byIndex(cRMIException::CallSlot).location() == Bench);
}

TEST(cRMIException, MadeByKeyIsOfThisProcessWithoutAnAddress)
{
  cRMIException const e = byKey(cRMIException::ConnectSignal);
  EXPECT_EQ(e.interfaceIndex(), 0u);
  EXPECT_EQ(e.interfaceKey(), 7u);
  EXPECT_EQ(e.operation(), cRMIException::ConnectSignal);
  EXPECT_EQ(toString(e.signalSlotName()), "reset");
  cComponentLocation const here;
  EXPECT_TRUE(e.location() == here);
  EXPECT_FALSE(e.location().address().valid());
  EXPECT_EQ(e.location().pid(), mpi::cPlatform::pid());
}

TEST(cRMIException, TellsWhatFailed)
{
  EXPECT_EQ(messageOf(byIndex(cRMIException::CallSlot)), "Unable to call slot \"reset\" on interface 3!");
  EXPECT_EQ(messageOf(byIndex(cRMIException::ConnectSignal)), "Unable to connect signal \"reset\" to interface 3!");
  EXPECT_EQ(messageOf(byKey(cRMIException::CallSlot)), "Unable to call slot \"reset\" on interface key 7!");
  EXPECT_EQ(messageOf(byKey(cRMIException::ConnectSignal)), "Unable to connect signal \"reset\" to interface key 7!");
}

TEST(cRMIException, HasKeysThatTranslatorsFind)
{
  EXPECT_EQ(keyOf(byIndex(cRMIException::CallSlot)), "$MTR$Unable to call slot \"%slot%\" on interface %idx%!");
  EXPECT_EQ(keyOf(byIndex(cRMIException::ConnectSignal)),
            "$MTR$Unable to connect signal \"%signal%\" to interface %idx%!");
  EXPECT_EQ(keyOf(byKey(cRMIException::CallSlot)), "$MTR$Unable to call slot \"%slot%\" on interface key %key%!");
  EXPECT_EQ(keyOf(byKey(cRMIException::ConnectSignal)),
            "$MTR$Unable to connect signal \"%signal%\" to interface key %key%!");
}

TEST(cRMIException, HasNoWordsForAnyOtherOperation)
{
  cRMIException const index = byIndex(static_cast<cRMIException::Operation>(2));
  cRMIException const key = byKey(static_cast<cRMIException::Operation>(4294967295u));
  EXPECT_EQ(messageOf(index), "");
  EXPECT_EQ(messageOf(key), "");
  EXPECT_EQ(index.operation(), 2u);
  EXPECT_EQ(key.operation(), 4294967295u);
}

TEST(cRMIException, StoresItsFieldsAndNothingElse)
{
  for (bool bLabels : {false, true})
  {
    msa::cSerializeBinary expected;
    expected.setPreferNoLabels(!bLabels);
    Bench >> expected;
    3u >> expected;
    0u >> expected;
    1u >> expected;
    mstd::cAsciiString("reset") >> expected;
    EXPECT_EQ(stored(byIndex(cRMIException::ConnectSignal), bLabels), support::written(expected));
  }
  // Name, message and marks stay behind; numbers and texts are 4 + 4 and 4 + 4 + length.
  EXPECT_EQ(stored(byIndex(cRMIException::CallSlot), false).size(), 8u + 8 + 13 + 12 + 8 + 8 + 8 + 8 + 13);
}

TEST(cRMIException, ComesBackWithItsMessage)
{
  for (bool bLabels : {false, true})
  {
    for (cRMIException::Operation eOperation : {cRMIException::CallSlot, cRMIException::ConnectSignal})
    {
      for (cRMIException const& e : {byIndex(eOperation), byKey(eOperation)})
      {
        cRMIException back(9, cRMIException::CallSlot, mstd::cAsciiString("other"));
        load(back, stored(e, bLabels), bLabels);
        EXPECT_EQ(fieldsOf(back), fieldsOf(e));
        EXPECT_EQ(messageOf(back), messageOf(e));
        EXPECT_TRUE(back.location().address().valid()) << "as every address from a stream";
      }
    }
  }
}

TEST(cRMIException, TakesTheWordsOfTheKeyIfThereIsOne)
{
  cRMIException e = byIndex(cRMIException::CallSlot);
  load(e, record(3, 0, 1), true);
  EXPECT_EQ(messageOf(e), "Unable to connect signal \"reset\" to interface 3!");
  load(e, record(3, 8, 1), true);
  EXPECT_EQ(messageOf(e), "Unable to connect signal \"reset\" to interface key 8!");
  EXPECT_EQ(fieldsOf(e), "1:5-812@bench:left 3 8 1 reset");
}

TEST(cRMIException, HasNoWordsForAnOperationFromAStreamThatIsNone)
{
  cRMIException e = byIndex(cRMIException::CallSlot);
  load(e, record(3, 0, 77), true);
  EXPECT_EQ(messageOf(e), "");
  EXPECT_EQ(e.operation(), 77u);
}

TEST(cRMIException, BringsNoPlaceNoBackTraceAndNoHistoryFromAStream)
{
  cRMIException e = byIndex(cRMIException::CallSlot);
  e.link(mstd::cBugException());
  load(e, record(3, 0, 0), true);
  EXPECT_EQ(e.history(), nullptr);
  EXPECT_EQ(e.backtrace(), nullptr);
  EXPECT_STREQ(e.sourceFileName(), "");
  EXPECT_EQ(e.type(), mstd::cAbstractException::Runtime);
  EXPECT_STREQ(e.what(), "runtime");
}

TEST(cRMIException, StaysIfItCannotBeRead)
{
  support::cCaptureOut const mute; // range failures come with a stack trace
  for (bool bLabels : {false, true})
  {
    std::string const whole = stored(byIndex(cRMIException::CallSlot), bLabels);
    for (size_t length = 0; length < whole.size(); ++length)
    {
      cRMIException e(9, cRMIException::ConnectSignal, mstd::cAsciiString("other"));
      std::string const before = fieldsOf(e);
      e.link(mstd::cBugException());
      EXPECT_THROW(load(e, whole.substr(0, length), bLabels), mstd::cAbstractException) << length;
      EXPECT_EQ(fieldsOf(e), before);
      EXPECT_EQ(messageOf(e), "Unable to connect signal \"other\" to interface key 9!");
      EXPECT_NE(e.history(), nullptr);
    }
  }
}

class cFactory : public mstd::cAbstractExceptionFactory
{
public:
  mstd::tAutoPtr<mstd::cAbstractException> createException(mstd::cAsciiString const&) const override
  {
    ADD_FAILURE() << "there is no name to ask for";
    return mstd::tAutoPtr<mstd::cAbstractException>(new mstd::cBugException);
  }
};

TEST(cRMIException, CannotBeFoundByNameInAChainFromAStream)
{
  support::cCaptureOut const mute;
  for (bool bLabels : {false, true})
  {
    msa::cSerializeBinary serializer;
    serializer.setPreferNoLabels(!bLabels);
    byIndex(cRMIException::CallSlot).storeRecursive(serializer);
    mstd::tArray<char> const data = support::arrayOf(support::written(serializer));
    msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
    EXPECT_THROW(mstd::cAbstractException::createFromStream(deserializer, cFactory()), mstd::cTypeErrorException);
  }
}
} // namespace
