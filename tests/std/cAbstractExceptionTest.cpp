#include "std/cAbstractException.h"

#include "mcs/cComponentLocation.h"
#include "pi/cSystem.h"
#include "pi/piStackTrace.h"
#include "std/cAbstractExceptionFactory.h"
#include "std/cBugException.h"
#include "std/cNumberConversionException.h"
#include "std/cOSErrorException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"
#include "std/cTextParseException.h"
#include "std/cTypeMissmatchException.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <stdlib.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

using mstd::cAbstractException;
using mstd::cBugException;
using mstd::cRuntimeException;
using support::messageOf;
using support::toString;

namespace
{
mucs::cLIMessage message(char const* key)
{
  mucs::cLIMessage result;
  result << key;
  return result;
}

cRuntimeException runtimeError(char const* key)
{
  return cRuntimeException(message(key), nullptr, 0);
}

/// Has no message, counts its lives, and can fail to be cloned.
class cPlainException : public cAbstractException
{
public:
  enum Failure
  {
    None,
    BadAlloc,
    Other,
    Null
  };

  explicit cPlainException(char const* what = "plain", char const* file = nullptr, unsigned int line = 0,
                           Failure failure = None)
      : cAbstractException(what, Runtime, file, line), mFailure(failure)
  {
    ++lives;
  }
  cPlainException(cPlainException const& other) : cAbstractException(other), mFailure(other.mFailure) { ++lives; }
  ~cPlainException() override
  {
    --lives;
    if (mpDeaths != nullptr)
    {
      mpDeaths->push_back(what());
    }
  }
  cPlainException& operator=(cPlainException const& other) = default;

  cAbstractException* createObject() const override
  {
    switch (mFailure)
    {
    case BadAlloc:
      throw std::bad_alloc();
    case Other:
      throw std::runtime_error("cannot be cloned");
    case Null:
      return nullptr;
    case None:
      break;
    }
    return new cPlainException(*this);
  }
  mstd::cAsciiString typeName() const override { return "cPlainException"; }

  static int lives;
  std::vector<std::string>* mpDeaths = nullptr;

private:
  Failure mFailure;
};

int cPlainException::lives = 0;

/// Its clone is made from scratch, and brings a history of its own.
class cSelfMadeException : public cRuntimeException
{
public:
  cAbstractException* createObject() const override
  {
    cSelfMadeException* clone = new cSelfMadeException;
    clone->link(runtimeError("own cause"));
    return clone;
  }
  mstd::cAsciiString typeName() const override { return "cSelfMadeException"; }
};

std::vector<std::string> chainOf(cAbstractException const& e)
{
  std::vector<std::string> result;
  for (cAbstractException const* link = &e; link != nullptr; link = link->history())
  {
    result.push_back(link->liMessage() != nullptr ? messageOf(*link) : link->what());
  }
  return result;
}

typedef std::vector<std::string> cTexts;

class cAbstractExceptionME : public testing::Test
{
protected:
  cAbstractExceptionME() { mpi::system(); }
  ~cAbstractExceptionME() override { unsetenv("ME"); }
};
} // namespace

TEST(cAbstractException, AFileNameOf100CharactersIsCutToItsFirst60)
{
  std::string name;
  for (int i = 0; i < 100; ++i)
  {
    name += static_cast<char>('a' + i % 26);
  }
  EXPECT_EQ(name.substr(0, 60), cPlainException("w", name.c_str(), 1).sourceFileName());
}

TEST(cAbstractException, AFileNameOf60CharactersIsKeptWhole)
{
  std::string const name(60, 'f');
  EXPECT_EQ(name, cPlainException("w", name.c_str(), 1).sourceFileName());
}

TEST(cAbstractException, AWhatTextOf300CharactersIsCutToItsFirst255)
{
  std::string text;
  for (int i = 0; i < 300; ++i)
  {
    text += static_cast<char>('a' + i % 26);
  }
  EXPECT_EQ(text.substr(0, 255), cPlainException(text.c_str()).what());
}

TEST(cAbstractException, NullTextsAreEmpty)
{
  cPlainException const e(nullptr, nullptr, 17);
  EXPECT_STREQ("", e.what());
  EXPECT_STREQ("", e.sourceFileName());
  EXPECT_EQ(17u, e.sourceFileLine());
}

TEST(cAbstractException, TheTypesHaveTheirNumbers)
{
  EXPECT_EQ(0, cAbstractException::Bug);
  EXPECT_EQ(1, cAbstractException::Runtime);
  EXPECT_EQ(cAbstractException::Bug, cBugException().type());
  EXPECT_EQ(cAbstractException::Runtime, cRuntimeException().type());
}

TEST(cAbstractException, ItIsNotDerivedFromAStandardException)
{
  EXPECT_FALSE((std::is_base_of<std::exception, cAbstractException>::value));
}

TEST(cAbstractException, TheRootHasNoMessageNoDialogAndNoHistory)
{
  cPlainException const e;
  EXPECT_EQ(nullptr, e.liMessage());
  EXPECT_EQ(nullptr, e.dialog());
  EXPECT_EQ(nullptr, e.history());
  EXPECT_FALSE(e.isRemote());
  EXPECT_FALSE(e.outOfMemoryCondition());
  EXPECT_FALSE(e.hasOutOfMemoryCondition());
  bool outOfMemory = false;
  EXPECT_EQ(nullptr, e.getHistory(outOfMemory));
  EXPECT_FALSE(outOfMemory);
}

TEST(cAbstractException, TheRemoteLocationOfALocalOneIsAnAssertionFailure)
{
  support::cCaptureOut capture;
  cPlainException const e;
  cBugException const failure = support::caught<cBugException>([&] { e.remoteLocation(); });
  EXPECT_EQ(0u, messageOf(failure).find("Assertion failed in file std/cAbstractException:"));
  EXPECT_NE(std::string::npos, messageOf(failure).find("(mpRemoteLocation != 0)!"));
}

TEST(cAbstractException, TheBackTraceNamesTheConstructionInnermostFirst)
{
  cPlainException const e;
  ASSERT_NE(nullptr, e.backtrace());
  piAddress here[64];
  piBackTrace(here, 64);
  // The outermost frames of both are the same: look for the caller's caller and so on in the exception.
  unsigned int depth = 0;
  while (depth < 64 && e.backtrace()[depth] != 0)
  {
    ++depth;
  }
  ASSERT_LT(depth, 64u);
  ASSERT_GT(depth, 2u);
  unsigned int hereDepth = 0;
  while (here[hereDepth] != 0)
  {
    ++hereDepth;
  }
  EXPECT_EQ(here[hereDepth - 1], e.backtrace()[depth - 1]);
  EXPECT_EQ(here[hereDepth - 2], e.backtrace()[depth - 2]);
}

namespace
{
__attribute__((noinline)) int descend(int depth, cPlainException** made)
{
  if (depth == 0)
  {
    *made = new cPlainException;
    return 0;
  }
  int const result = descend(depth - 1, made) + 1;
  asm volatile("" ::: "memory"); // keeps the frame: no tail call
  return result;
}

/// Keeps its back trace away, as an exception made where none can be taken.
class cTracelessException : public cPlainException
{
public:
  cTracelessException()
  {
    // The first entry decides; the object is writable.
    piAddress* const trace = const_cast<piAddress*>(backtrace());
    trace[0] = 0;
  }
};
} // namespace

TEST(cAbstractException, TheBackTraceEndsInAZeroAlsoOnADeepStack)
{
  cPlainException* made = nullptr;
  descend(200, &made);
  std::unique_ptr<cPlainException> const e(made);
  ASSERT_NE(nullptr, e->backtrace());
  for (int i = 0; i < 63; ++i)
  {
    EXPECT_NE(0u, e->backtrace()[i]) << i;
  }
  EXPECT_EQ(0u, e->backtrace()[63]);
}

TEST(cAbstractException, BacktraceIsNullIfTheFirstEntryIsZero)
{
  cTracelessException const e;
  EXPECT_EQ(nullptr, e.backtrace());
}

TEST(cAbstractException, ACopyHasTextsPlaceTypeAndBackTrace)
{
  cPlainException const e("text", "file", 5);
  cPlainException const copy(e);
  EXPECT_STREQ("text", copy.what());
  EXPECT_STREQ("file", copy.sourceFileName());
  EXPECT_EQ(5u, copy.sourceFileLine());
  EXPECT_EQ(e.type(), copy.type());
  ASSERT_NE(e.backtrace(), copy.backtrace());
  for (int i = 0; i < 64; ++i)
  {
    EXPECT_EQ(e.backtrace()[i], copy.backtrace()[i]) << i;
  }
}

TEST(cAbstractException, ACopyHasAHistoryOfItsOwn)
{
  cPlainException::lives = 0;
  {
    cPlainException e("a");
    e.link(cPlainException("b"));
    e.link(cPlainException("c"));
    cPlainException copy(e);
    EXPECT_EQ((cTexts{"a", "b", "c"}), chainOf(copy));
    EXPECT_NE(e.history(), copy.history());
    EXPECT_NE(e.history()->history(), copy.history()->history());
    EXPECT_EQ(6, cPlainException::lives);
  }
  EXPECT_EQ(0, cPlainException::lives);
}

TEST(cAbstractException, CloningKeepsTheMostDerivedClasses)
{
  cBugException e(message("top"), nullptr, 0);
  e.link(mstd::cOutOfRangeException("c", "o", cSTDExceptions::SizeOutOfRange, 3, 1, 2));
  std::unique_ptr<cAbstractException> const clone(e.createObject());
  EXPECT_EQ("cBugException", toString(clone->typeName()));
  mstd::cOutOfRangeException const* const cause = dynamic_cast<mstd::cOutOfRangeException const*>(clone->history());
  ASSERT_NE(nullptr, cause);
  EXPECT_EQ(3, cause->errornousValue());
}

TEST(cAbstractException, ACloneThatFailsForLackOfMemoryLeavesAMarkedCopyWithoutHistory)
{
  cPlainException e("a");
  e.link(new cPlainException("b", nullptr, 0, cPlainException::BadAlloc));
  cPlainException const copy(e);
  EXPECT_EQ(nullptr, copy.history());
  EXPECT_TRUE(copy.outOfMemoryCondition());
  EXPECT_FALSE(e.outOfMemoryCondition());
  bool outOfMemory = false;
  EXPECT_EQ(nullptr, e.getHistory(outOfMemory));
  EXPECT_TRUE(outOfMemory);
}

TEST(cAbstractException, ACloneThatFailsOtherwiseLeavesAnUnmarkedCopyWithoutHistory)
{
  cPlainException e("a");
  e.link(new cPlainException("b", nullptr, 0, cPlainException::Other));
  cPlainException const copy(e);
  EXPECT_EQ(nullptr, copy.history());
  EXPECT_FALSE(copy.outOfMemoryCondition());
}

TEST(cAbstractException, ACloneThatIsNullEndsTheChain)
{
  cPlainException e("a");
  e.link(new cPlainException("b", nullptr, 0, cPlainException::Null));
  e.link(cPlainException("c"));
  EXPECT_EQ((cTexts{"a"}), chainOf(cPlainException(e)));
}

TEST(cAbstractException, AFailureInTheMiddleOfAChainMarksTheLastOneThatWasCopied)
{
  cPlainException e("a");
  e.link(cPlainException("b"));
  e.link(new cPlainException("c", nullptr, 0, cPlainException::BadAlloc));
  e.link(cPlainException("d"));
  cPlainException const copy(e);
  EXPECT_EQ((cTexts{"a", "b"}), chainOf(copy));
  EXPECT_FALSE(copy.outOfMemoryCondition());
  EXPECT_TRUE(copy.history()->outOfMemoryCondition());
  EXPECT_TRUE(copy.hasOutOfMemoryCondition());
  // The source can still be copied as before.
  EXPECT_EQ((cTexts{"a", "b", "c", "d"}), chainOf(e));
}

TEST(cAbstractException, AHistoryThatAClassMakesForItsClonesIsKept)
{
  cPlainException e("a");
  e.link(new cSelfMadeException);
  e.link(cPlainException("dropped by the class"));
  cPlainException const copy(e);
  EXPECT_EQ((cTexts{"a", "", "own cause"}), chainOf(copy));
  // Copying the object itself is not affected by having been asked for a clone.
  cSelfMadeException const& inner = static_cast<cSelfMadeException const&>(*e.history());
  EXPECT_EQ((cTexts{"", "dropped by the class"}), chainOf(cSelfMadeException(inner)));
}

TEST(cAbstractException, TheMarkIsCopied)
{
  cPlainException e("a");
  e.link(new cPlainException("b", nullptr, 0, cPlainException::BadAlloc));
  cPlainException const copy(e);
  cPlainException const second(copy);
  EXPECT_TRUE(second.outOfMemoryCondition());
}

TEST(cAbstractException, AssignmentTakesEverythingOver)
{
  cPlainException e("a", "file", 3);
  e.link(cPlainException("b"));
  cPlainException target("x", "y", 1);
  target.link(cPlainException("z"));
  target = e;
  EXPECT_EQ((cTexts{"a", "b"}), chainOf(target));
  EXPECT_STREQ("file", target.sourceFileName());
  EXPECT_EQ(3u, target.sourceFileLine());
  EXPECT_EQ(e.backtrace()[0], target.backtrace()[0]);
}

TEST(cAbstractException, AssignmentTakesTheMarkOver)
{
  cPlainException e("a");
  e.link(new cPlainException("b", nullptr, 0, cPlainException::BadAlloc));
  cPlainException const marked(e);
  cPlainException target("x");
  target = marked;
  EXPECT_TRUE(target.outOfMemoryCondition());
  target = cPlainException("y");
  EXPECT_FALSE(target.outOfMemoryCondition());
  target = e;
  EXPECT_TRUE(target.outOfMemoryCondition()) << "its own copy of the history failed";
  EXPECT_EQ(nullptr, target.history());
}

TEST(cAbstractException, AssignmentDeletesTheOldHistoryBeforeItTakesTheNewOne)
{
  cPlainException::lives = 0;
  cPlainException target("x");
  target.link(cPlainException("old"));
  cPlainException e("a");
  e.link(cPlainException("new"));
  cTexts deaths;
  const_cast<cPlainException*>(static_cast<cPlainException const*>(target.history()))->mpDeaths = &deaths;
  target = e;
  EXPECT_EQ((cTexts{"old"}), deaths);
  EXPECT_EQ(4, cPlainException::lives);
}

TEST(cAbstractException, TheRemoteLocationIsACopyThatTheNextOneReplaces)
{
  cRuntimeException e = runtimeError("far");
  {
    mcs::cComponentLocation const bench(mstd::cAsciiString("1:5-812@bench:left"));
    e.setRemoteInfo(bench);
  }
  EXPECT_TRUE(e.isRemote());
  EXPECT_STREQ("1:5-812@bench:left", e.remoteLocation().toString().c_str());
  e.setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("2:6-1@desk")));
  EXPECT_STREQ("2:6-1@desk", e.remoteLocation().toString().c_str());
  e.setRemoteInfo(e.remoteLocation());
  EXPECT_STREQ("2:6-1@desk", e.remoteLocation().toString().c_str());
}

TEST(cAbstractException, ACopyHasARemoteLocationOfItsOwn)
{
  std::unique_ptr<cRuntimeException> original(new cRuntimeException(runtimeError("far")));
  original->setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("1:5-812@bench")));
  cRuntimeException const copy(*original);
  std::unique_ptr<cAbstractException> const clone(original->createObject());
  original.reset();
  EXPECT_STREQ("1:5-812@bench", copy.remoteLocation().toString().c_str());
  EXPECT_STREQ("1:5-812@bench", clone->remoteLocation().toString().c_str());
}

TEST(cAbstractException, ACopyWithoutMemoryForTheRemoteLocationIsLocalAndMarked)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the allocations are not seen here";
  }
  cPlainException original("far");
  original.setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("1:5-812@bench")));
  support::cAllocationFault fault(1);
  cPlainException const copy(original);
  fault.disarm();
  ASSERT_TRUE(fault.hasFired());
  EXPECT_FALSE(copy.isRemote());
  EXPECT_TRUE(copy.outOfMemoryCondition());
}

TEST(cAbstractException, EachExceptionOfAChainHasItsOwnRemoteLocation)
{
  cRuntimeException e = runtimeError("newest");
  e.setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("1:5-812@bench")));
  e.link(runtimeError("local"));
  cRuntimeException oldest = runtimeError("oldest");
  oldest.setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("2:6-1@desk")));
  e.link(oldest);

  std::unique_ptr<cAbstractException> const clone(e.createObject());
  bool outOfMemory = false;
  std::unique_ptr<cAbstractException> const history(e.getHistory(outOfMemory));
  cRuntimeException assigned = runtimeError("target");
  assigned = e;
  EXPECT_FALSE(assigned.isRemote()) << "its own place stays";
  for (cAbstractException const* chain :
       {e.history(), clone->history(), static_cast<cAbstractException const*>(history.get()), assigned.history()})
  {
    ASSERT_NE(nullptr, chain);
    EXPECT_FALSE(chain->isRemote());
    ASSERT_NE(nullptr, chain->history());
    ASSERT_TRUE(chain->history()->isRemote());
    EXPECT_STREQ("2:6-1@desk", chain->history()->remoteLocation().toString().c_str());
  }
  ASSERT_TRUE(clone->isRemote());
  EXPECT_STREQ("1:5-812@bench", clone->remoteLocation().toString().c_str());
  EXPECT_NE(&e.remoteLocation(), &clone->remoteLocation());
}

TEST(cAbstractException, AnExceptionWhoseLocationIsRefusedStaysWhereItWas)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the allocations are not seen here";
  }
  mcs::cComponentLocation const desk(mstd::cAsciiString("2:6-1@desk:left"));
  unsigned int failures = 0;
  for (unsigned int n = 1;; ++n)
  {
    cPlainException e("far");
    e.setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("1:5-812@bench")));
    bool hasThrown = false;
    support::cBlockBalance const balance;
    {
      support::cAllocationFault fault(n);
      try
      {
        e.setRemoteInfo(desk);
      }
      catch (std::bad_alloc const&)
      {
        hasThrown = true;
      }
      fault.disarm();
      EXPECT_EQ(fault.hasFired(), hasThrown);
    }
    EXPECT_STREQ(hasThrown ? "1:5-812@bench" : "2:6-1@desk:left", e.remoteLocation().toString().c_str());
    EXPECT_FALSE(e.outOfMemoryCondition());
    if (!hasThrown)
    {
      break;
    }
    EXPECT_EQ(0, balance.blocks());
    ++failures;
  }
  EXPECT_GE(failures, 1u);
}

TEST(cAbstractException, ChainsWithLocationsAreCopiedWithoutMemory)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the allocations are not seen here";
  }
  cRuntimeException e = runtimeError("newest");
  e.link(runtimeError("oldest"));
  e.setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("1:5-812@bench:left")));
  const_cast<cAbstractException*>(e.history())
      ->setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("2:6-1@desk:right")));
  unsigned int n = 1;
  for (bool hasFired = true; hasFired; ++n)
  {
    support::cBlockBalance const balance;
    {
      support::cAllocationFault fault(n);
      cRuntimeException const copy(e);
      fault.disarm();
      hasFired = fault.hasFired();
      bool const isWhole = copy.isRemote() && copy.remoteLocation() == e.remoteLocation() &&
                           copy.history() != nullptr && copy.history()->isRemote() &&
                           copy.history()->remoteLocation() == e.history()->remoteLocation();
      EXPECT_TRUE(hasFired || isWhole);
      EXPECT_EQ(hasFired, copy.hasOutOfMemoryCondition()) << n;
      EXPECT_EQ(hasFired ? "Out of memory!" : "newest", toString(copy.toMessage())) << n;
    }
    EXPECT_EQ(0, balance.blocks()) << n;
  }
  EXPECT_GT(n, support::cAllocationFault::seesMalloc() ? 8u : 4u);
}

TEST(cAbstractException, TheRemoteLocationStaysWithItsObject)
{
  cRuntimeException target = runtimeError("target");
  cRuntimeException source = runtimeError("source");
  source.setRemoteInfo(mcs::cComponentLocation(mstd::cAsciiString("1:5-812@bench")));
  target = source;
  EXPECT_FALSE(target.isRemote());
  target.swap(source);
  EXPECT_FALSE(target.isRemote());
  EXPECT_TRUE(source.isRemote());
  source = target;
  EXPECT_STREQ("1:5-812@bench", source.remoteLocation().toString().c_str());
}

TEST(cAbstractException, SelfAssignmentIsHarmless)
{
  cPlainException plain("a");
  plain.link(cPlainException("b"));
  cPlainException const& alias = plain;
  plain = alias;
  EXPECT_EQ((cTexts{"a", "b"}), chainOf(plain));

  cBugException bug(message("a"), "f", 1);
  bug.link(runtimeError("b"));
  cBugException const& bugAlias = bug;
  bug = bugAlias;
  EXPECT_EQ((cTexts{"a", "b"}), chainOf(bug));
}

TEST(cAbstractException, OnesOwnHistoryCanBeAssigned)
{
  cPlainException e("a");
  e.link(cPlainException("b"));
  e.link(cPlainException("c"));
  static_cast<cAbstractException&>(e) = *e.history();
  EXPECT_EQ((cTexts{"b", "c"}), chainOf(e));

  cRuntimeException runtime = runtimeError("a");
  runtime.link(runtimeError("b"));
  runtime = static_cast<cRuntimeException const&>(*runtime.history());
  EXPECT_EQ((cTexts{"b"}), chainOf(runtime));
}

TEST(cAbstractException, AChainCanBeAssignedToItsOwnMember)
{
  cPlainException e("a");
  cPlainException* const inner = new cPlainException("b");
  e.link(inner);
  e.link(cPlainException("c"));
  static_cast<cAbstractException&>(*inner) = e;
  EXPECT_EQ((cTexts{"a", "a", "b", "c"}), chainOf(e));
}

TEST(cAbstractException, SwapExchangesEverythingElse)
{
  cPlainException a("a", "fa", 1);
  a.link(cPlainException("ah"));
  cPlainException b("b", "fb", 2);
  piAddress const firstOfA = a.backtrace()[0];
  piAddress const firstOfB = b.backtrace()[0];
  static_cast<cAbstractException&>(a).swap(b);
  EXPECT_EQ((cTexts{"b"}), chainOf(a));
  EXPECT_EQ((cTexts{"a", "ah"}), chainOf(b));
  EXPECT_STREQ("fb", a.sourceFileName());
  EXPECT_EQ(1u, b.sourceFileLine());
  EXPECT_EQ(firstOfB, a.backtrace()[0]);
  EXPECT_EQ(firstOfA, b.backtrace()[0]);
}

TEST(cAbstractException, LinkHangsToTheEndOfTheChain)
{
  cPlainException e("a");
  e.link(new cPlainException("b"));
  e.link(new cPlainException("c"));
  cPlainException d("d");
  d.link(cPlainException("e"));
  e.link(d);
  EXPECT_EQ((cTexts{"a", "b", "c", "d", "e"}), chainOf(e));
  EXPECT_EQ((cTexts{"d", "e"}), chainOf(d));
}

TEST(cAbstractException, LinkingNullChangesNothing)
{
  cPlainException e("a");
  e.link(nullptr);
  EXPECT_EQ((cTexts{"a"}), chainOf(e));
}

TEST(cAbstractException, AMemberOfTheChainCannotBeLinkedAgain)
{
  support::cCaptureOut capture;
  cPlainException* const inner = new cPlainException("b");
  cPlainException e("a");
  e.link(inner);
  EXPECT_THROW(e.link(inner), cBugException);
  EXPECT_THROW(e.link(&e), cBugException);
  EXPECT_EQ((cTexts{"a", "b"}), chainOf(e));
}

TEST(cAbstractException, AnExceptionCanBeItsOwnCauseByReference)
{
  cPlainException e("a");
  e.link(e);
  EXPECT_EQ((cTexts{"a", "a"}), chainOf(e));
}

TEST(cAbstractException, HasReturnsTheThirdObjectIfOnlyThatHasTheName)
{
  cBugException e(message("a"), nullptr, 0);
  e.link(runtimeError("b"));
  e.link(mstd::cOutOfBoundsException("c", nullptr));
  EXPECT_EQ(e.history()->history(), e.has("cOutOfBoundsException"));
  EXPECT_EQ(&e, e.has("cBugException"));
  EXPECT_EQ(e.history(), e.has("cRuntimeException"));
  EXPECT_EQ(nullptr, e.has("cAbstractException"));
}

TEST(cAbstractException, ToMessageIsTheMessage)
{
  EXPECT_EQ("it broke", toString(runtimeError("$MTR$it broke").toMessage()));
}

TEST(cAbstractException, ToMessageOfOneWithoutAMessageIsItsWhatText)
{
  mucs::cLIMessage const text = cPlainException("some \\ % text").toMessage();
  EXPECT_EQ("%s%", toString(text.key()));
  EXPECT_EQ("some \\ % text", toString(text));
}

TEST(cAbstractException, OutOfMemoryReplacesTheOwnWords)
{
  cBugException e(message("words"), nullptr, 0);
  e.link(cPlainException("b"));
  e.link(new cPlainException("c", nullptr, 0, cPlainException::BadAlloc));
  cBugException const copy(e);
  EXPECT_FALSE(copy.outOfMemoryCondition());
  EXPECT_TRUE(copy.hasOutOfMemoryCondition());
  EXPECT_EQ("Out of memory!", toString(copy.toMessage()));
  EXPECT_EQ("words", messageOf(copy));
}

namespace
{
cRuntimeException chainOfThree()
{
  cRuntimeException e = runtimeError("newest");
  e.link(cBugException(message("middle"), nullptr, 0));
  e.link(cPlainException("oldest"));
  return e;
}

std::string createdMessage(cAbstractException const& e, char const* separator, unsigned int flags)
{
  mucs::cString text("to be replaced");
  e.createMessage(text, mucs::cString(separator), flags, nullptr);
  return toString(text);
}
} // namespace

TEST(cAbstractException, CreateMessageWithFlags0GivesTheNewestTextOnly)
{
  EXPECT_EQ("newest", createdMessage(chainOfThree(), ", ", 0));
}

TEST(cAbstractException, CreateMessageWithFlags1GivesAllTextsNewestFirst)
{
  EXPECT_EQ("newest, middle, oldest", createdMessage(chainOfThree(), ", ", 1));
}

TEST(cAbstractException, CreateMessageWithFlags5IndentsByOneMoreBlankEach)
{
  EXPECT_EQ("newest\n middle\n  oldest", createdMessage(chainOfThree(), "\n", 5));
}

TEST(cAbstractException, TheOtherFlagsOfCreateMessageHaveNoMeaning)
{
  EXPECT_EQ("newest, middle, oldest", createdMessage(chainOfThree(), ", ", 1 | 2 | 8 | 0x80000000u));
  EXPECT_EQ("newest", createdMessage(chainOfThree(), ", ", 4 | 2));
}

TEST(cAbstractException, TheSeparatorOfCreateMessageMayBeTheTarget)
{
  mucs::cString text(", ");
  chainOfThree().createMessage(text, text, 1, nullptr);
  EXPECT_EQ("newest, middle, oldest", toString(text));
}

TEST(cAbstractException, TheStaticCreateMessageAppendsOneText)
{
  mucs::cString text("x");
  cAbstractException::createMessage(chainOfThree(), text, 5, nullptr);
  cAbstractException::createMessage(cPlainException("y"), text, 0, nullptr);
  EXPECT_EQ("xnewesty", toString(text));
}

TEST(cAbstractException, DumpWritesOneLineForEachExceptionOfTheChain)
{
  cRuntimeException e = runtimeError("$MTR$newest");
  e.link(cBugException(message("middle"), nullptr, 0));
  e.link(cPlainException("oldest"));
  e.link(cPlainException(nullptr));
  support::cCaptureOut capture;
  e.dump();
  ASSERT_EQ(4u, capture.lines().size());
  EXPECT_EQ("[cRuntimeException (runtime)]: newest", capture.lines()[0].text);
  EXPECT_EQ("[cBugException (bug)]: middle", capture.lines()[1].text);
  EXPECT_EQ("[cPlainException (runtime)]: oldest", capture.lines()[2].text);
  EXPECT_EQ("[cPlainException (runtime)]:  --- no message ---", capture.lines()[3].text);
  EXPECT_EQ("std/cAbstractException", capture.lines()[0].file);
  EXPECT_EQ(nullptr, mpi::system().out.debugFileName());
}

TEST(cAbstractException, AChainOf100000IsCopiedWalkedAndDestroyedWithoutDeepRecursion)
{
  cPlainException::lives = 0;
  unsigned int const count = 100000;
  {
    // Built from the oldest end, since link() walks.
    cPlainException* newest = new cPlainException("oldest");
    for (unsigned int i = 1; i < count; ++i)
    {
      cPlainException* const next = new cPlainException(i + 1 == count ? "newest" : "middle");
      next->link(newest);
      newest = next;
    }
    std::unique_ptr<cPlainException> const chain(newest);
    cPlainException copy(*chain);
    std::unique_ptr<cAbstractException> const clone(copy.createObject());
    unsigned int walked = 0;
    cAbstractException const* last = nullptr;
    for (cAbstractException const* e = clone.get(); e != nullptr; e = e->history())
    {
      last = e;
      ++walked;
    }
    EXPECT_EQ(count, walked);
    EXPECT_STREQ("oldest", last->what());
    EXPECT_EQ(nullptr, clone->has("none"));
    EXPECT_FALSE(clone->hasOutOfMemoryCondition());
    copy.link(cPlainException("behind"));
    cPlainException assigned("x");
    assigned = copy;
    EXPECT_EQ(4 * static_cast<int>(count) + 2, cPlainException::lives);
    mucs::cString text;
    copy.createMessage(text, mucs::cString("\n"), 1, nullptr);
    EXPECT_EQ(count, static_cast<unsigned int>([&] {
                std::string const ascii = toString(text);
                return std::count(ascii.begin(), ascii.end(), '\n');
              }()));
  }
  EXPECT_EQ(0, cPlainException::lives);
}

TEST(cAbstractException, TheHistoryDiesNewestFirst)
{
  cTexts deaths;
  {
    cPlainException e("a");
    for (char const* text : {"b", "c", "d"})
    {
      cPlainException* const older = new cPlainException(text);
      older->mpDeaths = &deaths;
      e.link(older);
    }
  }
  EXPECT_EQ((cTexts{"b", "c", "d"}), deaths);
}

TEST(cAbstractException, ItIsCaughtByItsBases)
{
  try
  {
    cSTDExceptions::throwOutOfBounds("c", "o");
  }
  catch (cAbstractException const& e)
  {
    EXPECT_EQ("cOutOfBoundsException", toString(e.typeName()));
  }
  EXPECT_THROW(cSTDExceptions::throwOutOfBounds("c", "o"), cBugException);
}

TEST(cAbstractExceptionFault, CopyingNeverThrowsWhateverAllocationFails)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build does not let allocations fail";
  }
  mstd::cTextParseException e(message("$MTR$newest"), "a format that is long enough for a pool of its own",
                              mucs::cString("/some/file"), 1, 2);
  e.link(mstd::cOSErrorException("open", 2, mucs::cString("/some/file")));
  e.link(mstd::cTypeMissmatchException("assigned", "expected"));
  e.link(mstd::cOutOfRangeException("container", "operation", cSTDExceptions::ValueOutOfRange, 1, 2, 3));
  e.link(mstd::cOutOfBoundsException("container", "operation"));
  e.link(mstd::cNumberConversionException("12x", 2));
  unsigned int n = 1;
  bool hasFired = true;
  unsigned int copied = 0;
  for (; hasFired; ++n)
  {
    support::cAllocationFault fault(n);
    mstd::cTextParseException const copy(e);
    fault.disarm();
    hasFired = fault.hasFired();
    EXPECT_EQ(hasFired, copy.hasOutOfMemoryCondition()) << n;
    unsigned int length = 0;
    for (cAbstractException const* link = &copy; link != nullptr; link = link->history())
    {
      ++length;
      (void)messageOf(*link);
      (void)link->typeName();
    }
    EXPECT_GE(length, 1u);
    EXPECT_EQ(hasFired ? "Out of memory!" : "newest", toString(copy.toMessage())) << n;
    copied = length;
  }
  EXPECT_EQ(7u, copied);
  EXPECT_GT(n, 10u);
}

TEST(cAbstractExceptionFault, AFailedAssignmentOfAConcreteClassLosesOnlyHistoryAndTexts)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build does not let allocations fail";
  }
  mstd::cOutOfBoundsException const e("container", "operation");
  for (unsigned int n = 1;; ++n)
  {
    mstd::cOutOfBoundsException target("x", "y");
    support::cAllocationFault fault(n);
    target = e;
    fault.disarm();
    if (!fault.hasFired())
    {
      EXPECT_EQ("container", toString(target.container()));
      EXPECT_FALSE(target.outOfMemoryCondition());
      break;
    }
    EXPECT_TRUE(target.outOfMemoryCondition()) << n;
  }
}

TEST(cAbstractExceptionFault, AnExceptionWithoutAMessageNeedsNoHeap)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build does not let allocations fail";
  }
  cPlainException const warmUp;
  support::cAllocationFault count(0);
  cPlainException const e("what", "file", 1);
  cRuntimeException const runtime;
  count.disarm();
  EXPECT_EQ(0u, count.count());
}

TEST_F(cAbstractExceptionME, DumpWritesAStackTraceAtTheRaising)
{
  setenv("ME", "dump", 1);
  support::cCaptureOut capture;
  cPlainException const e;
  EXPECT_TRUE(capture.contains("mstd::cAbstractException::cAbstractException(")) << capture.text();
  ASSERT_FALSE(capture.lines().empty());
  EXPECT_EQ("std/cAbstractException", capture.lines()[0].file);
  EXPECT_EQ(nullptr, mpi::system().out.debugFileName());
}

TEST_F(cAbstractExceptionME, CopyingIsNoRaising)
{
  cPlainException const e;
  setenv("ME", "dump", 1);
  support::cCaptureOut capture;
  cPlainException const copy(e);
  EXPECT_EQ("", capture.text());
}

TEST_F(cAbstractExceptionME, AnyOtherValueDoesNothing)
{
  support::cCaptureOut capture;
  for (char const* value : {"", "dumps", "Dump", "brea", "dump break"})
  {
    setenv("ME", value, 1);
    cPlainException const e;
  }
  unsetenv("ME");
  cPlainException const e;
  EXPECT_EQ("", capture.text());
}

namespace
{
volatile sig_atomic_t trapsSeen = 0;
void countTrap(int)
{
  trapsSeen = trapsSeen + 1;
}
} // namespace

TEST_F(cAbstractExceptionME, BreakStopsInTheDebugger)
{
  setenv("ME", "break", 1);
  trapsSeen = 0;
  void (*former)(int) = signal(SIGTRAP, countTrap);
  cPlainException const e;
  signal(SIGTRAP, former);
  EXPECT_EQ(1, trapsSeen);
}

TEST_F(cAbstractExceptionME, ADumpThatFailsDoesNotHideTheException)
{
  class cFailingOut : public mpi::cAbstractOut
  {
  public:
    void printChar(char) override { throw std::runtime_error("disk full"); }
  };
  setenv("ME", "dump", 1);
  cFailingOut out;
  mpi::cAbstractOut* const former = mpi::system().out.linked();
  mpi::system().out.link(&out);
  EXPECT_NO_THROW({ cPlainException const e; });
  mpi::system().out.link(former);
  // The next dump works again.
  support::cCaptureOut capture;
  cPlainException const e;
  EXPECT_NE("", capture.text());
}

TEST(cAbstractExceptionFactory, ItsImplementationsAreDestroyedThroughTheInterface)
{
  class cFactory : public mstd::cAbstractExceptionFactory
  {
  public:
    explicit cFactory(bool& isGone) : mIsGone(isGone) {}
    ~cFactory() override { mIsGone = true; }
    mstd::tAutoPtr<cAbstractException> createException(mstd::cAsciiString const& typeName) const override
    {
      if (typeName == "cBugException")
      {
        return mstd::tAutoPtr<cAbstractException>(new cBugException);
      }
      cSTDExceptions::throwElementNotFound("cFactory", "createException");
    }

  private:
    bool& mIsGone;
  };
  bool isGone = false;
  mstd::cAbstractExceptionFactory const* const factory = new cFactory(isGone);
  EXPECT_EQ("cBugException", toString(factory->createException("cBugException")->typeName()));
  EXPECT_THROW(factory->createException("cNone"), cBugException);
  delete factory;
  EXPECT_TRUE(isGone);
}
