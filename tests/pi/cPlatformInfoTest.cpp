#include "pi/cAbstractPlatformInfo.h"

#include "pi/cPlatform.h"
#include "std/cAsciiString.h"
#include "support/exceptionText.h"
#include "ucs/cString.h"

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

TEST(cPlatformInfo, MakesTheFileNameOfAModuleFromItsPlainName)
{
  auto const fileName = [](char const* pName) {
    mucs::cString name(pName);
    mpi::cPlatform::createPlatformInfo()->osSpecificSOName(name);
    return support::toString(name);
  };
  EXPECT_EQ(fileName("foo"), "libfoo.so");
  EXPECT_EQ(fileName("./foo"), "./libfoo.so");
  EXPECT_EQ(fileName("/usr/lib.d/../x/foo"), "/usr/lib.d/../x/libfoo.so");
  EXPECT_EQ(fileName("foo.so"), "libfoo.so");
  EXPECT_EQ(fileName("foo.bar.baz"), "libfoo.so");
  EXPECT_EQ(fileName("libfoo"), "libfoo.so");
}

namespace
{
// A platform whose names are not all ASCII.
class cOtherPlatform : public mpi::cAbstractPlatformInfo
{
public:
  mstd::cAsciiString platformName() const override { return "other"; }
  mstd::cAsciiString osSharedObjectFileExtension() const override { return ".dl\xe5"; }
  mstd::cAsciiString osSharedObjectFilePrefix() const override { return "p\xe4"; }
  mstd::cAsciiString osSharedObjectFileSuffix() const override { return "-\xf6"; }
  mstd::cAsciiString osAppFileExtension() const override { return ".exe"; }
};
} // namespace

TEST(cPlatformInfo, PutsPrefixSuffixAndExtensionToTheNameInThisOrder)
{
  mucs::cString name("/x/foo");
  cOtherPlatform().osSpecificSOName(name);
  EXPECT_EQ(support::toString(name), "/x/p?foo-?.dl?");
}
