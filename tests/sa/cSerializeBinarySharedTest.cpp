#include "sa/cSerializeBinaryShared.h"

#include <gtest/gtest.h>

#include <string>

typedef msa::cSerializeBinaryShared cShared;

namespace
{

std::string nameOf(unsigned int id)
{
  return cShared::idToString(static_cast<cShared::PrivatedTypeIDs>(id));
}

} // namespace

TEST(cSerializeBinaryShared, EveryIdHasItsName)
{
  char const* const names[] = {"invalid",    "rawBytes",  "piUChar",  "piChar",       "piUInt32", "piInt32", "piUInt64",
                               "piInt64",    "piBool",    "piDouble", "cAsciiString", "cString",  "context", "label",
                               "rawBytes64", "context64", "cString",  "piUInt16",     "piInt16",  "invalid"};
  for (unsigned int id = 0; id < 20; ++id)
  {
    EXPECT_EQ(nameOf(id), names[id]) << id;
  }
}

TEST(cSerializeBinaryShared, WhatIsNoIdIsAnUnknownType)
{
  EXPECT_EQ(nameOf(20), "unknown type");
  EXPECT_EQ(nameOf(0x80000000u), "unknown type");
  EXPECT_EQ(nameOf(0xFFFFFFFFu), "unknown type");
}

TEST(cSerializeBinaryShared, TheNumbersOfTheIdsAreThoseOfTheFormat)
{
  EXPECT_EQ(cShared::Invalid, 0u);
  EXPECT_EQ(cShared::RawBytes, 1u);
  EXPECT_EQ(cShared::UChar, 2u);
  EXPECT_EQ(cShared::Char, 3u);
  EXPECT_EQ(cShared::UInt32, 4u);
  EXPECT_EQ(cShared::Int32, 5u);
  EXPECT_EQ(cShared::UInt64, 6u);
  EXPECT_EQ(cShared::Int64, 7u);
  EXPECT_EQ(cShared::Bool, 8u);
  EXPECT_EQ(cShared::Double, 9u);
  EXPECT_EQ(cShared::AsciiString, 10u);
  EXPECT_EQ(cShared::String, 11u);
  EXPECT_EQ(cShared::Context, 12u);
  EXPECT_EQ(cShared::Label, 13u);
  EXPECT_EQ(cShared::RawBytes64, 14u);
  EXPECT_EQ(cShared::Context64, 15u);
  EXPECT_EQ(cShared::StringUTF8, 16u);
  EXPECT_EQ(cShared::UInt16, 17u);
  EXPECT_EQ(cShared::Int16, 18u);
  EXPECT_EQ(cShared::InvalidEnd, 19u);
}
