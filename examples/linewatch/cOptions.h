#ifndef MORTISE_EXAMPLES_LINEWATCH_COPTIONS_H
#define MORTISE_EXAMPLES_LINEWATCH_COPTIONS_H

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
  /// Paths, or "-" for standard input; at least one.
  mstd::tVector<mstd::cAsciiString> const& sources() const { return mSources; }
  /// Texts to look for, none of them empty.
  mstd::tVector<mstd::cAsciiString> const& patterns() const { return mPatterns; }
  /// Where the graph goes; empty for no graph.
  mstd::cAsciiString const& graph() const { return mGraph; }
  /// A locale file, the language of messages; empty for English.
  mstd::cAsciiString const& locale() const { return mLocale; }
  /// Whether lines with a match are printed.
  bool isPrint() const { return mPrint; }
  /// Milliseconds between two lines of rates.
  unsigned int intervalMSec() const { return miIntervalMSec; }

private:
  Result wrong(char const* text, char const* argument);

  mstd::tVector<mstd::cAsciiString> mSources;
  mstd::tVector<mstd::cAsciiString> mPatterns;
  mstd::cAsciiString mGraph;
  mstd::cAsciiString mLocale;
  mstd::cAsciiString mError;
  bool mPrint = false;
  unsigned int miIntervalMSec = 1000;
};

#endif
