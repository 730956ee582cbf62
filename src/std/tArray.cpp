#include "std/tArray.h"

namespace mstd
{
template class tArray<char, tArrayAsciiStringTraits<char>>;
template class tArray<char, tArrayByteLevelTraits<char>>;
template class tArray<unsigned int, tArrayByteLevelTraits<unsigned int>>;
template class tArray<unsigned short, tArrayByteLevelTraits<unsigned short>>;
} // namespace mstd
