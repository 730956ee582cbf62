#include "std/cArrayMemory.h"

#include "support/cAllocationFault.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <new>
#include <random>
#include <string>
#include <vector>

using mstd::cArrayMemory;

TEST(cArrayMemory, NoElementsNeedNoPool)
{
  EXPECT_EQ(cArrayMemory::allocate(0, 4), nullptr);
  EXPECT_EQ(cArrayMemory::resize(nullptr, 0, 0, 4), nullptr);
  EXPECT_EQ(cArrayMemory::resize(cArrayMemory::allocate(3, 4), 3, 0, 4), nullptr);
  EXPECT_EQ(cArrayMemory::replace(cArrayMemory::allocate(3, 4), 3, 0, 4), nullptr);
}

TEST(cArrayMemory, ResizingKeepsTheContents)
{
  char* pool = static_cast<char*>(cArrayMemory::allocate(4, 1));
  memcpy(pool, "abcd", 4);
  pool = static_cast<char*>(cArrayMemory::resize(pool, 4, 100000, 1));
  EXPECT_EQ(memcmp(pool, "abcd", 4), 0);
  pool[99999] = 'z';
  pool = static_cast<char*>(cArrayMemory::resize(pool, 100000, 2, 1));
  EXPECT_EQ(memcmp(pool, "ab", 2), 0);
  cArrayMemory::release(pool);
}

TEST(cArrayMemory, SectorGrowthAsksForFewBlocks)
{
  unsigned int moves = 0;
  void* pool = nullptr;
  size_t before = 0;
  for (unsigned int have = 0; have < (16u << 20); have += 32)
  {
    pool = cArrayMemory::resize(pool, have, have + 32, 1);
    moves += malloc_usable_size(pool) != before;
    before = malloc_usable_size(pool);
  }
  EXPECT_LT(moves, 150u); // and not half a million
  cArrayMemory::release(pool);
}

TEST(cArrayMemory, TheSlackIsAPartOfTheSizeAndNoneForSmallPools)
{
  for (unsigned int count = 1; count < 100000; count += 1 + count / 50)
  {
    void* const pool = cArrayMemory::allocate(count, 1);
    size_t const usable = malloc_usable_size(pool);
    EXPECT_GE(usable, count);
    EXPECT_LE(usable, count +
                          (count <= 128 ? 0
                                        : count / (count < 1024   ? 2
                                                   : count < 4096 ? 4
                                                                  : 8)) +
                          32)
        << count; // 32: the allocator's own grid
    cArrayMemory::release(pool);
  }
}

TEST(cArrayMemory, MoreThanTheAddressSpaceIsBadAlloc)
{
  char* const pool = static_cast<char*>(cArrayMemory::allocate(3, 1));
  memcpy(pool, "abc", 3);
  EXPECT_THROW(cArrayMemory::allocate(0x100000000ull, 0x80000000u), std::bad_alloc);
  EXPECT_THROW(cArrayMemory::allocate(0xFFFFFFFFull, 0xFFFFFFFFu), std::bad_alloc);
  EXPECT_THROW(cArrayMemory::resize(pool, 3, 0x100000000ull, 0x80000000u), std::bad_alloc);
  EXPECT_THROW(cArrayMemory::replace(pool, 3, 0x100000000ull, 0x80000000u), std::bad_alloc);
  EXPECT_EQ(memcmp(pool, "abc", 3), 0);
  cArrayMemory::release(pool);
}

TEST(cArrayMemory, MoreThanTheMachineHasIsBadAlloc)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "this allocator ends the program";
  }
  void* const pool = cArrayMemory::allocate(3, 1);
  EXPECT_THROW(cArrayMemory::allocate(0x100000000ull, 0x7FFFFFFu), std::bad_alloc);
  EXPECT_THROW(cArrayMemory::resize(pool, 3, 0x100000000ull, 0x7FFFFFFu), std::bad_alloc);
  EXPECT_THROW(cArrayMemory::replace(pool, 3, 0x100000000ull, 0x7FFFFFFu), std::bad_alloc);
  cArrayMemory::release(pool);
}

TEST(cArrayMemory, LengthsAreAddedWithoutWrapping)
{
  EXPECT_EQ(cArrayMemory::addLengths(3, 4), 7u);
  EXPECT_EQ(cArrayMemory::addLengths(0xFFFFFFFEu, 1), 0xFFFFFFFFu);
  EXPECT_THROW(cArrayMemory::addLengths(0xFFFFFFFFu, 1), std::bad_alloc);
  EXPECT_THROW(cArrayMemory::addLengths(0x80000000u, 0x80000000u), std::bad_alloc);
}

TEST(cArrayMemory, TextLengthStopsAtTheZeroAndTakesNull)
{
  EXPECT_EQ(cArrayMemory::textLength("abc"), 3u);
  EXPECT_EQ(cArrayMemory::textLength(""), 0u);
  EXPECT_EQ(cArrayMemory::textLength(nullptr), 0u);
}

TEST(cArrayMemory, BytesAreFoundAtBordersAndNowhereElse)
{
  char const data[] = "abcabd";
  EXPECT_EQ(cArrayMemory::find(data, 6, "abd", 3), data + 3);
  EXPECT_EQ(cArrayMemory::find(data, 6, "abc", 3), data);
  EXPECT_EQ(cArrayMemory::find(data, 5, "abd", 3), nullptr);
  EXPECT_EQ(cArrayMemory::find(data, 6, "d", 1), data + 5);
  EXPECT_EQ(cArrayMemory::find(data, 5, "d", 1), nullptr);
  EXPECT_EQ(cArrayMemory::find(data, 0, "d", 1), nullptr);
  EXPECT_EQ(cArrayMemory::find(data, 6, "", 0), data);
  EXPECT_EQ(cArrayMemory::find(data, 2, "abc", 3), nullptr);
}

template <class T>
void compareWithALoop(unsigned int seed)
{
  std::mt19937 random(seed);
  for (int round = 0; round < 4000; ++round)
  {
    std::vector<T> data(random() % 40);
    std::vector<T> needle(random() % 4);
    // few values, which differ in their upper bytes only, so that shifted bytes match where elements do not
    for (T& e : data)
    {
      e = static_cast<T>(T(random() % 2) << (8 * (random() % sizeof(T))));
    }
    for (T& e : needle)
    {
      e = static_cast<T>(T(random() % 2) << (8 * (random() % sizeof(T))));
    }
    void const* expected = nullptr;
    for (size_t i = 0; i + needle.size() <= data.size() && expected == nullptr; ++i)
    {
      if (std::equal(needle.begin(), needle.end(), data.begin() + static_cast<long>(i)))
      {
        expected = data.data() + i;
      }
    }
    if (data.empty())
    {
      continue;
    }
    EXPECT_EQ(cArrayMemory::findElements(data.data(), static_cast<unsigned int>(data.size()), needle.data(),
                                         static_cast<unsigned int>(needle.size()), sizeof(T)),
              expected)
        << "seed " << seed << " round " << round;
  }
}

TEST(cArrayMemory, ElementsOfEveryWidthAreMatchedWholePropertyTest)
{
  unsigned int const seed = std::random_device()();
  std::cout << "seed " << seed << "\n";
  compareWithALoop<unsigned char>(seed);
  compareWithALoop<unsigned short>(seed);
  compareWithALoop<unsigned int>(seed);
  compareWithALoop<unsigned long long>(seed);
}

TEST(cArrayMemory, LongRunsAreSearchedAsByAPlainLoopPropertyTest)
{
  unsigned int const seed = std::random_device()();
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  for (int round = 0; round < 20000; ++round)
  {
    unsigned int const letters = 1 + random() % 4;
    std::string data;
    std::string needle;
    for (unsigned int n = random() % 200; n != 0; --n)
    {
      data += static_cast<char>('a' + random() % letters);
    }
    for (unsigned int n = 1 + random() % 40; n != 0; --n)
    {
      needle += static_cast<char>('a' + random() % letters);
    }
    if (random() % 2 != 0 && !data.empty()) // one that stands there, often at the very end
    {
      size_t const size = 1 + random() % data.size();
      needle = data.substr(random() % 3 == 0 ? data.size() - size : random() % (data.size() - size + 1), size);
    }
    std::vector<char> const exact(data.begin(), data.end()); // reading past it shows
    std::string::size_type const expected = data.find(needle);
    void const* const at = cArrayMemory::find(exact.data(), exact.size(), needle.data(), needle.size());
    ASSERT_EQ(at, expected == std::string::npos ? nullptr : exact.data() + expected)
        << "seed " << seed << " round " << round;
  }
}

TEST(cArrayMemory, ASearchFullOfHalfMatchesEndsInLinearTime)
{
  std::string data(4u << 20, 'a');
  std::string const needle = std::string(100000, 'a') + "b" + std::string(100000, 'a');
  EXPECT_EQ(cArrayMemory::find(data.data(), data.size(), needle.data(), needle.size()), nullptr); // not 10^11 steps
  data[data.size() - 100001] = 'b';
  EXPECT_EQ(cArrayMemory::find(data.data(), data.size(), needle.data(), needle.size()),
            data.data() + data.size() - needle.size());
}
