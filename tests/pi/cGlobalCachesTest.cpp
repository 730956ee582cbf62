#include "pi/cGlobalCaches.h"

#include "pi/cSystem.h"

#include <gtest/gtest.h>

#include <type_traits>

TEST(cGlobalCaches, StartsWithoutATable)
{
  mpi::cGlobalCaches caches;
  EXPECT_EQ(caches.hasPathFixupHash(), nullptr);
}

TEST(cGlobalCaches, TheTableIsFromTextToTextWith1024Buckets)
{
  EXPECT_TRUE((std::is_same<mpi::cGlobalCaches::tPathFixupHash,
                            mstd::tHash<mucs::cString, mucs::cString, mstd::tArrayHashTraits<1024u>>>::value));
}

TEST(cGlobalCaches, ATableIsThereOnceItIsAskedForAndIsEmpty)
{
  mpi::cGlobalCaches caches;
  caches.createPathFixupHash();
  ASSERT_NE(caches.hasPathFixupHash(), nullptr);
  EXPECT_EQ(caches.hasPathFixupHash()->length(), 0u);
  EXPECT_EQ(caches.hasPathFixupHash(), caches.hasPathFixupHash());
}

TEST(cGlobalCaches, CreatingAgainReplacesTheTableByAnEmptyOne)
{
  mpi::cGlobalCaches caches;
  caches.createPathFixupHash();
  (*caches.hasPathFixupHash())[mucs::cString("a/../b")] = mucs::cString("b");
  ASSERT_NE(caches.hasPathFixupHash()->has(mucs::cString("a/../b")), nullptr);
  caches.createPathFixupHash();
  ASSERT_NE(caches.hasPathFixupHash(), nullptr);
  EXPECT_EQ(caches.hasPathFixupHash()->has(mucs::cString("a/../b")), nullptr);
}

TEST(cGlobalCaches, IsUsableAfterClear)
{
  mpi::cGlobalCaches caches;
  caches.createPathFixupHash();
  caches.clear();
  EXPECT_EQ(caches.hasPathFixupHash(), nullptr);
  caches.clear();
  caches.createPathFixupHash();
  EXPECT_NE(caches.hasPathFixupHash(), nullptr);
}
