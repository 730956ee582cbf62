#include "mce/net++/cNetAbstractAddress.h"

#include "std/cRuntimeException.h"
#include "support/cTestExtension.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

using support::toString;

namespace
{
/// Says that it is two IP addresses, which nobody looks at.
class cIPAddress : public support::cTestAddress
{
public:
  mce::cNetAbstractIPAddress* isIPAddress() override { return placeOf(mIP); }
  mce::cNetAbstractIPAddress const* isIPAddress() const override { return placeOf(mConstantIP); }

  static mce::cNetAbstractIPAddress* placeOf(void* const& rPlace)
  {
    return reinterpret_cast<mce::cNetAbstractIPAddress*>(const_cast<void**>(&rPlace));
  }

  void* mIP = nullptr;
  void* mConstantIP = nullptr;
};

TEST(cNetAbstractAddress, IsNoIPAddressUnlessItSaysSo)
{
  support::cTestAddress address;
  mce::cNetAbstractAddress const& constant = address;
  EXPECT_EQ(address.isIPAddress(), nullptr);
  EXPECT_EQ(constant.isIPAddress(), nullptr);
  for (bool bConstant : {false, true})
  {
    mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>([&] {
      if (bConstant)
      {
        constant.ipAddress();
      }
      else
      {
        address.ipAddress();
      }
    });
    EXPECT_EQ(toString(e.typeName()), "cRuntimeException");
    EXPECT_EQ(support::messageOf(e), "Network address type is not an ip address!");
    EXPECT_TRUE(e.liMessage()->isTranslatable());
    EXPECT_EQ(e.history(), nullptr);
  }
}

TEST(cNetAbstractAddress, HandsOutTheIPAddressThatItIs)
{
  cIPAddress address;
  mce::cNetAbstractAddress& base = address;
  mce::cNetAbstractAddress const& constantBase = address;
  EXPECT_EQ(&base.ipAddress(), address.placeOf(address.mIP));
  EXPECT_EQ(&constantBase.ipAddress(), address.placeOf(address.mConstantIP));
}
} // namespace
