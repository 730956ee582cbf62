#ifndef MORTISE_EXAMPLES_TAIL_COPTIONS_H
#define MORTISE_EXAMPLES_TAIL_COPTIONS_H

#include "std/cAsciiString.h"
#include "std/tVector.h"

/// What the command line asks for.
class cOptions
{
public:
  enum Result
  {
    Run,
    Help,
    Wrong
  };

  /// Reads the command line. After `Wrong`, error() says what is wrong with it.
  Result parse(int argc, char** argv);

  static char const* usage();

  mstd::cAsciiString const& error() const { return mError; }
  /// Paths; at least one.
  mstd::tVector<mstd::cAsciiString> const& files() const { return mFiles; }
  /// The locale file; empty for English.
  mstd::cAsciiString const& locale() const { return mLocale; }
  /// Number of lines that are shown of what is there already.
  unsigned int lines() const { return miLines; }
  /// Milliseconds between two looks at a file.
  unsigned int intervalMSec() const { return miIntervalMSec; }

private:
  Result wrong(char const* text, char const* argument);
  static bool number(char const* text, unsigned int iMin, unsigned int iMax, unsigned int& result);

  mstd::tVector<mstd::cAsciiString> mFiles;
  mstd::cAsciiString mLocale;
  mstd::cAsciiString mError;
  unsigned int miLines = 10;
  unsigned int miIntervalMSec = 250;
};

#endif
