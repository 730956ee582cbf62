#include "pi/cAbstractPlatformInfo.h"

#include "pi/cPlatform.h"
#include "std/cAsciiString.h"

#include <gtest/gtest.h>

TEST(cPlatformInfo, TellsTheNamesOfLinux)
{
  mstd::tAutoPtr<mpi::cAbstractPlatformInfo> pInfo = mpi::cPlatform::createPlatformInfo();
  ASSERT_NE(pInfo.get(), nullptr);
  EXPECT_STREQ(pInfo->platformName().c_str(), "Linux");
  EXPECT_STREQ(pInfo->osSharedObjectFilePrefix().c_str(), "lib");
  EXPECT_STREQ(pInfo->osSharedObjectFileSuffix().c_str(), "");
  EXPECT_STREQ(pInfo->osSharedObjectFileExtension().c_str(), ".so");
  EXPECT_STREQ(pInfo->osAppFileExtension().c_str(), "");
}
