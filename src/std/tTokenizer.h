#ifndef MORTISE_STD_TTOKENIZER_H
#define MORTISE_STD_TTOKENIZER_H

#include "std/tTokenizerContext.h"

namespace mstd
{

/// Scanner over a view of some text, under a context that the parser may exchange between two tokens.
///
/// Separators divide words and vanish; keys divide words and come back as tokens; a word is delivered
/// before the key that ends it. Of two texts that begin at one place the one added first counts.
///
/// `Ref` is the view (a tConstArrayRef), `Str` the text of tokens and of the context (a tArray of the same
/// elements).
///
/// Ownership: what the view shows and the contexts must outlive the tokenizer, and must not change while it
///            is at work, but for hint counts, and entries and quotes between two tokens.
/// Errors:    only expectToken() fails; besides, std::bad_alloc, and what the source of the view raises. The
///            position is then still in front of the token.
/// Threads:   belongs to one thread.
/// Cost:      a run over the whole input is linear in its length for each entry of the contexts: what was
///            found far ahead is remembered from token to token.
template <class Ref, class Str>
class MORTISE_API tTokenizer
{
public:
  typedef tTokenizerContext<Str> tContext;
  typedef typename Str::value_type tElement;

  /// Stands at the beginning of `input`. Without a context (null) all of it is one token.
  explicit tTokenizer(Ref const& input, tContext* pContext = nullptr);
  tTokenizer(tTokenizer const&) = delete;
  tTokenizer& operator=(tTokenizer const&) = delete;
  virtual ~tTokenizer();

  tContext* context() const { return mpContext; }
  /// Counts from the next token on; may be null.
  void setContext(tContext* pContext) { mpContext = pContext; }

  /// Index of the first element that is not consumed yet.
  unsigned int position() const { return miPosition; }

  /// The next token and the id of its key, 0 if it is no key. False at the end of the input: `token` is then
  /// as it was, and `iId` 0.
  bool getNextToken(Str& token, unsigned int& iId);
  /// The next token and its id. The end of the input raises cRuntimeException.
  unsigned int expectToken(Str& token);
  /// getNextToken() for whoever does not care about the id: at the end of the input `token` stays.
  tTokenizer& operator>>(Str& token);
  /// Runs over the rest of the input and drops the tokens; what remains are the hint counts.
  void process();
  /// Removes the context's quotes from `token`; of two in a row the second stays.
  void removeQuotes(Str& token) const;

protected:
  /// Finds the next token, which lies between `iStart` and the new position; false at the end of the input.
  bool advance(unsigned int& iStart, unsigned int& iId);
  Ref const& input() const { return mInput; }
  void setPosition(unsigned int iPosition) { miPosition = iPosition; }

  /// removeQuotes() for any quote. Static, for tokens of another text than the input.
  template <class Text>
  static void removeQuotesFrom(Text& token, Text const& quote);

private:
  typedef typename tContext::cTokenSpec cSpec;
  class cSource;
  class cFarSearch;

  bool isQuoted(cSource const& source, unsigned int iPlace) const;
  bool findSeparator(cSource const& source, unsigned int iPlace, cSpec*& pSpec, unsigned int& iBehind) const;
  bool findOccurrence(cSource const& source, Str const& text, unsigned int iFrom, unsigned int iEnd,
                      unsigned int& iPlace);

  Ref mInput;
  unsigned int miPosition;
  tContext* mpContext;
  tAutoPtr<cFarSearch> mpFarSearch; // made by the first search that goes far ahead
};

} // namespace mstd

#include "std/tTokenizer-inl.h"

#endif
