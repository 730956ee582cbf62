#ifndef MORTISE_EXAMPLES_NOTEBOOK_CNOTE_H
#define MORTISE_EXAMPLES_NOTEBOOK_CNOTE_H

#include "cEntry.h"

/// A text, and no more.
class cNote : public cEntry
{
public:
  static constexpr char const* Kind = "note";

  char const* kind() const override { return Kind; }
  mucs::cString line() const override { return text(); }

protected:
  void storeMembers(msa::cAbstractSerializer&) const override {}
  void loadMembers(msa::cAbstractDeserializer&) override {}
};

#endif
