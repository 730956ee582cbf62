#include "mcs/cComponentLocation.h"

#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "sa/cDeserializeBinary.h"
#include "std/cNumberConversionFormat.h"
#include "std/cRuntimeException.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <string>

using mcs::cComponentAddr;
using mcs::cComponentLocation;

namespace
{
cComponentLocation location(unsigned int iQueue, unsigned int iModule, char const* host, char const* localId,
                            unsigned int iPid)
{
  return cComponentLocation(cComponentAddr(iQueue, iModule), mstd::cAsciiString(host), mstd::cAsciiString(localId),
                            iPid);
}

cComponentLocation parsed(char const* text)
{
  return cComponentLocation(mstd::cAsciiString(text));
}

std::string stored(cComponentLocation const& location, bool bLabels)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(!bLabels);
  location >> serializer;
  return support::written(serializer);
}

void load(cComponentLocation& location, std::string const& bytes, bool bLabels)
{
  mstd::tArray<char> const data = support::arrayOf(bytes);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  deserializer.setPreferNoLabels(!bLabels);
  location << deserializer;
  EXPECT_TRUE(deserializer.eoc());
}

TEST(cComponentLocation, IsThisProcessByDefault)
{
  cComponentLocation const here;
  EXPECT_FALSE(here.address().valid());
  EXPECT_EQ(support::toString(here.hostName()), support::toString(mpi::cPlatform::hostname()));
  EXPECT_EQ(here.pid(), mpi::cPlatform::pid());
  EXPECT_TRUE(here.localId().empty());
}

TEST(cComponentLocation, ProvidesThisProcessAndLeavesTheAddress)
{
  cComponentLocation there = location(1, 5, "bench", "left", 812);
  there.provide();
  EXPECT_TRUE(there.address() == cComponentAddr(1, 5));
  EXPECT_EQ(support::toString(there.hostName()), support::toString(mpi::cPlatform::hostname()));
  EXPECT_EQ(there.pid(), mpi::cPlatform::pid());
  EXPECT_TRUE(there.localId().empty());
}

TEST(cComponentLocation, ComparesAllFields)
{
  cComponentLocation const base = location(1, 5, "bench", "left", 812);
  EXPECT_TRUE(base == location(1, 5, "bench", "left", 812));
  EXPECT_FALSE(base != location(1, 5, "bench", "left", 812));
  EXPECT_TRUE(base != location(1, 6, "bench", "left", 812));
  EXPECT_TRUE(base != location(1, 5, "other", "left", 812));
  EXPECT_TRUE(base != location(1, 5, "bench", "right", 812));
  EXPECT_TRUE(base != location(1, 5, "bench", "left", 813));
}

TEST(cComponentLocation, IsCopiedAssignedAndExchanged)
{
  cComponentLocation const base = location(1, 5, "bench", "left", 812);
  cComponentLocation copy(base);
  EXPECT_TRUE(copy == base);
  cComponentLocation other = location(2, 6, "desk", "", 1);
  other.swap(copy);
  EXPECT_TRUE(other == base);
  EXPECT_TRUE(copy == location(2, 6, "desk", "", 1));
  copy = other;
  EXPECT_TRUE(copy == base);
  cComponentLocation& self = copy;
  copy = self;
  EXPECT_TRUE(copy == base);
  copy.setAddress(cComponentAddr(9, 9));
  EXPECT_TRUE(copy == location(9, 9, "bench", "left", 812));
}

TEST(cComponentLocation, PrintsNoColonWithoutALocalId)
{
  EXPECT_EQ(support::toString(location(1, 5, "bench", "left", 812).toString()), "1:5-812@bench:left");
  EXPECT_EQ(support::toString(location(1, 5, "bench", "", 812).toString()), "1:5-812@bench");
  EXPECT_EQ(support::toString(location(1, 5, "", "", 4294967295u).toString()), "1:5-4294967295@");
}

TEST(cComponentLocation, ReadsItsText)
{
  EXPECT_TRUE(parsed("1:5-812@bench:left") == location(1, 5, "bench", "left", 812));
  cComponentLocation const bench = location(1, 5, "bench", "", 812);
  EXPECT_TRUE(cComponentLocation(bench.toString()) == bench);
  EXPECT_TRUE(parsed("1:5-812@bench").localId().empty());
  EXPECT_TRUE(parsed("1:5-4294967295@bench") == location(1, 5, "bench", "", 4294967295u));
}

TEST(cComponentLocation, CutsAHostNameAtItsDash)
{
  EXPECT_TRUE(parsed("1:5-812@my-host:left") == location(1, 5, "my", "", 812));
}

TEST(cComponentLocation, KeepsTheFirstPieceOfALocalIdWithAColon)
{
  EXPECT_TRUE(parsed("1:5-812@bench:left:right") == location(1, 5, "bench", "left", 812));
}

TEST(cComponentLocation, TakesAnAddressAlone)
{
  EXPECT_TRUE(parsed("1:5") == location(1, 5, "", "", 0));
}

TEST(cComponentLocation, ReadsWordsBetweenAnyBlanks)
{
  EXPECT_TRUE(parsed(" \t\n\r1:5\r-812@bench rest") == location(1, 5, "bench", "", 812));
  EXPECT_TRUE(parsed("1:5--812@@bench::left") == location(1, 5, "bench", "left", 812));
}

TEST(cComponentLocation, StaysIfTheTextIsMalformed)
{
  cComponentLocation place = location(1, 5, "bench", "left", 812);
  mstd::cRuntimeException const e =
      support::caught<mstd::cRuntimeException>([&] { place.fromString(mstd::cAsciiString("7-812@bench")); });
  EXPECT_EQ(support::messageOf(e), "Malformed component address (\"7\")!");
  for (char const* text : {"", "-812@bench", "1:5-x@bench", "1:x-812@bench"})
  {
    SCOPED_TRACE(text);
    EXPECT_THROW(place.fromString(mstd::cAsciiString(text)), mstd::cAbstractException);
    EXPECT_TRUE(place == location(1, 5, "bench", "left", 812));
  }
}

TEST(cComponentLocation, ReadsTheProcessNumberBeforeTheAddress)
{
  cComponentLocation place;
  mstd::cRuntimeException const e =
      support::caught<mstd::cRuntimeException>([&] { place.fromString(mstd::cAsciiString("1:x-y@bench")); });
  EXPECT_EQ(support::messageOf(e), "Invalid decimal number (\"y\"). Character at index 0 not points to digit!");
  EXPECT_EQ(e.history(), nullptr);
  EXPECT_THROW(cComponentLocation(mstd::cAsciiString("7")), mstd::cRuntimeException);
}

TEST(cComponentLocation, HasADecimalProcessNumberWhateverTheDefaultFormat)
{
  mstd::cNumberConversionFormat& format = mpi::system().defaults.numberFormat;
  mstd::cNumberConversionFormat const former = format;
  format.setBase(16);
  cComponentLocation const read = parsed("1:5-812@bench");
  std::string const text = support::toString(location(20, 30, "bench", "", 812).toString());
  format = former;
  EXPECT_EQ(read.pid(), 812u);
  EXPECT_EQ(text, "20:30-812@bench");
}

TEST(cComponentLocation, StoresItsFieldsInOrder)
{
  cComponentLocation const place = location(1, 5, "bench", "left", 812);
  EXPECT_EQ(stored(place, false), support::bytes("04 00 00 00 05 00 00 00 04 00 00 00 01 00 00 00"
                                                 "0A 00 00 00 05 00 00 00 'bench' 0A 00 00 00 04 00 00 00 'left'"
                                                 "04 00 00 00 2C 03 00 00"));
  std::string const labelled = stored(place, true);
  std::string const label = support::bytes("0D 00 00 00 0A 00 00 00");
  EXPECT_EQ(labelled.find(label + support::bytes("0C 00 00 00 'LocalAddress' 0C 00 00 00")), 0u);
  EXPECT_NE(labelled.find("ModuleAddress"), std::string::npos);
  std::string const rest = label + support::bytes("08 00 00 00 'HostName' 0A 00 00 00 05 00 00 00 'bench'") + label +
                           support::bytes("07 00 00 00 'LocalID' 0A 00 00 00 04 00 00 00 'left'") + label +
                           support::bytes("03 00 00 00 'PID' 04 00 00 00 2C 03 00 00");
  ASSERT_GE(labelled.size(), rest.size());
  EXPECT_EQ(labelled.substr(labelled.size() - rest.size()), rest);
}

TEST(cComponentLocation, ComesBackFromAStreamWithAValidAddress)
{
  for (bool bLabels : {false, true})
  {
    cComponentLocation place = location(1, 5, "bench", "left", 812);
    cComponentLocation back;
    load(back, stored(place, bLabels), bLabels);
    EXPECT_TRUE(back == place);

    cComponentAddr invalid(3, 4);
    invalid.invalidate();
    place.setAddress(invalid);
    load(back, stored(place, bLabels), bLabels);
    EXPECT_TRUE(back == location(3, 4, "bench", "left", 812));
  }
}

TEST(cComponentLocation, RefusesAnAddressInAContextOfAnotherName)
{
  std::string const name("ModuleAddress");
  std::string bytes = stored(location(1, 5, "bench", "left", 812), true);
  bytes.replace(bytes.find(name), name.size(), "OtherAddress!");
  cComponentLocation place = location(2, 6, "desk", "top", 1);
  EXPECT_THROW(load(place, bytes, true), mstd::cAbstractException);
  EXPECT_TRUE(place == location(2, 6, "desk", "top", 1));
}

TEST(cComponentLocation, StaysIfItCannotBeRead)
{
  for (bool bLabels : {false, true})
  {
    std::string const whole = stored(location(1, 5, "bench", "left", 812), bLabels);
    for (size_t length = 0; length < whole.size(); ++length)
    {
      cComponentLocation place = location(2, 6, "desk", "top", 1);
      EXPECT_THROW(load(place, whole.substr(0, length), bLabels), mstd::cAbstractException);
      EXPECT_TRUE(place == location(2, 6, "desk", "top", 1));
    }
  }
}
} // namespace
