#ifndef MORTISE_STD_TARRAYTRAITS_H
#define MORTISE_STD_TARRAYTRAITS_H

#include "pi/piTypes.h"

namespace mstd
{
/// Tag of arrays that are zero-terminated character strings: the pool always has room for one element behind the
/// capacity, the element behind the last one is 0, and there is a pool even for length 0.
template <class T>
class MORTISE_API tArrayAsciiStringTraits
{
};

/// Tag of arrays of plain elements: the pool is what the capacity says, and an empty array may have none.
template <class T>
class MORTISE_API tArrayByteLevelTraits
{
};

/// Whether arrays with the tag `Traits` keep a terminator.
template <class Traits>
struct tArrayTerminated
{
  enum
  {
    value = 0
  };
};

template <class T>
struct tArrayTerminated<tArrayAsciiStringTraits<T>>
{
  enum
  {
    value = 1
  };
};

// Declared here with their default tag, for headers that only mention them.
template <class T>
class tAbstractConstArrayProxy;
template <class T>
class tAbstractArrayProxy;
template <class T, class Traits = tArrayByteLevelTraits<T>>
class tArray;
template <class T, class Traits = tArrayByteLevelTraits<T>>
class tConstArrayRef;
template <class T, class Traits = tArrayByteLevelTraits<T>>
class tArrayRef;
} // namespace mstd

#endif
