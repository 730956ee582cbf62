#ifndef MORTISE_PI_CDEBUGSTDERR_H
#define MORTISE_PI_CDEBUGSTDERR_H

#include "pi/cAbstractOut.h"
#include "std/cAsciiString.h"
#include "std/tVector.h"

namespace mpi
{

/// Debug stream on the standard error stream of the process, line by line.
///
/// A line reads: base name of the source file, ":", line number, ": ", two blanks for each indentation level, text.
/// A line without a source position has no prefix. The environment variable "PIDBG_FILTER", read once by the
/// constructor, holds blank-separated words; a line whose source path contains one of them is dropped. Position
/// and filters count at the moment the line ends.
///
/// Cost: one copy of each character; work proportional to the line's length when it ends.
class MORTISE_API cDebugStdErr : public cAbstractOut
{
public:
  cDebugStdErr();
  ~cDebugStdErr() override;

  /// Adds to the line buffer; a line feed writes the line out and empties the buffer.
  void printChar(char c) override;
  /// Writes the unfinished line as it stands, without prefix, indentation or line feed, and flushes the standard
  /// error stream. While a stream is linked, that stream is flushed instead.
  void flush() override;

private:
  mstd::cAsciiString mLine;
  mstd::tVector<mstd::cAsciiString> mFilters;

  void writeLine();
  bool isFiltered(char const* file) const;
  void emptyLine();
};

} // namespace mpi

#endif
