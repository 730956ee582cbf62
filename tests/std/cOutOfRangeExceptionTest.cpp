#include "std/cOutOfRangeException.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

using mstd::cOutOfRangeException;
using support::messageOf;
using support::toString;

namespace
{
cOutOfRangeException make(int type)
{
  return cOutOfRangeException("tVector", "at", static_cast<cSTDExceptions::OutOfRangeType>(type), 9, 1, 5);
}
} // namespace

TEST(cOutOfRangeException, EachTypeHasItsWording)
{
  EXPECT_EQ("Index out of range in tVector / at. The index should be between 1 - 5 but is 9!", messageOf(make(0)));
  EXPECT_EQ("Value out of range in tVector / at. The value should be between 1 and 5 but is 9!", messageOf(make(1)));
  EXPECT_EQ("Size is out of range in tVector / at. The size must be a value 1 and 5 but is 9!", messageOf(make(2)));
  EXPECT_EQ("Index or size is out of range in tVector / at. The value must be between 1 and 5 but is 9!",
            messageOf(make(3)));
  EXPECT_EQ("End-value is out of range in tVector / at. The value must be between 1 and 5 but is 9!",
            messageOf(make(4)));
}

TEST(cOutOfRangeException, TheKeysAreThoseOfTheTranslations)
{
  EXPECT_EQ(
      "Index out of range in %container% / %operation%. The index should be between %min% - %max% but is %index%!",
      toString(make(0).liMessage()->key()));
  EXPECT_EQ("Value out of range in %container% / %operation%. The value should be between %min% and %max% but is "
            "%index%!",
            toString(make(1).liMessage()->key()));
  EXPECT_EQ(
      "Size is out of range in %container% / %operation%. The size must be a value %min% and %max% but is %size%!",
      toString(make(2).liMessage()->key()));
  EXPECT_EQ("Index or size is out of range in %container% / %operation%. The value must be between %min% and %max% but "
            "is %value%!",
            toString(make(3).liMessage()->key()));
  EXPECT_EQ("End-value is out of range in %container% / %operation%. The value must be between %min% and %max% but is "
            "%value%!",
            toString(make(4).liMessage()->key()));
  for (int type = 0; type < 5; ++type)
  {
    EXPECT_TRUE(make(type).liMessage()->isTranslatable());
  }
}

TEST(cOutOfRangeException, AnyOtherTypeReadsAsAnIndex)
{
  cOutOfRangeException const e = make(7);
  EXPECT_EQ(7, static_cast<int>(e.outOfRangeType()));
  EXPECT_EQ(0u, messageOf(e).find("Index out of range in tVector / at."));
}

TEST(cOutOfRangeException, NullNamesReadUnknown)
{
  cOutOfRangeException const e(nullptr, nullptr, cSTDExceptions::IndexOutOfRange, 9, 1, 5);
  EXPECT_EQ("Index out of range in unknown / unknown. The index should be between 1 - 5 but is 9!", messageOf(e));
}

TEST(cOutOfRangeException, ItHoldsItsBounds)
{
  long long const least = std::numeric_limits<long long>::min();
  long long const most = std::numeric_limits<long long>::max();
  cOutOfRangeException const e("c", "o", cSTDExceptions::ValueOutOfRange, least, least + 1, most);
  EXPECT_EQ(cSTDExceptions::ValueOutOfRange, e.outOfRangeType());
  EXPECT_EQ(least, e.errornousValue());
  EXPECT_EQ(least + 1, e.minValue());
  EXPECT_EQ(most, e.maxValue());
  EXPECT_EQ("c", toString(e.container()));
  EXPECT_EQ("o", toString(e.operation()));
  EXPECT_STREQ("bug", e.what());
  EXPECT_EQ("cOutOfRangeException", toString(e.typeName()));
}

TEST(cOutOfRangeException, TheDefaultOneHasEmptyArguments)
{
  cOutOfRangeException const e;
  EXPECT_EQ(cSTDExceptions::IndexOutOfRange, e.outOfRangeType());
  EXPECT_EQ(0, e.errornousValue());
  EXPECT_EQ(0, e.minValue());
  EXPECT_EQ(0, e.maxValue());
}

TEST(cOutOfRangeException, CopySwapAndAssignmentCarryEverything)
{
  cOutOfRangeException const e = make(3);
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  cOutOfRangeException const& copy = dynamic_cast<cOutOfRangeException const&>(*clone);
  cOutOfRangeException assigned;
  assigned = e;
  cOutOfRangeException swapped;
  cOutOfRangeException(e).swap(swapped);
  for (cOutOfRangeException const* each :
       {&copy, static_cast<cOutOfRangeException const*>(&assigned), static_cast<cOutOfRangeException const*>(&swapped)})
  {
    EXPECT_EQ(cSTDExceptions::IndexOrSizeOutOfRange, each->outOfRangeType());
    EXPECT_EQ(9, each->errornousValue());
    EXPECT_EQ(1, each->minValue());
    EXPECT_EQ(5, each->maxValue());
    EXPECT_EQ("tVector", toString(each->container()));
    EXPECT_EQ("at", toString(each->operation()));
    EXPECT_EQ(messageOf(e), messageOf(*each));
  }
}
