#ifndef MORTISE_TOOLS_CTRANSLATIONPARSER_H
#define MORTISE_TOOLS_CTRANSLATIONPARSER_H

#include <string>
#include <vector>

/// Reads a translation file or a locale file into its statements, with the comments that belong to them.
///
/// It takes for a statement what the library's loaders do. Some comments have a meaning here: `//:` names the sources
/// of a key,
/// `//?` takes out an entry that has no translation yet, and `//~` one whose key is no longer used.
class cTranslationParser
{
public:
  enum Kind
  {
    Entry,
    Name,
    Flag,
    Include,
    Word ///< anything else at the top level, which loaders skip
  };

  /// What a statement gives as its text.
  struct cValue
  {
    std::string mText; // between the quotes, with the escapes that stand there
    bool mFromFile = false;

    /// As it stands in a file.
    std::string source() const { return (mFromFile ? "fromFile(\"" : "\"") + mText + (mFromFile ? "\")" : "\""); }
  };

  struct cItem
  {
    Kind mKind = Entry;
    char mMark = 0;   // '?' or '~' if it stands in a comment
    std::string mKey; // of an entry; of a word the word
    cValue mValue;
    std::vector<std::string> mNotes; // comments without their slashes
    unsigned int miLine = 0;
  };

  /// Where and why the text is no translation file.
  struct cError
  {
    unsigned int miLine;
    std::string mText;
  };

  /// Throws cError.
  explicit cTranslationParser(std::string const& text);

  std::vector<cItem> const& items() const { return mItems; }
  /// The comment that belongs to the file as a whole, and what stands behind the last statement.
  std::vector<std::string> const& head() const { return mHead; }
  std::vector<std::string> const& tail() const { return mPending; }
  /// Marked comments that hold no entries. They are kept as comments without a mark.
  std::vector<cError> const& oddities() const { return mOddities; }
  bool hasLongLineEnds() const { return mLongLineEnds; }

private:
  /// Comment lines with the same mark, one directly after the other.
  struct cBlock
  {
    char mMark = 0;
    std::string mText;
    std::vector<std::string> mLines;
    unsigned int miLine = 0;
  };

  enum Token
  {
    End,
    Text,
    Quote,
    Equals,
    Comment,
    Open,
    Close,
    NameWord,
    FlagWord,
    IncludeWord
  };

  void parse();
  Token next();
  Token keyAt(size_t iPos, size_t& iLength) const;
  void readComment();
  void closeBlock();
  void readStatement(Token eToken);
  Token nextInside(cItem& item);
  void expect(Token eToken, char const* shown, cItem& item);
  std::string readString();
  void readValue(cItem& item);
  [[noreturn]] void fail(std::string const& text) const;
  void step(size_t iCount);

  std::string const& mText;
  size_t miPos = 0;
  unsigned int miLine = 1;
  unsigned int miLineEnds = 0; // in front of the token
  std::string mToken;
  cBlock mBlock;
  bool mInside = false; // a statement
  std::vector<cItem> mItems;
  std::vector<std::string> mHead;
  std::vector<std::string> mPending; // comments for the next statement
  std::vector<cError> mOddities;
  bool mLongLineEnds = false;
};

#endif
