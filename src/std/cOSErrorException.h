#ifndef MORTISE_STD_COSERROREXCEPTION_H
#define MORTISE_STD_COSERROREXCEPTION_H

#include "std/cExceptionText.h"
#include "std/cRuntimeException.h"
#include "ucs/cString.h"

namespace mstd
{
/// The operating system refused an operation. What it said is the history.
class MORTISE_API cOSErrorException : public cRuntimeException
{
public:
  /// No message, no history, code 0.
  cOSErrorException();
  /// `code` is the system's error number.
  cOSErrorException(cAsciiString const& operation, int code);
  cOSErrorException(cAsciiString const& operation, int code, mucs::cString const& file);
  MORTISE_EXCEPTION(cOSErrorException)

  cAsciiString operation() const { return mOperation.string(); }
  int osErrorCode() const { return miCode; }
  /// Empty if no file was concerned.
  mucs::cString const& fileName() const { return mFileName; }

private:
  void linkSystemText();

  cExceptionText mOperation;
  int miCode;
  mucs::cString mFileName;
};
} // namespace mstd

#endif
