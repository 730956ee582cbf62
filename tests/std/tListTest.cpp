#include "std/tList.h"

#include "support/cCountingElement.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>
#include <iterator>
#include <list>
#include <random>
#include <type_traits>
#include <vector>

using mstd::tList;
using mstd::tListElementNodeType;
using support::cCopyFailed;
using support::cCountingElement;

namespace
{

class tListTest : public ::testing::Test
{
protected:
  void SetUp() override { cCountingElement::reset(); }
  void TearDown() override
  {
    EXPECT_EQ(cCountingElement::alive(), 0u);
    EXPECT_EQ(cCountingElement::errors(), 0u);
  }
};

int plain(int value)
{
  return value;
}

int plain(cCountingElement const& element)
{
  return element.value();
}

// The values forwards, after a check that the way back shows the same.
template <class T>
std::vector<int> values(tList<T> const& list)
{
  std::vector<int> result;
  for (T const& value : list)
  {
    result.push_back(plain(value));
  }
  std::vector<int> back;
  for (typename tList<T>::const_iterator it = list.end(); it != list.begin();)
  {
    --it;
    back.insert(back.begin(), plain(*it));
  }
  EXPECT_EQ(back, result);
  return result;
}

template <class T>
void fill(tList<T>& list, int n)
{
  for (int i = 0; i < n; ++i)
  {
    list.append(T(i));
  }
}

template <class T>
typename tList<T>::iterator at(tList<T>& list, int index)
{
  typename tList<T>::iterator it = list.begin();
  while (index-- > 0)
  {
    ++it;
  }
  return it;
}

// Notes the elements that leave, can fail at one, and can add or sweep in return.
class cNotingList : public tList<cCountingElement>
{
public:
  ~cNotingList() override { clear(); }
  mutable std::vector<int> gone;
  int failAt = -1;
  int addAt = -1;
  bool sweepAgain = false;

protected:
  void beforeNodeDestroy(tListElementNodeType<cCountingElement>& node) const override
  {
    if (node.value().value() == failAt)
    {
      throw cCopyFailed();
    }
    gone.push_back(node.value().value());
    cNotingList& self = const_cast<cNotingList&>(*this);
    if (node.value().value() == addAt)
    {
      self.append(cCountingElement(100 + addAt));
    }
    if (sweepAgain)
    {
      self.eraseMarked();
    }
  }
};

// Counts, while it is destroyed, what the list that it belonged to still shows.
class cLooksBack
{
public:
  explicit cLooksBack(tList<cLooksBack>*& list, std::vector<unsigned int>& seen) : mList(list), mSeen(seen) {}
  cLooksBack(cLooksBack const& other) : mList(other.mList), mSeen(other.mSeen) {}
  ~cLooksBack()
  {
    if (mList != nullptr)
    {
      mSeen.push_back(mList->length());
    }
  }

private:
  tList<cLooksBack>*& mList;
  std::vector<unsigned int>& mSeen;
};

typedef tList<int> cIntList;

} // namespace

TEST_F(tListTest, AnEmptyListBeginsAtItsEnd)
{
  cIntList list;
  cIntList const& constant = list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.length(), 0u);
  EXPECT_TRUE(list.begin() == list.end());
  EXPECT_TRUE(constant.begin() == constant.end());
  EXPECT_TRUE(list.begin() == constant.begin());
}

TEST_F(tListTest, AppendPrependAndInsertKeepTheirOrder)
{
  cIntList list;
  EXPECT_EQ(*list.append(3), 3);
  EXPECT_EQ(*list.prepend(1), 1);
  EXPECT_EQ(*list.insert(at(list, 1), 2), 2);
  list.insert(list.end(), 4);
  list.insert(list.begin(), 0);
  EXPECT_EQ(values(list), (std::vector<int>{0, 1, 2, 3, 4}));
  EXPECT_EQ(list.length(), 5u);
  EXPECT_EQ(list.first(), 0);
  EXPECT_EQ(list.last(), 4);
}

TEST_F(tListTest, InsertNeedsANodeThatIsNotTheHead)
{
  cIntList list;
  cIntList::iterator head = list.begin();
  --head;
  support::expectOutOfBounds([&] { list.insert(cIntList::iterator(), 1); }, "tList", "tList::insert()");
  support::expectOutOfBounds([&] { list.insert(head, 1); }, "tList", "tList::insert()");
  EXPECT_TRUE(list.empty());
}

TEST_F(tListTest, FirstAndLastOfAnEmptyListAreOutOfBounds)
{
  cIntList list;
  cIntList const& constant = list;
  support::expectOutOfBounds([&] { list.first(); }, "tList", "tIterator::operator*()");
  support::expectOutOfBounds([&] { list.last(); }, "tList", "tIterator::operator*()");
  support::expectOutOfBounds([&] { constant.first(); }, "tList", "iterator::operator*()");
  support::expectOutOfBounds([&] { constant.last(); }, "tList", "iterator::operator*()");
}

TEST_F(tListTest, SteppingFromTheLastElementToTheEndIsLegal)
{
  cIntList list;
  list.append(1);
  cIntList::iterator it = list.begin();
  EXPECT_TRUE(++it == list.end());
  cIntList::const_iterator constant = static_cast<cIntList const&>(list).begin();
  EXPECT_TRUE(++constant == list.end());
}

TEST_F(tListTest, AnIteratorAtTheEndFailsOnStepAndOnDereference)
{
  cIntList list;
  list.append(1);
  cIntList::iterator it = list.end();
  cIntList::const_iterator constant = list.end();
  support::expectOutOfBounds([&] { ++it; }, "tList", "cIteratorBase::operator++()");
  support::expectOutOfBounds([&] { it++; }, "tList", "cIteratorBase::operator++()");
  support::expectOutOfBounds([&] { ++constant; }, "tList", "cIteratorBase::operator++()");
  support::expectOutOfBounds([&] { constant++; }, "tList", "cIteratorBase::operator++()");
  support::expectOutOfBounds([&] { *it; }, "tList", "tIterator::operator*()");
  support::expectOutOfBounds([&] { it.operator->(); }, "tList", "tIterator::operator*()");
  support::expectOutOfBounds([&] { *constant; }, "tList", "iterator::operator*()");
  support::expectOutOfBounds([&] { constant.operator->(); }, "tList", "iterator::operator*()");
  EXPECT_TRUE(it == list.end());
  EXPECT_TRUE(constant == list.end());
}

TEST_F(tListTest, SteppingBackLeadsToTheHeadAndNoFurther)
{
  cIntList list;
  list.append(1);
  cIntList::iterator it = list.begin();
  --it;
  support::expectOutOfBounds([&] { *it; }, "tList", "tIterator::operator*()");
  support::expectOutOfBounds([&] { --it; }, "tList", "cIteratorBase::operator--()");
  support::expectOutOfBounds([&] { it--; }, "tList", "cIteratorBase::operator--()");
  ++it;
  EXPECT_EQ(*it, 1);
  cIntList::const_iterator constant = list.begin();
  --constant;
  support::expectOutOfBounds([&] { *constant; }, "tList", "iterator::operator*()");
  support::expectOutOfBounds([&] { --constant; }, "tList", "cIteratorBase::operator--()");
  support::expectOutOfBounds([&] { constant--; }, "tList", "cIteratorBase::operator--()");
}

TEST_F(tListTest, AnIteratorWithoutANodeFailsInEveryOperation)
{
  cIntList::iterator it;
  cIntList::const_iterator constant;
  EXPECT_EQ(it.node(), nullptr);
  EXPECT_FALSE(it.isMarked());
  EXPECT_TRUE(it == constant);
  support::expectOutOfBounds([&] { ++it; }, "tList", "cIteratorBase::operator++()");
  support::expectOutOfBounds([&] { --it; }, "tList", "cIteratorBase::operator--()");
  support::expectOutOfBounds([&] { *it; }, "tList", "tIterator::operator*()");
  support::expectOutOfBounds([&] { *constant; }, "tList", "iterator::operator*()");
  support::expectOutOfBounds([&] { it.eraseLater(); }, "tList", "iterator::eraseLater()");
}

TEST_F(tListTest, IteratorsStepInBothForms)
{
  cIntList list;
  fill(list, 3);
  cIntList::iterator it = list.begin();
  EXPECT_EQ(*it++, 0);
  EXPECT_EQ(*it, 1);
  EXPECT_EQ(*--it, 0);
  it = list.end();
  EXPECT_TRUE(it-- == list.end());
  EXPECT_EQ(*it, 2);
  cIntList::const_iterator constant = list.begin();
  EXPECT_EQ(*constant++, 0);
  EXPECT_EQ(*constant, 1);
  EXPECT_EQ(*constant--, 1);
  EXPECT_EQ(*constant, 0);
  *list.begin() = 9;
  EXPECT_EQ(*constant, 9);
}

TEST_F(tListTest, TheArrowReachesTheElement)
{
  tList<cCountingElement> list;
  list.append(cCountingElement(4));
  EXPECT_EQ(list.begin()->value(), 4);
  tList<cCountingElement>::const_iterator const constant = list.begin();
  EXPECT_EQ(constant->value(), 4);
}

TEST_F(tListTest, ANodeTellsWhetherItIsAnElement)
{
  cIntList list;
  list.append(5);
  EXPECT_EQ(list.end().node()->isElementNode(), nullptr);
  ASSERT_NE(list.begin().node()->isElementNode(), nullptr);
  EXPECT_EQ(list.begin().node()->isElementNode()->value(), 5);
  EXPECT_TRUE(list.begin().node()->isElement());
  EXPECT_FALSE(list.end().node()->isElement());
}

TEST_F(tListTest, TheIteratorBaseHasAVirtualDestructor)
{
  EXPECT_TRUE((std::has_virtual_destructor<cIntList::iterator>::value));
  EXPECT_TRUE((std::has_virtual_destructor<cIntList::const_iterator>::value));
}

TEST_F(tListTest, FindGivesTheFirstEqualElementOrTheEnd)
{
  cIntList list;
  list.append(1);
  list.append(2);
  list.append(1);
  EXPECT_TRUE(list.find(1) == list.begin());
  EXPECT_TRUE(list.find(3) == list.end());
  EXPECT_EQ(*static_cast<cIntList const&>(list).find(2), 2);
}

TEST_F(tListTest, EraseRemovesThroughTheHookAndReturnsWhatFollows)
{
  cNotingList list;
  fill(list, 3);
  tList<cCountingElement>::iterator it = list.erase(at(list, 1));
  EXPECT_EQ(it->value(), 2);
  it = list.erase(it);
  EXPECT_TRUE(it == list.end());
  EXPECT_EQ(list.gone, (std::vector<int>{1, 2}));
  EXPECT_EQ(values(list), std::vector<int>{0});
  support::expectOutOfBounds([&] { list.erase(list.end()); }, "tList", "tList::erase()");
  support::expectOutOfBounds([&] { list.erase(cNotingList::iterator()); }, "tList", "tList::erase()");
}

TEST_F(tListTest, AMarkedNodeIsStillReachedUntilTheSweep)
{
  cIntList list;
  fill(list, 4);
  at(list, 1).eraseLater();
  at(list, 3).eraseLater();
  EXPECT_TRUE(at(list, 1).isMarked());
  EXPECT_FALSE(at(list, 0).isMarked());
  EXPECT_EQ(values(list), (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(list.length(), 4u);
  list.eraseMarked();
  EXPECT_EQ(values(list), (std::vector<int>{0, 2}));
}

TEST_F(tListTest, TheSweepCallsTheHookForEachMarkedNodeInOrder)
{
  cNotingList list;
  fill(list, 6);
  for (int const index : {5, 0, 3})
  {
    at(list, index).eraseLater();
  }
  cCountingElement::reset();
  list.eraseMarked();
  EXPECT_EQ(list.gone, (std::vector<int>{0, 3, 5}));
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{0, 3, 5}));
  EXPECT_EQ(values(list), (std::vector<int>{1, 2, 4}));
}

TEST_F(tListTest, AMarkOnASentinelIsNeverSwept)
{
  cIntList list;
  list.append(1);
  list.end().eraseLater();
  cIntList::iterator head = list.begin();
  --head;
  head.eraseLater();
  list.eraseMarked();
  EXPECT_EQ(values(list), std::vector<int>{1});
}

TEST_F(tListTest, AWalkMayMarkItsOwnElementAndGoOn)
{
  cIntList list;
  fill(list, 10);
  for (cIntList::iterator it = list.begin(); it != list.end(); ++it)
  {
    if (*it % 2 == 0)
    {
      it.eraseLater();
    }
  }
  list.eraseMarked();
  EXPECT_EQ(values(list), (std::vector<int>{1, 3, 5, 7, 9}));
}

TEST_F(tListTest, AHookMaySweepAndAppendDuringTheSweep)
{
  cNotingList list;
  fill(list, 5);
  at(list, 1).eraseLater();
  at(list, 2).eraseLater();
  list.sweepAgain = true;
  list.addAt = 1;
  list.eraseMarked();
  EXPECT_EQ(values(list), (std::vector<int>{0, 3, 4, 101}));
  EXPECT_EQ(list.gone, (std::vector<int>{1, 2}));
  list.addAt = 3;
  list.clear();
  EXPECT_EQ(values(list), std::vector<int>{103});
}

TEST_F(tListTest, AHookThatFailsKeepsTheRestOfTheMarkedNodes)
{
  cNotingList list;
  fill(list, 5);
  for (int const index : {0, 2, 3})
  {
    at(list, index).eraseLater();
  }
  list.failAt = 2;
  EXPECT_THROW(list.eraseMarked(), cCopyFailed);
  EXPECT_EQ(values(list), (std::vector<int>{1, 4, 2, 3}));
  EXPECT_THROW(list.clear(), cCopyFailed);
  EXPECT_EQ(values(list), (std::vector<int>{2, 3}));
  EXPECT_THROW(list.erase(list.begin()), cCopyFailed);
  list.failAt = -1;
  list.eraseMarked();
  EXPECT_TRUE(list.empty());
}

TEST_F(tListTest, ADestructorOfAnElementNeverMeetsItsOwnNode)
{
  std::vector<unsigned int> seen;
  tList<cLooksBack>* current = nullptr;
  {
    tList<cLooksBack> list;
    {
      cLooksBack const element(current, seen);
      list.append(element);
      list.append(element);
      list.append(element);
    }
    current = &list;
    list.erase(list.begin());
    EXPECT_EQ(seen, std::vector<unsigned int>{2});
    seen.clear();
    list.begin().eraseLater();
    list.eraseMarked();
    EXPECT_EQ(seen, std::vector<unsigned int>{1});
    seen.clear();
  }
  EXPECT_EQ(seen, std::vector<unsigned int>{0});
  current = nullptr;
}

TEST_F(tListTest, TheDestructorDestroysInOrder)
{
  {
    tList<cCountingElement> list;
    fill(list, 3);
    cCountingElement::reset();
  }
  EXPECT_EQ(cCountingElement::destroyed(), (std::vector<int>{0, 1, 2}));
}

TEST_F(tListTest, CopiesAreDeepAndUnmarked)
{
  tList<cCountingElement> source;
  fill(source, 3);
  source.begin().eraseLater();
  tList<cCountingElement> copy(source);
  copy.eraseMarked();
  EXPECT_EQ(values(copy), (std::vector<int>{0, 1, 2}));
  copy.begin()->setValue(9);
  EXPECT_EQ(source.begin()->value(), 0);
}

TEST_F(tListTest, AssignmentReplacesThroughTheHook)
{
  cNotingList target;
  fill(target, 2);
  tList<cCountingElement> source;
  source.append(cCountingElement(9));
  static_cast<tList<cCountingElement>&>(target) = source;
  EXPECT_EQ(values(target), std::vector<int>{9});
  EXPECT_EQ(target.gone, (std::vector<int>{0, 1}));
  tList<cCountingElement>& same = source;
  source = same;
  EXPECT_EQ(values(source), std::vector<int>{9});
}

TEST_F(tListTest, AppendNetCopiesTheOtherListBehindThisOne)
{
  cIntList list;
  fill(list, 2);
  cIntList other;
  fill(other, 3);
  list.append_net(other);
  EXPECT_EQ(values(list), (std::vector<int>{0, 1, 0, 1, 2}));
  EXPECT_EQ(values(other), (std::vector<int>{0, 1, 2}));
}

TEST_F(tListTest, AppendNetOfAListToItselfAppendsTheElementsItHad)
{
  cIntList list;
  fill(list, 3);
  list.append_net(list);
  EXPECT_EQ(values(list), (std::vector<int>{0, 1, 2, 0, 1, 2}));
  cIntList none;
  none.append_net(none);
  EXPECT_TRUE(none.empty());
}

TEST_F(tListTest, SpliceMovesNodesWithTheirMarksAndKeepsIterators)
{
  tList<cCountingElement> list;
  fill(list, 2);
  tList<cCountingElement> other;
  fill(other, 3);
  tList<cCountingElement>::iterator const it = other.begin();
  other.begin().eraseLater();
  cCountingElement::reset();
  list.splice(other);
  EXPECT_TRUE(other.empty());
  EXPECT_EQ(values(list), (std::vector<int>{0, 1, 0, 1, 2}));
  EXPECT_EQ(cCountingElement::copies(), 0u);
  EXPECT_TRUE(it == at(list, 2));
  EXPECT_TRUE(it.isMarked());
  list.splice(list);
  list.splice(other);
  EXPECT_EQ(list.length(), 5u);
}

TEST_F(tListTest, SwapExchangesTheElements)
{
  cIntList a;
  fill(a, 3);
  cIntList b;
  b.append(9);
  swap(a, b);
  EXPECT_EQ(values(a), std::vector<int>{9});
  EXPECT_EQ(values(b), (std::vector<int>{0, 1, 2}));
  a.swap(a);
  EXPECT_EQ(values(a), std::vector<int>{9});
  cIntList none;
  none.swap(a);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(values(none), std::vector<int>{9});
}

TEST_F(tListTest, AnElementOfItsOwnMayBeAppended)
{
  tList<cCountingElement> list;
  fill(list, 2);
  list.append(list.first());
  list.prepend(list.last());
  EXPECT_EQ(values(list), (std::vector<int>{0, 0, 1, 0}));
}

TEST_F(tListTest, AFailingCopyLeavesTheListAsItWas)
{
  tList<cCountingElement> list;
  fill(list, 3);
  tList<cCountingElement> other;
  fill(other, 4);
  cCountingElement const element(9);
  cCountingElement::throwAtCopy(1);
  EXPECT_THROW(list.append(element), cCopyFailed);
  cCountingElement::throwAtCopy(1);
  EXPECT_THROW(list.prepend(element), cCopyFailed);
  cCountingElement::throwAtCopy(1);
  EXPECT_THROW(list.insert(list.begin(), element), cCopyFailed);
  for (unsigned int n = 1; n <= 4; ++n)
  {
    cCountingElement::throwAtCopy(n);
    EXPECT_THROW(list.append_net(other), cCopyFailed);
    cCountingElement::throwAtCopy(n);
    EXPECT_THROW(list = other, cCopyFailed);
    cCountingElement::throwAtCopy(n);
    EXPECT_THROW(tList<cCountingElement> copy(other), cCopyFailed);
  }
  EXPECT_EQ(values(list), (std::vector<int>{0, 1, 2}));
}

TEST_F(tListTest, RandomOperationsAgreeWithAPlainModel)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  struct cItem
  {
    int value;
    bool marked;
  };
  for (int round = 0; round < 50; ++round)
  {
    cNotingList list;
    std::list<cItem> model;
    std::vector<int> gone;
    for (int i = 0; i < 300; ++i)
    {
      int const value = static_cast<int>(random() % 1000);
      int const place = model.empty() ? 0 : static_cast<int>(random() % model.size());
      auto const modelPlace = std::next(model.begin(), place);
      switch (random() % 12)
      {
      case 0:
      case 1:
      case 2:
        list.append(cCountingElement(value));
        model.push_back({value, false});
        break;
      case 3:
        list.prepend(cCountingElement(value));
        model.push_front({value, false});
        break;
      case 4:
        list.insert(at(list, place), cCountingElement(value));
        model.insert(modelPlace, {value, false});
        break;
      case 5:
      case 6:
        if (!model.empty())
        {
          gone.push_back(modelPlace->value);
          list.erase(at(list, place));
          model.erase(modelPlace);
        }
        break;
      case 7:
      case 8:
        if (!model.empty())
        {
          at(list, place).eraseLater();
          modelPlace->marked = true;
        }
        break;
      case 9:
        list.eraseMarked();
        for (auto it = model.begin(); it != model.end();)
        {
          if (it->marked)
          {
            gone.push_back(it->value);
            it = model.erase(it);
          }
          else
          {
            ++it;
          }
        }
        break;
      case 10:
        if (model.size() < 40)
        {
          list.append_net(list);
          std::list<cItem> copy(model);
          for (cItem& item : copy)
          {
            item.marked = false;
          }
          model.splice(model.end(), copy);
        }
        break;
      default:
        if (random() % 20 == 0)
        {
          for (cItem const& item : model)
          {
            gone.push_back(item.value);
          }
          list.clear();
          model.clear();
        }
        break;
      }
      std::vector<int> expected;
      for (cItem const& item : model)
      {
        expected.push_back(item.value);
      }
      ASSERT_EQ(values(list), expected);
      ASSERT_EQ(list.gone, gone);
      ASSERT_EQ(list.length(), model.size());
    }
  }
}
