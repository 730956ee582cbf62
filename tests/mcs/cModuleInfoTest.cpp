#include "mcs/cModuleInfo.h"

#include "sa/cDeserializeBinary.h"
#include "std/cAbstractException.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <string>

using mcs::cModuleInfo;

namespace
{
cModuleInfo example()
{
  cModuleInfo info;
  info.setName(mstd::cAsciiString("meter"));
  info.setAuthor(mstd::cAsciiString("Ann"));
  info.setDescription(mstd::cAsciiString("reads figures"));
  info.setBuildInfo(mstd::cBuildInfo("gcc", "12.2", "cmake", "bench", "today", 17));
  info.setContext(mstd::cAsciiString("plant"));
  return info;
}

std::string stored(cModuleInfo const& info, bool bLabels)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(!bLabels);
  info >> serializer;
  return support::written(serializer);
}

TEST(cModuleInfo, IsEmptyByDefault)
{
  cModuleInfo const info;
  EXPECT_TRUE(info.name().empty());
  EXPECT_TRUE(info.author().empty());
  EXPECT_TRUE(info.description().empty());
  EXPECT_TRUE(info.buildInfo().compiler().empty());
  EXPECT_EQ(info.buildInfo().buildCount(), 0u);
  EXPECT_TRUE(info.context().empty());
}

TEST(cModuleInfo, KeepsEachFieldInItsPlace)
{
  cModuleInfo info = example();
  EXPECT_EQ(support::toString(info.name()), "meter");
  EXPECT_EQ(support::toString(info.author()), "Ann");
  EXPECT_EQ(support::toString(info.description()), "reads figures");
  EXPECT_EQ(support::toString(info.buildInfo().buildHost()), "bench");
  EXPECT_EQ(support::toString(info.context()), "plant");
  info.bi() = mstd::cBuildInfo("clang", "14", "", "", "", 8);
  EXPECT_EQ(support::toString(info.buildInfo().compiler()), "clang");
}

TEST(cModuleInfo, PrintsItselfOnOneLine)
{
  EXPECT_EQ(support::toString(example().toString()),
            "meter (build 17) Written by Ann builded on \"bench\" (today) using gcc - 12.2");
  EXPECT_EQ(support::toString(cModuleInfo().toString()), " (build 0) Written by  builded on \"\" () using  - ");
}

TEST(cModuleInfo, StoresItsFieldsInOrderWithoutLabels)
{
  msa::cSerializeBinary expected;
  for (char const* text : {"meter", "Ann", "reads figures", "gcc", "12.2", "cmake", "bench", "today"})
  {
    mstd::cAsciiString(text) >> expected;
  }
  17ull >> expected;
  mstd::cAsciiString("plant") >> expected;
  std::string const bytes = support::written(expected);
  EXPECT_EQ(stored(example(), false), bytes);
  EXPECT_EQ(stored(example(), true), bytes);
}

TEST(cModuleInfo, ComesBackFromAStream)
{
  mstd::tArray<char> const data = support::arrayOf(stored(example(), true));
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  cModuleInfo back;
  back << deserializer;
  EXPECT_TRUE(deserializer.eoc());
  EXPECT_EQ(stored(back, true), stored(example(), true));
}

TEST(cModuleInfo, StaysIfItCannotBeRead)
{
  std::string const whole = stored(example(), true);
  for (size_t length = 0; length < whole.size(); ++length)
  {
    mstd::tArray<char> const data = support::arrayOf(whole.substr(0, length));
    cModuleInfo info;
    info.setName(mstd::cAsciiString("old"));
    EXPECT_THROW(
        {
          msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
          info << deserializer;
        },
        mstd::cAbstractException);
    EXPECT_EQ(support::toString(info.name()), "old");
    EXPECT_TRUE(info.context().empty());
  }
}
} // namespace
