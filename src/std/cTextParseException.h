#ifndef MORTISE_STD_CTEXTPARSEEXCEPTION_H
#define MORTISE_STD_CTEXTPARSEEXCEPTION_H

#include "std/cExceptionText.h"
#include "std/cRuntimeException.h"
#include "ucs/cString.h"

namespace mstd
{
/// A text does not follow its format.
class MORTISE_API cTextParseException : public cRuntimeException
{
public:
  /// As with an empty message, empty names and the place 0, 0.
  cTextParseException();
  /// `row` and `column` are counted as the format does it.
  cTextParseException(mucs::cLIMessage const& message, cAsciiString const& format, unsigned int row,
                      unsigned int column);
  cTextParseException(mucs::cLIMessage const& message, cAsciiString const& format, mucs::cString const& fileName,
                      unsigned int row, unsigned int column);
  MORTISE_EXCEPTION(cTextParseException)

  /// Empty for a text that is in no file.
  mucs::cString const& fileName() const { return mFileName; }
  cAsciiString format() const { return mFormat.string(); }
  unsigned int row() const { return miRow; }
  unsigned int column() const { return miColumn; }

private:
  mucs::cString mFileName;
  cExceptionText mFormat;
  unsigned int miRow;
  unsigned int miColumn;
};
} // namespace mstd

#endif
