#include "std/tConstArrayRef.h"

namespace mstd
{
template class tConstArrayRef<char, tArrayAsciiStringTraits<char>>;
template class tConstArrayRef<char, tArrayByteLevelTraits<char>>;
} // namespace mstd
