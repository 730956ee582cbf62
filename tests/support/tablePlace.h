#ifndef MORTISE_TESTS_SUPPORT_TABLEPLACE_H
#define MORTISE_TESTS_SUPPORT_TABLEPLACE_H

#include <cstddef>
#include <cstring>

// Programs that are built apart meet in the tables of virtual operations, so their order is an interface. Both
// destructors of a class take the first two places.

namespace support
{

/// Place of a virtual operation in its class's table, as the ABI puts it into a pointer to member.
template <class T, class R, class... A>
size_t placeOf(R (T::*method)(A...))
{
  size_t first = 0;
  std::memcpy(&first, &method, sizeof first);
#if defined(__arm__)
  return first / sizeof(void*);
#else
  return (first - 1) / sizeof(void*);
#endif
}

template <class T, class R, class... A>
size_t placeOf(R (T::*method)(A...) const)
{
  return placeOf(reinterpret_cast<R (T::*)(A...)>(method));
}

/// The same of the overload with these arguments.
template <class... A, class T, class R>
size_t placeWith(R (T::*method)(A...))
{
  return placeOf(method);
}

template <class... A, class T, class R>
size_t placeWithConst(R (T::*method)(A...) const)
{
  return placeOf(method);
}

} // namespace support

#endif
