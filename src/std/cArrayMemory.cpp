#include "std/cArrayMemory.h"

#include <stdlib.h>
#include <string.h>
#include <wchar.h>

namespace
{
unsigned long long const ExactUpTo = 128;
unsigned long long const QuartersFrom = 1024;
unsigned long long const EighthsFrom = 4096;

/// Bytes of the block behind a pool; a pure function, so that the block of a pool is known from its capacity.
size_t blockSize(unsigned long long count, unsigned int elementSize)
{
  unsigned long long const most = static_cast<unsigned long long>(PTRDIFF_MAX);
  unsigned long long const bytes = count * elementSize;
  if (bytes > most)
  {
    cSTDExceptions::throwBadAlloc();
  }
  if (bytes <= ExactUpTo)
  {
    return static_cast<size_t>(bytes);
  }
  unsigned int const magnitude = 63u - static_cast<unsigned int>(__builtin_clzll(bytes));
  unsigned int const fineness = bytes < QuartersFrom ? 1u : (bytes < EighthsFrom ? 2u : 3u);
  unsigned long long const grid = 1ull << (magnitude - fineness);
  unsigned long long const rounded = (bytes + grid - 1) & ~(grid - 1);
  return static_cast<size_t>(rounded <= most ? rounded : bytes);
}

#if defined(__SSE2__)
typedef char tBlock __attribute__((vector_size(16)));

tBlock blockAt(unsigned char const* at)
{
  tBlock block;
  memcpy(&block, at, sizeof(block));
  return block;
}

tBlock blockOf(unsigned char byte)
{
  tBlock block;
  memset(&block, byte, sizeof(block));
  return block;
}

/// Compares the first and the last byte of the needle at 16 places at once and looks closer only where both match,
/// which on most data is several times as fast as the C library's search. That one takes over when there are many
/// places to look at closer, as its cost never multiplies with the needle's length.
void const* findBytes(unsigned char const* data, size_t size, unsigned char const* needle, size_t needleSize)
{
  tBlock const first = blockOf(needle[0]);
  tBlock const last = blockOf(needle[needleSize - 1]);
  size_t const cost = 1 + needleSize / sizeof(tBlock);
  size_t spent = 0;
  size_t i = 0;
  for (; size - i >= sizeof(tBlock) + needleSize - 1; i += sizeof(tBlock))
  {
    tBlock const both = (blockAt(data + i) == first) & (blockAt(data + i + needleSize - 1) == last);
    unsigned int places = static_cast<unsigned int>(__builtin_ia32_pmovmskb128(both));
    if (__builtin_expect(places == 0, 1))
    {
      continue;
    }
    for (; places != 0; places &= places - 1)
    {
      unsigned char const* const place = data + i + static_cast<unsigned int>(__builtin_ctz(places));
      if (memcmp(place, needle, needleSize) == 0)
      {
        return place;
      }
      spent += cost;
    }
    if (spent > 256 + i / 32)
    {
      i += sizeof(tBlock);
      break;
    }
  }
  return memmem(data + i, size - i, needle, needleSize);
}
#else
void const* findBytes(unsigned char const* data, size_t size, unsigned char const* needle, size_t needleSize)
{
  return memmem(data, size, needle, needleSize);
}
#endif

void const* findWide(void const* data, unsigned int count, void const* needle, unsigned int needleCount)
{
  wchar_t const* at = static_cast<wchar_t const*>(data);
  wchar_t const* const end = at + (count - needleCount) + 1;
  wchar_t const* const wanted = static_cast<wchar_t const*>(needle);
  while ((at = wmemchr(at, *wanted, static_cast<size_t>(end - at))) != nullptr)
  {
    if (memcmp(at, wanted, static_cast<size_t>(needleCount) * sizeof(wchar_t)) == 0)
    {
      return at;
    }
    ++at;
  }
  return nullptr;
}
} // namespace

void* mstd::cArrayMemory::allocate(unsigned long long count, unsigned int elementSize)
{
  if (count == 0)
  {
    return nullptr;
  }
  void* const pool = malloc(blockSize(count, elementSize));
  if (pool == nullptr)
  {
    cSTDExceptions::throwBadAlloc();
  }
  return pool;
}

void* mstd::cArrayMemory::resize(void* pool, unsigned long long have, unsigned long long want, unsigned int elementSize)
{
  if (pool == nullptr)
  {
    return allocate(want, elementSize);
  }
  if (want == 0)
  {
    free(pool);
    return nullptr;
  }
  size_t const oldSize = blockSize(have, elementSize);
  if (want >= have && want * elementSize <= oldSize)
  {
    return pool; // the ordinary sector: sizes of blocks change only where a pool no longer fits
  }
  size_t const newSize = blockSize(want, elementSize);
  if (oldSize == newSize)
  {
    return pool;
  }
  void* const moved = realloc(pool, newSize);
  if (moved == nullptr)
  {
    if (newSize < oldSize)
    {
      return pool; // larger than needed, which harms nobody
    }
    cSTDExceptions::throwBadAlloc();
  }
  return moved;
}

void* mstd::cArrayMemory::replace(void* pool, unsigned long long have, unsigned long long want,
                                  unsigned int elementSize)
{
  if (pool == nullptr || want <= have)
  {
    return resize(pool, have, want, elementSize);
  }
  if (blockSize(have, elementSize) == blockSize(want, elementSize))
  {
    return pool;
  }
  void* const fresh = allocate(want, elementSize);
  free(pool);
  return fresh;
}

void mstd::cArrayMemory::release(void* pool)
{
  free(pool);
}

void const* mstd::cArrayMemory::find(void const* data, size_t size, void const* needle, size_t needleSize)
{
  if (needleSize > size)
  {
    return nullptr;
  }
  if (needleSize == 0)
  {
    return data;
  }
  if (needleSize == 1)
  {
    return memchr(data, *static_cast<unsigned char const*>(needle), size);
  }
  return findBytes(static_cast<unsigned char const*>(data), size, static_cast<unsigned char const*>(needle),
                   needleSize);
}

void const* mstd::cArrayMemory::findElements(void const* data, unsigned int count, void const* needle,
                                             unsigned int needleCount, unsigned int elementSize)
{
  if (elementSize == 1)
  {
    return find(data, count, needle, needleCount);
  }
  if (needleCount > count)
  {
    return nullptr;
  }
  if (needleCount == 0)
  {
    return data;
  }
  if (elementSize == sizeof(wchar_t))
  {
    return findWide(data, count, needle, needleCount);
  }
  unsigned char const* at = static_cast<unsigned char const*>(data);
  unsigned char const* const last = at + static_cast<size_t>(count - needleCount) * elementSize;
  size_t const needleSize = static_cast<size_t>(needleCount) * elementSize;
  for (; at <= last; at += elementSize)
  {
    if (memcmp(at, needle, needleSize) == 0)
    {
      return at;
    }
  }
  return nullptr;
}

unsigned int mstd::cArrayMemory::textLength(char const* text)
{
  if (text == nullptr)
  {
    return 0;
  }
  size_t const length = strlen(text);
  if ((length >> 16) >> 16 != 0)
  {
    cSTDExceptions::throwBadAlloc();
  }
  return static_cast<unsigned int>(length);
}
