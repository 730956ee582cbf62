#ifndef MORTISE_EXAMPLES_PLANT_COPTIONS_H
#define MORTISE_EXAMPLES_PLANT_COPTIONS_H

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
  /// A limit of a figure.
  struct cLimit
  {
    mstd::cAsciiString mName;
    double mLimit;
  };

  /// Reads the command line. After `Wrong`, error() says what is wrong with it.
  Result parse(int argc, char** argv);

  static char const* usage();
  /// The plain names of the modules, in the order of their start; null behind the last.
  static char const* const* modules();

  mstd::cAsciiString const& error() const { return mError; }
  /// How long to run; 0 for until it is interrupted.
  unsigned int seconds() const { return miSeconds; }
  /// Milliseconds between two measurements.
  unsigned int intervalMSec() const { return miIntervalMSec; }
  /// Folders in which modules are looked for; none: that beside the program.
  mstd::tVector<mstd::cAsciiString> const& paths() const { return mPaths; }
  /// The modules that are removed after a third of the time.
  mstd::tVector<mstd::cAsciiString> const& removed() const { return mRemoved; }
  mstd::tVector<cLimit> const& limits() const { return mLimits; }
  /// Where the graphs go; empty for none.
  mstd::cAsciiString const& graph() const { return mGraph; }
  /// The locale file; empty for English.
  mstd::cAsciiString const& locale() const { return mLocale; }
  /// The folder of the kernel's figures.
  mstd::cAsciiString const& procFolder() const { return mProcFolder; }
  /// A path on the disk that is watched.
  mstd::cAsciiString const& diskPath() const { return mDiskPath; }
  /// Whether what the library writes for those who develop programs is shown.
  bool isVerbose() const { return mVerbose; }

private:
  Result wrong(char const* text, char const* argument);
  Result parseLimit(char const* argument);
  static bool number(char const* text, unsigned int iMin, unsigned int iMax, unsigned int& result);

  mstd::tVector<mstd::cAsciiString> mPaths;
  mstd::tVector<mstd::cAsciiString> mRemoved;
  mstd::tVector<cLimit> mLimits;
  mstd::cAsciiString mGraph;
  mstd::cAsciiString mLocale;
  mstd::cAsciiString mProcFolder = "/proc";
  mstd::cAsciiString mDiskPath = "/";
  mstd::cAsciiString mError;
  unsigned int miSeconds = 10;
  unsigned int miIntervalMSec = 1000;
  bool mVerbose = false;
};

#endif
