#ifndef MORTISE_EXAMPLES_LINEWATCH_CLINESCANNER_H
#define MORTISE_EXAMPLES_LINEWATCH_CLINESCANNER_H

#include "pi/piTypes.h"
#include "rmi/localSignal2.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tVector.h"

/// Finds lines, and texts in them, in bytes that arrive in pieces of any size.
///
/// It never holds a line: of the one that is not finished it keeps as many bytes as a text may need to be found across
/// two pieces, and a beginning of limited length to show. So a line may be of any length, and hold any bytes.
class cLineScanner
{
public:
  /// `patterns` must outlive this object. With `bKeep` the beginning of each line is kept for sigMatch.
  cLineScanner(mstd::tVector<mstd::cAsciiString> const& patterns, bool bKeep);

  /// Takes the next bytes.
  void take(char const* pBytes, unsigned int iSize);
  /// There are no more bytes: what stands behind the last line break is a line, too.
  void finish();

  piUInt64 lines() const { return miLines; }
  piUInt64 bytes() const { return miBytes; }
  /// Bytes of the longest line, without its line break.
  piUInt64 longest() const { return miLongest; }
  /// Lines that contain the text.
  piUInt64 matches(unsigned int iPattern) const { return mMatches.at(iPattern); }

  /// Fired for a finished line with at least one match: its beginning, and its whole length.
  mrmi::localSignal2<piVoid, mstd::tArray<char> const&, piUInt64> sigMatch;

private:
  enum : unsigned int
  {
    MaxShown = 4096
  };

  void takePart(char const* pBytes, unsigned int iSize);
  void endLine();
  void keepTail(char const* pBytes, unsigned int iSize);

  mstd::tVector<mstd::cAsciiString> const& mPatterns;
  bool mKeep;
  unsigned int miTailSize;   // longest pattern, less one
  mstd::tArray<char> mTail;  // last bytes of the unfinished line, at most miTailSize
  mstd::tArray<char> mShown; // first bytes of the unfinished line
  mstd::tArray<char> mFound; // for each pattern: found in the unfinished line
  mstd::tArray<unsigned long long> mMatches;
  piUInt64 miLength; // of the unfinished line
  piUInt64 miLines;
  piUInt64 miBytes;
  piUInt64 miLongest;
};

#endif
