#ifndef MORTISE_STD_THASH_H
#define MORTISE_STD_THASH_H

#include "pi/piTypes.h"
#include "std/tList.h"
#include "std/tPair.h"
#include "std/tVector.h"

#include <string.h>
#include <type_traits>

namespace mstd
{

/// Hashing and comparing of keys that are arrays: `length()` elements behind `data(true)`, which may be null for an
/// empty one. `N` is the number of buckets.
template <unsigned int N>
class MORTISE_API tArrayHashTraits
{
public:
  enum : unsigned int
  {
    Buckets = N,
    MaxHashedLength = 1024 ///< longer keys are sampled, so that no key takes long to hash
  };
  static_assert(N > 0, "a hash needs a bucket");

  /// Up to 1024 elements: h = h * 33 + element, from 5381 on, in 32 bits. Above: a sum of the low bytes of four
  /// elements, exclusive-or the length.
  template <class Key>
  static unsigned int hash(Key const& rKey)
  {
    unsigned int const length = rKey.length();
    auto const* const data = rKey.data(true);
    if (__builtin_expect(length > MaxHashedLength, 0))
    {
      unsigned int const sum = lowByte(data[length / 6]) + lowByte(data[length - length / 6]) +
                               lowByte(data[length - 5]) + lowByte(data[length - length / 3]);
      return sum ^ length;
    }
    unsigned int h = Seed;
    unsigned int i = 0;
    if (__builtin_expect(length >= LongLength, 0))
    {
      h = hashLongBlocks(data, length, h, i);
    }
    hashBlocks(data, length, h, i);
    for (; i < length; ++i)
    {
      h = h * 33u + static_cast<unsigned int>(data[i]);
    }
    return h;
  }

  /// Whether two keys are equal: same length, equal elements.
  template <class Key>
  static bool isSame(Key const& rLeft, Key const& rRight)
  {
    typedef std::decay_t<decltype(*rLeft.data(true))> Element;
    if constexpr (std::is_integral_v<Element>)
    {
      unsigned int const length = rLeft.length();
      return length == rRight.length() &&
             (length == 0 || memcmp(rLeft.data(true), rRight.data(true), length * sizeof(Element)) == 0);
    }
    else
    {
      return rLeft == rRight;
    }
  }

  /// Whether isSameInline() takes `rKey`.
  template <class Key>
  static bool isInline(Key const& rKey)
  {
    typedef std::decay_t<decltype(*rKey.data(true))> Element;
    unsigned int const perBlock = sizeof(Block) / sizeof(Element);
    return std::is_integral_v<Element> && rKey.length() - perBlock < 32 * perBlock;
  }

  /// isSame() without a call and without a branch for each element: keys of the same hash are nearly always equal, so
  /// they are compared to their end.
  template <class Key>
  static bool isSameInline(Key const& rInline, Key const& rOther)
  {
    unsigned int const length = rInline.length();
    if (length != rOther.length())
    {
      return false;
    }
    auto const* const left = rInline.data(true);
    auto const* const right = rOther.data(true);
    unsigned int const perBlock = sizeof(Block) / sizeof(*left);
    unsigned int const last = length - perBlock;
    Block difference = block(left + last) ^ block(right + last);
    for (unsigned int i = 0; i < last; i += perBlock)
    {
      difference |= block(left + i) ^ block(right + i);
    }
    return (difference[0] | difference[1]) == 0;
  }

private:
  enum : unsigned int
  {
    Seed = 5381,
    LongLength = 64 ///< from here on the four chains of multiplications pay
  };
  typedef unsigned long long Block __attribute__((vector_size(16)));

  template <class E>
  static unsigned int lowByte(E e)
  {
    return static_cast<unsigned int>(e) & 0xFFu;
  }

#if defined(__SSE2__)
  typedef unsigned int Quad __attribute__((vector_size(16)));

  /// The lower halves of the wide lanes times a factor; in the upper ones stands anything.
  static Quad multiplied(Quad lanes, unsigned int iFactor)
  {
    typedef int SignedQuad __attribute__((vector_size(16)));
    Quad const factor = {iFactor, 0, iFactor, 0};
    return reinterpret_cast<Quad>(
        __builtin_ia32_pmuludq128(reinterpret_cast<SignedQuad>(lanes), reinterpret_cast<SignedQuad>(factor)));
  }

  /// The hashes of two pairs of elements in the lower halves of the wide lanes.
  template <class E>
  static Quad pairs(E const* pElements)
  {
    Block const elements = block(pElements);
    Quad const all = reinterpret_cast<Quad>(elements);
    return (all << 5) + all + reinterpret_cast<Quad>(elements >> 32);
  }
#endif

  // The hash of the whole groups of sixteen elements, where that is faster; `riAt` is set behind them. The walk is a
  // function of its own, to leave the usual look-up short.
  template <class E>
  static unsigned int hashLongBlocks(E const* pElements, unsigned int iLength, unsigned int iSeed, unsigned int& riAt)
  {
#if defined(__SSE2__)
    if constexpr (std::is_integral_v<E> && sizeof(E) == 4)
    {
      riAt = iLength & ~15u;
      return hashSixteens(pElements, riAt, iSeed);
    }
#endif
    (void)pElements;
    (void)iLength;
    (void)riAt;
    return iSeed;
  }

#if defined(__SSE2__)
  template <class E>
  __attribute__((noinline)) static unsigned int hashSixteens(E const* pElements, unsigned int iLength,
                                                             unsigned int iSeed)
  {
    unsigned int const by2 = 33u * 33u;
    unsigned int const by4 = by2 * by2;
    unsigned int const by8 = by4 * by4;
    Quad sums = {0, 0, iSeed, 0};
    for (E const* const end = pElements + iLength; pElements != end; pElements += 16)
    {
      sums = multiplied(sums, by8 * by8) + multiplied(pairs(pElements), by8 * by4) +
             multiplied(pairs(pElements + 4), by8) + multiplied(pairs(pElements + 8), by4) + pairs(pElements + 12);
    }
    return sums[0] * by2 + sums[2];
  }
#endif

  // Takes whole groups of four elements from `riAt` on into the hash, so that its multiplications do not wait for each
  // other.
  template <class E>
  static void hashBlocks(E const* pElements, unsigned int iLength, unsigned int& rHash, unsigned int& riAt)
  {
    unsigned int const by2 = 33u * 33u;
    unsigned int const by4 = by2 * by2;
#if defined(__SSE2__)
    if constexpr (std::is_integral_v<E> && sizeof(E) == 4)
    {
      // Two running sums, of the first and of the second pair of each group, in the lower halves of two wide lanes.
      Quad sums = {0, 0, rHash, 0};
      for (; iLength - riAt >= 4; riAt += 4)
      {
        sums = multiplied(sums, by4) + pairs(pElements + riAt);
      }
      rHash = sums[0] * by2 + sums[2];
      return;
    }
#endif
    for (; iLength - riAt >= 4; riAt += 4)
    {
      E const* const e = pElements + riAt;
      rHash = rHash * by4 + ((static_cast<unsigned int>(e[0]) * 33u + static_cast<unsigned int>(e[1])) * by2 +
                             (static_cast<unsigned int>(e[2]) * 33u + static_cast<unsigned int>(e[3])));
    }
  }

  template <class E>
  static Block block(E const* pElements)
  {
    Block result;
    memcpy(&result, pElements, sizeof(result));
    return result;
  }
};

/// The way from a hash to the entries of a table with buckets: beside the buckets, packed so that a look-up usually
/// touches one cache line before the entry itself. Knows entries by address only; a part of tHash.
class MORTISE_API cHashIndex
{
public:
  /// Raises std::bad_alloc.
  explicit cHashIndex(unsigned int iBuckets);
  cHashIndex(cHashIndex const&) = delete;
  cHashIndex& operator=(cHashIndex const&) = delete;
  ~cHashIndex();

  /// The first entry of the bucket with this hash for which `match(entry)` holds, or null. If `match.isInline()`, then
  /// `match.isSameInline(entry)` tells the same without a call, which spares the usual look-up all saving of registers.
  template <class Match>
  void* find(unsigned int iBucket, unsigned int iHash, Match match) const
  {
    cBucket const& bucket = mpBuckets[iBucket];
    if (__builtin_expect(match.isInline(), 1))
    {
      unsigned int const found = bucket.find(iHash);
      if (__builtin_expect(found != 0, 1))
      {
        // An unused place has no entry, and none behind it has one.
        void* const entry = bucket.mpEntries[__builtin_ctz(found)];
        if (__builtin_expect(entry != nullptr && match.isSameInline(entry), 1))
        {
          return entry;
        }
      }
      if (__builtin_expect(bucket.miCount <= Places && (found & (found - 1)) == 0, 1))
      {
        return nullptr;
      }
    }
    return findRest(bucket, iHash, match);
  }

  /// Makes room for one more entry in the bucket. Raises std::bad_alloc and changes nothing.
  void reserve(unsigned int iBucket);
  /// Adds an entry behind the others of its bucket, after reserve().
  void add(unsigned int iBucket, unsigned int iHash, void* pEntry) noexcept;
  void remove(unsigned int iBucket, void const* pEntry) noexcept;
  void clear() noexcept;
  void swap(cHashIndex& rOther) noexcept;

private:
  enum : unsigned int
  {
    Places = 4,
    LineSize = 64
  };

  struct cPlace
  {
    void* mpEntry;
    unsigned int miHash;
  };

  // One cache line where pointers have 64 bits. The first entries are held here, the others in an array of their own.
  struct cBucket
  {
    unsigned int miHashes[Places];
    void* mpEntries[Places];
    cPlace* mpMore;
    unsigned int miCount;
    unsigned int miMoreCapacity;

    // A bit for each place with this hash; without branches, since nobody can foretell the place.
    unsigned int find(unsigned int iHash) const
    {
#if defined(__SSE2__)
      typedef int Hashes __attribute__((vector_size(16)));
      typedef float Lanes __attribute__((vector_size(16)));
      Hashes hashes;
      memcpy(&hashes, miHashes, sizeof(hashes));
      return static_cast<unsigned int>(
          __builtin_ia32_movmskps(reinterpret_cast<Lanes>(hashes == static_cast<int>(iHash))));
#else
      unsigned int found = 0;
      for (unsigned int i = 0; i < Places; ++i)
      {
        found |= static_cast<unsigned int>((static_cast<unsigned long long>(miHashes[i] ^ iHash) - 1) >> 63) << i;
      }
      return found;
#endif
    }
  };

  template <class Match>
  __attribute__((noinline)) static void* findRest(cBucket const& rBucket, unsigned int iHash, Match match)
  {
    unsigned int const inside = rBucket.miCount < Places ? rBucket.miCount : static_cast<unsigned int>(Places);
    for (unsigned int i = 0; i < inside; ++i)
    {
      if (rBucket.miHashes[i] == iHash && match(rBucket.mpEntries[i]))
      {
        return rBucket.mpEntries[i];
      }
    }
    for (unsigned int i = 0; i < rBucket.miCount - inside; ++i)
    {
      if (rBucket.mpMore[i].miHash == iHash && match(rBucket.mpMore[i].mpEntry))
      {
        return rBucket.mpMore[i].mpEntry;
      }
    }
    return nullptr;
  }

  static void put(cBucket& rBucket, unsigned int iPlace, unsigned int iHash, void* pEntry) noexcept;

  cBucket* mpBuckets; // within mpMemory, at the start of a cache line
  void* mpMemory;
  unsigned int miBuckets;
};

/// Table from keys to values with a fixed number of buckets; it is never rehashed.
///
/// Ownership: owns copies of keys and values.
/// Errors:    no memory raises std::bad_alloc and leaves the table as it was.
/// Validity:  a reference to a value holds until its key is removed.
/// Threads:   no lock.
/// Cost:      a look-up hashes the key and goes through one bucket; it is meant for up to some ten keys per bucket.
template <class K, class V, class Traits>
class MORTISE_API tHash
{
public:
  /// Empty, with all its buckets.
  tHash() : mIndex(Traits::Buckets), miLength(0)
  {
    tVector<Bucket> buckets;
    buckets.resizePool(Traits::Buckets, false);
    Bucket const none;
    for (unsigned int i = 0; i < Traits::Buckets; ++i)
    {
      buckets.append(none);
    }
    mBuckets.swap(buckets);
  }

  tHash(tHash const& rSource) : mBuckets(rSource.mBuckets), mIndex(Traits::Buckets), miLength(rSource.miLength)
  {
    for (unsigned int i = 0; i < Traits::Buckets; ++i)
    {
      for (Entry& entry : mBuckets.at(i))
      {
        mIndex.reserve(i);
        mIndex.add(i, Traits::hash(entry.first), &entry);
      }
    }
  }

  tHash& operator=(tHash const& rSource)
  {
    tHash copy(rSource);
    swap(copy);
    return *this;
  }

  /// The value of `rKey`, or null.
  V* has(K const& rKey)
  {
    Entry* const entry = find(rKey, Traits::hash(rKey));
    return entry == nullptr ? nullptr : &entry->second;
  }
  V const* has(K const& rKey) const
  {
    Entry const* const entry = find(rKey, Traits::hash(rKey));
    return entry == nullptr ? nullptr : &entry->second;
  }

  /// The value of `rKey`, which is added with a default value if it is absent.
  V& operator[](K const& rKey)
  {
    unsigned int const hash = Traits::hash(rKey);
    Entry* const entry = find(rKey, hash);
    return entry == nullptr ? add(rKey, hash) : entry->second;
  }

  /// Removes `rKey` and its value; false if it is absent.
  bool remove(K const& rKey)
  {
    unsigned int const hash = Traits::hash(rKey);
    Entry const* const entry = find(rKey, hash);
    if (entry == nullptr)
    {
      return false;
    }
    unsigned int const bucket = hash % Traits::Buckets;
    typename Bucket::iterator it = mBuckets.at(bucket).begin();
    while (&*it != entry)
    {
      ++it;
    }
    mIndex.remove(bucket, entry);
    --miLength;
    mBuckets.at(bucket).erase(it);
    return true;
  }

  /// Removes everything.
  void clear()
  {
    mIndex.clear();
    miLength = 0;
    for (unsigned int i = 0; i < Traits::Buckets; ++i)
    {
      mBuckets.at(i).clear();
    }
  }

  void swap(tHash& rOther) noexcept
  {
    mBuckets.swap(rOther.mBuckets);
    mIndex.swap(rOther.mIndex);
    unsigned int const length = miLength;
    miLength = rOther.miLength;
    rOther.miLength = length;
  }

  /// Number of keys.
  unsigned int length() const noexcept { return miLength; }
  bool empty() const noexcept { return miLength == 0; }

private:
  typedef tPair<K, V> Entry;
  typedef tList<Entry> Bucket;

  class cMatch
  {
  public:
    explicit cMatch(K const& rKey) : mpKey(&rKey) {}
    bool isInline() const { return Traits::isInline(*mpKey); }
    bool isSameInline(void const* pEntry) const { return Traits::isSameInline(*mpKey, key(pEntry)); }
    bool operator()(void const* pEntry) const { return Traits::isSame(*mpKey, key(pEntry)); }

  private:
    static K const& key(void const* pEntry) { return static_cast<Entry const*>(pEntry)->first; }

    K const* mpKey;
  };

  Entry* find(K const& rKey, unsigned int iHash) const
  {
    return static_cast<Entry*>(mIndex.find(iHash % Traits::Buckets, iHash, cMatch(rKey)));
  }

  V& add(K const& rKey, unsigned int iHash)
  {
    unsigned int const bucket = iHash % Traits::Buckets;
    mIndex.reserve(bucket);
    Entry& entry = *mBuckets.at(bucket).append(Entry(rKey, V()));
    mIndex.add(bucket, iHash, &entry);
    ++miLength;
    return entry.second;
  }

  tVector<Bucket> mBuckets;
  cHashIndex mIndex;
  unsigned int miLength;
};

template <class K, class V, class Traits>
inline void swap(tHash<K, V, Traits>& rLeft, tHash<K, V, Traits>& rRight) noexcept
{
  rLeft.swap(rRight);
}

} // namespace mstd

#endif
