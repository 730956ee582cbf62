#include "std/tTokenizerContext.h"

#include "std/cAsciiString.h"

#include <gtest/gtest.h>
#include <type_traits>

namespace
{
typedef mstd::tTokenizerContext<mstd::cAsciiString> tContext;
typedef tContext::cTokenSpec cTokenSpec;
} // namespace

TEST(tTokenizerContext, SpecsStandInTheOrderOfAdding)
{
  tContext context;
  EXPECT_EQ(context.length(), 0u);
  cTokenSpec& blank = context.addSeparator(" ");
  cTokenSpec& equals = context.addKey("=", 7);
  ASSERT_EQ(context.length(), 2u);
  EXPECT_EQ(&context.spec(0), &blank);
  EXPECT_EQ(&context.spec(1), &equals);
  for (int i = 0; i < 100; ++i)
  {
    context.addKey("x", 9);
  }
  EXPECT_EQ(&context.spec(0), &blank);
}

TEST(tTokenizerContext, ASeparatorHasId0)
{
  tContext context;
  cTokenSpec const& spec = context.addSeparator(", ");
  EXPECT_EQ(spec.type(), mstd::cAbstractTokenSpec::Separator);
  EXPECT_EQ(static_cast<int>(spec.type()), 0);
  EXPECT_FALSE(spec.isKey());
  EXPECT_EQ(spec.id(), 0u);
  EXPECT_EQ(spec.priority(), 0u);
  EXPECT_STREQ(spec.text().c_str(), ", ");
}

TEST(tTokenizerContext, AKeyHasTheIdOfItsCaller)
{
  tContext context;
  cTokenSpec const& spec = context.addKey("include", 4294967295u);
  EXPECT_EQ(spec.type(), mstd::cAbstractTokenSpec::Key);
  EXPECT_EQ(static_cast<int>(spec.type()), 1);
  EXPECT_TRUE(spec.isKey());
  EXPECT_EQ(spec.id(), 4294967295u);
  EXPECT_EQ(spec.priority(), 0u);
  EXPECT_STREQ(spec.text().c_str(), "include");
}

TEST(tTokenizerContext, AHintCountsInTheSpecAndInTheOuterCounter)
{
  unsigned int counter = 40;
  tContext context;
  cTokenSpec& spec = context.addKey("k", 1);
  EXPECT_EQ(spec.numHints(), 0u);
  spec.hint();
  EXPECT_EQ(spec.numHints(), 1u);
  spec.leaveCount(&counter);
  spec.hint();
  EXPECT_EQ(spec.numHints(), 2u);
  EXPECT_EQ(counter, 41u);
  spec.leaveCount(nullptr);
  spec.setHints(10);
  spec.hint();
  EXPECT_EQ(spec.numHints(), 11u);
  EXPECT_EQ(counter, 41u);
}

TEST(tTokenizerContext, TheQuoteIsEmptyAtFirst)
{
  tContext context;
  EXPECT_EQ(context.singleQuote().length(), 0u);
  context.setSingleQuote("\\");
  EXPECT_STREQ(context.singleQuote().c_str(), "\\");
}

TEST(tTokenizerContext, IsNotCopied)
{
  EXPECT_FALSE(std::is_copy_constructible<tContext>::value);
  EXPECT_FALSE(std::is_copy_assignable<tContext>::value);
  EXPECT_TRUE(std::has_virtual_destructor<tContext>::value);
  EXPECT_TRUE(std::has_virtual_destructor<mstd::cAbstractTokenSpec>::value);
}
