#include "sa/cAbstractDeserializer.h"

#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

/// Hands out fixed values and writes down which operation was called. Leaves the 16-bit ones to the base.
class cFixed : public msa::cAbstractDeserializer
{
public:
  using msa::cAbstractDeserializer::load;
  void loadBlock(mstd::tArray<char>&) override { mLog += "block;"; }
  void load(signed char& value) override { give("char;", value, -1); }
  void load(unsigned char& value) override { give("uchar;", value, 2); }
  void load(unsigned int& value) override { give("uint32;", value, 0x12345678); }
  void load(int& value) override { give("int32;", value, -0x12345); }
  void load(unsigned long long& value) override { give("uint64;", value, 3); }
  void load(long long& value) override { give("int64;", value, -4); }
  void load(bool& value) override { give("bool;", value, true); }
  void load(double& value) override { give("double;", value, 0.5); }
  void load(mstd::cAsciiString&) override { mLog += "ascii;"; }
  void load(mucs::cString&) override { mLog += "string;"; }
  void rewind() override {}
  bool eoc() const override { return true; }
  void reserialize(msa::cAbstractSerializer&) override {}
  bool isContext() override { return false; }
  bool isLabel() override { return false; }
  msa::cContextRef getContext(char const*) override { return msa::cContextRef(nullptr); }
  mstd::cAsciiString getNextContextTypeName() override { return mstd::cAsciiString(); }
  mstd::cAsciiString getNextLabelName() override { return mstd::cAsciiString(); }
  void releaseCurrentContext() override {}
  msa::cAbstractDeserializer& findLabel(mstd::cAsciiString const&) override { return *this; }
  bool tryFindLabel(mstd::cAsciiString const&) override { return false; }

  std::string mLog;

private:
  template <class T, class U>
  void give(char const* name, T& target, U value)
  {
    mLog += name;
    target = static_cast<T>(value);
  }
};

template <class T>
T loaded(msa::cAbstractDeserializer& deserializer)
{
  T value = T();
  EXPECT_EQ(&(value << deserializer), &deserializer);
  return value;
}

} // namespace

TEST(cAbstractDeserializer, LabelsArePreferredAtFirst)
{
  cFixed deserializer;
  EXPECT_FALSE(deserializer.noLabelsPreferred());
  deserializer.setPreferNoLabels(true);
  EXPECT_TRUE(deserializer.noLabelsPreferred());
}

TEST(cAbstractDeserializer, ShortValuesAreCutFromTheWideOnes)
{
  cFixed deserializer;
  EXPECT_EQ(loaded<unsigned short>(deserializer), 0x5678);
  EXPECT_EQ(loaded<short>(deserializer), static_cast<short>(-0x2345));
  EXPECT_EQ(deserializer.mLog, "uint32;int32;");
}

TEST(cAbstractDeserializer, EachTypeOfTheLanguageReadsItselfByItsOwnOperation)
{
  cFixed deserializer;
  EXPECT_TRUE(loaded<bool>(deserializer));
  EXPECT_EQ(loaded<unsigned int>(deserializer), 0x12345678u);
  EXPECT_EQ(loaded<int>(deserializer), -0x12345);
  EXPECT_EQ(loaded<unsigned long long>(deserializer), 3u);
  EXPECT_EQ(loaded<long long>(deserializer), -4);
  EXPECT_EQ(loaded<unsigned char>(deserializer), 2);
  EXPECT_EQ(loaded<signed char>(deserializer), -1);
  EXPECT_EQ(loaded<double>(deserializer), 0.5);
  EXPECT_EQ(deserializer.mLog, "bool;uint32;int32;uint64;int64;uchar;char;double;");
}

TEST(cAbstractDeserializer, NoValueReadsNothing)
{
  cFixed deserializer;
  piVoid none;
  EXPECT_EQ(&(none << deserializer), &deserializer);
  EXPECT_EQ(deserializer.mLog, "");
}

TEST(cAbstractDeserializer, AFormatWithoutAPlaceSaysSo)
{
  cFixed deserializer;
  EXPECT_FALSE(deserializer.hasPlace());
  EXPECT_EQ(deserializer.place(), 0u);
}
