#include "sa/cSerializeToTypeString.h"

#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"
#include "support/cAllocationFault.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace
{

std::string textOf(msa::cSerializeToTypeString const& types)
{
  return support::toString(types.typeString());
}

} // namespace

TEST(cSerializeToTypeString, NothingStoredIsAnEmptyText)
{
  EXPECT_EQ("", textOf(msa::cSerializeToTypeString()));
}

TEST(cSerializeToTypeString, NamesAreJoinedInOrder)
{
  msa::cSerializeToTypeString types;
  types.store(1);
  types.store(mucs::cString("text"));
  EXPECT_EQ("piInt32, cString", textOf(types));
}

TEST(cSerializeToTypeString, EveryTypeHasItsName)
{
  msa::cSerializeToTypeString types;
  types.store(static_cast<unsigned char>(1));
  types.store(static_cast<signed char>(1));
  types.store(static_cast<unsigned short>(1));
  types.store(static_cast<short>(1));
  types.store(1u);
  types.store(1);
  types.store(1ull);
  types.store(1ll);
  types.store(true);
  types.store(1.0);
  types.store(mstd::cAsciiString("x"));
  types.store(mucs::cString("x"));
  types.storeBlock("x", 1);
  EXPECT_EQ("piUChar, piChar, piUInt16, piInt16, piUInt32, piInt32, piUInt64, piInt64, piBool, piDouble, cAsciiString, "
            "cString, char*",
            textOf(types));
}

TEST(cSerializeToTypeString, LabelsAndTheEndOfAContextDoNothing)
{
  msa::cSerializeToTypeString types;
  EXPECT_EQ(&types, &types.newLabel("x"));
  types.store(true);
  types.releaseCurrentContext();
  EXPECT_EQ("piBool", textOf(types));
}

TEST(cSerializeToTypeString, RewindAndClearMakeItNew)
{
  msa::cSerializeToTypeString types;
  types.store(true);
  types.rewind();
  EXPECT_EQ("", textOf(types));
  types.store(1);
  EXPECT_EQ("piInt32", textOf(types));
  types.clear();
  EXPECT_EQ("", textOf(types));
}

TEST(cSerializeToTypeString, SwapDataCopiesTheText)
{
  msa::cSerializeToTypeString types;
  types.store(true);
  mstd::tArray<char> bytes("before");
  types.swapData(bytes);
  EXPECT_EQ("piBool", std::string(bytes.data(), bytes.length()));
  EXPECT_EQ("piBool", textOf(types));
  types.clear();
  types.swapData(bytes);
  EXPECT_EQ(0u, bytes.length());
}

TEST(cSerializeToTypeString, AContextAndBytesAreNotSupported)
{
  msa::cSerializeToTypeString types;
  EXPECT_NE(std::string::npos,
            support::bugMessageOf([&] { types.newContext("x"); }).find("cSerializeToTypeString::newContext(...)"));
  EXPECT_NE(std::string::npos, support::bugMessageOf([&] { types.data(); }).find("cSerializeToTypeString::data()"));
  EXPECT_FALSE(types.noLabelsPreferred());
}

TEST(cSerializeToTypeString, ADerivedClassMayNameTypesItsOwnWay)
{
  class cShort : public msa::cSerializeToTypeString
  {
  public:
    void storeType(char const* pTypeName) override
    {
      char const name[2] = {pTypeName[2], 0};
      msa::cSerializeToTypeString::storeType(name);
    }
  };
  cShort types;
  types.store(true);
  types.store(1);
  EXPECT_EQ("B, I", textOf(types));
}

TEST(cSerializeToTypeString, ANameThatDoesNotFitLeavesTheText)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "this build cannot make an allocation fail";
  }
  msa::cSerializeToTypeString types;
  bool bFailed = false;
  while (!bFailed)
  {
    std::string const before = textOf(types);
    support::cAllocationFault fault(1);
    try
    {
      types.storeType("cNameOfSomeLength");
    }
    catch (std::bad_alloc const&)
    {
      bFailed = true;
    }
    fault.disarm();
    EXPECT_EQ(bFailed, textOf(types) == before);
  }
}
