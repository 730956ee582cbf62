// Texts on a stream, and what is made of them: build information.

#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/cBuildInfo.h"
#include "std/cTypeMissmatchException.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"
#include "support/streamItems.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

/// For a deserializer, which takes it over.
mstd::tAutoPtr<mstd::tArray<char>> given(std::string const& bytes)
{
  return mstd::tAutoPtr<mstd::tArray<char>>(new mstd::tArray<char>(support::arrayOf(bytes)));
}

using support::toString;

support::cItem text(std::string const& bytes)
{
  support::cItem item;
  item.kind = "cAsciiString";
  item.bytes = bytes;
  return item;
}

support::cItem number(char const* pKind, unsigned long long iValue)
{
  support::cItem item;
  item.kind = pKind;
  item.number = iValue;
  return item;
}

std::string bytesOf(support::tItems const& items)
{
  msa::cSerializeBinary serializer;
  support::write(items, serializer);
  return support::written(serializer);
}

TEST(StreamedText, AsciiStringIsWrittenAsItsBytes)
{
  mstd::cAsciiString sText;
  sText.append("a\0\xFF", 3);
  msa::cSerializeBinary serializer;
  EXPECT_EQ(&(sText >> serializer), &serializer);
  EXPECT_EQ(support::written(serializer), support::bytes("0A 00 00 00 03 00 00 00 'a' 00 FF"));
  support::cItem const item = text(std::string("a\0\xFF", 3));
  EXPECT_EQ(support::written(serializer), bytesOf({item}));
}

TEST(StreamedText, AsciiStringsComeBack)
{
  for (std::string const& sExpected :
       {std::string(), std::string("one"), std::string("a\0b", 3), std::string(5000, 'x')})
  {
    mstd::cAsciiString sText;
    sText.append(sExpected.data(), static_cast<unsigned int>(sExpected.size()));
    msa::cSerializeBinary serializer;
    sText >> serializer;
    msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
    mstd::cAsciiString sRead("something else");
    EXPECT_EQ(&(sRead << deserializer), &deserializer);
    EXPECT_EQ(toString(sRead), sExpected);
    EXPECT_EQ(sRead.c_str()[sRead.length()], '\0');
    EXPECT_TRUE(deserializer.eoc());
  }
}

TEST(StreamedText, AsciiStringStaysIfItCannotBeRead)
{
  support::cCaptureOut mute;
  msa::cSerializeBinary serializer;
  7 >> serializer;
  msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
  mstd::cAsciiString sText("kept");
  EXPECT_THROW(sText << deserializer, mstd::cTypeMissmatchException);
  EXPECT_EQ(toString(sText), "kept");
  msa::cDeserializeBinary cut(given(support::bytes("0A 00 00 00 03 00 00 00 'ab'")));
  EXPECT_THROW(sText << cut, mstd::cAbstractException);
  EXPECT_EQ(toString(sText), "kept");
}

TEST(StreamedText, StringIsWrittenInTheModeOfTheSerializer)
{
  mucs::cString sText;
  unsigned int const points[] = {'a', 0xE4, 0x1F600};
  sText.append(points, 3);
  msa::cSerializeBinary wide;
  EXPECT_EQ(&(sText >> wide), &wide);
  EXPECT_EQ(support::written(wide), support::bytes("0B 00 00 00 03 00 00 00 61 00 00 00 E4 00 00 00 00 F6 01 00"));
  msa::cSerializeBinary narrow;
  narrow.setStringStoreMode(msa::cSerializeBinary::StoreUTF8);
  sText >> narrow;
  EXPECT_EQ(support::written(narrow), support::bytes("10 00 00 00 07 00 00 00 'a' C3 A4 F0 9F 98 80"));
  for (msa::cSerializeBinary* pSerializer : {&wide, &narrow})
  {
    msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(pSerializer->ownData())));
    mucs::cString sRead;
    EXPECT_EQ(&(sRead << deserializer), &deserializer);
    EXPECT_TRUE(sRead == sText);
    EXPECT_TRUE(deserializer.eoc());
  }
}

TEST(StreamedText, StringStaysIfItCannotBeRead)
{
  msa::cSerializeBinary serializer;
  mstd::cAsciiString("narrow") >> serializer;
  msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
  mucs::cString sText;
  sText.appendC("kept");
  EXPECT_THROW(sText << deserializer, mstd::cTypeMissmatchException);
  EXPECT_EQ(toString(sText), "kept");
}

support::tItems buildItems()
{
  return {text("gcc"), text("12.2"), text("Linux"), text("host"), text("today"), number("piUInt64", 4000000000u)};
}

TEST(StreamedBuildInfo, FiveTextsAndTheCount)
{
  mstd::cBuildInfo const info("gcc", "12.2", "Linux", "host", "today", 4000000000u);
  msa::cSerializeBinary serializer;
  EXPECT_EQ(&(info >> serializer), &serializer);
  EXPECT_EQ(support::written(serializer), bytesOf(buildItems()));
}

TEST(StreamedBuildInfo, ComesBack)
{
  support::tItems items = buildItems();
  items.back().number = 0x123456789ABCDEFull; // more than a constructor takes
  msa::cDeserializeBinary deserializer(given(bytesOf(items)));
  mstd::cBuildInfo info("a", "b", "c", "d", "e", 1);
  EXPECT_EQ(&(info << deserializer), &deserializer);
  EXPECT_EQ(toString(info.compiler()), "gcc");
  EXPECT_EQ(toString(info.compilerVersion()), "12.2");
  EXPECT_EQ(toString(info.buildSystem()), "Linux");
  EXPECT_EQ(toString(info.buildHost()), "host");
  EXPECT_EQ(toString(info.buildDate()), "today");
  EXPECT_EQ(info.buildCount(), 0x123456789ABCDEFull);
  EXPECT_TRUE(deserializer.eoc());
}

TEST(StreamedBuildInfo, StaysAtEveryTruncation)
{
  support::cCaptureOut mute;
  std::string const whole = bytesOf(buildItems());
  for (size_t length = 0; length < whole.size(); ++length)
  {
    msa::cDeserializeBinary deserializer(given(whole.substr(0, length)));
    mstd::cBuildInfo info("a", "b", "c", "d", "e", 1);
    EXPECT_THROW(info << deserializer, mstd::cAbstractException) << length;
    EXPECT_EQ(toString(info.compiler()) + toString(info.compilerVersion()) + toString(info.buildSystem()) +
                  toString(info.buildHost()) + toString(info.buildDate()),
              "abcde")
        << length;
    EXPECT_EQ(info.buildCount(), 1u) << length;
  }
}

} // namespace
