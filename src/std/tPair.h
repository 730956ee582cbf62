#ifndef MORTISE_STD_TPAIR_H
#define MORTISE_STD_TPAIR_H

#include "pi/piTypes.h"

namespace mstd
{

/// Two values side by side.
template <class A, class B>
class MORTISE_API tPair
{
public:
  /// Two default values.
  tPair() : first(), second() {}
  tPair(A const& rFirst, B const& rSecond) : first(rFirst), second(rSecond) {}

  bool operator==(tPair const& rOther) const { return first == rOther.first && second == rOther.second; }
  bool operator!=(tPair const& rOther) const { return !(*this == rOther); }

  A first;
  B second;
};

} // namespace mstd

#endif
