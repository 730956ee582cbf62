#include "std/tAutoPtr.h"

#include "support/cCountingElement.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

using mstd::tAutoPtr;
using mstd::tAutoPtrType;
using support::cCountingElement;

namespace
{

class cBase
{
public:
  virtual ~cBase() {}
  cCountingElement element;
};

class cDerived : public cBase
{
public:
  cCountingElement more;
};

// Notes every reinit, as a class that derives from the pointer may.
class cWatchedPtr : public tAutoPtr<int>
{
public:
  using tAutoPtr<int>::reinit;
  void reinit(int* pointer, tAutoPtrType::PointerType type) override
  {
    calls.push_back(pointer);
    tAutoPtr<int>::reinit(pointer, type);
  }
  std::vector<int*> calls;
};

// Looks, while it is destroyed, at the pointer that owns it.
class cLooksBack
{
public:
  cLooksBack(tAutoPtr<cLooksBack>& owner, cLooksBack*& seen) : mOwner(owner), mSeen(seen) {}
  ~cLooksBack() { mSeen = mOwner.get(); }

private:
  tAutoPtr<cLooksBack>& mOwner;
  cLooksBack*& mSeen;
};

class tAutoPtrTest : public ::testing::Test
{
protected:
  void SetUp() override { cCountingElement::reset(); }
  void TearDown() override
  {
    EXPECT_EQ(cCountingElement::alive(), 0u);
    EXPECT_EQ(cCountingElement::errors(), 0u);
  }
};

tAutoPtr<cBase> handOn(tAutoPtr<cBase> p)
{
  return p;
}

} // namespace

TEST_F(tAutoPtrTest, TheTypesHaveTheirNumbers)
{
  EXPECT_EQ(static_cast<int>(tAutoPtrType::Object), 0);
  EXPECT_EQ(static_cast<int>(tAutoPtrType::Array), 1);
  EXPECT_EQ(static_cast<int>(tAutoPtrType::NotOwned), 2);
}

TEST_F(tAutoPtrTest, ADefaultOneIsEmptyAndOfTypeObject)
{
  tAutoPtr<int> const p;
  EXPECT_EQ(p.get(), nullptr);
  EXPECT_FALSE(p);
  EXPECT_EQ(p.type(), tAutoPtrType::Object);
}

TEST_F(tAutoPtrTest, AnObjectIsDeletedThroughTheVirtualDestructor)
{
  {
    tAutoPtr<cBase> const p(new cDerived);
    EXPECT_EQ(cCountingElement::alive(), 2u);
  }
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST_F(tAutoPtrTest, AnArrayIsDestroyedFromLastToFirst)
{
  {
    cCountingElement* array = new cCountingElement[3];
    for (int i = 0; i < 3; ++i)
    {
      array[i].setValue(i);
    }
    cCountingElement::reset();
    tAutoPtr<cCountingElement> const p(array, tAutoPtrType::Array);
    EXPECT_EQ(p.type(), tAutoPtrType::Array);
  }
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{2, 1, 0}));
}

TEST_F(tAutoPtrTest, WhatIsNotOwnedStaysAlive)
{
  cCountingElement element(7);
  {
    tAutoPtr<cCountingElement> const p(&element, tAutoPtrType::NotOwned);
    EXPECT_EQ(p->value(), 7);
  }
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tAutoPtrTest, ReinitReleasesTheOldObjectAndTakesPointerAndType)
{
  cCountingElement other(2);
  tAutoPtr<cCountingElement> p(new cCountingElement(1));
  p.reinit(&other, tAutoPtrType::NotOwned);
  EXPECT_EQ(cCountingElement::destroyed(), std::vector<int>{1});
  EXPECT_EQ(p.get(), &other);
  EXPECT_EQ(p.type(), tAutoPtrType::NotOwned);
}

TEST_F(tAutoPtrTest, ReinitWithThePointerAlreadyHeldAndANewTypeDeletesNothing)
{
  cCountingElement* const element = new cCountingElement(1);
  tAutoPtr<cCountingElement> p(element);
  p.reinit(element, tAutoPtrType::NotOwned);
  EXPECT_EQ(cCountingElement::alive(), 1u);
  EXPECT_EQ(p.type(), tAutoPtrType::NotOwned);
  p.reinit(element, tAutoPtrType::Object);
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tAutoPtrTest, ReinitWithOneArgumentTakesASingleObject)
{
  tAutoPtr<cCountingElement> p(new cCountingElement[2], tAutoPtrType::Array);
  p.reinit(new cCountingElement(5));
  EXPECT_EQ(cCountingElement::alive(), 1u);
  EXPECT_EQ(p.type(), tAutoPtrType::Object);
  p.reinit(nullptr);
  EXPECT_FALSE(p);
}

TEST_F(tAutoPtrTest, TheOldObjectIsStillHeldWhileItsDestructorRuns)
{
  tAutoPtr<cLooksBack> p;
  cLooksBack* seen = nullptr;
  cLooksBack* const object = new cLooksBack(p, seen);
  p.reinit(object);
  p.reinit(nullptr);
  EXPECT_EQ(seen, object);
}

TEST_F(tAutoPtrTest, AssignmentGoesThroughTheVirtualReinit)
{
  cWatchedPtr p;
  int value = 0;
  tAutoPtr<int>& base = p;
  base = tAutoPtr<int>(&value, tAutoPtrType::NotOwned);
  EXPECT_EQ(p.calls, std::vector<int*>{&value});
  p.reinit(nullptr);
  EXPECT_EQ(p.calls.size(), 2u);
}

TEST_F(tAutoPtrTest, CopyingAVariableTransfersAndLeavesItEmpty)
{
  tAutoPtr<cCountingElement> source(new cCountingElement[2], tAutoPtrType::Array);
  cCountingElement* const array = source.get();
  tAutoPtr<cCountingElement> const target(source);
  EXPECT_EQ(source.get(), nullptr);
  EXPECT_EQ(source.type(), tAutoPtrType::Object);
  EXPECT_EQ(target.get(), array);
  EXPECT_EQ(target.type(), tAutoPtrType::Array);
}

TEST_F(tAutoPtrTest, CopyingAConstantTransfersToo)
{
  tAutoPtr<cCountingElement> const source(new cCountingElement(1));
  tAutoPtr<cCountingElement> const target(source);
  EXPECT_FALSE(source);
  EXPECT_TRUE(target);
}

TEST_F(tAutoPtrTest, CopyingATemporaryTransfers)
{
  tAutoPtr<cBase> p;
  p = tAutoPtr<cBase>(new cBase);
  ASSERT_TRUE(p);
  tAutoPtr<cBase> const q(handOn(p));
  EXPECT_FALSE(p);
  EXPECT_TRUE(q);
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tAutoPtrTest, PassingByValueHandsTheObjectOver)
{
  tAutoPtr<cBase> p(new cBase);
  handOn(p);
  EXPECT_FALSE(p);
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST_F(tAutoPtrTest, MovingLeavesTheSourceEmpty)
{
  tAutoPtr<cBase> p(new cBase);
  tAutoPtr<cBase> q(std::move(p));
  EXPECT_FALSE(p);
  p = std::move(q);
  EXPECT_FALSE(q);
  EXPECT_TRUE(p);
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tAutoPtrTest, AssignmentReleasesWhatTheTargetHeld)
{
  tAutoPtr<cCountingElement> target(new cCountingElement(1));
  tAutoPtr<cCountingElement> const source(new cCountingElement(2));
  target = source;
  EXPECT_EQ(cCountingElement::destroyed(), std::vector<int>{1});
  EXPECT_EQ(target->value(), 2);
}

TEST_F(tAutoPtrTest, AssigningAnEmptyOneReleases)
{
  tAutoPtr<cCountingElement> target(new cCountingElement(1));
  target = tAutoPtr<cCountingElement>();
  EXPECT_EQ(cCountingElement::alive(), 0u);
  EXPECT_FALSE(target);
}

TEST_F(tAutoPtrTest, AssigningToItselfChangesNothing)
{
  tAutoPtr<cCountingElement> p(new cCountingElement[2], tAutoPtrType::Array);
  cCountingElement* const array = p.get();
  tAutoPtr<cCountingElement>& same = p;
  p = same;
  p = std::move(same);
  EXPECT_EQ(p.get(), array);
  EXPECT_EQ(p.type(), tAutoPtrType::Array);
}

TEST_F(tAutoPtrTest, AssigningAnotherHolderOfTheSamePointerOnlyTakesItsType)
{
  cCountingElement* const element = new cCountingElement(1);
  tAutoPtr<cCountingElement> borrowed(element, tAutoPtrType::NotOwned);
  tAutoPtr<cCountingElement> const owner(element);
  borrowed = owner;
  EXPECT_EQ(cCountingElement::alive(), 1u);
  EXPECT_EQ(borrowed.type(), tAutoPtrType::Object);
  EXPECT_FALSE(owner);
}

TEST_F(tAutoPtrTest, AHolderOfADerivedClassConverts)
{
  tAutoPtr<cDerived> derived(new cDerived);
  tAutoPtr<cBase> base(derived);
  EXPECT_FALSE(derived);
  base = tAutoPtr<cDerived>(new cDerived);
  EXPECT_EQ(cCountingElement::alive(), 2u);
  tAutoPtr<cBase const> const constant(base);
  EXPECT_TRUE(constant);
}

TEST_F(tAutoPtrTest, ReleaseGivesUpWithoutDeleting)
{
  tAutoPtr<cCountingElement> p(new cCountingElement(3), tAutoPtrType::Object);
  cCountingElement* const element = p.release();
  EXPECT_FALSE(p);
  EXPECT_EQ(p.release(), nullptr);
  EXPECT_EQ(cCountingElement::alive(), 1u);
  delete element;
}

TEST_F(tAutoPtrTest, ReadingThroughAnEmptyOneIsABug)
{
  tAutoPtr<cCountingElement> const p;
  support::expectAssertion([&] { (*p).value(); }, "mpPointer != 0", "std/tAutoPtr");
  support::expectAssertion([&] { p->value(); }, "mpPointer != 0", "std/tAutoPtr");
}
