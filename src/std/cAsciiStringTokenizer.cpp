#include "std/cAsciiStringTokenizer.h"

namespace mstd
{

template class tTokenizerContext<cAsciiString>;
template class tTokenizer<tConstArrayRef<char, tArrayAsciiStringTraits<char>>, cAsciiString>;

cAsciiStringTokenizerContext::~cAsciiStringTokenizerContext() = default;

cAsciiStringTokenizer::cAsciiStringTokenizer(cAsciiString const& text, tContext* pContext)
    : tTokenizer(tConstArrayRef<char, tArrayAsciiStringTraits<char>>(text), pContext)
{
}

cAsciiStringTokenizer::~cAsciiStringTokenizer() = default;

} // namespace mstd
