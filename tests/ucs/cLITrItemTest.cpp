#include "ucs/cLITrItem.h"

#include "textSupport.h"

#include <gtest/gtest.h>

#include <utility>

namespace
{

using mucs::cLITrItem;
using mucs::cString;

TEST(cLITrItem, IsEmptyAtFirst)
{
  cLITrItem const item;
  EXPECT_TRUE(item.key().empty());
  EXPECT_TRUE(item.translation().empty());
}

TEST(cLITrItem, HoldsCopiesOfItsTexts)
{
  mstd::cAsciiString sKey("key");
  cString sTranslation(L"Schl\xFCssel");
  cLITrItem const item(sKey, sTranslation);
  sKey = "other";
  sTranslation = "other";
  EXPECT_STREQ(item.key().c_str(), "key");
  EXPECT_EQ(item.translation(), cString(L"Schl\xFCssel"));
}

TEST(cLITrItem, TakesTemporariesOver)
{
  mstd::cAsciiString sKey("a key of more than the thirty-two bytes of a pool");
  cString sTranslation("text");
  char const* const pKey = sKey.c_str();
  unsigned int const* const pTranslation = sTranslation.data();
  cLITrItem const item(std::move(sKey), std::move(sTranslation));
  EXPECT_EQ(item.key().c_str(), pKey);
  EXPECT_EQ(item.translation().data(true), pTranslation);
}

} // namespace
