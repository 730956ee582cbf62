#ifndef MORTISE_STD_CARRAYMEMORY_H
#define MORTISE_STD_CARRAYMEMORY_H

#include "std/cSTDExceptions.h"

#include <stddef.h>

namespace mstd
{
/// The part of the arrays that does not depend on the element type: pools and searches in raw memory.
///
/// A pool of n elements is a block of the C library. Up to 128 bytes it is as large as its elements; above, its size is
/// rounded up to a grid: a half of its magnitude below 1 KiB, a quarter below 4 KiB, else an eighth. So an array that
/// grows sector by sector asks the allocator a logarithmic number of times, and since the size of the block follows
/// from n alone, nothing has to be remembered.
class MORTISE_API cArrayMemory
{
public:
  /// A fresh pool for `count` elements of `elementSize` bytes, null for none. Errors: std::bad_alloc.
  static void* allocate(unsigned long long count, unsigned int elementSize);
  /// Makes the pool of `have` elements one of `want` elements, keeping the contents, and returns where it is
  /// then. Errors: std::bad_alloc, with the old pool untouched; making a pool smaller never fails.
  static void* resize(void* pool, unsigned long long have, unsigned long long want, unsigned int elementSize);
  /// As resize(), but does not keep the contents and so never copies.
  static void* replace(void* pool, unsigned long long have, unsigned long long want, unsigned int elementSize);
  /// Gives a pool back; null is harmless.
  static void release(void* pool);

  /// The first place at which the `needleSize` bytes at `needle` stand in the `size` bytes at `data`, or null. An
  /// empty needle stands everywhere.
  static void const* find(void const* data, size_t size, void const* needle, size_t needleSize);
  /// As find(), for elements of `elementSize` bytes and counts of them: a match covers whole elements.
  static void const* findElements(void const* data, unsigned int count, void const* needle, unsigned int needleCount,
                                  unsigned int elementSize);

  /// Length of a zero-terminated text, 0 for null. Errors: std::bad_alloc for more than 2^32 - 1 characters.
  static unsigned int textLength(char const* text);
  /// `a + b`. Errors: std::bad_alloc if no array can have that length.
  static unsigned int addLengths(unsigned int a, unsigned int b)
  {
    unsigned int const sum = a + b;
    if (sum < a)
    {
      cSTDExceptions::throwBadAlloc();
    }
    return sum;
  }
};
} // namespace mstd

#endif
