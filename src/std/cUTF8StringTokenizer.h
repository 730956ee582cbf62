#ifndef MORTISE_STD_CUTF8STRINGTOKENIZER_H
#define MORTISE_STD_CUTF8STRINGTOKENIZER_H

#include "std/tArray.h"
#include "std/tConstArrayRef.h"
#include "std/tTokenizer.h"

namespace mucs
{
class cString;
}

namespace mstd
{

extern template class tTokenizerContext<tArray<char>>;
extern template class tTokenizer<tConstArrayRef<char>, tArray<char>>;

/// Context of a cUTF8StringTokenizer. All texts are kept as UTF-8.
class MORTISE_API cUTF8StringTokenizerContext : public tTokenizerContext<tArray<char>>
{
public:
  ~cUTF8StringTokenizerContext() override;

  cTokenSpec& addSeparator(mucs::cString const& text);
  /// `pText` is zero-terminated UTF-8 and is taken as it is.
  cTokenSpec& addSeparator(char const* pText);
  cTokenSpec& addKey(mucs::cString const& text, unsigned int iId);
  cTokenSpec& addKey(char const* pText, unsigned int iId);
  void setSingleQuote(mucs::cString const& quote);
};

/// Tokenizer over UTF-8 that hands out decoded tokens, see tTokenizer.
///
/// Errors: besides those of tTokenizer, a token that can't be decoded raises cRuntimeException. The position is then
///         behind that token, so that a parser may report it and go on; the token given stays as it was.
class MORTISE_API cUTF8StringTokenizer : public tTokenizer<tConstArrayRef<char>, tArray<char>>
{
public:
  typedef tTokenizer<tConstArrayRef<char>, tArray<char>> tBase;

  /// `input` must outlive the tokenizer.
  explicit cUTF8StringTokenizer(tArray<char> const& input, tContext* pContext = nullptr);
  explicit cUTF8StringTokenizer(tConstArrayRef<char> const& input, tContext* pContext = nullptr);
  ~cUTF8StringTokenizer() override;

  using tBase::expectToken;
  using tBase::getNextToken;
  using tBase::removeQuotes;
  using tBase::operator>>;
  bool getNextToken(mucs::cString& token, unsigned int& iId);
  unsigned int expectToken(mucs::cString& token);
  cUTF8StringTokenizer& operator>>(mucs::cString& token);
  void removeQuotes(mucs::cString& token) const;
};

} // namespace mstd

#endif
