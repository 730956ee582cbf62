#include "std/tConstListRef.h"

#include "support/expectFailure.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

/// Counts down to 0; the texts of its numbers are its elements. Knows how often it was copied.
class cCountdown : public mstd::tConstListRefNode
{
public:
  explicit cCountdown(int start) : mNumber(start) {}
  cCountdown(cCountdown const& other) : mstd::tConstListRefNode(other), mNumber(other.mNumber) { ++sCopies; }
  cCountdown& operator=(cCountdown const&) = default;

  std::string element() const { return std::to_string(mNumber); }
  void setNext() { --mNumber; }
  bool isEnd() const { return mNumber <= 0; }
  bool operator==(cCountdown const& other) const { return mNumber == other.mNumber; }

  static int sCopies;

private:
  int mNumber;
};

int cCountdown::sCopies = 0;

typedef mstd::tConstListRef<cCountdown> tCountdown;

} // namespace

TEST(tConstListRef, ALoopSeesAllElements)
{
  std::vector<std::string> seen;
  for (std::string const& text : tCountdown(cCountdown(3)))
  {
    seen.push_back(text);
  }
  EXPECT_EQ(seen, (std::vector<std::string>{"3", "2", "1"}));
}

TEST(tConstListRef, ALoopOverNothingDoesNothing)
{
  tCountdown const list(cCountdown(0));
  EXPECT_TRUE(list.empty());
  EXPECT_TRUE(list.begin() == list.end());
}

TEST(tConstListRef, ItIsWalkedAgainFromItsBeginning)
{
  tCountdown const list(cCountdown(2));
  EXPECT_FALSE(list.empty());
  for (int i = 0; i < 2; ++i)
  {
    tCountdown::const_iterator at = list.begin();
    EXPECT_EQ(*at, "2");
    EXPECT_EQ((++at)->size(), 1u);
    EXPECT_EQ(*at, "1");
    EXPECT_TRUE(++at == list.end());
  }
}

TEST(tConstListRef, CopiesOfAnIteratorGoTheirOwnWays)
{
  tCountdown::const_iterator first;
  {
    tCountdown const list(cCountdown(3));
    first = list.begin();
  }
  tCountdown::const_iterator second(first);
  EXPECT_TRUE(second == first);
  EXPECT_EQ(*second++, "3");
  EXPECT_TRUE(second != first);
  EXPECT_EQ(*first, "3");
  EXPECT_EQ(*second, "2");
  first = second;
  EXPECT_EQ(*first, "2");
  tCountdown::const_iterator const moved(std::move(second));
  EXPECT_EQ(*moved, "2");
  first = tCountdown::const_iterator();
  EXPECT_TRUE(first.isEnd());
}

TEST(tConstListRef, TheEndIsTheEndOfAllLists)
{
  tCountdown const list(cCountdown(1));
  tCountdown::const_iterator at = list.begin();
  EXPECT_FALSE(at.isEnd());
  EXPECT_FALSE(at == list.end());
  EXPECT_FALSE(list.end() == at);
  ++at;
  EXPECT_TRUE(at.isEnd());
  EXPECT_TRUE(at == list.end());
  EXPECT_TRUE(list.end() == at);
  EXPECT_TRUE(list.end() == tCountdown(cCountdown(5)).end());
}

TEST(tConstListRef, NothingStandsBehindTheEnd)
{
  tCountdown const list(cCountdown(0));
  tCountdown::const_iterator at = list.begin();
  support::expectOutOfBounds([&] { *at; }, "tConstListRef", "tConstListRef::operator*()");
  support::expectOutOfBounds([&] { at->size(); }, "tConstListRef", "tConstListRef::operator*()");
  support::expectOutOfBounds([&] { ++at; }, "tConstListRef", "tConstListRef::operator++()");
  support::expectOutOfBounds([] { ++tCountdown::const_iterator(); }, "tConstListRef", "tConstListRef::operator++()");
}

TEST(tConstListRef, OnlyABeginningIsCopied)
{
  tCountdown const list(cCountdown(3));
  cCountdown::sCopies = 0;
  for (tCountdown::const_iterator at = list.begin(); at != list.end(); ++at)
  {
    EXPECT_FALSE((*at).empty());
  }
  EXPECT_EQ(cCountdown::sCopies, 1);
}
