#include "mcs/cInterfaceDesc.h"

#include "sa/cDeserializeBinary.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <string>

using mcs::cInterfaceDesc;
using support::toString;

namespace
{
cInterfaceDesc example()
{
  return cInterfaceDesc(cInterfaceDesc::Requiring, mstd::cAsciiString("meter"), mstd::cAsciiString("Ann"), 7,
                        mstd::cAsciiString("reads figures"));
}

std::string textOf(cInterfaceDesc const& desc)
{
  return std::to_string(static_cast<int>(desc.type())) + "/" + toString(desc.name()) + "/" + toString(desc.author()) +
         "/" + std::to_string(desc.version()) + "/" + toString(desc.description());
}

std::string stored(cInterfaceDesc const& desc, bool bLabels)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(!bLabels);
  desc >> serializer;
  return support::written(serializer);
}

void load(cInterfaceDesc& desc, std::string const& bytes)
{
  mstd::tArray<char> const data = support::arrayOf(bytes);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  desc << deserializer;
  EXPECT_TRUE(deserializer.eoc());
}

/// A description as a stream may hold it, with any number as its type.
std::string forged(unsigned int iType)
{
  msa::cSerializeBinary serializer;
  iType >> serializer;
  mstd::cAsciiString("forged") >> serializer;
  mstd::cAsciiString("Eve") >> serializer;
  9u >> serializer;
  mstd::cAsciiString("harmless") >> serializer;
  return support::written(serializer);
}

TEST(cInterfaceDesc, HasTwoTypesWithFixedNumbers)
{
  EXPECT_EQ(static_cast<int>(cInterfaceDesc::Providing), 0);
  EXPECT_EQ(static_cast<int>(cInterfaceDesc::Requiring), 1);
}

TEST(cInterfaceDesc, IsEmptyAndOfType0ByDefault)
{
  EXPECT_EQ(textOf(cInterfaceDesc()), "0///0/");
}

TEST(cInterfaceDesc, KeepsEachFieldInItsPlace)
{
  EXPECT_EQ(textOf(example()), "1/meter/Ann/7/reads figures");
  cInterfaceDesc const copy(example());
  EXPECT_EQ(textOf(copy), "1/meter/Ann/7/reads figures");
}

TEST(cInterfaceDesc, ExchangesEverything)
{
  cInterfaceDesc first = example();
  cInterfaceDesc second;
  first.swap(second);
  EXPECT_EQ(textOf(first), "0///0/");
  EXPECT_EQ(textOf(second), "1/meter/Ann/7/reads figures");
}

TEST(cInterfaceDesc, ComparesAllButTheDescription)
{
  mstd::cAsciiString const meter("meter");
  mstd::cAsciiString const ann("Ann");
  mstd::cAsciiString const text("reads figures");
  EXPECT_TRUE(example() == cInterfaceDesc(cInterfaceDesc::Requiring, meter, ann, 7, mstd::cAsciiString("other")));
  EXPECT_FALSE(example() != cInterfaceDesc(cInterfaceDesc::Requiring, meter, ann, 7, mstd::cAsciiString("other")));
  EXPECT_TRUE(example() != cInterfaceDesc(cInterfaceDesc::Providing, meter, ann, 7, text));
  EXPECT_TRUE(example() != cInterfaceDesc(cInterfaceDesc::Requiring, ann, ann, 7, text));
  EXPECT_TRUE(example() != cInterfaceDesc(cInterfaceDesc::Requiring, meter, meter, 7, text));
  EXPECT_TRUE(example() != cInterfaceDesc(cInterfaceDesc::Requiring, meter, ann, 8, text));
}

TEST(cInterfaceDesc, StoresItsFieldsInOrderWithoutLabels)
{
  std::string const expected = support::bytes("04 00 00 00 01 00 00 00"
                                              "0A 00 00 00 05 00 00 00 'meter'"
                                              "0A 00 00 00 03 00 00 00 'Ann'"
                                              "04 00 00 00 07 00 00 00"
                                              "0A 00 00 00 0D 00 00 00 'reads figures'");
  EXPECT_EQ(stored(example(), false), expected);
  EXPECT_EQ(stored(example(), true), expected);
}

TEST(cInterfaceDesc, ComesBackFromAStream)
{
  cInterfaceDesc back;
  load(back, stored(example(), true));
  EXPECT_EQ(textOf(back), textOf(example()));
  load(back, stored(cInterfaceDesc(), true));
  EXPECT_EQ(textOf(back), "0///0/");
}

TEST(cInterfaceDesc, RefusesATypeThatIsNoneWithTheNameThatCameWithItAndStays)
{
  for (unsigned int iType : {2u, 3u, 256u, 4294967295u})
  {
    cInterfaceDesc desc = example();
    mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>([&] { load(desc, forged(iType)); });
    EXPECT_EQ(support::messageOf(e), "Unable to deserialize interface description of \"forged\"!");
    EXPECT_EQ(e.history(), nullptr);
    EXPECT_EQ(textOf(desc), textOf(example()));
  }
  cInterfaceDesc desc;
  load(desc, forged(1));
  EXPECT_EQ(textOf(desc), "1/forged/Eve/9/harmless");
}

TEST(cInterfaceDesc, StaysIfItCannotBeRead)
{
  support::cCaptureOut const mute; // range failures come with a stack trace
  std::string const whole = stored(example(), false);
  for (size_t length = 0; length < whole.size(); ++length)
  {
    cInterfaceDesc desc(cInterfaceDesc::Providing, mstd::cAsciiString("old"), mstd::cAsciiString("Bob"), 1,
                        mstd::cAsciiString("x"));
    EXPECT_THROW(load(desc, whole.substr(0, length)), mstd::cAbstractException) << length;
    EXPECT_EQ(textOf(desc), "0/old/Bob/1/x");
  }
}
} // namespace
