#ifndef MORTISE_STD_TTOKENIZERCONTEXT_H
#define MORTISE_STD_TTOKENIZERCONTEXT_H

#include "std/cAbstractTokenSpec.h"
#include "std/tAutoPtr.h"
#include "std/tPtrVector.h"

namespace mstd
{

/// What a tokenizer looks for: separators and keys in the order of adding, and a quote that hides
/// whatever stands directly behind it.
///
/// A parser keeps one context for each of its modes and exchanges them between two tokens.
///
/// Ownership: owns its entries. An entry keeps its address as long as the context lives.
/// Threads:   may be shared by tokenizers of one thread; the hint counts are plain counters.
template <class T>
class MORTISE_API tTokenizerContext
{
public:
  /// One text that is looked for.
  class MORTISE_API cTokenSpec : public cAbstractTokenSpec
  {
  public:
    cTokenSpec(T const& text, bool isKeySpec, unsigned int iId)
        : cAbstractTokenSpec(isKeySpec ? Key : Separator), mText(text), mIsKey(isKeySpec), miId(iId), miPriority(0)
    {
    }

    T const& text() const { return mText; } ///< An empty text never occurs.
    bool isKey() const { return mIsKey; }
    unsigned int id() const { return miId; } ///< What the caller chose; 0 for a separator.
    /// At the end of a word an entry replaces the one found before it if its priority is higher. 0 for
    /// all entries made by addKey() and addSeparator().
    unsigned int priority() const { return miPriority; }

  private:
    T mText;
    bool mIsKey;
    unsigned int miId;
    unsigned int miPriority;
  };

  tTokenizerContext() : mSpecs(tAutoPtrType::Object) {}
  tTokenizerContext(tTokenizerContext const&) = delete; // entries are known by their address
  tTokenizerContext& operator=(tTokenizerContext const&) = delete;
  virtual ~tTokenizerContext() {}

  /// Adds a text that divides words and vanishes. Returns the new entry.
  cTokenSpec& addSeparator(T const& text) { return add(text, false, 0); }
  /// Adds a text that divides words and comes as a token with `iId`, which is not to be 0 if it shall be
  /// told from plain text. Returns the new entry.
  cTokenSpec& addKey(T const& text, unsigned int iId) { return add(text, true, iId); }

  /// Number of entries.
  unsigned int length() const { return mSpecs.length(); }
  /// Entry `index` in order of adding.
  cTokenSpec& spec(unsigned int index) const { return *mSpecs.at(index); }

  /// Text that takes the meaning from the separator or key directly behind it; empty for none.
  T const& singleQuote() const { return mSingleQuote; }
  void setSingleQuote(T const& quote) { mSingleQuote = quote; }

private:
  cTokenSpec& add(T const& text, bool isKeySpec, unsigned int iId)
  {
    return *mSpecs.append(tAutoPtr<cTokenSpec>(new cTokenSpec(text, isKeySpec, iId)));
  }

  tPtrVector<cTokenSpec> mSpecs;
  T mSingleQuote;
};

} // namespace mstd

#endif
