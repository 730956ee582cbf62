#include "mcs/cComponentAddr.h"

#include "pi/cSystem.h"
#include "sa/cDeserializeBinary.h"
#include "std/cAsciiString.h"
#include "std/cNumberConversionFormat.h"
#include "std/cRuntimeException.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <string>

using mcs::cComponentAddr;

namespace
{
cComponentAddr parsed(char const* text)
{
  return cComponentAddr(mstd::cAsciiString(text));
}

/// The message that parsing raises, with that of the cause behind it.
std::string refusal(char const* text)
{
  cComponentAddr address(7, 8);
  mstd::cRuntimeException const e =
      support::caught<mstd::cRuntimeException>([&] { address.fromString(mstd::cAsciiString(text)); });
  EXPECT_TRUE(address == cComponentAddr(7, 8)) << "the address has changed";
  EXPECT_NE(e.history(), nullptr);
  return support::messageOf(e) + " <- " + (e.history() != nullptr ? support::messageOf(*e.history()) : "");
}

std::string stored(cComponentAddr const& address, bool bLabels)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(!bLabels);
  address >> serializer;
  return support::written(serializer);
}

cComponentAddr loaded(std::string const& bytes, bool bLabels)
{
  mstd::tArray<char> const data = support::arrayOf(bytes);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  deserializer.setPreferNoLabels(!bLabels);
  cComponentAddr address;
  address << deserializer;
  EXPECT_TRUE(deserializer.eoc());
  return address;
}

TEST(cComponentAddr, IsNotValidByDefault)
{
  cComponentAddr const address;
  EXPECT_FALSE(address.valid());
  EXPECT_EQ(address.moduleID(), 0u);
  EXPECT_EQ(address.queueID(), 0u);
  EXPECT_EQ(support::toString(address.toString()), "0:0");
}

TEST(cComponentAddr, TakesTheQueueFirst)
{
  cComponentAddr const address(1, 5);
  EXPECT_TRUE(address.valid());
  EXPECT_EQ(address.queueID(), 1u);
  EXPECT_EQ(address.moduleID(), 5u);
  EXPECT_EQ(support::toString(address.toString()), "1:5");
  EXPECT_EQ(support::toString(cComponentAddr(4294967295u, 4294967294u).toString()), "4294967295:4294967294");
}

TEST(cComponentAddr, KeepsItsNumbersWhenItIsInvalidated)
{
  cComponentAddr address(1, 5);
  address.invalidate();
  EXPECT_FALSE(address.valid());
  EXPECT_EQ(address.queueID(), 1u);
  EXPECT_EQ(address.moduleID(), 5u);
  EXPECT_EQ(support::toString(address.toString()), "1:5");
}

TEST(cComponentAddr, IsEqualInNumbersAndValidity)
{
  EXPECT_TRUE(cComponentAddr(1, 5) == cComponentAddr(1, 5));
  EXPECT_TRUE(cComponentAddr(1, 5) != cComponentAddr(2, 5));
  EXPECT_TRUE(cComponentAddr(1, 5) != cComponentAddr(1, 6));
  cComponentAddr invalid(1, 5);
  invalid.invalidate();
  EXPECT_TRUE(invalid != cComponentAddr(1, 5));
  EXPECT_FALSE(invalid == cComponentAddr(1, 5));
}

TEST(cComponentAddr, TellsItsValidityWhateverItIsComparedWith)
{
  cComponentAddr const valid(1, 5);
  EXPECT_TRUE(valid == true);
  EXPECT_TRUE(valid == false);
  cComponentAddr const invalid;
  EXPECT_FALSE(invalid == true);
  EXPECT_FALSE(invalid == false);
}

TEST(cComponentAddr, ExchangesEverything)
{
  cComponentAddr first(1, 5);
  cComponentAddr second;
  first.swap(second);
  EXPECT_TRUE(first == cComponentAddr());
  EXPECT_TRUE(second == cComponentAddr(1, 5));
}

TEST(cComponentAddr, ReadsItsText)
{
  EXPECT_TRUE(parsed("1:5") == cComponentAddr(1, 5));
  EXPECT_TRUE(parsed("0:0") == cComponentAddr(0, 0));
  EXPECT_TRUE(parsed("0:0") != cComponentAddr()) << "what was read is valid";
  EXPECT_TRUE(parsed("4294967295:4294967294") == cComponentAddr(4294967295u, 4294967294u));
}

TEST(cComponentAddr, CutsNumbersTo32Bits)
{
  EXPECT_TRUE(parsed("4294967297:4294967303") == cComponentAddr(1, 7));
  EXPECT_TRUE(parsed("-1:5") == cComponentAddr(4294967295u, 5));
}

TEST(cComponentAddr, TakesNumbersInTheDefaultFormat)
{
  mstd::cNumberConversionFormat& format = mpi::system().defaults.numberFormat;
  mstd::cNumberConversionFormat const former = format;
  format.setBase(16);
  cComponentAddr const read = parsed("1F:10");
  format = former;
  EXPECT_TRUE(read == cComponentAddr(31, 16));
}

TEST(cComponentAddr, LooksAtNothingBehindASecondColon)
{
  EXPECT_TRUE(parsed("1:2:3") == cComponentAddr(1, 2));
  EXPECT_TRUE(parsed("1:2:") == cComponentAddr(1, 2));
  EXPECT_TRUE(parsed("1:2:x") == cComponentAddr(1, 2));
}

TEST(cComponentAddr, RefusesATextWithoutColonAndTellsWhy)
{
  EXPECT_EQ(refusal("7"), "Malformed component address (\"7\")! <- Expecting \":\"!");
  EXPECT_EQ(refusal(":5"), "Malformed component address (\":5\")! <- Expecting \":\"!");
}

TEST(cComponentAddr, HasKeysThatTranslatorsFind)
{
  auto const keyOf = [](mstd::cAbstractException const& e) {
    return (e.liMessage()->isTranslatable() ? "$MTR$" : "") + support::toString(e.liMessage()->key());
  };
  mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>([] { parsed("7"); });
  EXPECT_EQ(keyOf(e), "$MTR$Malformed component address (\"%addr%\")!");
  ASSERT_NE(e.history(), nullptr);
  EXPECT_EQ(keyOf(*e.history()), "$MTR$Expecting \":\"!");
}

TEST(cComponentAddr, StaysIfTheTextIsRefused)
{
  cComponentAddr address(3, 4);
  cComponentAddr invalid;
  for (char const* text : {"", "7", "1:", "1:x", "x:1"})
  {
    EXPECT_THROW(address.fromString(mstd::cAsciiString(text)), mstd::cRuntimeException) << text;
    EXPECT_TRUE(address == cComponentAddr(3, 4));
    EXPECT_THROW(invalid.fromString(mstd::cAsciiString(text)), mstd::cRuntimeException) << text;
    EXPECT_TRUE(invalid == cComponentAddr());
    EXPECT_THROW(cComponentAddr{mstd::cAsciiString(text)}, mstd::cRuntimeException) << text;
  }
}

TEST(cComponentAddr, RefusesWhatIsNoNumber)
{
  EXPECT_EQ(refusal("1:x"), "Malformed component address (\"1:x\")! <- Invalid decimal number (\"x\"). Character at "
                            "index 0 not points to digit!");
  EXPECT_NE(refusal("x:1").find("Invalid decimal number (\"x\")"), std::string::npos);
}

TEST(cComponentAddr, RefusesAMissingPiece)
{
  for (char const* text : {"", ":", "1:", ":1", "::", "1::2"})
  {
    SCOPED_TRACE(text);
    EXPECT_EQ(refusal(text).find("Malformed component address (\"" + std::string(text) + "\")! <- "), 0u);
  }
}

TEST(cComponentAddr, StoresModuleAndQueue)
{
  EXPECT_EQ(stored(cComponentAddr(1, 5), false), support::bytes("04 00 00 00 05 00 00 00 04 00 00 00 01 00 00 00"));
  EXPECT_EQ(stored(cComponentAddr(1, 5), true),
            support::bytes("0D 00 00 00 0A 00 00 00 02 00 00 00 'ID' 04 00 00 00 05 00 00 00"
                           "0D 00 00 00 0A 00 00 00 05 00 00 00 'Queue' 04 00 00 00 01 00 00 00"));
}

TEST(cComponentAddr, ComesBackValidFromAStream)
{
  cComponentAddr invalid(3, 4);
  invalid.invalidate();
  for (bool bLabels : {false, true})
  {
    EXPECT_TRUE(loaded(stored(cComponentAddr(1, 5), bLabels), bLabels) == cComponentAddr(1, 5));
    EXPECT_TRUE(loaded(stored(invalid, bLabels), bLabels) == cComponentAddr(3, 4));
    EXPECT_TRUE(loaded(stored(cComponentAddr(), bLabels), bLabels) == cComponentAddr(0, 0));
  }
}

TEST(cComponentAddr, StaysIfItCannotBeRead)
{
  for (bool bLabels : {false, true})
  {
    std::string const whole = stored(cComponentAddr(1, 5), bLabels);
    for (size_t length = 0; length < whole.size(); ++length)
    {
      mstd::tArray<char> const data = support::arrayOf(whole.substr(0, length));
      cComponentAddr address(7, 8);
      EXPECT_THROW(
          {
            msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
            deserializer.setPreferNoLabels(!bLabels);
            address << deserializer;
          },
          mstd::cAbstractException);
      EXPECT_TRUE(address == cComponentAddr(7, 8));
    }
  }
}
} // namespace
