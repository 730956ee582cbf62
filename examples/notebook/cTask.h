#ifndef MORTISE_EXAMPLES_NOTEBOOK_CTASK_H
#define MORTISE_EXAMPLES_NOTEBOOK_CTASK_H

#include "cEntry.h"
#include "std/cDate.h"

/// Something to do up to a day.
class cTask : public cEntry
{
public:
  static constexpr char const* Kind = "task";

  cTask() : miPriority(0), mDone(false) {}

  /// Whether a task can be due on that day.
  static bool isDay(unsigned int iDay, unsigned int iMonth, unsigned int iYear);

  char const* kind() const override { return Kind; }
  mucs::cString line() const override;

  void setDue(mstd::cDate const& due) { mDue = due; }
  void setPriority(int iPriority) { miPriority = iPriority; }
  void setDone() { mDone = true; }

protected:
  void storeMembers(msa::cAbstractSerializer& serializer) const override;
  void loadMembers(msa::cAbstractDeserializer& deserializer) override;

private:
  mstd::cDate mDue;
  int miPriority; // files of version 1 have none
  bool mDone;
};

#endif
