#ifndef MORTISE_EXAMPLES_PLANT_MODULES_PRINTER_CNUMBER_H
#define MORTISE_EXAMPLES_PLANT_MODULES_PRINTER_CNUMBER_H

#include "std/cAsciiString.h"

/// How the printer writes a figure.
class cNumber
{
public:
  /// "12.3 %" for percent; anything else with a prefix where it is large, "1.2 kB/s".
  static mstd::cAsciiString text(double value, mstd::cAsciiString const& unit);
};

#endif
