#include "std/cNumberConversionException.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using mstd::cNumberConversionException;
using support::messageOf;
using support::toString;

TEST(cNumberConversionException, ItNamesTextAndIndex)
{
  cNumberConversionException const e("12x4", 2);
  EXPECT_EQ("Number conversion error. \"12x4\" contains invalid characters at index 2!", messageOf(e));
  EXPECT_EQ("Number conversion error. \"%string%\" contains invalid characters at index %index%!",
            toString(e.liMessage()->key()));
  EXPECT_EQ("12x4", toString(e.errornousNumber()));
  EXPECT_EQ(2u, e.errornousIndex());
  EXPECT_EQ("cNumberConversionException", toString(e.typeName()));
  EXPECT_STREQ("runtime", e.what());
}

TEST(cNumberConversionException, ATextWithAZeroByteIsKeptWhole)
{
  mstd::cAsciiString text("1");
  text.append('\0');
  text.append('2');
  EXPECT_EQ(std::string("1\0002", 3), toString(cNumberConversionException(text, 1).errornousNumber()));
}

TEST(cNumberConversionException, TheDefaultOneIsEmpty)
{
  cNumberConversionException const e;
  EXPECT_EQ("", toString(e.errornousNumber()));
  EXPECT_EQ(0u, e.errornousIndex());
}

TEST(cNumberConversionException, CopySwapAndAssignmentCarryEverything)
{
  cNumberConversionException const e("12x4", 2);
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  cNumberConversionException assigned;
  assigned = dynamic_cast<cNumberConversionException const&>(*clone);
  cNumberConversionException swapped;
  swapped.swap(assigned);
  EXPECT_EQ(messageOf(e), messageOf(swapped));
  EXPECT_EQ("12x4", toString(swapped.errornousNumber()));
  EXPECT_EQ(2u, swapped.errornousIndex());
}
