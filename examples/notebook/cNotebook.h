#ifndef MORTISE_EXAMPLES_NOTEBOOK_CNOTEBOOK_H
#define MORTISE_EXAMPLES_NOTEBOOK_CNOTEBOOK_H

#include "cEntry.h"
#include "std/tPtrVector.h"

/// All entries, in the order of their numbers.
///
/// Version 1 knew notes and tasks without priority, version 2 is this one. Of a later version the kinds of entries and
/// the members that are new are passed over; storing it would lose them, so who loads a file asks isNewer() first.
class cNotebook
{
public:
  static constexpr unsigned int Version = 2;

  cNotebook() : miVersion(Version), miNext(1), miSkipped(0) {}

  /// Gives the entry its number.
  void append(mstd::tAutoPtr<cEntry> pEntry);
  /// Null if there is none.
  cEntry* find(unsigned int iNumber) const;
  bool remove(unsigned int iNumber);

  unsigned int length() const { return mEntries.length(); }
  cEntry const& at(unsigned int i) const { return *mEntries.at(i); }
  /// The version that it was loaded from.
  unsigned int version() const { return miVersion; }
  bool isNewer() const { return miVersion > Version; }
  /// Entries of unknown kinds.
  unsigned int skipped() const { return miSkipped; }

  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  /// For a notebook without entries.
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);

private:
  mstd::tPtrVector<cEntry> mEntries;
  unsigned int miVersion;
  unsigned int miNext;
  unsigned int miSkipped;
};

#endif
