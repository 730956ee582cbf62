#include "mp/cSynchronizable.h"

#include <gtest/gtest.h>

#include <type_traits>

TEST(cSynchronizable, HandsOutItsOwnLocker)
{
  mp::cSynchronizable object;
  ASSERT_NE(object.mutex(), nullptr);
  EXPECT_EQ(object.mutex(), object.mutex());
  EXPECT_TRUE(object.mutex()->doTryLock());
  object.mutex()->doUnlock();
  mp::cSynchronizable other;
  EXPECT_NE(object.mutex(), other.mutex());
}

TEST(cSynchronizable, IsABaseClass)
{
  EXPECT_TRUE(std::has_virtual_destructor<mp::cSynchronizable>::value);
}
