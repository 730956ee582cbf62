#ifndef MORTISE_PI_CABSTRACTOUT_H
#define MORTISE_PI_CABSTRACTOUT_H

#include "mp/cSynchronizable.h"
#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mstd
{
class cAsciiString;
class cNumberConversionFormat;
} // namespace mstd

namespace mpi
{

/// How whole numbers print on a cAbstractOut. The `NumberNext...` modes hold for one number only.
enum NumberFmt
{
  NumberHex = 0,       ///< base 16; a fixed width set before stays in force
  NumberHex16 = 1,     ///< base 16, 16 digits
  NumberHex8 = 2,      ///< base 16, 8 digits
  NumberHex4 = 3,      ///< base 16, 4 digits
  NumberHex2 = 4,      ///< base 16, 2 digits
  NumberNextHex16 = 5, ///< base 16, 16 digits, the next number only
  NumberNextHex8 = 6,  ///< base 16, 8 digits, the next number only
  NumberNextHex4 = 7,  ///< base 16, 4 digits, the next number only
  NumberNextHex2 = 8,  ///< base 16, 2 digits, the next number only
  NumberAsFormat = 9   ///< as the format object streamed in says
};

/// Formatting debug stream with a source position, an indentation level and a number format.
///
/// A message is written in three steps:
/// \code
/// mp::cLocker::cLock lock(out.mutex());
/// out.debugMessage("pi/cWork", __LINE__) << "text " << 3 << "\n" << mpi::cAbstractOut::clearDebugMessage();
/// \endcode
///
/// While another stream is linked, every operation goes to that stream instead, and the position, the file line
/// and the indentation that are reported are those of the linked stream. Links may form a chain, never a ring.
///
/// Ownership: owns its number format. The linked stream and the file names stay their owner's.
/// Threads:   no operator locks. The writer holds mutex(), which is recursive, around a whole message.
/// Errors:    numbers in a format and a sink may raise std::bad_alloc; what was written before stays written.
class MORTISE_API cAbstractOut : public mp::cSynchronizable
{
public:
  /// Forgets the source position of the current message.
  struct clearDebugMessage
  {
  };
  /// One level of indentation more.
  struct indent
  {
  };
  /// One level of indentation less; at level 0 nothing happens.
  struct unindent
  {
  };

  cAbstractOut();
  cAbstractOut(cAbstractOut const&) = delete; // a sink has one buffer and one position
  cAbstractOut& operator=(cAbstractOut const&) = delete;
  ~cAbstractOut() override;

  /// The sink: takes one character. Called for the last stream of a chain of links only.
  virtual void printChar(char c) = 0;
  /// Hands on what the sink still holds back. Does nothing here.
  virtual void flush();
  /// Sets the source position that lines carry from now on. `file` is kept as a pointer and must outlive the
  /// message; null takes the position away. The position is stored here even while a stream is linked.
  virtual cAbstractOut& debugMessage(char const* file, unsigned int line);
  virtual cAbstractOut& operator<<(long long value);
  virtual cAbstractOut& operator<<(unsigned long long value);
  virtual cAbstractOut& operator<<(int value);
  virtual cAbstractOut& operator<<(unsigned int value);
  /// Writes a carriage return before each line feed. A null pointer writes nothing.
  virtual cAbstractOut& operator<<(char const* text);
  virtual cAbstractOut& operator<<(mstd::cAsciiString const& text);
  /// Uses the number format if there is one; a `NumberNext...` mode stays in force.
  virtual cAbstractOut& operator<<(double value);
  virtual cAbstractOut& operator<<(NumberFmt format);
  /// Copies the format and sets the mode NumberAsFormat.
  virtual cAbstractOut& operator<<(mstd::cNumberConversionFormat const& format);
  virtual cAbstractOut& operator<<(cAbstractOut::clearDebugMessage const&);
  virtual cAbstractOut& operator<<(cAbstractOut::indent const&);
  virtual cAbstractOut& operator<<(cAbstractOut::unindent const&);
  /// True for a stream with an encoder of its own, which takes more than bytes. False here.
  virtual bool hasEnDec() const;

  /// Hands one character, unchanged, to the sink of the last stream of the chain of links.
  void drawCharLinked(char c);
  /// Sends everything to `pOut` from now on, which must live until it is unlinked; null unlinks. A link that would
  /// close a ring is an assertion failure, and the old link stays.
  void link(cAbstractOut* pOut);
  /// The stream linked to, or null.
  cAbstractOut* linked() const { return mpLinked; }
  char const* debugFileName() const;   ///< File of the current message, or null.
  unsigned int debugFileLine() const;  ///< Line of the current message.
  unsigned int indentionLevel() const; ///< Number of indents in force.

private:
  mstd::tAutoPtr<mstd::cNumberConversionFormat> mpNumberFormat; // null: plain decimal
  cAbstractOut* mpLinked;
  NumberFmt mNumberMode;
  char const* mpDebugFile;
  unsigned int miDebugLine;
  unsigned int miIndentionLevel;

  void writeChar(char c);
  cAbstractOut& writeNumber(mstd::cAsciiString const& digits);
};

} // namespace mpi

#endif
