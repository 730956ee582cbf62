#include "std/tPtrVector.h"

#include "support/cCountingElement.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

using mstd::tAutoPtr;
using mstd::tAutoPtrType;
using mstd::tPtrVector;
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

class tPtrVectorTest : public ::testing::Test
{
protected:
  void SetUp() override { cCountingElement::reset(); }
  void TearDown() override
  {
    EXPECT_EQ(cCountingElement::alive(), 0u);
    EXPECT_EQ(cCountingElement::errors(), 0u);
  }
};

void fill(tPtrVector<cCountingElement>& vector, int n)
{
  for (int i = 0; i < n; ++i)
  {
    vector.append(new cCountingElement(i));
  }
}

// Adds another object to the vector that it leaves.
class cReborn
{
public:
  cReborn(tPtrVector<cReborn>& vector, int lives) : mVector(vector), miLives(lives) {}
  ~cReborn()
  {
    if (miLives > 0)
    {
      mVector.append(new cReborn(mVector, miLives - 1));
    }
  }

private:
  tPtrVector<cReborn>& mVector;
  int miLives;
  cCountingElement mElement;
};

class cNotingPtrVector : public tPtrVector<cCountingElement>
{
public:
  ~cNotingPtrVector() override { clear(); }
  std::vector<int> gone;

protected:
  void notifyElementRemoved(cCountingElement*& element) override
  {
    gone.push_back(element == nullptr ? -1 : element->value());
    tPtrVector<cCountingElement>::notifyElementRemoved(element);
  }
};

} // namespace

TEST_F(tPtrVectorTest, OwnsSingleObjectsByDefault)
{
  {
    tPtrVector<cBase> vector;
    EXPECT_EQ(vector.type(), tAutoPtrType::Object);
    vector.append(new cDerived);
    vector.append(new cDerived);
    EXPECT_EQ(cCountingElement::alive(), 2u);
  }
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST_F(tPtrVectorTest, TheDestructorReleasesInOrderThroughItsOwnHook)
{
  {
    tPtrVector<cCountingElement> vector;
    fill(vector, 12);
    vector.append(static_cast<cCountingElement*>(nullptr));
    cCountingElement::reset();
  }
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
}

TEST_F(tPtrVectorTest, AnArrayIsDestroyedInReverseOrder)
{
  {
    tPtrVector<cCountingElement> vector(tAutoPtrType::Array);
    cCountingElement* const array = new cCountingElement[3];
    for (int i = 0; i < 3; ++i)
    {
      array[i].setValue(i);
    }
    vector.append(array);
    vector.append(static_cast<cCountingElement*>(nullptr));
    cCountingElement::reset();
  }
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{2, 1, 0}));
}

TEST_F(tPtrVectorTest, WhatIsNotOwnedStaysAlive)
{
  cCountingElement element(4);
  {
    tPtrVector<cCountingElement> vector(tAutoPtrType::NotOwned);
    vector.append(&element);
    vector.erase(0);
    vector.append(&element);
    vector.clear();
    vector.append(&element);
  }
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tPtrVectorTest, EraseAndClearReleaseWhatTheyRemove)
{
  tPtrVector<cCountingElement> vector;
  fill(vector, 4);
  vector.erase(1);
  EXPECT_EQ(cCountingElement::destroyed(), std::vector<int>{1});
  EXPECT_EQ(vector.at(1)->value(), 2);
  vector.clear();
  EXPECT_EQ(cCountingElement::alive(), 0u);
  EXPECT_TRUE(vector.empty());
}

TEST_F(tPtrVectorTest, ResizeTo3Of5OwnedLeavesTheTwoCutOffObjectsAlive)
{
  std::vector<cCountingElement*> objects;
  {
    cNotingPtrVector vector;
    fill(vector, 5);
    for (unsigned int i = 0; i < 5; ++i)
    {
      objects.push_back(vector.at(i));
    }
    vector.resize(3);
    EXPECT_TRUE(vector.gone.empty());
    EXPECT_EQ(vector.length(), 3u);
    for (unsigned int i = 0; i < 3; ++i)
    {
      EXPECT_EQ(vector.at(i), objects[i]);
    }
    EXPECT_EQ(cCountingElement::alive(), 5u);
  }
  EXPECT_EQ(cCountingElement::alive(), 2u);
  delete objects[3];
  delete objects[4];
}

TEST_F(tPtrVectorTest, ResizeAddsNullEntriesAndKeepsTheOthers)
{
  tPtrVector<cCountingElement> vector;
  fill(vector, 2);
  cCountingElement* const first = vector.at(0);
  vector.resize(15);
  EXPECT_EQ(vector.length(), 15u);
  EXPECT_EQ(vector.capacity(), 20u);
  EXPECT_EQ(vector.at(0), first);
  EXPECT_EQ(vector.at(1)->value(), 1);
  for (unsigned int i = 2; i < 15; ++i)
  {
    EXPECT_EQ(vector.at(i), nullptr);
  }
  EXPECT_EQ(vector.type(), tAutoPtrType::Object);
}

TEST_F(tPtrVectorTest, TheStepIs10AfterAnyResize)
{
  tPtrVector<cCountingElement> vector;
  vector.setStep(3);
  fill(vector, 4);
  EXPECT_EQ(vector.capacity(), 6u);
  vector.resize(4);
  EXPECT_EQ(vector.step(), 10u);
  EXPECT_EQ(vector.capacity(), 10u);
  EXPECT_EQ(vector.length(), 4u);
}

TEST_F(tPtrVectorTest, ResizeTo0DropsEverythingAndKeepsOneStepOfRoom)
{
  cCountingElement element(1);
  tPtrVector<cCountingElement> vector;
  vector.append(&element);
  vector.resize(0);
  EXPECT_TRUE(vector.empty());
  EXPECT_EQ(vector.capacity(), 10u);
}

TEST_F(tPtrVectorTest, AResizeThatWrapsChangesNothing)
{
  tPtrVector<cCountingElement> vector;
  vector.setStep(4);
  fill(vector, 2);
  support::expectAssertion([&] { vector.resize(4294967295u); }, "iRequired >= iNewSize", "std/tVector");
  EXPECT_EQ(vector.length(), 2u);
  EXPECT_EQ(vector.step(), 4u);
  EXPECT_EQ(vector.capacity(), 4u);
}

TEST_F(tPtrVectorTest, AnAutoPointerIsTakenOver)
{
  tPtrVector<cBase> vector;
  tAutoPtr<cBase> object(new cDerived);
  vector.append(object);
  EXPECT_FALSE(object);
  EXPECT_EQ(vector.length(), 1u);
  vector.append(tAutoPtr<cBase>());
  EXPECT_EQ(vector.at(1), nullptr);
}

TEST_F(tPtrVectorTest, AnAutoPointerOfAnotherTypeIsABug)
{
  tPtrVector<cCountingElement> vector;
  cCountingElement element(1);
  support::expectAssertion([&] { vector.append(tAutoPtr<cCountingElement>(&element, tAutoPtrType::NotOwned)); },
                           "pObject.type() == mType", "std/tPtrVector");
  EXPECT_TRUE(vector.empty());
}

TEST_F(tPtrVectorTest, OneThatDoesNotOwnCanBeCopied)
{
  cCountingElement element(1);
  tPtrVector<cCountingElement> source(tAutoPtrType::NotOwned);
  source.append(&element);
  tPtrVector<cCountingElement> const copy(source);
  EXPECT_EQ(copy.at(0), &element);
  EXPECT_EQ(copy.type(), tAutoPtrType::NotOwned);
  tPtrVector<cCountingElement> target;
  fill(target, 2);
  target = source;
  EXPECT_EQ(target.type(), tAutoPtrType::NotOwned);
  EXPECT_EQ(target.at(0), &element);
  EXPECT_EQ(cCountingElement::alive(), 1u);
}

TEST_F(tPtrVectorTest, CopyingOneThatOwnsIsABug)
{
  tPtrVector<cCountingElement> vector;
  fill(vector, 1);
  support::expectAssertion([&] { tPtrVector<cCountingElement> const copy(vector); }, "mType == tAutoPtrType::NotOwned",
                           "std/tPtrVector");
  tPtrVector<cCountingElement>& same = vector;
  vector = same;
  EXPECT_EQ(vector.at(0)->value(), 0);
}

TEST_F(tPtrVectorTest, SwapExchangesTheTypeToo)
{
  cCountingElement element(1);
  tPtrVector<cCountingElement> borrowed(tAutoPtrType::NotOwned);
  borrowed.append(&element);
  {
    tPtrVector<cCountingElement> owner;
    fill(owner, 3);
    swap(owner, borrowed);
    EXPECT_EQ(owner.at(0), &element);
  }
  EXPECT_EQ(borrowed.length(), 3u);
  EXPECT_EQ(borrowed.type(), tAutoPtrType::Object);
}

TEST_F(tPtrVectorTest, ObjectsAddedByADestructorAreReleasedToo)
{
  {
    tPtrVector<cReborn> vector;
    vector.append(new cReborn(vector, 3));
    vector.append(new cReborn(vector, 0));
    vector.clear();
    EXPECT_EQ(vector.length(), 1u);
  }
  EXPECT_EQ(cCountingElement::alive(), 0u);
}
