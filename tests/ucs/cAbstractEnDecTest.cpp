#include "ucs/cAbstractEnDec.h"

#include "std/tConstArrayRef.h"
#include "textSupport.h"

#include <gtest/gtest.h>

namespace
{
using mucs::cString;

/// Overrides only what it must.
class cNamedEnDec : public mucs::cAbstractEnDec
{
public:
  mstd::cAsciiString name() const override { return mstd::cAsciiString("Bare"); }
};

/// Writes each code point as one byte, and counts its life.
class cByteEnDec : public mucs::cAbstractEnDec
{
public:
  explicit cByteEnDec(int& rLives) : mLives(rLives) { ++mLives; }
  ~cByteEnDec() override { --mLives; }
  using cAbstractEnDec::encode;
  mstd::cAsciiString name() const override { return mstd::cAsciiString("Byte"); }
  void encode(cString const& sText, mstd::tArray<char>& aOut) const override
  {
    mstd::cAsciiString const sBytes = sText.ascii('?');
    aOut.append(sBytes.c_str(), sBytes.length());
  }

private:
  int& mLives;
};

TEST(cAbstractEnDec, WhatIsNotOverriddenFailsWithTheName)
{
  cNamedEnDec const enDec;
  cString sText("a");
  mstd::tArray<char> aBytes;
  mstd::tArray<unsigned short> aUnits;
  EXPECT_EQ(support::failureText([&] { enDec.encode(sText, aBytes); }),
            "cBugException: Not implemented: Bare::encode (ucs32 -> ascii)");
  EXPECT_EQ(support::failureText([&] { enDec.encode(sText, aUnits); }),
            "cBugException: Not implemented: Bare::encode (ucs32 -> ucs16)");
  EXPECT_EQ(support::failureText([&] { enDec.decode(mstd::tConstArrayRef<char>(aBytes), sText); }),
            "cBugException: Not implemented: Bare::decode (ucs16 -> ascii)");
  EXPECT_EQ(support::failureText([&] { enDec.decode(mstd::tConstArrayRef<unsigned short>(aUnits), sText); }),
            "cBugException: Not implemented: Bare::decode (ucs16 -> ucs32)");
}

TEST(cAbstractEnDec, TheFailureNamesItsWordingByKey)
{
  cNamedEnDec const enDec;
  mstd::tArray<char> aBytes;
  try
  {
    enDec.encode(cString("a"), aBytes);
    FAIL() << "no exception";
  }
  catch (mstd::cAbstractException const& exception)
  {
    EXPECT_STREQ(exception.liMessage()->key().c_str(), "Not implemented: %name%::encode (ucs32 -> ascii)");
    EXPECT_TRUE(exception.liMessage()->isTranslatable());
  }
}

TEST(cAbstractEnDec, ReEncodeAndReDecodeLeaveTheResultUntouched)
{
  cNamedEnDec const enDec;
  cString sResult("kept");
  enDec.reEncode(cString("a"), sResult);
  enDec.reDecode(cString("a"), sResult);
  EXPECT_EQ(sResult, cString("kept"));
}

TEST(cAbstractEnDec, EncodeCStringEncodesAndPutsAZeroBehind)
{
  int iLives = 0;
  {
    cByteEnDec const enDec(iLives);
    mstd::tArray<char> aBytes("x");
    enDec.encodeCString(cString("ab"), aBytes);
    EXPECT_EQ(support::bytes(aBytes), std::string("xab\0", 4));
  }
  EXPECT_EQ(iLives, 0);
}

TEST(cAbstractEnDec, EncodeCStringOfAnEncoderThatCannotEncodeLeavesTheBytes)
{
  mstd::tArray<char> aBytes("x");
  EXPECT_NE(support::failureText([&] { cNamedEnDec().encodeCString(cString("ab"), aBytes); }), "");
  EXPECT_EQ(support::bytes(aBytes), "x");
}

TEST(cAbstractEnDec, DeletingThroughTheInterfaceDestroysTheEncoder)
{
  int iLives = 0;
  mucs::cAbstractEnDec* const pEnDec = new cByteEnDec(iLives);
  EXPECT_EQ(iLives, 1);
  delete pEnDec;
  EXPECT_EQ(iLives, 0);
}

} // namespace
