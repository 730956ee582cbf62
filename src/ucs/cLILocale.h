#ifndef MORTISE_UCS_CLILOCALE_H
#define MORTISE_UCS_CLILOCALE_H

#include "rmi/localSignal0.h"
#include "rmi/localSignal2.h"
#include "std/cAsciiString.h"
#include "std/tAutoPtr.h"
#include "ucs/cLITrTable.h"
#include "ucs/cString.h"

namespace mucs
{
class cAbstractLIFileSource;
class cLIMessage;

/// A language: its translations, its name and flag, and a parent language to fall back on.
///
/// A locale file is UTF-8. It holds what a plain translation file holds (see cLITranslationLoader) and
///
///     Name = "Deutsch"                 // the last one counts, as for Flag
///     Flag = "de.png"                  // relative to the directory of this file
///     include "messages.tr"            // another locale file, relative to the directory of this one
///     "license" = fromFile("gpl.txt")  // a text that stands in a file of its own
///
/// Ownership: a parent stays its owner's. One that goes unlinks itself: the child then has no parent.
/// Errors:    a file that can't be parsed raises mstd::cRuntimeException, what reading it raises goes through. The
///            locale is as before then.
/// Threads:   no lock. Translating from several threads at once is fine as long as nobody listens for missing
///            translations.
class MORTISE_API cLILocale
{
public:
  enum
  {
    MaxIncludeDepth = 10,   ///< A file that the top one includes has depth 1.
    MaxIncludedFiles = 4096 ///< In one loading; few small files that include one another could else fill any memory.
  };

  /// Empty. A null pointer is an empty name.
  explicit cLILocale(char const* sDebugName);
  cLILocale(cLILocale const&) = delete; // signals belong to one object
  cLILocale& operator=(cLILocale const&) = delete;
  virtual ~cLILocale();

  /// Fired once by each loading and clearing, when it is done, and when the parent fires its own.
  mrmi::localSignal0<piVoid> sigChanged;

  /// A name for developers; it has nothing to do with the language.
  mstd::cAsciiString const& debugName() const { return mDebugName; }
  void setDebugName(mstd::cAsciiString const& sDebugName) { mDebugName = sDebugName; }

  cString const& name() const { return mName; }
  cString const& flag() const { return mFlag; } ///< Path of a picture.
  cLITrTable& translator() { return mTable; }
  cLITrTable const& translator() const { return mTable; }
  cString const& fileName() const { return mFileName; } ///< The file that it was loaded from.

  /// Replaces `sOut` by the message in this language, or in that of the nearest locale of the chain of parents that has
  /// its key, and returns true. If none has it: fires the sigMissingTranslation() of the last locale of the chain with
  /// `pRequester`, or this locale if that is null, and leaves the untranslated message in `sOut`. Returns false then.
  bool translate(cLIMessage const& mMessage, cString& sOut, cLILocale const* pRequester) const;
  bool translate(mstd::cAsciiString const& sKey, cString& sOut, cLILocale const* pRequester) const;
  /// The same, without telling whether there was a translation.
  cString translate(cLIMessage const& mMessage) const;
  cString translate(mstd::cAsciiString const& sKey) const;

  /// Makes `pParent`, which may be null, the parent. Fires nothing. A link that would close a ring is an assertion
  /// failure, and the former parent stays then, as it does if there is no memory.
  void link(cLILocale* pParent);
  /// The parent, or null.
  cLILocale* parent() const;

  /// Empties name, flag, table and file name.
  void clear();
  /// Exchanges name, flag, table, file name and parent. Debug name and signals stay with their object, and nothing is
  /// fired. One that is above the other in a chain of parents is an assertion failure.
  void swap(cLILocale& lOther);
  /// Replaces name, flag and table by what the file holds.
  void loadFromFile(cString const& sFile);
  void loadFromFile(cString const& sFile, cAbstractLIFileSource& sSource);

  typedef mrmi::localSignal2<piVoid, cLIMessage const&, cString&> tTranslateSignal;
  typedef mrmi::localSignal2<piVoid, cLILocale const&, cLIMessage const&> tMissingTranslationSignal;

  /// For the application: the library never fires it. Made on first use.
  tTranslateSignal& sigTranslate();
  /// Fired for a message without a translation, with the locale that was asked first. Made on first use.
  tMissingTranslationSignal& sigMissingTranslation();

private:
  class cLocaleLink;
  class cParser;

  bool isBelow(cLILocale const& lOther) const;
  void exchangeLanguage(cLILocale& lOther) noexcept;

  mstd::cAsciiString mDebugName;
  cString mName;
  cString mFlag;
  cLITrTable mTable;
  cString mFileName;
  mstd::tAutoPtr<cLocaleLink> mpLink; // null without a parent
  mstd::tAutoPtr<tTranslateSignal> mpSigTranslate;
  mstd::tAutoPtr<tMissingTranslationSignal> mpSigMissingTranslation;
  cLocaleLink* mpFirstChild; // the links to this locale, each owned by its child
};
} // namespace mucs

#endif
