#include "std/tPtrList.h"

#include "support/cCountingElement.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>
#include <vector>

using mstd::tAutoPtr;
using mstd::tAutoPtrType;
using mstd::tPtrList;
using support::cCountingElement;

namespace
{

typedef tPtrList<cCountingElement> cElementList;

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

class tPtrListTest : public ::testing::Test
{
protected:
  void SetUp() override { cCountingElement::reset(); }
  void TearDown() override
  {
    EXPECT_EQ(cCountingElement::alive(), 0u);
    EXPECT_EQ(cCountingElement::errors(), 0u);
  }
};

void fill(cElementList& list, int n)
{
  for (int i = 0; i < n; ++i)
  {
    list.append(new cCountingElement(i));
  }
}

class cReborn
{
public:
  cReborn(tPtrList<cReborn>& list, int lives) : mList(list), miLives(lives) {}
  ~cReborn()
  {
    if (miLives > 0)
    {
      mList.append(new cReborn(mList, miLives - 1));
    }
  }

private:
  tPtrList<cReborn>& mList;
  int miLives;
  cCountingElement mElement;
};

} // namespace

TEST_F(tPtrListTest, TheKindsHaveNumbersOfTheirOwn)
{
  EXPECT_EQ(static_cast<int>(cElementList::NotOwned), 0);
  EXPECT_EQ(static_cast<int>(cElementList::Object), 1);
  EXPECT_EQ(static_cast<int>(cElementList::Array), 2);
}

TEST_F(tPtrListTest, ObjectsGoWithTheListInItsOrder)
{
  {
    cElementList list(cElementList::Object);
    EXPECT_EQ(list.kind(), cElementList::Object);
    fill(list, 3);
    list.append(static_cast<cCountingElement*>(nullptr));
    cCountingElement::reset();
  }
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{0, 1, 2}));
}

TEST_F(tPtrListTest, ObjectsAreDeletedThroughTheVirtualDestructor)
{
  tPtrList<cBase> list(tPtrList<cBase>::Object);
  list.append(new cDerived);
  list.clear();
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST_F(tPtrListTest, ArraysAreDestroyedInReverseOrder)
{
  {
    cElementList list(cElementList::Array);
    cCountingElement* const array = new cCountingElement[2];
    array[0].setValue(0);
    array[1].setValue(1);
    list.append(array);
    list.append(static_cast<cCountingElement*>(nullptr));
    cCountingElement::reset();
  }
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{1, 0}));
}

TEST_F(tPtrListTest, WhatIsNotOwnedStaysAlive)
{
  cCountingElement element(1);
  {
    cElementList list(cElementList::NotOwned);
    list.append(&element);
    list.append(&element);
    list.erase(list.begin());
  }
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tPtrListTest, EraseAndTheSweepReleaseWhatTheyRemove)
{
  cElementList list(cElementList::Object);
  fill(list, 4);
  list.erase(list.begin());
  EXPECT_EQ(cCountingElement::destroyed(), std::vector<int>{0});
  (++list.begin()).eraseLater();
  EXPECT_EQ(cCountingElement::alive(), 3u);
  list.eraseMarked();
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{0, 2}));
  EXPECT_EQ(list.length(), 2u);
}

TEST_F(tPtrListTest, AnAutoPointerIsTakenOver)
{
  tPtrList<cBase> list(tPtrList<cBase>::Object);
  tAutoPtr<cBase> object(new cDerived);
  EXPECT_NE(*list.append(object), nullptr);
  EXPECT_FALSE(object);
  list.append(tAutoPtr<cBase>());
  EXPECT_EQ(list.last(), nullptr);
  cElementList arrays(cElementList::Array);
  arrays.append(tAutoPtr<cCountingElement>(new cCountingElement[2], tAutoPtrType::Array));
  EXPECT_EQ(arrays.length(), 1u);
}

TEST_F(tPtrListTest, AnAutoPointerOfAnotherTypeIsABug)
{
  cElementList list(cElementList::Object);
  cCountingElement element(1);
  support::expectAssertion([&] { list.append(tAutoPtr<cCountingElement>(&element, tAutoPtrType::NotOwned)); },
                           "kindOf(pObject.type()) == mKind", "std/tPtrList");
  EXPECT_TRUE(list.empty());
}

TEST_F(tPtrListTest, OneThatDoesNotOwnCanBeCopied)
{
  cCountingElement element(1);
  cElementList source(cElementList::NotOwned);
  source.append(&element);
  cElementList const copy(source);
  EXPECT_EQ(copy.first(), &element);
  cElementList target(cElementList::Object);
  fill(target, 2);
  target = source;
  EXPECT_EQ(target.kind(), cElementList::NotOwned);
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tPtrListTest, CopyingOneThatOwnsIsABug)
{
  cElementList list(cElementList::Object);
  fill(list, 1);
  support::expectAssertion([&] { cElementList const copy(list); }, "mKind == NotOwned", "std/tPtrList");
  cElementList& same = list;
  list = same;
  EXPECT_EQ(list.first()->value(), 0);
}

TEST_F(tPtrListTest, SwapExchangesTheKindToo)
{
  cCountingElement element(7);
  cElementList owner(cElementList::Object);
  fill(owner, 2);
  cElementList borrowed(cElementList::NotOwned);
  borrowed.append(&element);
  swap(owner, borrowed);
  EXPECT_EQ(owner.kind(), cElementList::NotOwned);
  EXPECT_EQ(owner.first(), &element);
  EXPECT_EQ(borrowed.length(), 2u);
}

TEST_F(tPtrListTest, ObjectsAddedByADestructorAreReleasedToo)
{
  {
    tPtrList<cReborn> list(tPtrList<cReborn>::Object);
    list.append(new cReborn(list, 3));
    list.clear();
    EXPECT_EQ(list.length(), 1u);
  }
  EXPECT_EQ(cCountingElement::alive(), 0u);
}
