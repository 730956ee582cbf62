#ifndef MORTISE_STD_TBOUNDS_H
#define MORTISE_STD_TBOUNDS_H

#include "pi/piTypes.h"

namespace mstd
{
/// The range checks that all indexable things share. The tests are inline, the failures are not.
///
/// `container` and `operation` name the place for the message; they are plain literals.
class MORTISE_API tBounds
{
public:
  /// Checks that the `size` elements from `start` on lie within `total` elements, and returns `start + size`.
  /// `start == total` with `size == 0` is legal. `T` is an unsigned type.
  ///
  /// Errors: cOutOfBoundsException if `start + size` does not fit `T`; else cOutOfRangeException, for an index
  /// if `start` is behind the end, for a size if `start + size` is.
  template <class T>
  static T startSize2End(T total, T start, T size, char const* container, char const* operation)
  {
    T const end = static_cast<T>(start + size);
    if (end < start || end > total)
    {
      throwStartSize(total, start, size, end < start, container, operation);
    }
    return end;
  }

  /// cOutOfRangeException for an index that is not below `length`; the largest legal one is `length - 1`, or 0 if
  /// there is none.
  [[noreturn]] static void throwIndexOutOfRange(char const* container, char const* operation, unsigned int index,
                                                unsigned int length);
  /// cOutOfRangeException for a position, above `max`, at which something was to be put or cut.
  [[noreturn]] static void throwValueOutOfRange(char const* container, char const* operation, unsigned int value,
                                                unsigned int max);
  /// cOutOfRangeException for a number of elements above `max`.
  [[noreturn]] static void throwSizeOutOfRange(char const* container, char const* operation, unsigned int size,
                                               unsigned int max);

private:
  [[noreturn]] static void throwStartSize(unsigned long long total, unsigned long long start, unsigned long long size,
                                          bool overflow, char const* container, char const* operation);
};
} // namespace mstd

#endif
