#include "std/tSharedObject.h"

#include "std/tList.h"
#include "std/tSharedObjectWatch.h"
#include "std/tVector.h"
#include "support/cCountingElement.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <utility>
#include <vector>

using mstd::tAutoPtr;
using mstd::tAutoPtrType;
using mstd::tSharedObject;
using mstd::tSharedObjectData;
using mstd::tSharedObjectWatch;
using support::cCountingElement;

namespace
{

class cBase
{
public:
  virtual ~cBase() {}
};

class cDerived : public cBase
{
public:
  cCountingElement element;
};

typedef tSharedObject<cCountingElement> cHandle;

// Holds watches of itself, and calls back while it is destroyed.
class cSelfWatching
{
public:
  ~cSelfWatching()
  {
    if (mpFirst != nullptr)
    {
      mbWasNull = mpFirst->get() == nullptr && !*mpFirst;
      mbStrongIsEmpty = !tSharedObject<cSelfWatching>(*mpFirst).isValid();
      delete mpFirst;
    }
  }
  tSharedObjectWatch<cSelfWatching>* mpFirst = nullptr;
  tSharedObjectWatch<cSelfWatching> mSecond;
  static bool mbWasNull;
  static bool mbStrongIsEmpty;
};
bool cSelfWatching::mbWasNull = false;
bool cSelfWatching::mbStrongIsEmpty = false;

// Resets the handle that it is held by while it is destroyed.
class cResetsHandle
{
public:
  explicit cResetsHandle(tSharedObject<cResetsHandle>& handle) : mHandle(handle) {}
  ~cResetsHandle()
  {
    seenByHandle = mHandle.get();
    mHandle.reset();
    mHandle = tSharedObject<cResetsHandle>();
  }
  static cResetsHandle* seenByHandle;

private:
  tSharedObject<cResetsHandle>& mHandle;
};
cResetsHandle* cResetsHandle::seenByHandle = nullptr;

class tSharedObjectTest : public ::testing::Test
{
protected:
  void SetUp() override { cCountingElement::reset(); }
  void TearDown() override
  {
    EXPECT_EQ(cCountingElement::alive(), 0u);
    EXPECT_EQ(cCountingElement::errors(), 0u);
  }
};

std::string const wrongDereference = "Invalid shared object dereference!";

} // namespace

TEST_F(tSharedObjectTest, AnEmptyHandleIsInvalidAndFailsOnDereference)
{
  cHandle const handle;
  EXPECT_EQ(handle.get(), nullptr);
  EXPECT_FALSE(handle.isValid());
  EXPECT_FALSE(handle);
  EXPECT_EQ(support::bugMessageOf([&] { (*handle).value(); }), wrongDereference);
  EXPECT_EQ(support::bugMessageOf([&] { handle->value(); }), wrongDereference);
}

TEST_F(tSharedObjectTest, TheThrowFunctionRaisesABugWithATranslatableText)
{
  try
  {
    tSharedObjectData::throwWrongSharedObjectDereference();
    ADD_FAILURE();
  }
  catch (mstd::cBugException const& e)
  {
    EXPECT_TRUE(e.liMessage()->isTranslatable());
    EXPECT_STREQ(e.liMessage()->key().c_str(), wrongDereference.c_str());
  }
}

TEST_F(tSharedObjectTest, TheLastStrongHandleDeletesTheObject)
{
  cHandle first(new cCountingElement(4));
  {
    cHandle const second(first);
    cHandle third;
    third = second;
    EXPECT_EQ(third->value(), 4);
    EXPECT_EQ((*third).value(), 4);
    first.reset();
    EXPECT_FALSE(first);
    EXPECT_EQ(cCountingElement::alive(), 1u);
  }
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST_F(tSharedObjectTest, ABorrowedObjectIsNeverDeleted)
{
  cCountingElement element(1);
  tSharedObjectWatch<cCountingElement> watch;
  {
    cHandle const handle(&element, false);
    watch = handle;
    EXPECT_EQ(watch.get(), &element);
  }
  EXPECT_EQ(cCountingElement::alive(), 1u);
  EXPECT_EQ(watch.get(), nullptr);
}

TEST_F(tSharedObjectTest, AnObjectIsDeletedThroughTheVirtualDestructor)
{
  tSharedObject<cBase> const handle(new cDerived);
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tSharedObjectTest, AHandleOfADerivedClassConvertsAndShares)
{
  tSharedObject<cDerived> derived(new cDerived);
  tSharedObject<cBase> base(derived);
  tSharedObject<cBase const> constant;
  constant = base;
  EXPECT_TRUE(base == derived);
  EXPECT_TRUE(constant == base);
  derived.reset();
  base.reset();
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tSharedObjectTest, ANullPointerGivesAnEmptyHandle)
{
  cHandle const handle(static_cast<cCountingElement*>(nullptr));
  EXPECT_FALSE(handle);
  cHandle const copy(handle);
  EXPECT_FALSE(copy);
  cHandle const fromEmpty((tAutoPtr<cCountingElement>()));
  EXPECT_FALSE(fromEmpty);
}

TEST_F(tSharedObjectTest, AnAutoPointerIsTakenOverWithItsType)
{
  tAutoPtr<cCountingElement> owner(new cCountingElement(1));
  cHandle const owning(owner);
  EXPECT_FALSE(owner);
  EXPECT_TRUE(owning);
  cCountingElement element(2);
  {
    cHandle const borrowing(tAutoPtr<cCountingElement>(&element, tAutoPtrType::NotOwned));
    EXPECT_EQ(borrowing.get(), &element);
  }
  EXPECT_EQ(cCountingElement::alive(), 2u);
}

TEST_F(tSharedObjectTest, AnArrayCannotBeShared)
{
  tAutoPtr<cCountingElement> array(new cCountingElement[2], tAutoPtrType::Array);
  support::expectAssertion([&] { cHandle const handle(array); }, "pObject.type() != tAutoPtrType::Array",
                           "std/tSharedObject");
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST_F(tSharedObjectTest, AssignmentLetsTheOldObjectGo)
{
  cHandle handle(new cCountingElement(1));
  handle = cHandle(new cCountingElement(2));
  EXPECT_EQ(cCountingElement::destroyed(), std::vector<int>{1});
  cHandle& same = handle;
  handle = same;
  EXPECT_EQ(handle->value(), 2);
  handle = std::move(same);
  EXPECT_EQ(handle->value(), 2);
}

TEST_F(tSharedObjectTest, MovingLeavesTheSourceEmptyAndCountsNothing)
{
  cHandle source(new cCountingElement(1));
  cHandle target(std::move(source));
  EXPECT_FALSE(source);
  EXPECT_EQ(target->value(), 1);
  target.reset();
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST_F(tSharedObjectTest, SwapExchangesObjects)
{
  cHandle a(new cCountingElement(1));
  cHandle b;
  swap(a, b);
  EXPECT_FALSE(a);
  EXPECT_EQ(b->value(), 1);
}

TEST_F(tSharedObjectTest, HandlesCompareByObject)
{
  cHandle const a(new cCountingElement(1));
  cHandle const b(new cCountingElement(1));
  cHandle const c(a);
  EXPECT_TRUE(a == c);
  EXPECT_TRUE(a != b);
  EXPECT_TRUE(cHandle() == cHandle());
  EXPECT_TRUE(a != cHandle());
}

TEST_F(tSharedObjectTest, TheObjectsDestructorMayReleaseWatchesOfItself)
{
  cSelfWatching::mbWasNull = false;
  cSelfWatching::mbStrongIsEmpty = false;
  tSharedObject<cSelfWatching> handle(new cSelfWatching);
  handle->mpFirst = new tSharedObjectWatch<cSelfWatching>(handle);
  handle->mSecond = handle;
  handle.reset();
  EXPECT_TRUE(cSelfWatching::mbWasNull);
  EXPECT_TRUE(cSelfWatching::mbStrongIsEmpty);
}

TEST_F(tSharedObjectTest, TheObjectsDestructorMayResetTheVeryHandle)
{
  tSharedObject<cResetsHandle> handle;
  handle = tSharedObject<cResetsHandle>(new cResetsHandle(handle));
  handle.reset();
  EXPECT_EQ(cResetsHandle::seenByHandle, nullptr);
  EXPECT_FALSE(handle);
}

TEST_F(tSharedObjectTest, AnEmptyHandleSwappedIntoAListReleasesAtOnce)
{
  mstd::tList<cHandle> list;
  list.append(cHandle(new cCountingElement(1)));
  cHandle none;
  list.begin()->swap(none);
  list.begin().eraseLater();
  none.reset();
  EXPECT_EQ(cCountingElement::alive(), 0u);
  EXPECT_FALSE(list.first().isValid());
  list.eraseMarked();
  EXPECT_TRUE(list.empty());
}

TEST_F(tSharedObjectTest, TheControlBlockCountsStrongHandlesTwice)
{
  tSharedObjectData* const data = new tSharedObjectData(true);
  EXPECT_TRUE(data->isLive());
  EXPECT_EQ(data->strongCount(), 1u);
  EXPECT_EQ(data->totalCount(), 1u);
  data->addStrong();
  data->addWatch();
  EXPECT_EQ(data->strongCount(), 2u);
  EXPECT_EQ(data->totalCount(), 3u);
  EXPECT_FALSE(data->releaseStrong());
  data->releaseTotal();
  EXPECT_TRUE(data->releaseStrong());
  EXPECT_FALSE(data->isLive());
  EXPECT_FALSE(data->releaseStrong());
  EXPECT_EQ(data->strongCount(), 0u);
  data->releaseTotal();
  EXPECT_EQ(data->totalCount(), 1u);
  data->releaseTotal(); // the block goes
  tSharedObjectData* const borrowed = new tSharedObjectData(false);
  EXPECT_FALSE(borrowed->releaseStrong());
  borrowed->releaseTotal();
}

TEST_F(tSharedObjectTest, RandomHandlesAndWatchesAgreeWithCounts)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  std::vector<cHandle> handles(20);
  std::vector<tSharedObjectWatch<cCountingElement>> watches(20);
  std::vector<int> handleModel(20, -1); // the value of the object, or -1
  std::vector<int> watchModel(20, -1);
  int next = 0;
  for (int i = 0; i < 50000; ++i)
  {
    std::size_t const a = random() % 20;
    std::size_t const b = random() % 20;
    switch (random() % 7)
    {
    case 0:
      handles[a] = cHandle(new cCountingElement(next));
      handleModel[a] = next++;
      break;
    case 1:
      handles[a] = handles[b];
      handleModel[a] = handleModel[b];
      break;
    case 2:
      handles[a].reset();
      handleModel[a] = -1;
      break;
    case 3:
      watches[a] = handles[b];
      watchModel[a] = handleModel[b];
      break;
    case 4:
      watches[a] = watches[b];
      watchModel[a] = watchModel[b];
      break;
    case 5:
      handles[a] = cHandle(watches[b]);
      handleModel[a] = watchModel[b];
      break;
    default:
      swap(handles[a], handles[b]);
      std::swap(handleModel[a], handleModel[b]);
      break;
    }
    std::map<int, int> living;
    for (int const value : handleModel)
    {
      ++living[value];
    }
    living.erase(-1);
    for (int& value : watchModel)
    {
      value = living.count(value) == 0 ? -1 : value;
    }
    ASSERT_EQ(cCountingElement::alive(), living.size());
    for (std::size_t j = 0; j < 20; ++j)
    {
      ASSERT_EQ(handles[j] ? handles[j]->value() : -1, handleModel[j]);
      ASSERT_EQ(watches[j] ? watches[j].get()->value() : -1, watchModel[j]);
    }
  }
}
