#ifndef MORTISE_IO_CABSTRACTIODEVICE_H
#define MORTISE_IO_CABSTRACTIODEVICE_H

#include "pi/piTypes.h"
#include "std/tArray.h"
#include "std/tConstArrayRef.h"

namespace mstd
{
class cAsciiString;
class cTime;
} // namespace mstd

namespace mio
{

/// Something that bytes are read from and written to, and lines made of them.
///
/// Units:   time-outs are milliseconds.
/// Errors:  those of read() and write(); besides, lines raise mstd::cRuntimeException when time runs out or a write
///          comes out short. A line that could not be completed is left in the caller's array as far as it was read.
/// Threads: one object belongs to one thread.
/// Cost:    lines are read byte by byte here, so that nothing behind a line is taken from the device; a device that
///          knows better overrides them.
class MORTISE_API cAbstractIODevice
{
public:
  cAbstractIODevice() = default;
  cAbstractIODevice(cAbstractIODevice const&) = default;
  cAbstractIODevice& operator=(cAbstractIODevice const&) = default;
  virtual ~cAbstractIODevice();

  /// Reads up to and with `terminator`, which is left away unless `keepTerminator`; or to where a read gives no byte.
  /// An empty terminator reads to there. Returns whether the terminator was found.
  ///
  /// The time is looked at after each byte that did not end the line. A time-out of 0 lets less than a
  /// millisecond pass: the form without a time-out is the one that waits for ever.
  virtual bool readTextLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator,
                            unsigned int timeoutMs);
  /// As above, without a limit of time.
  virtual bool readTextLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator);
  /// Reads a line that ends with CR or LF, and leaves the ending away. Empty lines are skipped, so that CR LF is one
  /// ending. False if a read gave no byte before the ending; `line` holds then what stood in front of the end.
  /// The time is looked at as above, but a time-out of 0 means no limit.
  virtual bool readTextLine(mstd::tArray<char>& line, unsigned int timeoutMs);
  /// Writes `text` and `ending`, both in full.
  virtual void writeTextLine(mstd::cAsciiString const& text, mstd::cAsciiString const& ending);
  /// Writes `text` and `ending`. Only the ending is checked: how much of `text` was written is not.
  virtual void writeTextLine(mstd::tConstArrayRef<char> const& text, mstd::cAsciiString const& ending);
  /// Reads up to `size` bytes and returns how many there were: 0 at the end.
  virtual unsigned long long read(void* pTarget, unsigned long long size) = 0;
  /// Writes up to `size` bytes and returns how many it took.
  virtual unsigned long long write(void const* pSource, unsigned long long size) = 0;

protected:
  static bool endsWith(mstd::tArray<char> const& line, mstd::tArray<char> const& terminator);
  /// Goes on with a line that may hold its beginning already. `pStart` is where the time began, null for no limit.
  bool continueLine(mstd::tArray<char>& line, mstd::cTime const* pStart, unsigned int timeoutMs);
  bool continueLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator,
                    mstd::cTime const* pStart, unsigned int timeoutMs);
};

} // namespace mio

#endif
