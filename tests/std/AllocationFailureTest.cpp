// Each scenario is run again and again, with the first allocation failing, then the second, and so on until it needs
// no more of them. A failure has to surface as std::bad_alloc unless the scenario says otherwise; afterwards every
// object has to be as it was, and to be of use, and nothing may be left over.

#include "mp/cLocker.h"
#include "pi/cFDAIOData.h"
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "pi/schedule.h"
#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"
#include "std/cAsciiString.h"
#include "std/cAsciiStringTokenizer.h"
#include "std/cBugException.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"
#include "std/cTimer.h"
#include "std/tArray.h"
#include "std/tAutoPtr.h"
#include "std/tHash.h"
#include "std/tList.h"
#include "std/tParentWatch.h"
#include "std/tPtrList.h"
#include "std/tPtrVector.h"
#include "std/tSharedObject.h"
#include "std/tSharedObjectWatch.h"
#include "std/tStack.h"
#include "std/tVector.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/cFakeProcessor.h"
#include "ucs/cLIItem.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>
#include <new>
#include <string>

using support::cAllocationFault;
using support::cBlockBalance;

namespace
{

struct cAttempt
{
  bool isRefused; // an allocation failed
  bool hasThrown; // std::bad_alloc came out
};

/// Runs `act` with its `n`-th allocation failing; 0 for none.
template <class Act>
cAttempt attempt(unsigned int n, Act const& act)
{
  cAllocationFault fault(n);
  bool hasThrown = false;
  try
  {
    act();
  }
  catch (std::bad_alloc const&)
  {
    hasThrown = true;
  }
  fault.disarm();
  return cAttempt{fault.hasFired(), hasThrown};
}

/// Runs `scenario(n)`, which tells whether an allocation failed, for n = 1, 2, ... until none does. It builds its own
/// objects, and is to leave nothing behind. Every failing run is followed by one that succeeds on the same thread, so
/// that nothing is stuck. Returns the number of allocations.
template <class Scenario>
unsigned int forEachAllocation(Scenario const& scenario)
{
  scenario(0); // what is made once and stays is made here
  for (unsigned int n = 1; n < 10000; ++n)
  {
    SCOPED_TRACE("allocation " + std::to_string(n));
    cBlockBalance const balance;
    bool const isRefused = scenario(n);
    EXPECT_EQ(balance.blocks(), 0) << "blocks are left over";
    if (!isRefused || ::testing::Test::HasFailure())
    {
      return n - 1;
    }
  }
  ADD_FAILURE() << "no end of allocations";
  return 0;
}

enum Refusal
{
  Throws,         ///< every refused allocation surfaces as std::bad_alloc
  MayDoWithoutOne ///< some are not needed: a pool that is to shrink stays, a stack trace shows a raw name
};

/// forEachAllocation() for scenarios where the only failure is std::bad_alloc. `scenario(act)` hands its action to
/// `act`, which tells whether it went through.
template <class Scenario>
void everyFailureIsBadAlloc(Scenario const& scenario, Refusal refusal = Throws)
{
  unsigned int const count = forEachAllocation([&](unsigned int n) {
    cAttempt result{false, false};
    scenario([&](auto const& action) {
      result = attempt(n, action);
      return !result.hasThrown;
    });
    EXPECT_TRUE(result.hasThrown == result.isRefused || (refusal == MayDoWithoutOne && !result.hasThrown));
    return result.isRefused;
  });
  // A sanitizer may hide malloc from us, but not that there is nothing to test.
  EXPECT_TRUE(count > 0 || !cAllocationFault::seesMalloc()) << "the scenario allocates nothing";
}

// Counts its lives, and needs no memory for that.
class cLife
{
public:
  cLife() { ++alive; }
  cLife(cLife const&) { ++alive; }
  ~cLife() { --alive; }
  static int alive;
};
int cLife::alive = 0;

class cReceiver : public mrmi::cConnectable
{
public:
  void sltCount() { ++count; }
  void sltText(mstd::cAsciiString const&) { ++count; }
  int count = 0;
};

// A queue that never waits.
class cQueue : public mpi::cWorkQueue
{
public:
  cQueue() { setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new support::cFakeProcessor)); }
};

unsigned int liveJobs(mpi::cWorkQueue const& queue)
{
  unsigned int count = 0;
  for (mstd::tSharedObject<mpi::cWork> const& job : queue.jobs())
  {
    count += job.isValid();
  }
  return count;
}

mucs::cString text(char const* s)
{
  return mucs::cString(s);
}

} // namespace

TEST(AllocationFailure, TheFaultHitsTheLibraryToo)
{
  if (!cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this sanitizer hides all allocations";
  }
  EXPECT_TRUE(attempt(1, [] { ::operator delete(::operator new(8)); }).hasThrown);
  EXPECT_TRUE(attempt(1, [] { mpi::cWorkQueue().createJob(); }).hasThrown);
  EXPECT_FALSE(attempt(0, [] { mpi::cWorkQueue().createJob(); }).isRefused);
}

TEST(AllocationFailure, TheBalanceSeesALeak)
{
  if (!cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "the sanitizer looks for leaks itself";
  }
  cBlockBalance const balance;
  void* const leak = ::operator new(8);
  long long const with = balance.blocks();
  ::operator delete(leak);
  long long const without = balance.blocks();
  EXPECT_EQ(with, 1);
  EXPECT_EQ(without, 0);
}

TEST(AllocationFailure, AnArrayThatCannotGrowKeepsItsContents)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tArray<unsigned int> array;
    for (unsigned int i = 0; i < 32; ++i)
    {
      array.append(i);
    }
    bool const isDone = act([&] {
      for (unsigned int i = 32; i < 400; ++i)
      {
        array.append(i);
      }
    });
    EXPECT_EQ(isDone, array.length() == 400);
    ASSERT_GE(array.length(), 32u);
    for (unsigned int i = 0; i < array.length(); ++i)
    {
      ASSERT_EQ(array.at(i), i);
    }
    array.append(7u);
    EXPECT_EQ(array.at(array.length() - 1), 7u);
  });
}

TEST(AllocationFailure, AnArrayThatCannotTakeAPartOrACopyStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tArray<char> array("0123456789");
    std::string const long100(100, 'x');
    bool const isDone = act([&] {
      mstd::tArray<char> copy(array);
      copy.append(long100.c_str());
      array.swap(copy);
    });
    EXPECT_EQ(array.length(), isDone ? 110u : 10u);
    EXPECT_EQ(array.at(9), '9');
  });
}

TEST(AllocationFailure, AnArrayThatCannotBeSizedIsEmptyAndWhole)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tArray<char> array("0123456789");
    bool const isDone = act([&] { array.setSize(5000); });
    EXPECT_EQ(array.length(), isDone ? 5000u : 0u);
    array.append('a');
    EXPECT_EQ(array.at(array.length() - 1), 'a');
  });
}

TEST(AllocationFailure, AStringThatCannotGrowStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::cAsciiString string("begin ");
    std::string const more(200, 'm');
    bool const isDone = act([&] { string += more.c_str(); });
    EXPECT_EQ(std::string(string.c_str()), isDone ? "begin " + more : "begin ");
    string += "end";
    EXPECT_EQ(string.length(), isDone ? 209u : 9u);
  });
}

TEST(AllocationFailure, ACodePointStringThatCannotBeReadStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mucs::cString string("before");
    mstd::tArray<char> const bytes("gr\xC3\xBC\xC3\x9F dich, du sch\xC3\xB6ne, lange und noch viel laengere Zeile");
    bool const isDone = act([&] {
      mucs::cString other(string);
      other += other;
      string.fromUTF8(mstd::tConstArrayRef<char>(bytes));
    });
    EXPECT_EQ(string == "before", !isDone);
  });
}

TEST(AllocationFailure, NumbersAreWrittenWholeOrNotAtAll)
{
  mstd::cNumberConversionFormat const format(10);
  everyFailureIsBadAlloc([&](auto const& act) {
    mstd::cAsciiString target("more than fifty characters stand before the number: ");
    std::string const before(target.c_str());
    bool const isDone = act([&] { mstd::cNumberConversion::toString(target, 1234567890123456789ll, format); });
    EXPECT_EQ(std::string(target.c_str()), isDone ? before + "1234567890123456789" : before);
  });
}

TEST(AllocationFailure, AVectorThatCannotGrowKeepsLengthCapacityAndAddresses)
{
  for (unsigned int const length : {0u, 5u, 10u, 20u, 40u, 60u, 120u})
  {
    SCOPED_TRACE("length " + std::to_string(length));
    everyFailureIsBadAlloc([length](auto const& act) {
      mstd::tVector<int> vector;
      for (unsigned int i = 0; i < length; ++i)
      {
        vector.append(static_cast<int>(i));
      }
      unsigned int const capacity = vector.capacity();
      int* const first = length == 0 ? nullptr : &vector.at(0);
      bool const isDone = act([&] { vector.insert(0, -1); });
      unsigned int const added = isDone ? 1 : 0;
      EXPECT_EQ(vector.length(), length + added);
      EXPECT_TRUE(isDone || vector.capacity() == capacity);
      for (unsigned int i = 0; i < length; ++i)
      {
        EXPECT_EQ(vector.at(i + added), static_cast<int>(i));
      }
      EXPECT_TRUE(length == 0 || &vector.at(added) == first);
    });
  }
}

TEST(AllocationFailure, AVectorThatCannotBeCopiedOrResizedStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tVector<int> target;
    target.append(77);
    mstd::tVector<int> numbers;
    numbers.append(1);
    numbers.append(2);
    bool const isDone = act([&] { target = numbers; });
    EXPECT_EQ(target.length(), isDone ? 2u : 1u);
    EXPECT_EQ(target.at(0), isDone ? 1 : 77);
  });
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tVector<int> vector;
    vector.append(1);
    bool const isDone = act([&] { vector.resizePool(1000, true); });
    EXPECT_EQ(vector.capacity(), isDone ? 1000u : 10u);
    EXPECT_EQ(vector.at(0), 1);
  });
}

TEST(AllocationFailure, WhatATransferCouldNotPutIntoAContainerStaysWithItsOwner)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tVector<mstd::tAutoPtr<int>> vector;
    mstd::tAutoPtr<int> const owner(new int(1));
    bool const isDone = act([&] { vector.append(owner); });
    EXPECT_EQ(static_cast<bool>(owner), !isDone);
  });
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tList<mstd::tAutoPtr<int>> list;
    mstd::tAutoPtr<int> const owner(new int(1));
    bool const isDone = act([&] { list.append(owner); });
    EXPECT_EQ(static_cast<bool>(owner), !isDone);
  });
}

TEST(AllocationFailure, PointerContainersReleaseWhatTheyCouldNotTakeOver)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tPtrVector<mucs::cString> vector;
    mstd::tAutoPtr<mucs::cString> object(new mucs::cString("a"));
    bool const isDone = act([&] { vector.append(object); });
    EXPECT_EQ(vector.length(), isDone ? 1u : 0u);
    EXPECT_FALSE(object);
  });
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tPtrList<mucs::cString> list(mstd::tPtrList<mucs::cString>::Object);
    mstd::tAutoPtr<mucs::cString> object(new mucs::cString("a"));
    bool const isDone = act([&] { list.append(object); });
    EXPECT_EQ(list.empty(), !isDone);
  });
}

TEST(AllocationFailure, AVectorOfPointersThatCannotBeResizedStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tPtrVector<int> vector;
    vector.setStep(3);
    vector.append(new int(1));
    vector.append(new int(2));
    bool const isDone = act([&] { vector.resize(14); });
    EXPECT_EQ(vector.length(), isDone ? 14u : 2u);
    EXPECT_EQ(vector.step(), isDone ? 10u : 3u);
    EXPECT_EQ(*vector.at(1), 2);
  });
}

TEST(AllocationFailure, AListThatCannotGrowStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tList<mucs::cString> list;
    list.append(text("a"));
    mucs::cString const value("b");
    bool const isDone = act([&] { list.insert(list.begin(), value); });
    EXPECT_EQ(list.length(), isDone ? 2u : 1u);
    EXPECT_TRUE(list.last() == "a");
    EXPECT_EQ(list.first() == "b", isDone);
  });
}

TEST(AllocationFailure, AListThatCannotTakeAllOfAnotherTakesNothing)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tList<mucs::cString> list;
    list.append(text("a"));
    list.append(text("b"));
    bool const isDone = act([&] { list.append_net(list); });
    EXPECT_EQ(list.length(), isDone ? 4u : 2u);
    mstd::tList<mucs::cString> const copy(list);
    EXPECT_EQ(copy.length(), list.length());
  });
}

TEST(AllocationFailure, AHashThatCannotTakeAKeyStaysAsItWas)
{
  typedef mstd::tHash<mucs::cString, mucs::cString, mstd::tArrayHashTraits<4u>> cSmallHash;
  everyFailureIsBadAlloc([](auto const& act) {
    cSmallHash hash;
    for (int i = 0; i < 33; ++i) // so that a bucket's further places grow
    {
      hash[text(std::to_string(i).c_str())] = text("value");
    }
    mucs::cString const key("new");
    bool const isDone = act([&] {
      cSmallHash copy(hash);
      copy[key];
      hash.swap(copy);
    });
    EXPECT_EQ(hash.length(), isDone ? 34u : 33u);
    EXPECT_EQ(hash.has(key) != nullptr, isDone);
    for (int i = 0; i < 33; ++i)
    {
      EXPECT_NE(hash.has(text(std::to_string(i).c_str())), nullptr);
    }
  });
}

TEST(AllocationFailure, AHandleThatCannotBeMadeDeletesItsObject)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tAutoPtr<cLife> object(new cLife);
    act([&] {
      mstd::tSharedObject<cLife> const handle(object);
      mstd::tSharedObjectWatch<cLife> const watch(handle);
    });
    EXPECT_EQ(cLife::alive, 0);
  });
  everyFailureIsBadAlloc([](auto const& act) {
    cLife* const object = new cLife;
    act([&] { mstd::tSharedObject<cLife> const handle(object); });
    EXPECT_EQ(cLife::alive, 0);
  });
}

TEST(AllocationFailure, AWatchThatCannotMoveStaysWithItsParent)
{
  everyFailureIsBadAlloc([](auto const& act) {
    int object = 0;
    mstd::tParentWatch<int> oldParent(&object), newParent(&object), child(&object);
    child.setParent(&oldParent);
    bool const isDone = act([&] { child.setParent(&newParent); });
    EXPECT_EQ(child.parent(), isDone ? &newParent : &oldParent);
    EXPECT_EQ(oldParent.children().length(), isDone ? 0u : 1u);
    EXPECT_EQ(newParent.children().length(), isDone ? 1u : 0u);
  });
}

TEST(AllocationFailure, AStackThatCannotGrowStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::tStack<mucs::cString> stack;
    stack.push(text("a"));
    mucs::cString const value("b");
    bool const isDone = act([&] { stack.push(value); });
    EXPECT_EQ(stack.length(), isDone ? 2u : 1u);
    EXPECT_TRUE(stack.top() == (isDone ? "b" : "a"));
  });
}

TEST(AllocationFailure, TokensAreReadOrTheReaderStaysWhole)
{
  everyFailureIsBadAlloc(
      [](auto const& act) {
        mstd::cAsciiString const input("first \"second, quoted\" third");
        unsigned int count = 0;
        bool const isDone = act([&] {
          mstd::cAsciiStringTokenizerContext context;
          context.addSeparator(mstd::cAsciiString(" "));
          context.addKey(mstd::cAsciiString(","), 2);
          mstd::cAsciiStringTokenizer tokenizer(input, &context);
          mstd::cAsciiString token;
          unsigned int id = 0;
          while (tokenizer.getNextToken(token, id))
          {
            ++count;
          }
        });
        EXPECT_TRUE(!isDone || count >= 3);
      },
      MayDoWithoutOne);
}

TEST(AllocationFailure, AMessageThatCannotTakeAParameterStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mucs::cLIMessage message;
    message << "$MTR$%name% at %line%"
            << "somewhere";
    bool const isDone = act([&] { message << 12345678; });
    EXPECT_EQ(message.items().length(), isDone ? 2u : 1u);
    mstd::cAsciiString wording;
    message.untranslated(wording);
    EXPECT_STREQ(wording.c_str(), isDone ? "somewhere at 12345678" : "somewhere at ???");
  });
}

TEST(AllocationFailure, AMessageIsBuiltCopiedAndReadOrNothingIsLeft)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mstd::cAsciiString wording("before");
    bool const isDone = act([&] {
      mucs::cLIMessage message;
      message << "$MTR$%name% at %line%, a text that is too long to stand in any buffer of a string, %more%"
              << "somewhere" << 3 << text("else");
      mucs::cLIMessage copy(message);
      copy.merge(message);
      mucs::cLIMessage assigned;
      assigned = copy;
      assigned.untranslated(wording);
    });
    EXPECT_TRUE(!isDone || std::string(wording.c_str()).find("somewhere at 3") == 0);
  });
}

TEST(AllocationFailure, CopyingAnExceptionNeverFails)
{
  unsigned int const count = forEachAllocation([](unsigned int n) {
    mstd::cRuntimeException original(mucs::cLIMessage() << "$MTR$newest %a%"
                                                        << "one",
                                     "file", 1);
    original.link(mstd::cBugException(mucs::cLIMessage() << "$MTR$older %a%"
                                                         << "two",
                                      "file", 2));
    original.link(mstd::cOutOfBoundsException("container", "operation"));
    cAttempt result{false, false};
    {
      mstd::cRuntimeException target(mucs::cLIMessage() << "$MTR$replaced", "file", 3);
      result = attempt(n, [&] {
        mstd::cRuntimeException const copy(original);
        EXPECT_STREQ(copy.sourceFileName(), "file");
        unsigned int length = 0;
        for (mstd::cAbstractException const* e = &copy; e != nullptr; e = e->history())
        {
          ++length;
        }
        // Lost or whole: what is missing shows in the mark.
        EXPECT_TRUE(length == 3 || copy.hasOutOfMemoryCondition());
        target = copy;
      });
      EXPECT_FALSE(result.hasThrown);
      EXPECT_EQ(target.hasOutOfMemoryCondition(), result.isRefused);
      mstd::cAsciiString wording;
      target.toMessage().untranslated(wording);
      EXPECT_STREQ(wording.c_str(), result.isRefused ? "Out of memory!" : "newest one");
    }
    EXPECT_FALSE(original.hasOutOfMemoryCondition());
    EXPECT_NE(original.has(mstd::cAsciiString("cOutOfBoundsException")), nullptr);
    return result.isRefused;
  });
  EXPECT_TRUE(count > 0 || !cAllocationFault::seesMalloc());
}

TEST(AllocationFailure, AnExceptionThrownAndCaughtByValueKeepsItsType)
{
  forEachAllocation([](unsigned int n) {
    mstd::cRuntimeException original(mucs::cLIMessage() << "$MTR$newest %a%"
                                                        << "one",
                                     "file", 1);
    original.link(mstd::cBugException(mucs::cLIMessage() << "$MTR$older %a%"
                                                         << "two",
                                      "file", 2));
    bool isCaught = false;
    cAttempt const result = attempt(n, [&] {
      try
      {
        throw mstd::cRuntimeException(original);
      }
      catch (mstd::cRuntimeException const& e)
      {
        mstd::cRuntimeException const copy(e);
        isCaught = copy.sourceFileLine() == 1;
      }
    });
    EXPECT_TRUE(isCaught);
    EXPECT_FALSE(result.hasThrown);
    return result.isRefused;
  });
}

TEST(AllocationFailure, AFailureThatCannotBeToldIsOutOfMemory)
{
  // The message, and the stack trace on the debug output, need memory; without it, std::bad_alloc tells so.
  forEachAllocation([](unsigned int n) {
    support::cCaptureOut capture;
    mstd::tVector<int> vector;
    mstd::tList<int> list;
    bool isTold = false;
    cAttempt const result = attempt(n, [&] {
      try
      {
        list.first();
      }
      catch (mstd::cOutOfBoundsException const&)
      {
        isTold = true;
      }
    });
    EXPECT_NE(isTold, result.hasThrown);
    return result.isRefused;
  });
  forEachAllocation([](unsigned int n) {
    support::cCaptureOut capture;
    mstd::tVector<int> vector;
    bool isTold = false;
    cAttempt const result = attempt(n, [&] {
      try
      {
        vector.at(3);
      }
      catch (mstd::cOutOfRangeException const&)
      {
        isTold = true;
      }
    });
    EXPECT_NE(isTold, result.hasThrown);
    return result.isRefused;
  });
}

TEST(AllocationFailure, ASignalThatCannotBeConnectedStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    cReceiver receiver;
    cReceiver other;
    mrmi::localSignal0<piVoid> signal;
    for (int i = 0; i < 3; ++i)
    {
      signal.connect(mrmi::cDirectLocalSlotCall0(receiver, &cReceiver::sltCount));
    }
    bool const isDone = act([&] {
      signal.connect(mrmi::cDirectLocalSlotCall0(other, &cReceiver::sltCount), mrmi::cAbstractSignal::Prepend);
    });
    signal();
    EXPECT_EQ(receiver.count, 3);
    EXPECT_EQ(other.count, isDone ? 1 : 0);
    signal.connect(mrmi::cDirectLocalSlotCall0(other, &cReceiver::sltCount));
    signal.disconnect(receiver);
    signal();
    EXPECT_EQ(receiver.count, 3);
    EXPECT_EQ(other.count, isDone ? 3 : 1);
  });
}

TEST(AllocationFailure, InvokingAndDisconnectingNeedNoMemory)
{
  cReceiver receiver;
  cReceiver other;
  mrmi::localSignal1<piVoid, mstd::cAsciiString const&> signal;
  signal.connect(mrmi::cDirectLocalSlotCall1(receiver, &cReceiver::sltText));
  signal.connect(mrmi::cDirectLocalSlotCall1(other, &cReceiver::sltText));
  mstd::cAsciiString const argument("text");
  {
    cAllocationFault const fault(1, true);
    signal(argument);
    signal.disconnect(receiver);
    signal(argument);
    EXPECT_FALSE(fault.hasFired());
  }
  EXPECT_EQ(receiver.count, 1);
  EXPECT_EQ(other.count, 2);
}

TEST(AllocationFailure, AReceiverMayGoWithoutMemory)
{
  mrmi::localSignal0<piVoid> signal;
  mstd::tAutoPtr<cReceiver> receiver(new cReceiver);
  for (int i = 0; i < 20; ++i)
  {
    signal.connect(mrmi::cDirectLocalSlotCall0(*receiver, &cReceiver::sltCount));
  }
  {
    cAllocationFault const fault(1, true);
    receiver.reinit(nullptr);
    EXPECT_FALSE(fault.hasFired());
  }
  EXPECT_FALSE(signal.isConnected());
}

TEST(AllocationFailure, AQueueThatCannotTakeAJobStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mpi::cWork borrowed;
    cQueue queue;
    mstd::tSharedObject<mpi::cWork> const first(queue.createJob());
    bool const isDone = act([&] { queue.addJob(borrowed); });
    EXPECT_EQ(liveJobs(queue), isDone ? 2u : 1u);
    queue.addJob(borrowed);
    EXPECT_EQ(liveJobs(queue), 2u);
    queue.removeJob(borrowed);
    queue.updateTimer(true, nullptr);
    EXPECT_EQ(liveJobs(queue), 1u);
  });
}

TEST(AllocationFailure, AQueueThatCannotMakeOrShareAJobStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    cQueue queue;
    mstd::tSharedObject<mpi::cWork> const first(queue.createJob());
    bool const isDone = act([&] { queue.createJob(); });
    EXPECT_EQ(liveJobs(queue), isDone ? 2u : 1u);
    queue.updateTimer(true, nullptr);
    queue.clear();
    EXPECT_EQ(liveJobs(queue), 0u);
  });
  everyFailureIsBadAlloc([](auto const& act) {
    cQueue queue;
    mstd::tSharedObject<mpi::cWork> const job(new mpi::cWork);
    bool const isDone = act([&] { queue.addJob(job); });
    EXPECT_EQ(liveJobs(queue), isDone ? 1u : 0u);
    queue.addJob(job);
    EXPECT_EQ(liveJobs(queue), 1u);
  });
}

TEST(AllocationFailure, AScheduledCallRunsOnceOrWasRefused)
{
  // The system's queue lives on, and keeps what it has grown to: so the blocks are not counted here.
  cReceiver receiver;
  mrmi::cDirectLocalSlotCall0<cReceiver, piVoid> const call(receiver, &cReceiver::sltCount);
  mpi::cWorkQueue& queue = mpi::system().wq;
  for (unsigned int n = 1; n < 1000; ++n)
  {
    receiver.count = 0;
    unsigned int const before = liveJobs(queue);
    cAttempt const result = attempt(n, [&] { mpi::schedule(call, 0, "job of the allocation test"); });
    ASSERT_EQ(result.hasThrown, result.isRefused);
    // A refused job must not run, and not stay.
    EXPECT_EQ(liveJobs(queue), result.hasThrown ? before : before + 1);
    queue.updateTimer(true, nullptr);
    queue.updateTimer(true, nullptr);
    EXPECT_EQ(receiver.count, result.hasThrown ? 0 : 1);
    EXPECT_EQ(liveJobs(queue), before);
    if (!result.isRefused)
    {
      return;
    }
  }
  ADD_FAILURE() << "no end of allocations";
}

TEST(AllocationFailure, ATurnThatLacksMemoryLosesNoWork)
{
  forEachAllocation([](unsigned int n) {
    cReceiver receiver;
    cQueue queue;
    mstd::tSharedObject<mpi::cWork> const work(queue.createJob());
    work->sigAction.connect(mrmi::cDirectLocalSlotCall0(receiver, &cReceiver::sltCount));
    work->start();
    cAttempt const result = attempt(n, [&] { queue.updateTimer(true, nullptr); });
    if (result.hasThrown)
    {
      queue.updateTimer(true, nullptr);
    }
    EXPECT_EQ(receiver.count, 1);
    return result.isRefused;
  });
}

TEST(AllocationFailure, WorkThatCannotTakeItsDescriptorsStaysAsItWas)
{
  everyFailureIsBadAlloc([](auto const& act) {
    mpi::cWork work;
    bool const isDone = act([&] {
      mstd::tAutoPtr<mpi::cAbstractAIOData> data(new mpi::cFDAIOData);
      static_cast<mpi::cFDAIOData&>(*data).addFd(0, 1);
      work.setAIOData(data);
    });
    EXPECT_EQ(work.hasAIOData() != nullptr, isDone);
  });
}

TEST(AllocationFailure, WorkGivesOutItsSignalsOrStaysAsItWas)
{
  everyFailureIsBadAlloc(
      [](auto const& act) {
        mpi::cWork parent;
        mpi::cWork work;
        cReceiver receiver;
        bool const isDone = act([&] {
          work.setName(mstd::cAsciiString("a name that is longer than any buffer inside of a string could be, surely"));
          work.sigActionError();
          work.sigDestroyed();
          work.enableDebug();
          work.reparent(&parent);
        });
        EXPECT_EQ(work.parent() == &parent, isDone);
        work.reparent(&parent);
        EXPECT_EQ(work.parent(), &parent);
      },
      MayDoWithoutOne);
}

TEST(AllocationFailure, ATimerIsSetOrWasRefused)
{
  for (unsigned int n = 1; n < 1000; ++n)
  {
    mstd::cTimer timer;
    cAttempt const result = attempt(n, [&] { timer.setSingleShot(100000); });
    ASSERT_EQ(result.hasThrown, result.isRefused);
    EXPECT_FALSE(timer.isElapsed());
    timer.setSingleShot(100000);
    if (!result.isRefused)
    {
      return;
    }
  }
  ADD_FAILURE() << "no end of allocations";
}

TEST(AllocationFailure, ALockerIsMadeOrWasRefused)
{
  everyFailureIsBadAlloc([](auto const& act) {
    act([] {
      mp::cLocker locker;
      mp::cLocker::cLock const lock(&locker);
    });
  });
}
