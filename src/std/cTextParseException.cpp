#include "std/cTextParseException.h"

#include <utility>

namespace mstd
{
cTextParseException::cTextParseException() : cTextParseException(mucs::cLIMessage(), cAsciiString(), 0, 0) {}

cTextParseException::cTextParseException(mucs::cLIMessage const& message, cAsciiString const& format, unsigned int row,
                                         unsigned int column)
    : cTextParseException(message, format, mucs::cString(), row, column)
{
}

cTextParseException::cTextParseException(mucs::cLIMessage const& message, cAsciiString const& format,
                                         mucs::cString const& fileName, unsigned int row, unsigned int column)
    : cRuntimeException(message, 0, 0), mFileName(fileName), mFormat(format), miRow(row), miColumn(column)
{
}

cTextParseException::cTextParseException(cTextParseException const& other)
    : cRuntimeException(other), miRow(other.miRow), miColumn(other.miColumn)
{
  copyField(mFileName, other.mFileName);
  copyField(mFormat, other.mFormat);
}

void cTextParseException::swap(cTextParseException& other) noexcept
{
  cRuntimeException::swap(other);
  mFileName.swap(other.mFileName);
  mFormat.swap(other.mFormat);
  std::swap(miRow, other.miRow);
  std::swap(miColumn, other.miColumn);
}

MORTISE_EXCEPTION_BODY(cTextParseException)
} // namespace mstd
