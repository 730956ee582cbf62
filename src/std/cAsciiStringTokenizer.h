#ifndef MORTISE_STD_CASCIISTRINGTOKENIZER_H
#define MORTISE_STD_CASCIISTRINGTOKENIZER_H

#include "std/cAsciiString.h"
#include "std/tConstArrayRef.h"
#include "std/tTokenizer.h"

namespace mstd
{

extern template class tTokenizerContext<cAsciiString>;
extern template class tTokenizer<tConstArrayRef<char, tArrayAsciiStringTraits<char>>, cAsciiString>;

/// Context of a cAsciiStringTokenizer.
class MORTISE_API cAsciiStringTokenizerContext : public tTokenizerContext<cAsciiString>
{
public:
  ~cAsciiStringTokenizerContext() override;
};

/// Tokenizer over byte strings, see tTokenizer.
class MORTISE_API cAsciiStringTokenizer
    : public tTokenizer<tConstArrayRef<char, tArrayAsciiStringTraits<char>>, cAsciiString>
{
public:
  /// `text` must outlive the tokenizer.
  explicit cAsciiStringTokenizer(cAsciiString const& text, tContext* pContext = nullptr);
  ~cAsciiStringTokenizer() override;
};

} // namespace mstd

#endif
