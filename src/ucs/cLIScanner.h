#ifndef MORTISE_UCS_CLISCANNER_H
#define MORTISE_UCS_CLISCANNER_H

#include "std/cUTF8StringTokenizer.h"

namespace mucs
{
class cString;

/// The tokens of translation and locale files. Comments are passed over, wherever they stand.
class cLIScanner
{
public:
  enum Token
  {
    Word = 0,
    Equals = 1,
    Quote = 2, ///< Begins a string; readString() has to follow, or it is passed over as a token.
    CommentStart = 4,
    Include = 5,
    Name = 6,
    Flag = 7,
    OpeningParenthesis = 40,
    ClosingParenthesis = 41
  };

  enum Format
  {
    TranslationFile,
    LocaleFile
  };

  /// `aBytes` has to outlive the scanner.
  cLIScanner(mstd::tArray<char> const& aBytes, Format eFormat);
  cLIScanner(cLIScanner const&) = delete;
  cLIScanner& operator=(cLIScanner const&) = delete;

  /// The next token that is no comment; false at the end.
  bool next(Token& eToken);
  /// True if that is the next token.
  bool expect(Token eToken);
  /// True if the token read last is this word.
  bool isWord(char const* sWord) const;
  /// Replaces `sText` by the string that began with the token read last. False if it does not end.
  bool readString(cString& sText);

  /// Line ends so far, whether they are CR, LF or both; those in strings don't count.
  unsigned int row() const { return miCRs < miLFs ? miLFs : miCRs; }

private:
  typedef mstd::cUTF8StringTokenizerContext tContext;

  /// What comes as token is decoded only if it is looked at: comments may have any bytes.
  class cTokens : public mstd::cUTF8StringTokenizer
  {
  public:
    cTokens(mstd::tArray<char> const& aBytes, tContext* pContext) : cUTF8StringTokenizer(aBytes, pContext) {}
    bool next(unsigned int& iId);
    mstd::tConstArrayRef<char> current() const;

  private:
    unsigned int miStart = 0;
  };

  void passComment();

  unsigned int miCRs;
  unsigned int miLFs;
  tContext mMain;
  tContext mComment;
  tContext mString;
  cTokens mTokens;
};
} // namespace mucs

#endif
