#include "sa/cSerializeBinary.h"

#include "std/cRuntimeException.h"
#include "std/tArrayRef.h"
#include "support/cBlockDeviceProxy.h"
#include "support/cTempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

// What a serializer holds goes to a file.

namespace
{

/// A serializer that takes nothing and whose data stands on a device.
class cOnDevice : public msa::cAbstractSerializer
{
public:
  cOnDevice(std::string const& contents, unsigned int block) : mProxy(contents, block) {}
  support::cBlockDeviceProxy const& proxy() const { return mProxy; }

  mstd::tArrayRef<char> data() override { return mstd::tArrayRef<char>(mProxy); }
  void storeBlock(char const*, unsigned int) override {}
  using cAbstractSerializer::store;
  void store(unsigned char) override {}
  void store(signed char) override {}
  void store(unsigned int) override {}
  void store(int) override {}
  void store(unsigned long long) override {}
  void store(long long) override {}
  void store(bool) override {}
  void store(double) override {}
  void store(mstd::cAsciiString const&) override {}
  void store(mucs::cString const&) override {}
  void rewind() override {}
  void clear() override {}
  msa::cContextRef newContext(char const*) override { throw std::logic_error("no contexts"); }
  void releaseCurrentContext() override {}
  cAbstractSerializer& newLabel(mstd::cAsciiString const&) override { return *this; }
  void swapData(mstd::tArray<char>&) override {}

private:
  support::cBlockDeviceProxy mProxy;
};

class StoreToFileTest : public testing::Test
{
protected:
  std::string path() const { return mDir.path() + "/file"; }
  std::string contents() const
  {
    std::ostringstream all;
    all << std::ifstream(path(), std::ios::binary).rdbuf();
    return all.str();
  }
  support::cTempDir mDir;
};

} // namespace

TEST_F(StoreToFileTest, TheFileHoldsTheData)
{
  msa::cSerializeBinary serializer;
  for (unsigned int i = 0; i < 50000; ++i)
  {
    serializer.store(i);
  }
  std::ofstream(path()) << std::string(1000000, 'x'); // goes
  serializer.storeToFile(mDir.name("file"));
  mstd::tArrayRef<char> const data = serializer.data();
  ASSERT_GT(data.length(), 0u);
  EXPECT_EQ(contents(), std::string(data.proxyProvideData(0, data.length()), data.length()));
}

TEST_F(StoreToFileTest, NothingMakesAnEmptyFile)
{
  msa::cSerializeBinary serializer;
  serializer.storeToFile(mDir.name("file"));
  EXPECT_TRUE(std::filesystem::exists(path()));
  EXPECT_EQ(contents(), "");
}

TEST_F(StoreToFileTest, DataOnADeviceIsVisitedInItsBlocks)
{
  cOnDevice serializer("0123456789", 4);
  serializer.storeToFile(mDir.name("file"));
  EXPECT_EQ(contents(), "0123456789");
  ASSERT_EQ(serializer.proxy().windows().size(), 3u);
  EXPECT_EQ(serializer.proxy().windows()[0].size, 4u);
  EXPECT_EQ(serializer.proxy().windows()[1].start, 4u);
  EXPECT_EQ(serializer.proxy().windows()[2].size, 2u);
}

TEST_F(StoreToFileTest, DataWithoutABlockSizeIsVisitedAtOnce)
{
  cOnDevice serializer("0123456789", 0);
  serializer.storeToFile(mDir.name("file"));
  EXPECT_EQ(contents(), "0123456789");
  ASSERT_EQ(serializer.proxy().windows().size(), 1u);
  EXPECT_EQ(serializer.proxy().windows()[0].size, 10u);
}

TEST_F(StoreToFileTest, APathThatCannotBeMadeFails)
{
  msa::cSerializeBinary serializer;
  EXPECT_THROW(serializer.storeToFile(mDir.name("missing/file")), mstd::cRuntimeException);
}

TEST_F(StoreToFileTest, DataThatCannotBeHadLeavesAnEmptyFile)
{
  msa::cSerializeBinary serializer;
  msa::cContextRef context(serializer.newContext(nullptr));
  std::ofstream(path()) << "before";
  EXPECT_THROW(serializer.storeToFile(mDir.name("file")), mstd::cAbstractException);
  EXPECT_EQ(contents(), "");
}

TEST_F(StoreToFileTest, ADeviceWithoutRoomFails)
{
  msa::cSerializeBinary serializer;
  serializer.store(1u);
  EXPECT_ANY_THROW(serializer.storeToFile(mucs::cString("/dev/full")));
}
