#include "std/tStack.h"

#include "support/cCountingElement.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

using mstd::tStack;
using support::cCountingElement;

TEST(tStack, WhatIsPushedLastComesFirst)
{
  tStack<int> stack;
  EXPECT_TRUE(stack.empty());
  for (int i = 0; i < 100; ++i)
  {
    stack.push(i);
  }
  EXPECT_EQ(stack.length(), 100u);
  for (int i = 99; i >= 0; --i)
  {
    EXPECT_EQ(stack.top(), i);
    stack.pop();
  }
  EXPECT_TRUE(stack.empty());
}

TEST(tStack, TheTopMayBeChanged)
{
  tStack<int> stack;
  stack.push(1);
  stack.top() = 5;
  tStack<int> const& constant = stack;
  EXPECT_EQ(constant.top(), 5);
}

TEST(tStack, AnElementStaysInPlaceWhileOthersComeAndGo)
{
  tStack<cCountingElement> stack;
  stack.push(cCountingElement(1));
  cCountingElement const* const first = &stack.top();
  for (int i = 0; i < 50; ++i)
  {
    stack.push(cCountingElement(2));
  }
  for (int i = 0; i < 50; ++i)
  {
    stack.pop();
  }
  EXPECT_EQ(&stack.top(), first);
  stack.push(stack.top());
  EXPECT_EQ(stack.top().value(), 1);
  stack.clear();
  EXPECT_TRUE(stack.empty());
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST(tStack, TopAndPopOfAnEmptyOneAreOutOfBounds)
{
  tStack<int> stack;
  tStack<int> const& constant = stack;
  support::expectOutOfBounds([&] { stack.top(); }, "tStack", "top");
  support::expectOutOfBounds([&] { constant.top(); }, "tStack", "top");
  support::expectOutOfBounds([&] { stack.pop(); }, "tStack", "pop");
}

TEST(tStack, AFailingCopyLeavesTheStackAsItWas)
{
  tStack<cCountingElement> stack;
  stack.push(cCountingElement(1));
  cCountingElement const element(2);
  cCountingElement::throwAtCopy(1);
  EXPECT_THROW(stack.push(element), support::cCopyFailed);
  EXPECT_EQ(stack.length(), 1u);
  EXPECT_EQ(stack.top().value(), 1);
}
