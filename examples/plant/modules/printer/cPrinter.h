#ifndef MORTISE_EXAMPLES_PLANT_MODULES_PRINTER_CPRINTER_H
#define MORTISE_EXAMPLES_PLANT_MODULES_PRINTER_CPRINTER_H

#include "cNeed.h"
#include "cOffer.h"
#include "cSettings.h"
#include "std/tPtrVector.h"

namespace mucs
{
class cLIMessage;
}

/// Offers "plant.printer": see interfaces.h. It prints to the standard output, in the language of the system's locale.
class cPrinter : public cOffer
{
public:
  cPrinter(mcs::cAbstractComponent& owner, cSettings const& settings);

  /// Prints the range of each figure.
  void shortlyRemove() override;

private:
  struct cFailure
  {
    mstd::cAsciiString mFigure;
    mstd::cAsciiString mText;
  };

  // published
  void print();
  void tellAlarms();
  unsigned int lines() const { return miLines; }

  void sltAlarmFound(mcs::cAbstractComponent& component);
  void tellFailure(mstd::cAsciiString const& figure, mstd::cAsciiString const& text);
  mstd::cAsciiString unit(mstd::cAsciiString const& figure) const;
  void print(mucs::cLIMessage const& message);
  void print(mstd::cAsciiString const& text);

  cNeed mMeter;
  cNeed mHistory;
  cNeed mAlarm;
  mstd::tPtrVector<cFailure> mFailures; // the last one of each figure that was told; an empty text if it is over
  unsigned int miEvents;                // of the alarm that were told
  unsigned int miLines;
};

#endif
