#include "std/cNumberConversionFormat.h"

#include "pi/cSystem.h"
#include "std/cAsciiString.h"
#include "std/cRuntimeException.h"
#include "support/messageOf.h"
#include "support/rangeChecks.h"

#include <gtest/gtest.h>
#include <string>

using mstd::cNumberConversionFormat;

namespace
{

struct cPrefix
{
  bool found;
  unsigned int base;
  unsigned int length;
};

cPrefix detect(char const* text)
{
  cPrefix prefix{true, 99, 99};
  prefix.found = cNumberConversionFormat(10).detectBase(mstd::cAsciiString(text), prefix.base, prefix.length);
  return prefix;
}

void expectPrefix(char const* text, unsigned int base, unsigned int length)
{
  cPrefix const prefix = detect(text);
  EXPECT_TRUE(prefix.found) << text;
  EXPECT_EQ(prefix.base, base) << text;
  EXPECT_EQ(prefix.length, length) << text;
}

void expectNoPrefix(char const* text)
{
  cPrefix const prefix = detect(text);
  EXPECT_FALSE(prefix.found) << text;
  EXPECT_EQ(prefix.base, 0u) << text;
  EXPECT_EQ(prefix.length, 0u) << text;
}

} // namespace

TEST(cNumberConversionFormat, AFreshFormatHasTheDefaults)
{
  cNumberConversionFormat const format(16);
  EXPECT_EQ(format.base(), 16u);
  EXPECT_EQ(format.fixedWidth(), 0u);
  EXPECT_EQ(format.leadingDigit(), '0');
  EXPECT_EQ(format.digitCase(), cNumberConversionFormat::LowerCase);
  EXPECT_TRUE(format.ignoreLeadingSpaces());
  EXPECT_TRUE(format.baseDetectionEnabled());
  EXPECT_STREQ(format.getDigitSymbolSet(), "0123456789abcdefghijklmnopqrstuvwxyz");
  EXPECT_EQ(format.precision(), 14u);
  EXPECT_TRUE(format.isRemoveTrainlingZeros());
  EXPECT_TRUE(format.isAddIntegerPart());
  EXPECT_TRUE(format.isAddFractionalPart());
}

TEST(cNumberConversionFormat, EachSetterSetsItsFieldOnly)
{
  cNumberConversionFormat format(10);
  format.setBase(36);
  format.setFixedWidth(7);
  format.setLeadingDigit(' ');
  format.setIgnoreLeadingSpaces(false);
  format.setBaseDetectionEnabled(false);
  format.setPrecision(3);
  format.setRemoveTrailingZeros(false);
  format.addIntegerPart(false);
  format.addFractionalPart(false);
  EXPECT_EQ(format.base(), 36u);
  EXPECT_EQ(format.fixedWidth(), 7u);
  EXPECT_EQ(format.leadingDigit(), ' ');
  EXPECT_EQ(format.digitCase(), cNumberConversionFormat::LowerCase);
  EXPECT_FALSE(format.ignoreLeadingSpaces());
  EXPECT_FALSE(format.baseDetectionEnabled());
  EXPECT_EQ(format.precision(), 3u);
  EXPECT_FALSE(format.isRemoveTrainlingZeros());
  EXPECT_FALSE(format.isAddIntegerPart());
  EXPECT_FALSE(format.isAddFractionalPart());
}

TEST(cNumberConversionFormat, TheDigitCaseReplacesTheWholeSymbolSet)
{
  EXPECT_EQ(static_cast<int>(cNumberConversionFormat::UpperCase), 0);
  EXPECT_EQ(static_cast<int>(cNumberConversionFormat::LowerCase), 1);
  cNumberConversionFormat format(10);
  format.setDigitSymbol(0, 'o');
  format.setDigitCase(cNumberConversionFormat::UpperCase);
  EXPECT_EQ(format.digitCase(), cNumberConversionFormat::UpperCase);
  EXPECT_STREQ(format.getDigitSymbolSet(), "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  format.setDigitCase(static_cast<cNumberConversionFormat::DigitCase>(7));
  EXPECT_STREQ(format.getDigitSymbolSet(), "0123456789abcdefghijklmnopqrstuvwxyz");
}

TEST(cNumberConversionFormat, SingleSymbolsCanBeReplaced)
{
  cNumberConversionFormat format(10);
  format.setDigitSymbol(1, 'I');
  format.setDigitSymbol(35, '#');
  EXPECT_EQ(format.digitChar(1), 'I');
  EXPECT_EQ(format.digitChar(35), '#');
  EXPECT_EQ(format.digitChar(36), '\0');
  EXPECT_STREQ(format.getDigitSymbolSet(), "0I23456789abcdefghijklmnopqrstuvwxy#");
  format.setDigitSymbol(36, '!');
  EXPECT_EQ(format.digitChar(36), '!');
  EXPECT_EQ(std::string(format.getDigitSymbolSet()).size(), 37u);
}

TEST(cNumberConversionFormat, ADigitIndexBehindTheSetIsOutOfRange)
{
  cNumberConversionFormat format(10);
  EXPECT_EQ(support::failureOf([&] { format.digitChar(37); }), "range DigitSymbols/at 0 37 0 36");
  EXPECT_EQ(support::failureOf([&] { format.setDigitSymbol(37, 'x'); }), "range DigitSymbols/at 0 37 0 36");
  EXPECT_EQ(support::failureOf([&] { format.digitChar(4294967295u); }), "range DigitSymbols/at 0 4294967295 0 36");
}

TEST(cNumberConversionFormat, BasesOutside2To36Fail)
{
  cNumberConversionFormat format(10);
  for (unsigned int base : {0u, 1u, 37u, 4294967295u})
  {
    std::string const text = "Invalid base for a decimal. The base must be between 2 and 36 but is " +
                             std::to_string(static_cast<int>(base)) + "!";
    EXPECT_EQ(support::messageOf<mstd::cRuntimeException>([&] { format.setBase(base); }), text);
    EXPECT_EQ(support::messageOf<mstd::cRuntimeException>([&] { cNumberConversionFormat wrong(base); }), text);
    EXPECT_EQ(format.base(), 10u);
  }
  format.setBase(2);
  EXPECT_EQ(format.base(), 2u);
  format.setBase(36);
  EXPECT_EQ(format.base(), 36u);
}

TEST(cNumberConversionFormat, PrefixesOfBasesAreDetected)
{
  expectPrefix("0x1", 16, 2);
  expectPrefix("0h1", 16, 2);
  expectPrefix("0d1", 10, 2);
  expectPrefix("0b1", 2, 2);
  expectPrefix("<1>", 1, 3);
  expectPrefix("<8>17", 8, 3);
  expectPrefix("<08>1", 8, 4);
  expectPrefix("<36>", 36, 4);
  expectPrefix("<base:8>", 8, 8);
  expectPrefix("<base:36>z", 36, 9);
}

TEST(cNumberConversionFormat, WhatOnlyLooksLikeAPrefixIsNone)
{
  for (char const* text :
       {"",      "0",        "0x",        "<8",       "12345678", "0X1",        "0c1",      "x01",     "<0>1",
        "<37>1", "<8",       "<8]",       "<>1",      "<123>",    "<a>1",       "<8a",      "<-8>",    " 0x1",
        "-0x1",  "<base:0>", "<base:37>", "<base:>1", "<base:8]", "<base:123>", "<Base:8>", "<base:8", "<base:1"})
  {
    expectNoPrefix(text);
  }
}

TEST(cNumberConversionFormat, TheDefaultFormatBelongsToTheSystem)
{
  cNumberConversionFormat& format = cNumberConversionFormat::getGlobalDefaultNumberConversionFormat();
  EXPECT_EQ(&format, &mpi::system().defaults.numberFormat);
  EXPECT_EQ(format.base(), 10u);
}
