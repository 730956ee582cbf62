#include "std/tArrayRef.h"

namespace mstd
{
template class tArrayRef<char, tArrayByteLevelTraits<char>>;
} // namespace mstd
