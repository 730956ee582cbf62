#include "std/tVector.h"

#include "support/cCountingElement.h"
#include "support/expectFailure.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <random>
#include <vector>

using mstd::tVector;
using support::cCopyFailed;
using support::cCountingElement;

namespace
{

class tVectorTest : public ::testing::Test
{
protected:
  void SetUp() override { cCountingElement::reset(); }
  void TearDown() override
  {
    EXPECT_EQ(cCountingElement::alive(), 0u);
    EXPECT_EQ(cCountingElement::errors(), 0u);
  }
};

template <class T>
void fill(tVector<T>& vector, int n)
{
  for (int i = 0; i < n; ++i)
  {
    vector.append(T(i));
  }
}

std::vector<int> values(tVector<int> const& vector)
{
  std::vector<int> result;
  for (unsigned int i = 0; i < vector.length(); ++i)
  {
    result.push_back(vector.at(i));
  }
  return result;
}

std::vector<int> values(tVector<cCountingElement> const& vector)
{
  std::vector<int> result;
  for (unsigned int i = 0; i < vector.length(); ++i)
  {
    result.push_back(vector.at(i).value());
  }
  return result;
}

// Notes the elements that leave; can fail at one of them, or add one in return.
class cNotingVector : public tVector<cCountingElement>
{
public:
  ~cNotingVector() override { clear(); }
  std::vector<int> gone;
  int failAt = -1;
  int addAt = -1;
  int eraseAt = -1;
  unsigned int eraseIndex = 0;

protected:
  void notifyElementRemoved(cCountingElement& element) override
  {
    if (element.value() == failAt)
    {
      throw cCopyFailed();
    }
    gone.push_back(element.value());
    if (element.value() == addAt)
    {
      append(cCountingElement(100 + addAt));
    }
    if (element.value() == eraseAt)
    {
      eraseAt = -1;
      erase(eraseIndex);
    }
  }
};

} // namespace

TEST_F(tVectorTest, AnEmptyOneHasNoPoolAndAStepOf10)
{
  tVector<int> const vector;
  EXPECT_EQ(vector.length(), 0u);
  EXPECT_EQ(vector.size(), 0u);
  EXPECT_TRUE(vector.empty());
  EXPECT_EQ(vector.capacity(), 0u);
  EXPECT_EQ(vector.step(), 10u);
}

TEST_F(tVectorTest, TheCapacityIs10AfterTheFirstAppendAnd20AfterTheEleventh)
{
  tVector<int> vector;
  vector.append(0);
  EXPECT_EQ(vector.capacity(), 10u);
  for (int i = 1; i < 10; ++i)
  {
    vector.append(i);
  }
  EXPECT_EQ(vector.capacity(), 10u);
  vector.append(10);
  EXPECT_EQ(vector.capacity(), 20u);
}

TEST_F(tVectorTest, GrowthIsLinearForAnyStep)
{
  for (unsigned int const step : {1u, 2u, 3u, 7u, 10u, 64u, 1000u})
  {
    tVector<unsigned int> vector;
    vector.setStep(step);
    for (unsigned int i = 0; i < 2500; ++i)
    {
      vector.append(i);
      ASSERT_EQ(vector.capacity(), (i + step) / step * step) << "step " << step << ", length " << vector.length();
    }
    for (unsigned int i = 0; i < 2500; ++i)
    {
      ASSERT_EQ(vector.at(i), i);
    }
  }
}

TEST_F(tVectorTest, AStepOf0IsTakenAs1)
{
  tVector<int> vector;
  vector.setStep(0);
  EXPECT_EQ(vector.step(), 1u);
  vector.append(1);
  EXPECT_EQ(vector.capacity(), 1u);
}

TEST_F(tVectorTest, ResizePoolWith0OnAnEmptyVectorGivesOneStep)
{
  tVector<int> vector;
  vector.resizePool(0, false);
  EXPECT_EQ(vector.capacity(), 10u);
  EXPECT_EQ(vector.length(), 0u);
}

TEST_F(tVectorTest, ResizePoolRoundsUpToWholeSteps)
{
  tVector<int> vector;
  vector.resizePool(1, true);
  EXPECT_EQ(vector.capacity(), 10u);
  vector.resizePool(10, true);
  EXPECT_EQ(vector.capacity(), 10u);
  vector.resizePool(11, true);
  EXPECT_EQ(vector.capacity(), 20u);
  vector.resizePool(95, true);
  EXPECT_EQ(vector.capacity(), 100u);
}

TEST_F(tVectorTest, ALargerPoolIsKeptUnlessTheSizeIsExact)
{
  tVector<int> vector;
  fill(vector, 3);
  vector.resizePool(50, false);
  EXPECT_EQ(vector.capacity(), 50u);
  vector.resizePool(3, false);
  EXPECT_EQ(vector.capacity(), 50u);
  vector.resizePool(3, true);
  EXPECT_EQ(vector.capacity(), 10u);
  EXPECT_EQ(values(vector), (std::vector<int>{0, 1, 2}));
}

TEST_F(tVectorTest, AnExactPoolBelowTheLengthRemovesTheElementsBeyondTheSize)
{
  cNotingVector vector;
  fill(vector, 25);
  vector.resizePool(5, true);
  EXPECT_EQ(vector.capacity(), 10u);
  EXPECT_EQ(values(vector), (std::vector<int>{0, 1, 2, 3, 4}));
  EXPECT_EQ(vector.gone.size(), 20u);
  EXPECT_EQ(cCountingElement::alive(), 5u);
}

TEST_F(tVectorTest, AnExactPoolThatFitsAlreadyTouchesNoElement)
{
  tVector<int> vector;
  fill(vector, 8);
  vector.resizePool(5, true);
  EXPECT_EQ(vector.length(), 8u);
  EXPECT_EQ(vector.capacity(), 10u);
}

TEST_F(tVectorTest, AStepSetLaterCountsForTheNextAppend)
{
  tVector<int> vector;
  fill(vector, 9);
  EXPECT_EQ(vector.capacity(), 10u);
  vector.setStep(7);
  EXPECT_EQ(vector.capacity(), 10u);
  vector.append(9); // ten elements need two steps of seven
  EXPECT_EQ(vector.capacity(), 14u);
}

TEST_F(tVectorTest, ACapacityThatWrapsIsABugAndChangesNothing)
{
  tVector<int> vector;
  fill(vector, 2);
  support::expectAssertion([&] { vector.resizePool(std::numeric_limits<unsigned int>::max(), false); },
                           "iRequired >= iNewSize", "std/tVector");
  EXPECT_EQ(vector.capacity(), 10u);
  EXPECT_EQ(values(vector), (std::vector<int>{0, 1}));
}

TEST_F(tVectorTest, TheLargestWholeStepDoesNotWrap)
{
  unsigned int const max = std::numeric_limits<unsigned int>::max();
  EXPECT_EQ(mstd::cVectorPool::required(max, 1), max);
  EXPECT_EQ(mstd::cVectorPool::required(max, 0), max);
  EXPECT_EQ(mstd::cVectorPool::required(4294967290u, 10), 4294967290u);
  EXPECT_EQ(mstd::cVectorPool::required(0, max), max);
  support::expectAssertion([] { mstd::cVectorPool::required(4294967291u, 10); }, "iRequired >= iNewSize",
                           "std/tVector");
}

TEST_F(tVectorTest, AtFailsBeyondTheLengthAndNamesTheLastIndex)
{
  tVector<int> vector;
  fill(vector, 3);
  tVector<int> const& constant = vector;
  EXPECT_EQ(vector.at(2), 2);
  support::expectOutOfRange([&] { vector.at(3); }, "tVector", "at", cSTDExceptions::IndexOutOfRange, 3, 2);
  support::expectOutOfRange([&] { constant.at(7); }, "tVector", "at", cSTDExceptions::IndexOutOfRange, 7, 2);
  support::expectOutOfRange([&] { vector[3]; }, "tVector", "at", cSTDExceptions::IndexOutOfRange, 3, 2);
  support::expectOutOfRange([&] { constant[4294967295u]; }, "tVector", "at", cSTDExceptions::IndexOutOfRange,
                            4294967295ll, 2);
}

TEST_F(tVectorTest, AtOfAnEmptyOneNames0AsTheLargestIndex)
{
  tVector<int> vector;
  support::expectOutOfRange([&] { vector.at(0); }, "tVector", "at", cSTDExceptions::IndexOutOfRange, 0, 0);
}

TEST_F(tVectorTest, AnElementKeepsItsAddressThroughGrowthInsertEraseAndSwap)
{
  tVector<cCountingElement> vector;
  cCountingElement* const element = &vector.append(cCountingElement(1));
  fill(vector, 500);
  vector.insert(0, cCountingElement(7));
  EXPECT_EQ(&vector.at(1), element);
  vector.erase(0);
  EXPECT_EQ(&vector.at(0), element);
  tVector<cCountingElement> other;
  other.swap(vector);
  EXPECT_EQ(&other.at(0), element);
  EXPECT_EQ(element->value(), 1);
}

TEST_F(tVectorTest, GrowthCopiesNoElement)
{
  tVector<cCountingElement> vector;
  cCountingElement const element(1);
  for (int i = 0; i < 100; ++i)
  {
    vector.append(element);
  }
  EXPECT_EQ(cCountingElement::copies(), 100u);
}

TEST_F(tVectorTest, AnElementOfItsOwnMayBeAppendedAndInserted)
{
  tVector<cCountingElement> vector;
  fill(vector, 10);
  vector.append(vector.at(3));
  vector.insert(0, vector.at(9));
  EXPECT_EQ(vector.length(), 12u);
  EXPECT_EQ(vector.at(0).value(), 9);
  EXPECT_EQ(vector.at(11).value(), 3);
}

TEST_F(tVectorTest, InsertPutsBeforeTheIndexAndAtTheEnd)
{
  tVector<int> vector;
  vector.insert(0, 1);
  vector.insert(1, 3);
  vector.insert(1, 2);
  vector.insert(0, 0);
  EXPECT_EQ(values(vector), (std::vector<int>{0, 1, 2, 3}));
  support::expectOutOfRange([&] { vector.insert(5, 9); }, "tVector", "insert", cSTDExceptions::ValueOutOfRange, 5, 4);
  EXPECT_EQ(vector.length(), 4u);
}

TEST_F(tVectorTest, EraseRemovesOneElementThroughTheHook)
{
  cNotingVector vector;
  fill(vector, 4);
  vector.erase(1);
  vector.erase(2);
  EXPECT_EQ(values(vector), (std::vector<int>{0, 2}));
  EXPECT_EQ(vector.gone, (std::vector<int>{1, 3}));
  support::expectOutOfRange([&] { vector.erase(2); }, "tVector", "erase", cSTDExceptions::IndexOutOfRange, 2, 1);
}

TEST_F(tVectorTest, ClearRemovesInOrderThroughTheHookAndKeepsThePool)
{
  cNotingVector vector;
  fill(vector, 12);
  cCountingElement::reset();
  vector.clear();
  EXPECT_TRUE(vector.empty());
  EXPECT_EQ(vector.capacity(), 20u);
  std::vector<int> const expected{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  EXPECT_EQ(vector.gone, expected);
  EXPECT_EQ(cCountingElement::destroyed(), expected);
  vector.clear();
  EXPECT_EQ(vector.gone.size(), 12u);
}

TEST_F(tVectorTest, WhatTheHookAddsDuringClearStays)
{
  cNotingVector vector;
  fill(vector, 3);
  vector.addAt = 1;
  vector.clear();
  EXPECT_EQ(values(vector), std::vector<int>{101});
  EXPECT_EQ(vector.gone, (std::vector<int>{0, 1, 2}));
}

TEST_F(tVectorTest, AHookThatFailsLeavesItsElementAndTheFollowingOnes)
{
  cNotingVector vector;
  fill(vector, 5);
  vector.failAt = 2;
  EXPECT_THROW(vector.clear(), cCopyFailed);
  EXPECT_EQ(values(vector), (std::vector<int>{2, 3, 4}));
  EXPECT_THROW(vector.erase(0), cCopyFailed);
  EXPECT_EQ(vector.length(), 3u);
  vector.failAt = -1;
}

TEST_F(tVectorTest, AHookMayEraseOtherElementsAndEvenItsOwn)
{
  cNotingVector vector;
  fill(vector, 5);
  vector.eraseAt = 3;
  vector.eraseIndex = 0;
  vector.erase(3); // its hook erases 0
  EXPECT_EQ(values(vector), (std::vector<int>{1, 2, 4}));
  vector.eraseAt = 2;
  vector.eraseIndex = 1;
  vector.erase(1); // its hook erases it first
  EXPECT_EQ(values(vector), (std::vector<int>{1, 4}));
}

TEST_F(tVectorTest, TheDestructorDestroysInOrder)
{
  {
    tVector<cCountingElement> vector;
    fill(vector, 3);
    cCountingElement::reset();
  }
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{0, 1, 2}));
}

TEST_F(tVectorTest, CopiesAreDeepAndKeepTheStep)
{
  tVector<cCountingElement> source;
  source.setStep(4);
  fill(source, 6);
  source.resizePool(100, false);
  tVector<cCountingElement> copy(source);
  EXPECT_EQ(values(copy), values(source));
  EXPECT_EQ(copy.step(), 4u);
  EXPECT_EQ(copy.capacity(), 8u);
  EXPECT_NE(&copy.at(0), &source.at(0));
  copy.at(0).setValue(9);
  EXPECT_EQ(source.at(0).value(), 0);
  tVector<cCountingElement> const none((tVector<cCountingElement>()));
  EXPECT_EQ(none.capacity(), 0u);
}

TEST_F(tVectorTest, AssignmentReplacesThroughTheHook)
{
  cNotingVector target;
  fill(target, 2);
  tVector<cCountingElement> source;
  source.append(cCountingElement(9));
  static_cast<tVector<cCountingElement>&>(target) = source;
  EXPECT_EQ(values(target), std::vector<int>{9});
  EXPECT_EQ(target.gone, (std::vector<int>{0, 1}));
}

TEST_F(tVectorTest, AssigningToItselfChangesNothing)
{
  tVector<cCountingElement> vector;
  fill(vector, 3);
  cCountingElement* const element = &vector.at(0);
  tVector<cCountingElement>& same = vector;
  vector = same;
  EXPECT_EQ(&vector.at(0), element);
  EXPECT_EQ(vector.length(), 3u);
}

TEST_F(tVectorTest, SwapExchangesAllFourFields)
{
  tVector<int> a;
  fill(a, 3);
  tVector<int> b;
  b.setStep(5);
  swap(a, b);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(a.capacity(), 0u);
  EXPECT_EQ(a.step(), 5u);
  EXPECT_EQ(values(b), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(b.capacity(), 10u);
  EXPECT_EQ(b.step(), 10u);
}

TEST_F(tVectorTest, AFailingCopyLeavesTheVectorAsItWas)
{
  for (int const length : {0, 5, 10, 20, 30})
  {
    tVector<cCountingElement> vector;
    fill(vector, length);
    unsigned int const capacity = vector.capacity();
    std::vector<int> const before = values(vector);
    cCountingElement const element(99);
    cCountingElement::throwAtCopy(1);
    EXPECT_THROW(vector.append(element), cCopyFailed);
    cCountingElement::throwAtCopy(1);
    EXPECT_THROW(vector.insert(0, element), cCopyFailed);
    EXPECT_EQ(vector.capacity(), capacity);
    EXPECT_EQ(values(vector), before);
  }
}

TEST_F(tVectorTest, ACopyThatFailsMidwayLeavesBothWhole)
{
  tVector<cCountingElement> source;
  fill(source, 12);
  tVector<cCountingElement> target;
  target.append(cCountingElement(5));
  for (unsigned int n = 1; n <= 12; ++n)
  {
    cCountingElement::throwAtCopy(n);
    EXPECT_THROW(tVector<cCountingElement> copy(source), cCopyFailed);
    cCountingElement::throwAtCopy(n);
    EXPECT_THROW(target = source, cCopyFailed);
  }
  EXPECT_EQ(values(target), std::vector<int>{5});
  EXPECT_EQ(source.length(), 12u);
}

TEST_F(tVectorTest, RandomOperationsAgreeWithAPlainModel)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  RecordProperty("seed", std::to_string(seed));
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  for (int round = 0; round < 50; ++round)
  {
    cNotingVector vector;
    std::vector<int> model;
    std::vector<int> gone;
    unsigned int capacity = 0;
    unsigned int step = 10;
    auto const grow = [&](unsigned int size) {
      unsigned int required = size / step * step;
      required = required == 0 ? step : required;
      required += size > required ? step : 0;
      capacity = std::max(capacity, required);
    };
    for (int i = 0; i < 400; ++i)
    {
      int const value = static_cast<int>(random() % 1000);
      unsigned int const place = model.empty() ? 0 : random() % static_cast<unsigned int>(model.size());
      switch (random() % 10)
      {
      case 0:
      case 1:
      case 2:
      case 3:
        grow(static_cast<unsigned int>(model.size()) + 1);
        vector.append(cCountingElement(value));
        model.push_back(value);
        break;
      case 4:
      case 5:
        grow(static_cast<unsigned int>(model.size()) + 1);
        vector.insert(place, cCountingElement(value));
        model.insert(model.begin() + place, value);
        break;
      case 6:
      case 7:
        if (!model.empty())
        {
          gone.push_back(model[place]);
          model.erase(model.begin() + place);
          vector.erase(place);
        }
        break;
      case 8:
        step = 1 + random() % 20;
        vector.setStep(step);
        break;
      default:
        if (random() % 20 == 0)
        {
          gone.insert(gone.end(), model.begin(), model.end());
          model.clear();
          vector.clear();
        }
        else
        {
          grow(static_cast<unsigned int>(model.size()) + place);
          vector.resizePool(static_cast<unsigned int>(model.size()) + place, false);
        }
        break;
      }
      ASSERT_EQ(values(vector), model);
      ASSERT_EQ(vector.capacity(), capacity);
      ASSERT_EQ(vector.gone, gone);
    }
    tVector<cCountingElement> const copy(vector);
    ASSERT_EQ(values(copy), model);
  }
}
