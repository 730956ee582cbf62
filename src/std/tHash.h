#ifndef MORTISE_STD_THASH_H
#define MORTISE_STD_THASH_H

#include "std/tList.h"
#include "std/tPair.h"
#include "std/tVector.h"

namespace mstd
{

/// Hashing of keys that are arrays: `length()` elements behind `data()`. `N` is the number of buckets.
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

  template <class Key>
  static unsigned int hash(Key const& rKey)
  {
    unsigned int const length = rKey.length();
    if (length == 0)
    {
      return Seed;
    }
    auto const* const data = rKey.data();
    if (length > MaxHashedLength)
    {
      unsigned int const sum = lowByte(data[length / 6]) + lowByte(data[length - length / 6]) +
                               lowByte(data[length - 5]) + lowByte(data[length - length / 3]);
      return sum ^ length;
    }
    // h = h * 33 + element, four elements at a time, so that the multiplications do not wait for each other.
    unsigned int const by2 = 33u * 33u;
    unsigned int const by3 = by2 * 33u;
    unsigned int const by4 = by3 * 33u;
    unsigned int h = Seed;
    unsigned int i = 0;
    for (; length - i >= 4; i += 4)
    {
      h = h * by4 +
          (element(data[i]) * by3 + element(data[i + 1]) * by2 + element(data[i + 2]) * 33u + element(data[i + 3]));
    }
    for (; i < length; ++i)
    {
      h = h * 33u + element(data[i]);
    }
    return h;
  }

private:
  enum : unsigned int
  {
    Seed = 5381
  };

  template <class E>
  static unsigned int element(E e)
  {
    return static_cast<unsigned int>(e);
  }
  template <class E>
  static unsigned int lowByte(E e)
  {
    return static_cast<unsigned int>(e) & 0xFFu;
  }
};

/// Table from keys to values with a fixed number of buckets; it is never rehashed.
///
/// Ownership: owns copies of keys and values.
/// Errors:    no memory raises std::bad_alloc and leaves the table as it was.
/// Validity:  a reference to a value holds until its key is removed.
/// Threads:   no lock.
/// Cost:      a look-up hashes the key and walks one bucket; it is meant for up to some ten entries per bucket.
template <class K, class V, class Traits>
class MORTISE_API tHash
{
public:
  /// Empty, with all its buckets.
  tHash() : miLength(0)
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

  /// The value of `rKey`, or null.
  V* has(K const& rKey) { return const_cast<V*>(static_cast<tHash const*>(this)->has(rKey)); }
  V const* has(K const& rKey) const
  {
    unsigned int const hash = Traits::hash(rKey);
    Bucket const& bucket = mBuckets.at(hash % Traits::Buckets);
    Position const position = find(bucket, hash, rKey);
    return position == bucket.end() ? nullptr : &position->second;
  }

  /// The value of `rKey`, which is added with a default value if it is absent.
  V& operator[](K const& rKey)
  {
    unsigned int const hash = Traits::hash(rKey);
    Bucket& bucket = mBuckets.at(hash % Traits::Buckets);
    Position const position = find(bucket, hash, rKey);
    if (position != bucket.end())
    {
      return const_cast<V&>(position->second);
    }
    V& value = bucket.append(cEntry(rKey, hash))->second;
    ++miLength;
    return value;
  }

  /// Removes `rKey` and its value; false if it is absent.
  bool remove(K const& rKey)
  {
    unsigned int const hash = Traits::hash(rKey);
    Bucket& bucket = mBuckets.at(hash % Traits::Buckets);
    for (typename Bucket::iterator it = bucket.begin(); it != bucket.end(); ++it)
    {
      if (it->isFor(hash, rKey))
      {
        --miLength;
        bucket.erase(it);
        return true;
      }
    }
    return false;
  }

  /// Removes everything.
  void clear()
  {
    for (unsigned int i = 0; i < Traits::Buckets; ++i)
    {
      mBuckets.at(i).clear();
    }
    miLength = 0;
  }

  /// Number of keys.
  unsigned int length() const noexcept { return miLength; }
  bool empty() const noexcept { return miLength == 0; }

private:
  // The hash beside the pair: a walk through a bucket looks at the key only if the whole hash agrees.
  class cEntry : public tPair<K, V>
  {
  public:
    cEntry(K const& rKey, unsigned int iHash) : tPair<K, V>(rKey, V()), miHash(iHash) {}
    bool isFor(unsigned int iHash, K const& rKey) const { return miHash == iHash && this->first == rKey; }

  private:
    unsigned int miHash;
  };

  typedef tList<cEntry> Bucket;
  typedef typename Bucket::const_iterator Position;

  static Position find(Bucket const& rBucket, unsigned int iHash, K const& rKey)
  {
    Position it = rBucket.begin();
    Position const end = rBucket.end();
    while (it != end && !it->isFor(iHash, rKey))
    {
      ++it;
    }
    return it;
  }

  tVector<Bucket> mBuckets;
  unsigned int miLength;
};

} // namespace mstd

#endif
