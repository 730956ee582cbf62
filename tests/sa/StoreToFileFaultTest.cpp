#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/tArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/cTempDir.h"
#include "support/faultshim.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <string>

// What a serializer holds goes to a file system that fails.

namespace
{

using support::cFaultShim;

class StoreToFileFault : public testing::Test
{
protected:
  StoreToFileFault() : mDescriptors(cFaultShim::numDescriptors())
  {
    for (unsigned int i = 0; i < 50000; ++i)
    {
      mSerializer.store(i);
    }
    mstd::tArrayRef<char> const data = mSerializer.data();
    mExpected.assign(data.proxyProvideData(0, data.length()), data.length());
  }
  ~StoreToFileFault() override { EXPECT_EQ(cFaultShim::numDescriptors(), mDescriptors); }

  void store() { mSerializer.storeToFile(mDir.name("file")); }
  std::string contents() const
  {
    std::ostringstream all;
    all << std::ifstream(mDir.path() + "/file", std::ios::binary).rdbuf();
    return all.str();
  }

  support::cCaptureOut mMute;
  support::cTempDir mDir;
  unsigned int mDescriptors;
  msa::cSerializeBinary mSerializer;
  std::string mExpected;
};

} // namespace

TEST_F(StoreToFileFault, ShortAndInterruptedWritesAreGoneOnWith)
{
  {
    cFaultShim shim;
    shim.limitWrite(1000);
    shim.fail(cFaultShim::Write, EINTR, 3, 2);
    store();
    EXPECT_EQ(shim.numFaults(), 3u);
  }
  EXPECT_TRUE(contents() == mExpected);
}

TEST_F(StoreToFileFault, WhatWentBeforeTheLackOfRoomIsThere)
{
  {
    cFaultShim shim;
    shim.limitSpace(12345);
    EXPECT_THROW(store(), mstd::cAbstractException);
  }
  EXPECT_TRUE(contents() == mExpected.substr(0, 12345));
}

TEST_F(StoreToFileFault, AFileThatCannotBeOpenedOrWrittenFails)
{
  for (cFaultShim::tCall eCall : {cFaultShim::Open, cFaultShim::Write})
  {
    cFaultShim shim;
    shim.fail(eCall, EIO);
    EXPECT_THROW(store(), mstd::cAbstractException) << eCall;
    EXPECT_EQ(shim.numFaults(), 1u);
  }
}

TEST_F(StoreToFileFault, AnErrorOfTheCloseIsTold)
{
  {
    cFaultShim shim;
    shim.fail(cFaultShim::Close, EIO);
    EXPECT_THROW(store(), mstd::cAbstractException);
    EXPECT_EQ(shim.numFaults(), 1u);
  }
  EXPECT_TRUE(contents() == mExpected);
}
