#include "std/tHash.h"

#include "std/tArray.h"
#include "support/cCountingElement.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

using mstd::tArrayHashTraits;
using mstd::tHash;
using support::cCountingElement;

namespace
{

typedef tArrayHashTraits<1024u> cTraits;
typedef tHash<mucs::cString, mucs::cString, cTraits> cStringHash;
typedef tHash<mucs::cString, cCountingElement, cTraits> cElementHash;
typedef std::vector<unsigned int> cPoints;

mucs::cString key(cPoints const& points)
{
  mucs::cString result;
  for (unsigned int const point : points)
  {
    result.append(point);
  }
  return result;
}

mucs::cString key(std::string const& text)
{
  return key(cPoints(text.begin(), text.end()));
}

// The hash, written down once more in the plainest way.
unsigned int plainHash(cPoints const& points)
{
  unsigned int const n = static_cast<unsigned int>(points.size());
  if (n <= 1024)
  {
    unsigned int h = 5381;
    for (unsigned int const e : points)
    {
      h = h * 33 + e;
    }
    return h;
  }
  unsigned int h = points[n / 6] % 256;
  h += points[n - n / 6] % 256;
  h += points[n - 5] % 256;
  h += points[n - n / 3] % 256;
  return h ^ n;
}

cPoints longKey(unsigned int length, unsigned int fill)
{
  return cPoints(length, fill);
}

} // namespace

TEST(tHash, AnEmptyKeyHasTheSeedAsItsHash)
{
  EXPECT_EQ(cTraits::hash(mucs::cString()), 5381u);
}

TEST(tHash, KnownKeysHaveKnownHashes)
{
  EXPECT_EQ(cTraits::hash(key("a")), 5381u * 33 + 97);
  EXPECT_EQ(cTraits::hash(key("ab")), (5381u * 33 + 97) * 33 + 98);
  EXPECT_EQ(cTraits::hash(key(cPoints{0xFFFFFFFFu})), 5381u * 33 - 1);
}

TEST(tHash, EveryLengthUpTo1024HashesEveryElement)
{
  cPoints points;
  for (unsigned int n = 0; n <= 1024; ++n)
  {
    ASSERT_EQ(cTraits::hash(key(points)), plainHash(points)) << n;
    points.push_back(n * 2654435761u + 12345u);
  }
  points.resize(1024);
  unsigned int const hash = cTraits::hash(key(points));
  for (unsigned int const i : {0u, 1u, 170u, 512u, 1022u, 1023u})
  {
    cPoints changed(points);
    changed[i] += 1;
    EXPECT_NE(cTraits::hash(key(changed)), hash) << i;
  }
}

TEST(tHash, KeysAbove1024ElementsAreSampledAtFourPlaces)
{
  for (unsigned int n : {1025u, 1026u, 1027u, 1028u, 1029u, 1030u, 2047u, 5000u, 65536u, 100001u})
  {
    cPoints points;
    for (unsigned int i = 0; i < n; ++i)
    {
      points.push_back(i * 2654435761u);
    }
    unsigned int const hash = cTraits::hash(key(points));
    EXPECT_EQ(hash, plainHash(points)) << n;
    for (unsigned int const place : {n / 6, n - n / 6, n - 5, n - n / 3})
    {
      cPoints changed(points);
      changed[place] ^= 0x01u;
      EXPECT_NE(cTraits::hash(key(changed)), hash) << n << " " << place;
      changed[place] = points[place] ^ 0xFFFFFF00u;
      EXPECT_EQ(cTraits::hash(key(changed)), hash) << n << " " << place;
    }
  }
}

TEST(tHash, LongKeysThatAgreeInLengthAndInTheSampledBytesCollideAndAreBothFound)
{
  cPoints first = longKey(3000, 7);
  cPoints second = first;
  second[0] = 8;
  second[500] = 0x107; // sampled at 3000 / 6, but only its low byte
  second[2999] = 9;
  ASSERT_EQ(cTraits::hash(key(first)), cTraits::hash(key(second)));
  cElementHash hash;
  hash[key(first)].setValue(1);
  hash[key(second)].setValue(2);
  EXPECT_EQ(hash.length(), 2u);
  EXPECT_EQ(hash.has(key(first))->value(), 1);
  EXPECT_EQ(hash.has(key(second))->value(), 2);
}

TEST(tHash, KeysWithTheSameLow10BitsShareABucketAndAreBothFound)
{
  // One element: h = 5381 * 33 + e, so elements 1024 apart land in one bucket.
  cElementHash hash;
  for (unsigned int i = 0; i < 20; ++i)
  {
    hash[key(cPoints{5 + i * 1024})].setValue(static_cast<int>(i));
  }
  EXPECT_EQ(hash.length(), 20u);
  for (unsigned int i = 0; i < 20; ++i)
  {
    ASSERT_EQ(cTraits::hash(key(cPoints{5 + i * 1024})) & 0x3FF, cTraits::hash(key(cPoints{5})) & 0x3FF);
    ASSERT_NE(hash.has(key(cPoints{5 + i * 1024})), nullptr);
    EXPECT_EQ(hash.has(key(cPoints{5 + i * 1024}))->value(), static_cast<int>(i));
  }
  EXPECT_EQ(hash.has(key(cPoints{5 + 20 * 1024})), nullptr);
}

TEST(tHash, KeysWithTheSameWholeHashAreToldApart)
{
  // 33 of the first element weigh as much as one of the second.
  mucs::cString const first = key(cPoints{1, 33});
  mucs::cString const second = key(cPoints{2, 0});
  ASSERT_EQ(cTraits::hash(first), cTraits::hash(second));
  cStringHash hash;
  hash[first] = key("first");
  EXPECT_EQ(hash.has(second), nullptr);
  hash[second] = key("second");
  EXPECT_TRUE(*hash.has(first) == key("first"));
  EXPECT_TRUE(*hash.has(second) == key("second"));
}

TEST(tHash, HasGivesNullForAnAbsentKeyAndAddsNothing)
{
  cStringHash hash;
  cStringHash const& constant = hash;
  EXPECT_TRUE(hash.empty());
  EXPECT_EQ(hash.has(key("x")), nullptr);
  EXPECT_EQ(constant.has(key("")), nullptr);
  EXPECT_EQ(hash.length(), 0u);
}

TEST(tHash, TheIndexOperatorAddsADefaultValueOnce)
{
  cStringHash hash;
  EXPECT_EQ(hash[key("x")].length(), 0u);
  hash[key("x")] = key("value");
  hash[key("")] = key("empty key");
  EXPECT_EQ(hash.length(), 2u);
  EXPECT_TRUE(hash[key("x")] == key("value"));
  EXPECT_TRUE(*hash.has(key("")) == key("empty key"));
}

TEST(tHash, AValueKeepsItsAddressWhileOthersCome)
{
  cStringHash hash;
  mucs::cString* const value = &hash[key("x")];
  for (int i = 0; i < 5000; ++i)
  {
    hash[key(std::to_string(i))];
  }
  EXPECT_EQ(hash.has(key("x")), value);
}

TEST(tHash, RemoveTakesOneKeyAway)
{
  {
    cElementHash hash;
    hash[key("a")].setValue(1);
    hash[key("b")].setValue(2);
    EXPECT_TRUE(hash.remove(key("a")));
    EXPECT_FALSE(hash.remove(key("a")));
    EXPECT_EQ(hash.has(key("a")), nullptr);
    EXPECT_EQ(hash.length(), 1u);
    hash.clear();
    EXPECT_TRUE(hash.empty());
    EXPECT_EQ(hash.has(key("b")), nullptr);
    hash[key("b")];
  }
  EXPECT_EQ(cCountingElement::alive(), 0u);
}

TEST(tHash, CopiesAreDeep)
{
  cStringHash hash;
  hash[key("a")] = key("1");
  cStringHash copy(hash);
  copy[key("a")] = key("2");
  copy[key("b")] = key("3");
  EXPECT_TRUE(hash[key("a")] == key("1"));
  EXPECT_EQ(hash.length(), 1u);
  hash = copy;
  EXPECT_TRUE(hash[key("b")] == key("3"));
}

TEST(tHash, AFailingCopyOfAValueAddsNothing)
{
  cElementHash hash;
  hash[key("a")];
  for (unsigned int n = 1; n < 10; ++n)
  {
    cCountingElement::throwAtCopy(n);
    try
    {
      hash[key("b")];
      cCountingElement::throwAtCopy(0);
      break;
    }
    catch (support::cCopyFailed const&)
    {
      EXPECT_EQ(hash.length(), 1u);
      EXPECT_EQ(hash.has(key("b")), nullptr);
    }
  }
  EXPECT_EQ(hash.length(), 2u);
}

TEST(tHash, OtherNumbersOfBucketsWork)
{
  tHash<mucs::cString, int, tArrayHashTraits<1u>> one;
  tHash<mucs::cString, int, tArrayHashTraits<7u>> seven;
  for (int i = 0; i < 100; ++i)
  {
    one[key(std::to_string(i))] = i;
    seven[key(std::to_string(i))] = i;
  }
  for (int i = 0; i < 100; ++i)
  {
    EXPECT_EQ(*one.has(key(std::to_string(i))), i);
    EXPECT_EQ(*seven.has(key(std::to_string(i))), i);
  }
}

TEST(tHash, KeysAreComparedToTheirLastElement)
{
  for (unsigned int n : {0u, 1u, 2u, 3u, 4u, 5u, 7u, 8u, 19u, 20u, 21u, 63u, 127u, 128u, 131u, 132u, 133u, 2000u})
  {
    cPoints points;
    for (unsigned int i = 0; i < n; ++i)
    {
      points.push_back(i * 2654435761u);
    }
    mucs::cString const left = key(points);
    mucs::cString const same = key(points);
    EXPECT_TRUE(cTraits::isSame(left, same)) << n;
    EXPECT_EQ(cTraits::isInline(left), n >= 4 && n < 132) << n;
    EXPECT_TRUE(!cTraits::isInline(left) || cTraits::isSameInline(left, same)) << n;
    points.push_back(0);
    EXPECT_FALSE(cTraits::isSame(left, key(points))) << n;
    EXPECT_FALSE(cTraits::isInline(left) && cTraits::isSameInline(left, key(points))) << n;
    points.pop_back();
    for (unsigned int i = 0; i < n; ++i)
    {
      points[i] ^= 1u << (i % 32);
      mucs::cString const other = key(points);
      ASSERT_FALSE(cTraits::isSame(left, other)) << n << " " << i;
      ASSERT_FALSE(cTraits::isInline(left) && cTraits::isSameInline(left, other)) << n << " " << i;
      points[i] ^= 1u << (i % 32);
    }
  }
}

TEST(tHash, KeysOfBytesAndOfNumbersWithAFractionWork)
{
  tHash<mstd::tArray<char>, int, tArrayHashTraits<16u>> bytes;
  tHash<mstd::tArray<double>, int, tArrayHashTraits<16u>> fractions;
  for (int i = 0; i < 300; ++i)
  {
    std::string const name(static_cast<std::string::size_type>(i), static_cast<char>('a' + i % 26));
    bytes[mstd::tArray<char>(name.c_str())] = i;
    mstd::tArray<double> fraction;
    fraction.append(i / 2);
    fraction.append(i % 2 == 0 ? 0.0 : 0.5);
    fractions[fraction] = i;
  }
  EXPECT_EQ(bytes.length(), 300u);
  EXPECT_EQ(fractions.length(), 300u);
  for (int i = 0; i < 300; ++i)
  {
    std::string name(static_cast<std::string::size_type>(i), static_cast<char>('a' + i % 26));
    ASSERT_NE(bytes.has(mstd::tArray<char>(name.c_str())), nullptr);
    EXPECT_EQ(*bytes.has(mstd::tArray<char>(name.c_str())), i);
    EXPECT_EQ(bytes.has(mstd::tArray<char>((name + "?").c_str())), nullptr);
    mstd::tArray<double> fraction;
    fraction.append(i / 2);
    fraction.append(i % 2 == 0 ? 0.0 : 0.5);
    ASSERT_NE(fractions.has(fraction), nullptr);
    EXPECT_EQ(*fractions.has(fraction), i);
  }
}

TEST(tHash, KeysOfSignedBytesHashWithTheirSign)
{
  mstd::tArray<signed char> array;
  array.append(static_cast<signed char>(-1));
  array.append(static_cast<signed char>(2));
  EXPECT_EQ(cTraits::hash(array), (5381u * 33 - 1) * 33 + 2);
}

TEST(tHash, AnOvercrowdedBucketKeepsEveryKey)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  tHash<mucs::cString, int, tArrayHashTraits<2u>> hash;
  std::map<std::string, int> model;
  for (int i = 0; i < 20000; ++i)
  {
    std::string const text = std::to_string(random() % 40);
    if (random() % 2 == 0)
    {
      hash[key(text)] = i;
      model[text] = i;
    }
    else
    {
      ASSERT_EQ(hash.remove(key(text)), model.erase(text) == 1);
    }
    if (i % 5000 == 4999)
    {
      hash.clear();
      model.clear();
    }
    ASSERT_EQ(hash.length(), model.size());
    for (int j = 0; j < 40; ++j)
    {
      int const* const found = hash.has(key(std::to_string(j)));
      auto const expected = model.find(std::to_string(j));
      ASSERT_EQ(found == nullptr, expected == model.end());
      ASSERT_TRUE(found == nullptr || *found == expected->second);
    }
  }
}

TEST(tHash, SwapExchangesEverything)
{
  cStringHash a;
  a[key("a")] = key("1");
  cStringHash b;
  swap(a, b);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(a.has(key("a")), nullptr);
  EXPECT_TRUE(*b.has(key("a")) == key("1"));
}

TEST(tHash, RandomOperationsAgreeWithAPlainModel)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  {
    cElementHash hash;
    std::map<std::string, int> model;
    for (int i = 0; i < 20000; ++i)
    {
      std::string const text = std::to_string(random() % 3000);
      int const value = static_cast<int>(random() % 1000);
      switch (random() % 4)
      {
      case 0:
        hash[key(text)].setValue(value);
        model[text] = value;
        break;
      case 1:
        ASSERT_EQ(hash.remove(key(text)), model.erase(text) == 1);
        break;
      default: {
        cCountingElement const* const found = hash.has(key(text));
        auto const expected = model.find(text);
        ASSERT_EQ(found != nullptr, expected != model.end());
        if (found != nullptr)
        {
          ASSERT_EQ(found->value(), expected->second);
        }
        break;
      }
      }
      ASSERT_EQ(hash.length(), model.size());
    }
    EXPECT_EQ(cCountingElement::alive(), model.size());
  }
  EXPECT_EQ(cCountingElement::alive(), 0u);
  EXPECT_EQ(cCountingElement::errors(), 0u);
}
