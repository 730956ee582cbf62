#include "std/cAsciiStringStream.h"

#include "std/cNumberConversionFormat.h"
#include "support/rangeChecks.h"

#include <gtest/gtest.h>

#include <limits>

using mstd::cAsciiString;
using support::failureOf;

TEST(cAsciiStringStream, ItAppendsTextsStringsAndNumbers)
{
  cAsciiString a("a");
  EXPECT_EQ(&(a << "b" << cAsciiString("c") << 12ll << -3ll), &a);
  EXPECT_STREQ(a.c_str(), "abc12-3");
}

TEST(cAsciiStringStream, NullIsAnAssertionFailure)
{
  cAsciiString a("a");
  EXPECT_EQ(failureOf([&] { a << static_cast<char const*>(nullptr); }), "bug sCat != 0");
  EXPECT_STREQ(a.c_str(), "a");
}

TEST(cAsciiStringStream, AStringCanBeAppendedToItself)
{
  cAsciiString a("abc");
  a << a << a.c_str();
  EXPECT_STREQ(a.c_str(), "abcabcabcabc");
}

TEST(cAsciiStringStream, NumbersOfEveryWidthKeepTheirValue)
{
  cAsciiString a;
  a << 0 << " " << std::numeric_limits<int>::min() << " " << std::numeric_limits<unsigned int>::max();
  a << " " << std::numeric_limits<long long>::min() << " " << std::numeric_limits<unsigned long long>::max();
  a << " " << -5l << " " << 6ul;
  EXPECT_STREQ(a.c_str(), "0 -2147483648 4294967295 -9223372036854775808 18446744073709551615 -5 6");
}

TEST(cAsciiStringStream, NumbersAreInBaseTenWhateverTheDefaultFormatIs)
{
  mstd::cNumberConversionFormat const before = mstd::cNumberConversionFormat::getGlobalDefaultNumberConversionFormat();
  mpi::system().defaults.numberFormat = mstd::cNumberConversionFormat(16);
  cAsciiString a;
  a << 255ll;
  mpi::system().defaults.numberFormat = before;
  EXPECT_STREQ(a.c_str(), "255");
}
