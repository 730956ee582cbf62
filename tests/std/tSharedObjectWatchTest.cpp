#include "std/tSharedObjectWatch.h"

#include "support/cCountingElement.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

using mstd::tSharedObject;
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
};

} // namespace

TEST(tSharedObjectWatch, AWatchOnNothingReadsAsNull)
{
  tSharedObjectWatch<int> const watch;
  EXPECT_EQ(watch.get(), nullptr);
  EXPECT_FALSE(watch.isValid());
  EXPECT_FALSE(watch);
  tSharedObjectWatch<int> const ofEmpty((tSharedObject<int>()));
  EXPECT_FALSE(ofEmpty);
}

TEST(tSharedObjectWatch, DoesNotKeepTheObjectAlive)
{
  tSharedObject<cCountingElement> handle(new cCountingElement(3));
  tSharedObjectWatch<cCountingElement> const watch(handle);
  EXPECT_EQ(watch.get()->value(), 3);
  handle.reset();
  EXPECT_EQ(cCountingElement::alive(), 0u);
  EXPECT_EQ(watch.get(), nullptr);
}

TEST(tSharedObjectWatch, AWatchWhoseLastStrongHandleHasGoneReadsAsNullAndGivesAHandleThatFails)
{
  tSharedObject<cCountingElement> handle(new cCountingElement(3));
  tSharedObjectWatch<cCountingElement> const watch(handle);
  tSharedObjectWatch<cCountingElement> const copy(watch);
  handle.reset();
  EXPECT_EQ(watch.get(), nullptr);
  EXPECT_EQ(copy.get(), nullptr);
  tSharedObject<cCountingElement> const made(watch);
  EXPECT_FALSE(made.isValid());
  EXPECT_EQ(support::bugMessageOf([&] { (*made).value(); }), "Invalid shared object dereference!");
  EXPECT_EQ(support::bugMessageOf([&] { made->value(); }), "Invalid shared object dereference!");
}

TEST(tSharedObjectWatch, AHandleMadeFromItKeepsTheObjectAlive)
{
  tSharedObject<cCountingElement> handle(new cCountingElement(3));
  tSharedObjectWatch<cCountingElement> const watch(handle);
  {
    tSharedObject<cCountingElement> const strong(watch);
    handle.reset();
    EXPECT_EQ(strong->value(), 3);
    EXPECT_TRUE(watch.isValid());
  }
  EXPECT_FALSE(watch.isValid());
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST(tSharedObjectWatch, AHandleOfADerivedClassCanBeWatched)
{
  tSharedObject<cDerived> handle(new cDerived);
  tSharedObjectWatch<cBase> watch(handle);
  EXPECT_EQ(watch.get(), handle.get());
  tSharedObject<cBase> const strong(watch);
  EXPECT_TRUE(strong == handle);
}

TEST(tSharedObjectWatch, AssignResetAndSwapMoveTheWatch)
{
  tSharedObject<int> const one(new int(1));
  tSharedObject<int> const two(new int(2));
  tSharedObjectWatch<int> a(one);
  tSharedObjectWatch<int> b(two);
  swap(a, b);
  EXPECT_EQ(*a.get(), 2);
  a = b;
  EXPECT_TRUE(a == b);
  tSharedObjectWatch<int>& same = a;
  a = same;
  EXPECT_EQ(*a.get(), 1);
  a = two;
  EXPECT_TRUE(a != b);
  a.reset();
  EXPECT_FALSE(a);
  EXPECT_TRUE(a == tSharedObjectWatch<int>());
}

TEST(tSharedObjectWatch, MayBeTheLastOfAll)
{
  tSharedObjectWatch<int>* const watch = new tSharedObjectWatch<int>(tSharedObject<int>(new int(1)));
  EXPECT_FALSE(watch->isValid());
  delete watch; // and with it the control block
}
