#include "io/cPermissions.h"

#include <gtest/gtest.h>

using mio::cPermissions;

TEST(cPermissions, ItIsTheWordItWasMadeOf)
{
  EXPECT_EQ(cPermissions().permissions(), 0u);
  EXPECT_EQ(cPermissions(0xFFFFFFFFFFFFFFFFull).permissions(), 0xFFFFFFFFFFFFFFFFull);
  cPermissions permissions(0x7);
  permissions.setPermission(0x1008);
  EXPECT_EQ(permissions.permissions(), 0x1008u);
  EXPECT_TRUE(permissions == cPermissions(0x1008));
  EXPECT_TRUE(permissions != cPermissions(0x1000));
}

TEST(cPermissions, EachBitHasItsMeaning)
{
  for (unsigned int i = 0; i < 64; ++i)
  {
    unsigned long long const bit = 1ull << i;
    cPermissions const permissions(bit);
    EXPECT_EQ(permissions.isReadable(), bit == 0x8 || bit == 0x40 || bit == 0x200) << i;
    EXPECT_EQ(permissions.isWriteable(), bit == 0x10 || bit == 0x80 || bit == 0x400) << i;
    EXPECT_EQ(permissions.isExecutable(), bit == 0x20 || bit == 0x100 || bit == 0x800) << i;
    EXPECT_EQ(permissions.isArchive(), bit == 0x1000) << i;
  }
}
