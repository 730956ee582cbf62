#ifndef MORTISE_TOOLS_CTRANSLATIONFILE_H
#define MORTISE_TOOLS_CTRANSLATIONFILE_H

#include "cKeyTable.h"
#include "cTextFile.h"
#include "cTranslationParser.h"

#include <map>
#include <string>
#include <vector>

/// The translations of one language, and how they go with the keys of the sources.
class cTranslationFile
{
public:
  enum Layout
  {
    Any,
    Plain ///< entries only, for what loads tables and not locales
  };

  /// What there is to say after a comparison with the keys.
  struct cReport
  {
    unsigned int miTranslated = 0;
    unsigned int miObsolete = 0;
    std::vector<cKeyTable::cKey const*> mMissing;
    std::vector<std::string>
        mWrong; // translations that don't go with their key, and other things to put right: a line each
    unsigned int miWrongKeys = 0; // keys of them
  };

  explicit cTranslationFile(std::string const& path) : mFile(path) {}

  /// Takes what the file has; one that isn't there is empty. False if that can't be done: error() tells why.
  bool load();
  void setName(std::string const& name);
  /// All keys as they read in a language that is made up.
  void fillWithPseudo(cKeyTable const& keys);

  cReport compare(cKeyTable const& keys, Layout eLayout) const;
  /// The file as it is to be: the keys in their order, those without a translation and obsolete ones in comments.
  std::string text(cKeyTable const& keys, bool bObsolete) const;
  bool save(std::string const& text);

  /// The path, and the name of the language if there is one.
  std::string title() const;
  std::string const& error() const { return mError; }
  /// Whether the text is at fault, and not what reads it.
  bool isDamaged() const { return mDamaged; }

private:
  typedef cTranslationParser::cItem cItem;
  typedef std::vector<std::string> tLines;

  static unsigned int const MaxDepth = 10; // of includes, as for the library

  void take(cItem const& item);
  bool readIncluded(std::string const& path, unsigned int iDepth);
  std::string besides(std::string const& path, std::string const& name) const;
  bool textOf(cItem const& item, std::string const& path, std::string& text) const;
  void checkPlaceholders(cKeyTable::cKey const& key, cItem const& item, cReport& report) const;
  static tLines files(cKeyTable::cKey const& key);
  cItem const* find(std::string const& key) const;
  bool fail(std::string const& path, std::string const& text);
  void print(std::string& out, tLines const& lines) const;
  void printEntry(std::string& out, cItem const& item, char cMark) const;
  char const* lineEnd() const { return mLongLineEnds ? "\r\n" : "\n"; }

  cTextFile mFile;
  std::string mError;
  tLines mHead;
  tLines mTail;
  std::vector<cItem> mStatements;
  std::map<std::string, cItem> mEntries;
  std::vector<cItem> mObsolete;                  // in the file, too: what came second for a key
  std::map<std::string, std::string> mElsewhere; // in included files, key and file
  tLines mProblems;
  bool mLongLineEnds = false;
  bool mDamaged = false;
};

#endif
