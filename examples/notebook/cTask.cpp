#include "cTask.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cContext.h"
#include "std/cRuntimeException.h"

#include <stdio.h>

bool cTask::isDay(unsigned int iDay, unsigned int iMonth, unsigned int iYear)
{
  // The first whole year of this calendar, and the last with four digits.
  return iYear >= 1583 && iYear <= 9999 && iMonth >= 1 && iMonth <= 12 && iDay >= 1 &&
         iDay <= mstd::cDate::daysPerMonth(iMonth, iYear);
}

mucs::cString cTask::line() const
{
  char head[64];
  snprintf(head, sizeof head, "[%c] %04u-%02u-%02u ", mDone ? 'x' : ' ', mDue.year(), mDue.month(), mDue.day());
  mucs::cString line(head);
  if (miPriority != 0)
  {
    snprintf(head, sizeof head, "(priority %d) ", miPriority);
    line += mucs::cString(head);
  }
  line += text();
  return line;
}

void cTask::storeMembers(msa::cAbstractSerializer& serializer) const
{
  msa::cContext date(serializer.newLabel("due").newContext("date"));
  mDue.day() >> serializer.newLabel("day");
  mDue.month() >> serializer.newLabel("month");
  mDue.year() >> serializer.newLabel("year");
  date.release();
  date.unset(); // what follows stands behind it
  mDone >> serializer.newLabel("done");
  miPriority >> serializer.newLabel("priority");
}

void cTask::loadMembers(msa::cAbstractDeserializer& deserializer)
{
  unsigned int iDay = 0;
  unsigned int iMonth = 0;
  unsigned int iYear = 0;
  msa::cContext date(deserializer.findLabel("due").getContext("date"));
  iDay << deserializer.findLabel("day");
  iMonth << deserializer.findLabel("month");
  iYear << deserializer.findLabel("year");
  date.release();
  date.unset();
  if (!isDay(iDay, iMonth, iYear))
  {
    throw mstd::cRuntimeException(mucs::cLIMessage("a task is due on a day that does not exist"), "notebook", __LINE__);
  }
  mDue = mstd::cDate(iDay, iMonth, iYear);
  mDone << deserializer.findLabel("done");
  miPriority = 0;
  if (deserializer.tryFindLabel("priority"))
  {
    miPriority << deserializer;
  }
}
