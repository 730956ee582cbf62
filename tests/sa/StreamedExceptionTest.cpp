// Exceptions and their chains on a stream.

#include "mcs/cComponentLocation.h"
#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/cAbstractExceptionFactory.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"
#include "std/cSTDExceptions.h"
#include "std/cTypeMissmatchException.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"
#include "support/streamItems.h"
#include "ucs/cLIMessage.h"

#include <gtest/gtest.h>

#include <chrono>
#include <new>
#include <string>
#include <vector>

namespace
{

using support::messageOf;
using support::toString;

typedef mstd::tAutoPtr<mstd::cAbstractException> tChain;

/// For a deserializer, which takes it over.
mstd::tAutoPtr<mstd::tArray<char>> given(std::string const& bytes)
{
  return mstd::tAutoPtr<mstd::tArray<char>>(new mstd::tArray<char>(support::arrayOf(bytes)));
}

/// Knows four classes.
class cFactory : public mstd::cAbstractExceptionFactory
{
public:
  tChain createException(mstd::cAsciiString const& typeName) const override
  {
    mNames.push_back(toString(typeName));
    if (typeName == "cBugException")
    {
      return tChain(new mstd::cBugException);
    }
    if (typeName == "cRuntimeException")
    {
      return tChain(new mstd::cRuntimeException);
    }
    if (typeName == "cOutOfBoundsException")
    {
      return tChain(new mstd::cOutOfBoundsException);
    }
    if (typeName == "throwsNumber")
    {
      throw 42;
    }
    cSTDExceptions::throwElementNotFound("cFactory", "createException");
  }

  mutable std::vector<std::string> mNames;
};

support::cItem text(std::string const& bytes)
{
  support::cItem item;
  item.kind = "cAsciiString";
  item.bytes = bytes;
  return item;
}

support::cItem number(char const* pKind, unsigned int iValue)
{
  support::cItem item;
  item.kind = pKind;
  item.number = iValue;
  return item;
}

support::cItem mark(bool bValue)
{
  return number("piBool", bValue ? 1 : 0);
}

support::cItem context(support::tItems const& items)
{
  support::cItem item;
  item.kind = "context";
  item.items = items;
  return item;
}

/// A message without parameters.
support::cItem message(std::string const& key, unsigned int iScanPosition = 0)
{
  return context({context({text(key), number("piUInt32", iScanPosition), mark(true), context({})})});
}

/// One record of a chain, with its continuation mark.
void append(support::tItems& items, char const* pName, unsigned int iType, bool bOutOfMemory,
            support::cItem const& message)
{
  items.push_back(mark(true));
  items.push_back(text(pName));
  items.push_back(number("piUInt32", iType));
  items.push_back(mark(bOutOfMemory));
  items.push_back(message);
}

std::string bytesOf(support::tItems const& items)
{
  msa::cSerializeBinary serializer;
  support::write(items, serializer);
  return support::written(serializer);
}

std::string chainBytes(mstd::cAbstractException const& e)
{
  support::cCaptureOut mute;
  msa::cSerializeBinary serializer;
  e.storeRecursive(serializer);
  return support::written(serializer);
}

/// Three exceptions; the newest has a bound's names, a place and a back trace to lose.
mstd::cOutOfBoundsException sample()
{
  mstd::cOutOfBoundsException newest("tVector", "at");
  mstd::cRuntimeException middle(mucs::cLIMessage("middle"), "middle.cpp", 12);
  middle.link(mstd::cBugException(mucs::cLIMessage("oldest"), "oldest.cpp", 34));
  newest.link(middle);
  return newest;
}

tChain rebuilt(std::string const& bytes, cFactory const& factory = cFactory())
{
  msa::cDeserializeBinary deserializer(given(bytes));
  return mstd::cAbstractException::createFromStream(deserializer, factory);
}

TEST(StreamedException, ChainIsARecordForEachAndAnEndMark)
{
  mstd::cRuntimeException newest(mucs::cLIMessage("newest"), "newest.cpp", 1);
  newest.link(mstd::cBugException(mucs::cLIMessage("oldest"), "oldest.cpp", 2));
  support::tItems items;
  append(items, "cRuntimeException", 1, false, message("newest"));
  append(items, "cBugException", 0, false, message("oldest"));
  items.push_back(mark(false));
  EXPECT_EQ(support::toHex(chainBytes(newest)), support::toHex(bytesOf(items)));
}

TEST(StreamedException, OneRecordHasNoMarksOfTheChain)
{
  msa::cSerializeBinary serializer;
  mstd::cBugException(mucs::cLIMessage("text"), "a.cpp", 2).store(serializer);
  EXPECT_EQ(support::written(serializer),
            bytesOf({text("cBugException"), number("piUInt32", 0), mark(false), message("text")}));
}

TEST(StreamedException, LoadReadsWhatFollowsTheName)
{
  msa::cDeserializeBinary deserializer(given(bytesOf({number("piUInt32", 1), mark(true), message("text")})));
  mstd::cRuntimeException e(mucs::cLIMessage("old"), "old.cpp", 5);
  ASSERT_NE(e.backtrace(), nullptr);
  e.load(deserializer);
  EXPECT_TRUE(deserializer.eoc());
  EXPECT_EQ(e.type(), mstd::cAbstractException::Runtime);
  EXPECT_TRUE(e.outOfMemoryCondition());
  EXPECT_EQ(messageOf(e), "text");
  EXPECT_STREQ(e.sourceFileName(), "");
  EXPECT_EQ(e.sourceFileLine(), 0u);
  EXPECT_EQ(e.backtrace(), nullptr);
}

template <class E>
void expectFailedLoadsLeave(E& e, unsigned int iOtherType)
{
  std::string const whole = bytesOf({number("piUInt32", iOtherType), mark(true), message("text")});
  mstd::cAbstractException::Type const type = e.type();
  unsigned int const iLine = e.sourceFileLine();
  support::cCaptureOut mute;
  for (size_t length = 0; length < whole.size(); ++length)
  {
    msa::cDeserializeBinary deserializer(given(whole.substr(0, length)));
    EXPECT_THROW(e.load(deserializer), mstd::cAbstractException) << length;
    EXPECT_EQ(e.type(), type) << length;
    EXPECT_FALSE(e.outOfMemoryCondition()) << length;
    EXPECT_EQ(messageOf(e), "old") << length;
    EXPECT_STREQ(e.sourceFileName(), "old.cpp") << length;
    EXPECT_EQ(e.sourceFileLine(), iLine) << length;
    EXPECT_NE(e.backtrace(), nullptr) << length;
    ASSERT_NE(e.history(), nullptr) << length;
  }
  msa::cDeserializeBinary deserializer(given(whole));
  e.load(deserializer);
  EXPECT_NE(e.type(), type);
  EXPECT_EQ(messageOf(e), "text");
  EXPECT_NE(e.history(), nullptr); // no part of the record
}

TEST(StreamedException, LoadThatFailsLeavesTheExceptionAsItWas)
{
  mstd::cRuntimeException const older(mucs::cLIMessage("older"), nullptr, 0);
  mstd::cBugException bug(mucs::cLIMessage("old"), "old.cpp", 5);
  bug.link(older);
  expectFailedLoadsLeave(bug, 1);
  mstd::cRuntimeException runtime(mucs::cLIMessage("old"), "old.cpp", 6);
  runtime.link(older);
  expectFailedLoadsLeave(runtime, 0);
}

TEST(StreamedException, TellsTheDebugOutputOnce)
{
  support::cCaptureOut out;
  msa::cSerializeBinary serializer;
  sample().storeRecursive(serializer);
  unsigned int lines = 0;
  for (support::cCaptureOut::cLine const& line : out.lines())
  {
    lines += line.text == "cAbstractException::storeRecursive" ? 1 : 0;
  }
  EXPECT_EQ(lines, 1u);
}

TEST(StreamedException, ChainOfThreeComesBackWithoutWhatDoesNotTravel)
{
  mstd::cOutOfBoundsException const sent = sample();
  std::string const sMessage = messageOf(sent);
  cFactory const factory;
  std::string const bytes = chainBytes(sent);
  msa::cDeserializeBinary deserializer(given(bytes));
  tChain const chain = mstd::cAbstractException::createFromStream(deserializer, factory);
  EXPECT_TRUE(deserializer.eoc());
  EXPECT_EQ(factory.mNames, (std::vector<std::string>{"cOutOfBoundsException", "cRuntimeException", "cBugException"}));
  std::vector<std::string> names;
  std::vector<std::string> messages;
  for (mstd::cAbstractException const* e = chain.get(); e != nullptr; e = e->history())
  {
    names.push_back(toString(e->typeName()));
    messages.push_back(messageOf(*e));
    EXPECT_STREQ(e->sourceFileName(), "");
    EXPECT_EQ(e->sourceFileLine(), 0u);
    EXPECT_EQ(e->backtrace(), nullptr);
    EXPECT_FALSE(e->isRemote());
    EXPECT_FALSE(e->outOfMemoryCondition());
    EXPECT_EQ(e->type(),
              names.back() == "cRuntimeException" ? mstd::cAbstractException::Runtime : mstd::cAbstractException::Bug);
  }
  EXPECT_EQ(names, factory.mNames);
  EXPECT_EQ(messages, (std::vector<std::string>{sMessage, "middle", "oldest"}));
  auto const* const pNewest = dynamic_cast<mstd::cOutOfBoundsException const*>(chain.get());
  ASSERT_NE(pNewest, nullptr);
  EXPECT_EQ(toString(pNewest->container()), "");
  EXPECT_EQ(toString(pNewest->operation()), "");
  EXPECT_EQ(chainBytes(*chain), bytes);
}

TEST(StreamedException, OutOfMemoryMarksComeBack)
{
  support::tItems items;
  append(items, "cBugException", 0, false, message("newest"));
  append(items, "cBugException", 0, true, message("oldest"));
  items.push_back(mark(false));
  tChain const chain = rebuilt(bytesOf(items));
  ASSERT_TRUE(chain);
  EXPECT_FALSE(chain->outOfMemoryCondition());
  EXPECT_TRUE(chain->hasOutOfMemoryCondition());
  ASSERT_NE(chain->history(), nullptr);
  EXPECT_TRUE(chain->history()->outOfMemoryCondition());
  EXPECT_EQ(chainBytes(*chain), bytesOf(items));
}

TEST(StreamedException, LocationStaysBehindAndIsSetByTheReceiver)
{
  mcs::cComponentLocation const bench(mstd::cAsciiString("1:5-812@bench"));
  mstd::cOutOfBoundsException sent = sample();
  std::string const local = chainBytes(sent);
  sent.setRemoteInfo(bench);
  EXPECT_EQ(chainBytes(sent), local) << "it is not part of the record";

  tChain const chain = rebuilt(local);
  ASSERT_TRUE(chain);
  EXPECT_FALSE(chain->isRemote());
  chain->setRemoteInfo(bench);
  EXPECT_TRUE(chain->isRemote());
  EXPECT_TRUE(chain->remoteLocation() == bench);
  EXPECT_FALSE(chain->history()->isRemote());
  // Loading into an exception that has one leaves it.
  mstd::cRuntimeException marked;
  marked.setRemoteInfo(bench);
  msa::cSerializeBinary serializer;
  mstd::cRuntimeException(mucs::cLIMessage("other"), nullptr, 0).store(serializer);
  msa::cDeserializeBinary deserializer(given(support::written(serializer)));
  mstd::cAsciiString name;
  name << deserializer;
  marked.load(deserializer);
  EXPECT_EQ(messageOf(marked), "other");
  EXPECT_TRUE(marked.remoteLocation() == bench);
}

TEST(StreamedException, NoExceptionIsAnEmptyChain)
{
  cFactory const factory;
  msa::cDeserializeBinary deserializer(given(bytesOf({mark(false), mark(true)})));
  EXPECT_FALSE(mstd::cAbstractException::createFromStream(deserializer, factory));
  EXPECT_TRUE(factory.mNames.empty());
  EXPECT_EQ(deserializer.currentPos(), 8u); // the second mark is somebody else's
}

TEST(StreamedException, UnknownClassEndsTheChainAndIsNamed)
{
  for (char const* pName : {"cForeignException", "throwsNumber", "with%percent%", ""})
  {
    support::tItems items;
    append(items, "cBugException", 0, false, message("newest"));
    append(items, pName, 1, true, message("unread"));
    append(items, "cRuntimeException", 1, false, message("third"));
    items.push_back(mark(false));
    cFactory const factory;
    msa::cDeserializeBinary deserializer(given(bytesOf(items)));
    tChain const chain = mstd::cAbstractException::createFromStream(deserializer, factory);
    ASSERT_TRUE(chain);
    EXPECT_EQ(messageOf(*chain), "newest");
    mstd::cAbstractException const* const pUnknown = chain->history();
    ASSERT_NE(pUnknown, nullptr);
    EXPECT_EQ(toString(pUnknown->typeName()), "cRuntimeException");
    EXPECT_EQ(messageOf(*pUnknown), "Unknown exception type " + std::string(pName) + "!");
    EXPECT_EQ(toString(pUnknown->liMessage()->key()), "Unknown exception type %s%!");
    EXPECT_TRUE(pUnknown->liMessage()->isTranslatable());
    EXPECT_EQ(pUnknown->history(), nullptr);
    EXPECT_EQ(factory.mNames, (std::vector<std::string>{"cBugException", pName}));
    unsigned int iType = 9;
    iType << deserializer; // what follows the name is still there
    EXPECT_EQ(iType, 1u);
  }
}

TEST(StreamedException, UnknownClassMayComeFirst)
{
  support::tItems items;
  append(items, "cForeignException", 1, false, message("unread"));
  tChain const chain = rebuilt(bytesOf(items));
  ASSERT_TRUE(chain);
  EXPECT_EQ(messageOf(*chain), "Unknown exception type cForeignException!");
  EXPECT_EQ(chain->history(), nullptr);
}

TEST(StreamedException, TypeThatIsNoneReadsAsRuntime)
{
  support::tItems items;
  append(items, "cBugException", 4711, false, message("text"));
  items.push_back(mark(false));
  EXPECT_EQ(rebuilt(bytesOf(items))->type(), mstd::cAbstractException::Runtime);
}

TEST(StreamedException, EveryTruncationIsRefused)
{
  support::cCaptureOut mute;
  std::string const whole = chainBytes(sample());
  for (size_t length = 0; length < whole.size(); ++length)
  {
    EXPECT_THROW(rebuilt(whole.substr(0, length)), mstd::cAbstractException) << length;
  }
}

TEST(StreamedException, EveryChangedByteEndsInAChainOrAnException)
{
  support::cCaptureOut mute;
  std::string const whole = chainBytes(sample());
  unsigned int outcomes = 0;
  for (size_t i = 0; i < whole.size(); ++i)
  {
    for (unsigned char value : {0x00, 0x01, 0x0C, 0x7F, 0xFF})
    {
      std::string changed = whole;
      changed[i] = static_cast<char>(value);
      try
      {
        tChain const chain = rebuilt(changed);
        outcomes += chain ? 1 : 0;
      }
      catch (mstd::cAbstractException const&)
      {
        ++outcomes;
      }
      catch (std::bad_alloc const&)
      {
        ADD_FAILURE() << "byte " << i << " asks for memory";
      }
    }
  }
  // Only a first mark that became false gives nothing.
  EXPECT_GE(outcomes, whole.size() * 5 - 4);
}

TEST(StreamedException, RecordOfTheWrongShapeIsRefused)
{
  support::tItems items;
  append(items, "cBugException", 0, false, text("no message"));
  EXPECT_THROW(rebuilt(bytesOf(items)), mstd::cAbstractException);
  EXPECT_THROW(rebuilt(bytesOf({mark(true), number("piUInt32", 3)})), mstd::cTypeMissmatchException);
  EXPECT_THROW(rebuilt(bytesOf({number("piInt32", 1)})), mstd::cTypeMissmatchException);
}

/// Seconds that the reading and writing of a chain of `records` takes.
double secondsFor(unsigned int records)
{
  support::tItems items;
  append(items, "cBugException", 0, false, message("text"));
  std::string const record = bytesOf(items);
  std::string bytes;
  for (unsigned int i = 0; i < records; ++i)
  {
    bytes += record;
  }
  bytes += bytesOf({mark(false)});
  auto const start = std::chrono::steady_clock::now();
  {
    tChain const chain = rebuilt(bytes);
    unsigned int length = 0;
    for (mstd::cAbstractException const* e = chain.get(); e != nullptr; e = e->history())
    {
      ++length;
    }
    EXPECT_EQ(length, records);
    EXPECT_TRUE(chainBytes(*chain) == bytes);
  }
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(StreamedException, LongChainTakesNeitherStackNorQuadraticTime)
{
  // Quadratic time would make it a hundred times as long, and be minutes.
  double const shorter = secondsFor(10000);
  double const longer = secondsFor(100000);
  EXPECT_LT(longer, shorter * 50 + 1.0);
}

} // namespace
