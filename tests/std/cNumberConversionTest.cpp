#include "std/cNumberConversion.h"

#include "std/cNumberConversionFormat.h"
#include "std/cRuntimeException.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"
#include "std/tConstArrayRef.h"
#include "support/cAllocationFault.h"
#include "support/messageOf.h"
#include "ucs/cString.h"

#include <cfenv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <random>
#include <string>
#include <vector>

#ifndef MORTISE_TEST_DATA_DIR
#define MORTISE_TEST_DATA_DIR "tests/reference"
#endif

using mstd::cAsciiString;
using mstd::cNumberConversion;
using mstd::cNumberConversionFormat;

namespace
{

std::string str(cAsciiString const& text)
{
  return std::string(text.c_str(), text.length());
}

std::string str(mstd::tArray<char> const& text)
{
  return std::string(text.data(true), text.length());
}

std::string str(mucs::cString const& text)
{
  std::string result;
  for (unsigned int i = 0; i < text.length(); ++i)
  {
    EXPECT_LT(text.at(i), 256u);
    result += static_cast<char>(text.at(i));
  }
  return result;
}

mstd::tArray<char> bytes(std::string const& text)
{
  mstd::tArray<char> result;
  result.append(text.data(), static_cast<unsigned int>(text.size()));
  return result;
}

/// The value, or "!" and the index of the character that the failure names.
template <class Function>
std::string outcome(std::string const& text, Function function)
{
  try
  {
    return function();
  }
  catch (mstd::cRuntimeException const& e)
  {
    std::string const message = support::messageOf(e);
    std::string shown = text;
    for (char& c : shown)
    {
      c = static_cast<unsigned char>(c) > 127 ? '?' : c; // the message is read as ASCII here
    }
    std::string const head = "Invalid decimal number (\"" + shown + "\"). Character at index ";
    std::string const tail = " not points to digit!";
    if (message.compare(0, head.size(), head) != 0 || message.size() < head.size() + tail.size() ||
        message.substr(message.size() - tail.size()) != tail)
    {
      return "unexpected message: " + message;
    }
    return "!" + message.substr(head.size(), message.size() - head.size() - tail.size());
  }
}

/// Reads `text` through all three kinds of strings and expects one outcome.
std::string read(std::string const& text, cNumberConversionFormat const& format)
{
  cAsciiString ascii;
  ascii.append(text.data(), static_cast<unsigned int>(text.size()));
  mucs::cString wide;
  wide.appendC(text.data(), static_cast<unsigned int>(text.size()));
  mstd::tArray<char> const array = bytes(text);
  mstd::tConstArrayRef<char> const view(array);
  std::string const first = outcome(text, [&] { return std::to_string(cNumberConversion::fromString(ascii, format)); });
  EXPECT_EQ(outcome(text, [&] { return std::to_string(cNumberConversion::fromString(wide, format)); }), first) << text;
  EXPECT_EQ(outcome(text, [&] { return std::to_string(cNumberConversion::fromString(view, format)); }), first) << text;
  return first;
}

std::string read(std::string const& text)
{
  return read(text, cNumberConversionFormat(10));
}

std::string bitsOf(double value)
{
  unsigned long long bits;
  std::memcpy(&bits, &value, sizeof(bits));
  char buffer[17];
  std::snprintf(buffer, sizeof(buffer), "%016llx", bits);
  return buffer;
}

double fromBits(std::string const& text)
{
  unsigned long long const bits = std::strtoull(text.c_str(), nullptr, 16);
  double value;
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

std::string readDouble(std::string const& text, cNumberConversionFormat const& format = cNumberConversionFormat(10))
{
  cAsciiString ascii;
  ascii.append(text.data(), static_cast<unsigned int>(text.size()));
  mucs::cString wide;
  wide.appendC(text.data(), static_cast<unsigned int>(text.size()));
  mstd::tArray<char> const array = bytes(text);
  mstd::tConstArrayRef<char> const view(array);
  std::string const first = outcome(text, [&] { return bitsOf(cNumberConversion::fromStringToDouble(ascii, format)); });
  EXPECT_EQ(outcome(text, [&] { return bitsOf(cNumberConversion::fromStringToDouble(wide, format)); }), first) << text;
  EXPECT_EQ(outcome(text, [&] { return bitsOf(cNumberConversion::fromStringToDouble(view, format)); }), first) << text;
  return first;
}

template <class Integer>
std::string write(Integer value, cNumberConversionFormat const& format)
{
  std::string const result = str(cNumberConversion::toString(value, format));
  cAsciiString ascii("a=");
  cNumberConversion::toString(ascii, value, format);
  EXPECT_EQ(str(ascii), "a=" + result);
  mucs::cString wide("w=");
  cNumberConversion::toString(wide, value, format);
  EXPECT_EQ(str(wide), "w=" + result);
  mstd::tArray<char> array("b=");
  cNumberConversion::toString(array, value, format);
  EXPECT_EQ(str(array), "b=" + result);
  return result;
}

std::string writeDouble(double value, cNumberConversionFormat const& format = cNumberConversionFormat(10))
{
  std::string const result = str(cNumberConversion::toStringFromDouble(value, format));
  std::string const replaced = std::isfinite(value) ? "x=" : "";
  cAsciiString ascii("x=");
  cNumberConversion::toStringFromDouble(ascii, value, format);
  EXPECT_EQ(str(ascii), replaced + result);
  mucs::cString wide("x=");
  cNumberConversion::toStringFromDouble(wide, value, format);
  EXPECT_EQ(str(wide), replaced + result);
  mstd::tArray<char> array("<x=>");
  mstd::tArrayRef<char> view(array, 1, 2);
  cNumberConversion::toStringFromDouble(view, value, format);
  EXPECT_EQ(str(array), "<" + replaced + result + ">");
  EXPECT_EQ(view.length(), replaced.size() + result.size());
  return result;
}

std::vector<std::string> fieldsOf(std::string const& line)
{
  std::vector<std::string> fields;
  std::string::size_type start = 0;
  for (;;)
  {
    std::string::size_type const tab = line.find('\t', start);
    fields.push_back(line.substr(start, tab - start));
    if (tab == std::string::npos)
    {
      return fields;
    }
    start = tab + 1;
  }
}

cNumberConversionFormat plain(unsigned int base)
{
  cNumberConversionFormat format(base);
  format.setBaseDetectionEnabled(false);
  return format;
}

} // namespace

// --- all the reference says ---

TEST(cNumberConversion, EveryNumberOfTheGoldenTableComesOutAsTheReferenceSays)
{
  std::ifstream file(MORTISE_TEST_DATA_DIR "/numbers.golden", std::ios::binary);
  ASSERT_TRUE(file.is_open());
  std::string line;
  unsigned int numLines = 0;
  unsigned int numKinds[4] = {};
  while (std::getline(file, line))
  {
    ++numLines;
    std::vector<std::string> const fields = fieldsOf(line);
    SCOPED_TRACE("line " + std::to_string(numLines) + ": " + line);
    if (fields[0] == "whole")
    {
      ASSERT_EQ(fields.size(), 7u);
      ++numKinds[0];
      cNumberConversionFormat format(static_cast<unsigned int>(std::stoul(fields[2])));
      format.setFixedWidth(static_cast<unsigned int>(std::stoul(fields[3])));
      format.setLeadingDigit(fields[4][0]);
      format.setDigitCase(fields[5] == "upper" ? cNumberConversionFormat::UpperCase
                                               : cNumberConversionFormat::LowerCase);
      if (fields[1][0] != '-')
      {
        EXPECT_EQ(write(std::stoull(fields[1]), format), fields[6]);
      }
      if (std::strtoull(fields[1].c_str(), nullptr, 10) >> 63 == 0 || fields[1][0] == '-')
      {
        EXPECT_EQ(write(std::stoll(fields[1]), format), fields[6]);
      }
    }
    else if (fields[0] == "fraction")
    {
      ASSERT_EQ(fields.size(), 5u);
      ++numKinds[1];
      cNumberConversionFormat format(10);
      format.setPrecision(static_cast<unsigned int>(std::stoul(fields[2])));
      format.setRemoveTrailingZeros(fields[3][0] == '1');
      format.addIntegerPart(fields[3][1] == '1');
      format.addFractionalPart(fields[3][2] == '1');
      EXPECT_EQ(writeDouble(fromBits(fields[1]), format), fields[4]);
    }
    else if (fields[0] == "read")
    {
      ASSERT_EQ(fields.size(), 5u);
      ++numKinds[2];
      cNumberConversionFormat format(static_cast<unsigned int>(std::stoul(fields[1])));
      format.setBaseDetectionEnabled(fields[2] == "1");
      EXPECT_EQ(read(fields[4], format), fields[3]);
    }
    else
    {
      ASSERT_EQ(fields[0], "readfraction");
      ASSERT_EQ(fields.size(), 3u);
      ++numKinds[3];
      EXPECT_EQ(readDouble(fields[2]), fields[1]);
    }
    if (HasFailure())
    {
      break; // one line tells enough
    }
  }
  EXPECT_GE(numKinds[0], 500u);
  EXPECT_GE(numKinds[1], 500u);
  EXPECT_GE(numKinds[2], 500u);
  EXPECT_GE(numKinds[3], 500u);
}

// --- whole number to text ---

TEST(cNumberConversion, WholeNumbersReadBackInEveryBase)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937_64 random(seed);
  for (unsigned int base = 2; base <= 36; ++base)
  {
    for (int i = 0; i < 100; ++i)
    {
      long long const value = static_cast<long long>(random()) >> (random() % 64);
      ASSERT_EQ(read(write(value, plain(base)), plain(base)), std::to_string(value)) << "base " << base;
    }
  }
}

TEST(cNumberConversion, TheLimitsOf64BitsAreWritten)
{
  EXPECT_EQ(write(std::numeric_limits<long long>::min(), plain(10)), "-9223372036854775808");
  EXPECT_EQ(write(std::numeric_limits<long long>::max(), plain(10)), "9223372036854775807");
  EXPECT_EQ(write(std::numeric_limits<unsigned long long>::max(), plain(10)), "18446744073709551615");
  EXPECT_EQ(write(std::numeric_limits<long long>::min(), plain(2)), "-1" + std::string(63, '0'));
}

TEST(cNumberConversion, HexadecimalNumbersOfEveryLengthAreWrittenInEitherCase)
{
  cNumberConversionFormat lower(16);
  cNumberConversionFormat upper(16);
  upper.setDigitCase(cNumberConversionFormat::UpperCase);
  cNumberConversionFormat spelled(16); // upper case, one by one
  for (unsigned int digit = 10; digit < 36; ++digit)
  {
    spelled.setDigitSymbol(digit, upper.digitChar(digit));
  }
  unsigned long long const pattern = 0x9ABCDEF01F2E3D4Cull;
  for (unsigned int shift = 0; shift < 64; ++shift)
  {
    unsigned long long const value = pattern >> shift;
    char expected[2][20];
    std::snprintf(expected[0], sizeof(expected[0]), "%llx", value);
    std::snprintf(expected[1], sizeof(expected[1]), "%llX", value);
    ASSERT_EQ(write(value, lower), expected[0]);
    ASSERT_EQ(write(value, upper), expected[1]);
    ASSERT_EQ(write(value, spelled), expected[1]);
    ASSERT_EQ(write(-static_cast<long long>(value >> 1), lower).front(), value >> 1 == 0 ? '0' : '-');
  }
}

TEST(cNumberConversion, DecimalNumbersOfEveryLengthAreWritten)
{
  unsigned long long power = 1;
  for (unsigned int digits = 1; digits <= 20; ++digits)
  {
    EXPECT_EQ(write(power, plain(10)), "1" + std::string(digits - 1, '0'));
    EXPECT_EQ(write(power - 1, plain(10)), digits == 1 ? "0" : std::string(digits - 1, '9'));
    power *= 10;
  }
  for (unsigned int bits = 0; bits < 64; ++bits)
  {
    EXPECT_EQ(write(1ull << bits, plain(10)), std::to_string(1ull << bits));
    EXPECT_EQ(write((1ull << bits) - 1, plain(10)), std::to_string((1ull << bits) - 1));
  }
}

TEST(cNumberConversion, TheSignStandsInFrontOfThePadding)
{
  cNumberConversionFormat format(10);
  format.setFixedWidth(6);
  EXPECT_EQ(write(-12LL, format), "-00012");
  EXPECT_EQ(write(12LL, format), "000012");
  EXPECT_EQ(write(-123456LL, format), "-123456");
  EXPECT_EQ(write(-12345LL, format), "-12345");
  format.setLeadingDigit(' ');
  EXPECT_EQ(write(-12LL, format), "-   12");
  EXPECT_EQ(write(12ULL, format), "    12");
}

TEST(cNumberConversion, AWidthBeyondEveryNumberIsPadded)
{
  cNumberConversionFormat format(2);
  format.setFixedWidth(1000);
  EXPECT_EQ(write(-5LL, format), "-" + std::string(996, '0') + "101");
  EXPECT_EQ(write(5ULL, format), std::string(997, '0') + "101");
}

TEST(cNumberConversion, AnyAlphabetCanBeWritten)
{
  cNumberConversionFormat format(3);
  format.setDigitSymbol(0, '.');
  format.setDigitSymbol(1, '-');
  format.setDigitSymbol(2, '\xE9');
  EXPECT_EQ(write(11LL, format), "-.\xE9");
  format.setBase(10);
  format.setDigitSymbol(9, 'N');
  EXPECT_EQ(write(1900LL, format), "-N..");
}

TEST(cNumberConversion, ReplacedDigitsStandInTheWholePartAndTheFraction)
{
  cNumberConversionFormat format(10);
  format.setDigitSymbol(0, 'o');
  format.setDigitSymbol(5, 'S');
  EXPECT_EQ(writeDouble(50.5, format), "So.S");
  format.setRemoveTrailingZeros(false);
  format.setPrecision(3);
  EXPECT_EQ(writeDouble(0.5, format), "o.Soo");
}

// --- text to whole number ---

TEST(cNumberConversion, AnEmptyTextIsZero)
{
  EXPECT_EQ(read(""), "0");
  EXPECT_EQ(readDouble(""), bitsOf(0.0));
  EXPECT_EQ(cNumberConversion::fromString(mstd::tConstArrayRef<char>(), plain(10)), 0);
  EXPECT_EQ(cNumberConversion::fromStringToDouble(mstd::tConstArrayRef<char>(), plain(10)), 0.0);
}

TEST(cNumberConversion, TheBaseIsDetectedWhateverTheFormatSays)
{
  EXPECT_EQ(read("0x1F"), "31");
  EXPECT_EQ(read("0x1F", plain(10)), "!1");
  EXPECT_EQ(read("  -0x1F"), "-31");
  EXPECT_EQ(read("0b101"), "5");
  EXPECT_EQ(read("0h7f"), "127");
  EXPECT_EQ(read("0d19", cNumberConversionFormat(36)), "19");
  EXPECT_EQ(read("0d19", plain(36)), std::to_string(13 * 36 * 36 + 36 + 9));
}

TEST(cNumberConversion, APrefixAloneIsNoPrefix)
{
  EXPECT_EQ(read("0x"), "!1");
}

TEST(cNumberConversion, BasesInBracketsAreDetected)
{
  EXPECT_EQ(read("<8>17"), "15");
  EXPECT_EQ(read("<36>z"), "35");
  EXPECT_EQ(read("<37>1"), "!0");
  EXPECT_EQ(read("<1>00"), "0");
  EXPECT_EQ(read("<1>1"), "!3");
  EXPECT_EQ(read("<base:8>17"), "!0");
}

TEST(cNumberConversion, DigitsMatchInEitherCase)
{
  EXPECT_EQ(read("ff", plain(16)), "255");
  EXPECT_EQ(read("FF", plain(16)), "255");
  cNumberConversionFormat format = plain(16);
  format.setDigitCase(cNumberConversionFormat::UpperCase);
  EXPECT_EQ(read("fF", format), "255");
}

TEST(cNumberConversion, DigitsOfOtherAlphabetsAreFoundInOrder)
{
  cNumberConversionFormat format = plain(4);
  format.setDigitSymbol(0, 'a');
  format.setDigitSymbol(1, 'B');
  format.setDigitSymbol(2, 'A');
  format.setDigitSymbol(3, '\xE9');
  EXPECT_EQ(read("bA", format), "4"); // the first of two that differ in case only
  EXPECT_EQ(read("\xE9", format), "3");
  EXPECT_EQ(read("3", format), "!0");
  mucs::cString wide;
  wide.append(0x1E9u);
  EXPECT_EQ(
      support::messageOf<mstd::cRuntimeException>([&] { cNumberConversion::fromString(wide, format); }).substr(0, 22),
      "Invalid decimal number");
}

TEST(cNumberConversion, ACodePointBeyondBytesIsNoDigit)
{
  mucs::cString wide("12");
  wide.append(0x131u); // its low byte is a digit
  EXPECT_THROW(cNumberConversion::fromString(wide, plain(10)), mstd::cRuntimeException);
  EXPECT_THROW(cNumberConversion::fromStringToDouble(wide, plain(10)), mstd::cRuntimeException);
}

TEST(cNumberConversion, SignsCountUpToTheFirstDigit)
{
  EXPECT_EQ(read("-5"), "-5");
  EXPECT_EQ(read("--5"), "5");
  EXPECT_EQ(read("---5"), "-5");
  EXPECT_EQ(read("0x-5"), "-5");
  EXPECT_EQ(read("5-3"), "!1");
  EXPECT_EQ(read("+5"), "!0");
  EXPECT_EQ(read("-"), "0");
}

TEST(cNumberConversion, OnlyBlanksInFrontAreSkipped)
{
  EXPECT_EQ(read("   7"), "7");
  EXPECT_EQ(read("   "), "0");
  EXPECT_EQ(read("\t7"), "!0");
  EXPECT_EQ(read("7 "), "!1");
  cNumberConversionFormat format = plain(10);
  format.setIgnoreLeadingSpaces(false);
  EXPECT_EQ(read(" 7", format), "!0");
  EXPECT_EQ(readDouble(" 7", format), "!0");
}

TEST(cNumberConversion, OverflowWrapsIn64Bits)
{
  EXPECT_EQ(read("18446744073709551615"), "-1");
  EXPECT_EQ(read("18446744073709551617"), "1");
  EXPECT_EQ(read("-9223372036854775808"), "-9223372036854775808");
  EXPECT_EQ(read("9223372036854775808"), "-9223372036854775808");
}

// --- fraction to text ---

TEST(cNumberConversion, TrailingZerosAreRemovedUnlessTheFormatKeepsThem)
{
  EXPECT_EQ(writeDouble(1.5), "1.5");
  cNumberConversionFormat format(10);
  format.setRemoveTrailingZeros(false);
  EXPECT_EQ(writeDouble(1.5, format), "1.50000000000000");
}

TEST(cNumberConversion, AValueBelow1HasTheWholePart0)
{
  EXPECT_EQ(writeDouble(0.5), "0.5");
  EXPECT_EQ(writeDouble(0), "0");
  EXPECT_EQ(writeDouble(-0.5), "-0.5");
}

TEST(cNumberConversion, ZerosOfTheWholePartStay)
{
  EXPECT_EQ(writeDouble(100), "100");
  EXPECT_EQ(writeDouble(1e22), "10000000000000000000000");
  cNumberConversionFormat format(10);
  format.addFractionalPart(false);
  EXPECT_EQ(writeDouble(100, format), "100");
}

TEST(cNumberConversion, TheLastDigitIsRoundedHalfUp)
{
  cNumberConversionFormat format(10);
  format.setPrecision(1);
  EXPECT_EQ(writeDouble(0.25, format), "0.3");
  EXPECT_EQ(writeDouble(-0.25, format), "-0.3");
  EXPECT_EQ(writeDouble(9.96, format), "10");
  format.setPrecision(0);
  EXPECT_EQ(writeDouble(0.5, format), "1");
  EXPECT_EQ(writeDouble(2.4999, format), "2");
}

TEST(cNumberConversion, EachPartCanBeLeftOut)
{
  cNumberConversionFormat format(10);
  format.addIntegerPart(false);
  EXPECT_EQ(writeDouble(-12.75, format), ".75");
  EXPECT_EQ(writeDouble(12, format), "");
  EXPECT_EQ(writeDouble(1e300, format), "");
  format.addFractionalPart(false);
  EXPECT_EQ(writeDouble(-12.75, format), "");
  format.addIntegerPart(true);
  EXPECT_EQ(writeDouble(-12.75, format), "-12");
}

TEST(cNumberConversion, WithPrecision0ThePointStaysOnlyIfZerosStay)
{
  cNumberConversionFormat format(10);
  format.setPrecision(0);
  EXPECT_EQ(writeDouble(7, format), "7");
  format.setRemoveTrailingZeros(false);
  EXPECT_EQ(writeDouble(7, format), "7.");
}

TEST(cNumberConversion, WhatIsNotFiniteReplacesTheTarget)
{
  EXPECT_EQ(writeDouble(std::numeric_limits<double>::infinity()), "+inf");
  EXPECT_EQ(writeDouble(-std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_EQ(writeDouble(std::numeric_limits<double>::quiet_NaN()), "nan");
  cAsciiString empty;
  cNumberConversion::toStringFromDouble(empty, std::numeric_limits<double>::infinity(), plain(10));
  EXPECT_EQ(str(empty), "+inf");
}

TEST(cNumberConversion, AnyPrecisionEndsWhereTheDigitsEnd)
{
  cNumberConversionFormat format(10);
  format.setPrecision(4000000000u);
  EXPECT_EQ(writeDouble(0.125, format), "0.125");
  EXPECT_EQ(writeDouble(0, format), "0");
  format.setPrecision(100000);
  format.setRemoveTrailingZeros(false);
  EXPECT_EQ(writeDouble(0.125, format), "0.125" + std::string(99997, '0'));
  std::string const smallest = writeDouble(std::numeric_limits<double>::denorm_min(), format);
  EXPECT_EQ(smallest.size(), 100002u);
  EXPECT_EQ(smallest.substr(0, 326), "0." + std::string(323, '0') + "4");
}

TEST(cNumberConversion, AValueThatIsRoundedToInfinityHasNoDigits)
{
  if (std::fesetround(FE_UPWARD) != 0)
  {
    GTEST_SKIP() << "this processor cannot round upwards";
  }
  cNumberConversionFormat format(10);
  cAsciiString target("kept");
  auto const write = [&] { cNumberConversion::toStringFromDouble(target, std::numeric_limits<double>::max(), format); };
  std::string const whole = support::messageOf<mstd::cRuntimeException>(write);
  format.addIntegerPart(false);
  std::string const fraction = support::messageOf<mstd::cRuntimeException>(write);
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(whole, "Invalid fractional number (non-factional part)!");
  EXPECT_EQ(fraction, "Invalid fractional number!");
  EXPECT_EQ(str(target), "kept");
}

// --- text to fraction ---

TEST(cNumberConversion, ExponentsAreApplied)
{
  EXPECT_EQ(readDouble("1e3"), bitsOf(1000.0));
  EXPECT_EQ(readDouble("1.5E-1"), bitsOf(0.15));
  EXPECT_EQ(readDouble("1e+2"), bitsOf(100.0));
  EXPECT_EQ(readDouble("1e--2"), bitsOf(100.0));
  EXPECT_EQ(readDouble("e2"), bitsOf(0.0));
}

TEST(cNumberConversion, ASignMayStandAnywhereAndAPlusMeansNothing)
{
  EXPECT_EQ(readDouble("-1.5"), bitsOf(-1.5));
  EXPECT_EQ(readDouble("1.-5"), bitsOf(-1.5));
  EXPECT_EQ(readDouble("1-2"), bitsOf(-12.0));
  EXPECT_EQ(readDouble("--2"), bitsOf(2.0));
  EXPECT_EQ(readDouble("+1+2"), bitsOf(12.0));
  EXPECT_EQ(readDouble("-0"), bitsOf(-0.0));
}

TEST(cNumberConversion, CharactersThatBelongToNoFractionAreNamed)
{
  EXPECT_EQ(readDouble("1.2.3"), "!3");
  EXPECT_EQ(readDouble("1e2.5"), "!3");
  EXPECT_EQ(readDouble("1e2e3"), "!3");
  EXPECT_EQ(readDouble("0x1"), "!1");
  EXPECT_EQ(readDouble("nan"), "!0");
  EXPECT_EQ(readDouble("1 "), "!1");
}

TEST(cNumberConversion, TheFormatsBaseDoesNotCountForFractions)
{
  EXPECT_EQ(readDouble("99", cNumberConversionFormat(2)), bitsOf(99.0));
  EXPECT_EQ(writeDouble(99, cNumberConversionFormat(2)), "99");
}

TEST(cNumberConversion, TheSmallestAndTheLargestValuesAreReached)
{
  EXPECT_EQ(readDouble("5e-324"), bitsOf(std::numeric_limits<double>::denorm_min()));
  EXPECT_NEAR(fromBits(readDouble("1e308")) / 1e308, 1.0, 1e-14);
  EXPECT_NEAR(fromBits(readDouble("0." + std::string(299, '0') + "1e300")), 1.0, 1e-14);
  EXPECT_EQ(readDouble("1e309"), bitsOf(std::numeric_limits<double>::infinity()));
  EXPECT_EQ(readDouble("1e-400"), bitsOf(0.0));
}

TEST(cNumberConversion, FractionsSurviveTextAndBack)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937_64 random(seed);
  for (int i = 0; i < 2000; ++i)
  {
    double const value = static_cast<double>(random() % 1000000000) / 1000000;
    cNumberConversionFormat format(10);
    format.setPrecision(9);
    std::string const text = writeDouble(value, format);
    ASSERT_NEAR(fromBits(readDouble(text)), value, 1e-12) << text;
    ASSERT_EQ(writeDouble(fromBits(readDouble(text)), format), text);
  }
}

// --- hostile input ---

TEST(cNumberConversion, NumbersOfMillionsOfDigitsHaveADefinedResult)
{
  std::string const nines(5000000, '9');
  EXPECT_EQ(cNumberConversion::fromString(bytes("0" + nines), plain(10)), -1) << "10^5000000 - 1 modulo 2^64";
  EXPECT_EQ(cNumberConversion::fromStringToDouble(bytes(nines), plain(10)), std::numeric_limits<double>::infinity());
  EXPECT_EQ(bitsOf(cNumberConversion::fromStringToDouble(bytes("0." + nines), plain(10))),
            readDouble("0." + nines.substr(0, 400)));
  EXPECT_EQ(cNumberConversion::fromStringToDouble(bytes("1e" + nines), plain(10)),
            std::numeric_limits<double>::infinity());
  EXPECT_EQ(cNumberConversion::fromStringToDouble(bytes("1e-" + nines), plain(10)), 0.0);
  EXPECT_EQ(cNumberConversion::fromStringToDouble(bytes("0e" + nines), plain(10)), 0.0);
  EXPECT_EQ(cNumberConversion::fromStringToDouble(bytes("1e1000000000"), plain(10)),
            std::numeric_limits<double>::infinity());
  EXPECT_EQ(cNumberConversion::fromString(bytes(std::string(1000001, '-') + "1"), plain(10)), -1);
}

TEST(cNumberConversionFault, AFailedConversionLeavesTheTarget)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "the sanitizer owns the allocator";
  }
  cNumberConversionFormat format(10);
  format.setFixedWidth(300);
  format.setPrecision(500);
  format.setRemoveTrailingZeros(false);
  for (bool isFraction : {false, true})
  {
    unsigned int numFailures = 0;
    for (bool failed = true; failed;)
    {
      cAsciiString target("kept");
      failed = false;
      {
        support::cAllocationFault fault(numFailures + 1);
        try
        {
          isFraction ? cNumberConversion::toStringFromDouble(target, 1.25, format)
                     : cNumberConversion::toString(target, -5LL, format);
        }
        catch (std::bad_alloc const&)
        {
          failed = true;
        }
      }
      numFailures += failed ? 1 : 0;
      EXPECT_EQ(str(target).substr(0, 5), failed ? "kept" : isFraction ? "kept1" : "kept-");
    }
    EXPECT_GE(numFailures, 2u);
  }
}
