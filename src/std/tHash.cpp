#include "std/tHash.h"

#include <new>
#include <utility>

namespace mstd
{

cHashIndex::cHashIndex(unsigned int iBuckets) : mpBuckets(nullptr), mpMemory(nullptr), miBuckets(iBuckets)
{
  unsigned long long const bytes = static_cast<unsigned long long>(iBuckets) * sizeof(cBucket) + LineSize;
  if (bytes > static_cast<unsigned long long>(PTRDIFF_MAX))
  {
    cSTDExceptions::throwBadAlloc();
  }
  mpMemory = ::operator new(static_cast<decltype(sizeof(0))>(bytes));
  uintptr_t const address = reinterpret_cast<uintptr_t>(mpMemory);
  uintptr_t const aligned = (address + LineSize - 1) / LineSize * LineSize;
  mpBuckets = reinterpret_cast<cBucket*>(static_cast<char*>(mpMemory) + (aligned - address));
  for (unsigned int i = 0; i < miBuckets; ++i)
  {
    new (mpBuckets + i) cBucket();
  }
}

cHashIndex::~cHashIndex()
{
  for (unsigned int i = 0; i < miBuckets; ++i)
  {
    ::operator delete(mpBuckets[i].mpMore);
  }
  ::operator delete(mpMemory);
}

void cHashIndex::reserve(unsigned int iBucket)
{
  cBucket& bucket = mpBuckets[iBucket];
  if (bucket.miCount < Places + bucket.miMoreCapacity)
  {
    return;
  }
  unsigned int const first = 4;
  unsigned long long const capacity = bucket.miMoreCapacity == 0 ? first : 2ull * bucket.miMoreCapacity;
  unsigned long long const bytes = capacity * sizeof(cPlace);
  if (capacity + Places > 0xFFFFFFFFull || bytes > static_cast<unsigned long long>(PTRDIFF_MAX))
  {
    cSTDExceptions::throwBadAlloc();
  }
  cPlace* const more = static_cast<cPlace*>(::operator new(static_cast<decltype(sizeof(0))>(bytes)));
  if (bucket.mpMore != nullptr)
  {
    memcpy(more, bucket.mpMore, sizeof(cPlace) * bucket.miMoreCapacity);
    ::operator delete(bucket.mpMore);
  }
  bucket.mpMore = more;
  bucket.miMoreCapacity = static_cast<unsigned int>(capacity);
}

void cHashIndex::add(unsigned int iBucket, unsigned int iHash, void* pEntry) noexcept
{
  cBucket& bucket = mpBuckets[iBucket];
  put(bucket, bucket.miCount, iHash, pEntry);
  ++bucket.miCount;
}

void cHashIndex::remove(unsigned int iBucket, void const* pEntry) noexcept
{
  cBucket& bucket = mpBuckets[iBucket];
  unsigned int kept = 0;
  for (unsigned int i = 0; i < bucket.miCount; ++i)
  {
    bool const isInside = i < Places;
    void* const entry = isInside ? bucket.mpEntries[i] : bucket.mpMore[i - Places].mpEntry;
    unsigned int const hash = isInside ? bucket.miHashes[i] : bucket.mpMore[i - Places].miHash;
    if (entry != pEntry)
    {
      put(bucket, kept, hash, entry);
      ++kept;
    }
  }
  bucket.miCount = kept;
  if (kept < Places)
  {
    put(bucket, kept, 0, nullptr);
  }
}

void cHashIndex::clear() noexcept
{
  for (unsigned int i = 0; i < miBuckets; ++i)
  {
    cBucket& bucket = mpBuckets[i];
    bucket.miCount = 0;
    for (unsigned int place = 0; place < Places; ++place)
    {
      put(bucket, place, 0, nullptr);
    }
  }
}

void cHashIndex::swap(cHashIndex& rOther) noexcept
{
  std::swap(mpBuckets, rOther.mpBuckets);
  std::swap(mpMemory, rOther.mpMemory);
  std::swap(miBuckets, rOther.miBuckets);
}

void cHashIndex::put(cBucket& rBucket, unsigned int iPlace, unsigned int iHash, void* pEntry) noexcept
{
  if (iPlace < Places)
  {
    rBucket.miHashes[iPlace] = iHash;
    rBucket.mpEntries[iPlace] = pEntry;
  }
  else
  {
    rBucket.mpMore[iPlace - Places] = cPlace{pEntry, iHash};
  }
}

} // namespace mstd
