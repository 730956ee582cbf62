#ifndef MORTISE_UCS_CLITRTABLE_H
#define MORTISE_UCS_CLITRTABLE_H

#include "std/tPtrList.h"
#include "std/tPtrVector.h"
#include "ucs/cLITrItem.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mucs
{
class cLIMessage;

/// Translations by key, for one language.
///
/// The base is a table of three levels: vectors indexed by hashKey1() and hashKey2(), and in their places lists of the
/// entries in the order of adding. A vector is as long as its highest used place, and null stands for an unused one.
/// The levels are for looking at; a table is changed through the operations here.
///
/// Of several entries with one key the first is the one that counts: what is added later can't change a translation.
///
/// Ownership: owns its entries. Not copyable.
/// Errors:    std::bad_alloc only, and what a stream raises; the table stays as it was.
/// Threads:   no lock. Reading from several threads at once is fine.
/// Cost:      a key that is there is found in constant time by an index beside the levels; one that is not takes a walk
///            over the list of its place. Whoever removes entries by way of the levels loses the index until clear().
class MORTISE_API cLITrTable : public mstd::tPtrVector<mstd::tPtrVector<mstd::tPtrList<cLITrItem>>>
{
public:
  typedef mstd::tPtrList<cLITrItem> tItems;
  typedef mstd::tPtrVector<tItems> tPlaces;

  enum
  {
    NumHash1 = 25,
    NumHash2 = 23
  };

  cLITrTable();
  cLITrTable(cLITrTable const&) = delete;
  cLITrTable& operator=(cLITrTable const&) = delete;
  ~cLITrTable() override;

  /// Place of a key on the first level: its length modulo NumHash1.
  static unsigned int hashKey1(mstd::cAsciiString const& sKey);
  /// Place of a key on the second level: first byte plus middle byte modulo NumHash2; 0 for an empty key.
  static unsigned int hashKey2(mstd::cAsciiString const& sKey);

  /// Adds an entry behind those that are there.
  void addTranslation(mstd::cAsciiString const& sKey, cString const& sTranslation);
  /// The same with an entry that is there already, which is taken over, also when this fails (it is then released).
  /// None is an assertion failure.
  void addTranslation(mstd::tAutoPtr<cLITrItem> pItem);
  /// The first entry of that key, null if there is none. Valid until the table is cleared.
  cLITrItem const* hasTranslation(mstd::cAsciiString const& sKey) const;
  /// Replaces `sOut` by the message in the language of the table, and returns true; without an entry for its key by the
  /// untranslated message, and returns false.
  bool translation(cLIMessage const& mMessage, cString& sOut) const;

  void clear();
  void swap(cLITrTable& tOther) noexcept;

  /// Writes to the debug output how well the keys are spread. O(number of entries).
  void printStatistics() const;

  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& sSerializer) const;
  /// Replaces the table. Entries of a foreign stream that stand at a place where nobody would look for them are put in
  /// their own. A failure leaves the table as it was.
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& sDeserializer);

private:
  class cIndex;

  void store(mstd::tAutoPtr<cLITrItem>& pItem);

  mstd::tAutoPtr<cIndex> mpIndex; // null in an empty table
};

/// Not that of the base, which would leave the indexes behind.
inline void swap(cLITrTable& tLeft, cLITrTable& tRight) noexcept
{
  tLeft.swap(tRight);
}
} // namespace mucs

#endif
