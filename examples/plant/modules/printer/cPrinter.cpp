#include "cPrinter.h"

#include "cCall.h"
#include "cNumber.h"
#include "cText.h"
#include "interfaces.h"
#include "mcs/module.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/tPublishedSlot.h"
#include "std/cAbstractException.h"
#include "std/cOSErrorException.h"
#include "std/exceptionMessage.h"
#include "tComponentOf.h"

#include <errno.h>
#include <stdio.h>

cPrinter::cPrinter(mcs::cAbstractComponent& owner, cSettings const&)
    : cOffer("printer", "prints figures and alarms"), mMeter(owner, "plant.meter"), mHistory(owner, "plant.history"),
      mAlarm(owner, "plant.alarm"), miEvents(0), miLines(0)
{
  mrmi::publishSlot(*this, "print", static_cast<void (cPrinter::*)()>(&cPrinter::print), "", "prints the last values");
  mrmi::publishSlot(*this, "tellAlarms", &cPrinter::tellAlarms, "", "prints what has happened");
  mrmi::publishSlot(*this, "lines", &cPrinter::lines, "", "how many lines were printed");
  mHistory.follow("taken", *this, "print");
  mAlarm.follow("changed", *this, "tellAlarms");
  mAlarm.sigFound.connect(mrmi::cDirectLocalSlotCall1(*this, &cPrinter::sltAlarmFound));
}

void cPrinter::sltAlarmFound(mcs::cAbstractComponent&)
{
  miEvents = 0; // another one counts from the start
}

void cPrinter::print()
{
  mcs::cAbstractInterface* const pMeter = mMeter.provider();
  if (pMeter == nullptr)
  {
    return;
  }
  mstd::cAsciiString text;
  mstd::cAsciiString name;
  mstd::cAsciiString unit;
  for (unsigned int i = 0;; ++i)
  {
    bool isFigure = false;
    cCall(*pMeter, "figure").in(i).inOut(name).inOut(unit).result(isFigure);
    if (!isFigure)
    {
      break;
    }
    mstd::cAsciiString failure;
    try
    {
      double value = 0;
      cCall(*pMeter, "value").in(name).result(value);
      text += text.empty() ? "" : ", ";
      text += name;
      text += " ";
      text += cNumber::text(value, unit);
    }
    catch (mstd::cAbstractException const& e)
    {
      failure = cText::message(e);
    }
    tellFailure(name, failure);
  }
  if (!text.empty())
  {
    print(text);
  }
}

void cPrinter::tellFailure(mstd::cAsciiString const& figure, mstd::cAsciiString const& text)
{
  cFailure* pTold = nullptr;
  for (unsigned int i = 0; i < mFailures.length() && pTold == nullptr; ++i)
  {
    pTold = mFailures.at(i)->mFigure == figure ? mFailures.at(i) : nullptr;
  }
  if (pTold == nullptr)
  {
    mstd::tAutoPtr<cFailure> pNew(new cFailure{figure, mstd::cAsciiString()});
    mFailures.append(pNew.get());
    pTold = pNew.release();
  }
  if (pTold->mText != text)
  {
    pTold->mText = text;
    if (text.empty())
    {
      print(mstd::exceptionMessage("$MTR$\"%figure%\" is measured again.", figure));
    }
    else
    {
      print(text);
    }
  }
}

void cPrinter::tellAlarms()
{
  mcs::cAbstractInterface* const pAlarm = mAlarm.provider();
  if (pAlarm == nullptr)
  {
    return;
  }
  unsigned int iEvents = 0;
  cCall(*pAlarm, "events").result(iEvents);
  for (; miEvents < iEvents; ++miEvents)
  {
    mstd::cAsciiString name;
    double value = 0;
    unsigned int iKind = NoEvent;
    cCall(*pAlarm, "event").in(miEvents).inOut(name).inOut(value).result(iKind);
    double limit = 0;
    bool isLimit = false;
    cCall(*pAlarm, "limit").in(name).inOut(limit).result(isLimit);
    mstd::cAsciiString const unitText = unit(name);
    switch (iKind)
    {
    case Raised:
      print(mstd::exceptionMessage("$MTR$ALARM: %figure% is at %value%, above its limit of %limit%.", name,
                                   cNumber::text(value, unitText), cNumber::text(limit, unitText)));
      break;
    case Cleared:
      print(mstd::exceptionMessage("$MTR$%figure% is back at %value%, not above its limit of %limit%.", name,
                                   cNumber::text(value, unitText), cNumber::text(limit, unitText)));
      break;
    case Unknown:
      print(mstd::exceptionMessage("$MTR$There is a limit of \"%figure%\", which nobody measures.", name));
      break;
    default:
      break;
    }
  }
}

void cPrinter::shortlyRemove()
{
  mcs::cAbstractInterface* const pMeter = mMeter.provider();
  mcs::cAbstractInterface* const pHistory = mHistory.provider();
  if (pMeter == nullptr || pHistory == nullptr)
  {
    return;
  }
  mstd::cAsciiString name;
  mstd::cAsciiString unitText;
  for (unsigned int i = 0;; ++i)
  {
    bool isFigure = false;
    cCall(*pMeter, "figure").in(i).inOut(name).inOut(unitText).result(isFigure);
    if (!isFigure)
    {
      return;
    }
    double lowest = 0;
    double highest = 0;
    double mean = 0;
    unsigned int iSamples = 0;
    bool isKept = false;
    cCall(*pHistory, "range").in(name).inOut(lowest).inOut(highest).result(isKept);
    if (isKept)
    {
      cCall(*pHistory, "samples").in(name).result(iSamples);
      cCall(*pHistory, "mean").in(name).in(iSamples).inOut(mean).result(isKept);
      print(mstd::exceptionMessage("$MTR$%figure%: %lowest% to %highest%, mean %mean%, of %samples% values", name,
                                   cNumber::text(lowest, unitText), cNumber::text(highest, unitText),
                                   cNumber::text(mean, unitText), iSamples));
    }
  }
}

mstd::cAsciiString cPrinter::unit(mstd::cAsciiString const& figure) const
{
  mstd::cAsciiString unit;
  if (mcs::cAbstractInterface* const pMeter = mMeter.provider())
  {
    mstd::cAsciiString name;
    bool isFigure = true;
    for (unsigned int i = 0; isFigure && name != figure; ++i)
    {
      cCall(*pMeter, "figure").in(i).inOut(name).inOut(unit).result(isFigure);
    }
  }
  return unit;
}

void cPrinter::print(mucs::cLIMessage const& message)
{
  print(cText::message(message));
}

void cPrinter::print(mstd::cAsciiString const& text)
{
  errno = 0;
  if (printf("%s\n", text.c_str()) < 0 || fflush(stdout) != 0)
  {
    throw mstd::cOSErrorException("write", errno, mucs::cString("standard output"));
  }
  ++miLines;
}

MORTISE_MODULE(1, 0, tComponentOf<cPrinter>);
