#ifndef MORTISE_STD_CSTDEXCEPTIONS_H
#define MORTISE_STD_CSTDEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mstd
{
class cAbstractException;
class cAsciiString;
} // namespace mstd

namespace mucs
{
class cLIMessage;
class cString;
} // namespace mucs

/// The throw functions of the foundation. Every failure of `mstd` is raised here and nowhere else, so
/// that stack dumps and argument defaults stay in one place and a template that can fail pulls in no
/// text, no message and no exception class. None of them returns.
class MORTISE_API cSTDExceptions
{
public:
  /// What a cOutOfRangeException complains about; selects the wording of its message.
  enum OutOfRangeType
  {
    IndexOutOfRange = 0,
    ValueOutOfRange = 1,
    SizeOutOfRange = 2,
    IndexOrSizeOutOfRange = 3,
    EndValueOutOfRange = 4
  };

  /// cBugException that carries `file` and `line`.
  [[noreturn]] static void throwCoreBug(char const* bug, char const* file, unsigned int line);
  /// cBugException.
  [[noreturn]] static void throwUnsupportedOperation(mstd::cAsciiString const& operation);
  /// cRuntimeException.
  [[noreturn]] static void throwUnexpectedEndOfInput();
  /// cOutOfBoundsException; both names may be null.
  [[noreturn]] static void throwOutOfBounds(char const* container, char const* operation);
  /// cBugException; a null name reads "unknown".
  [[noreturn]] static void throwElementNotFound(char const* container, char const* operation);
  /// cRuntimeException.
  [[noreturn]] static void throwInvalidDecimalBase(int base, int min, int max);
  /// cRuntimeException.
  [[noreturn]] static void throwInvalidDecimal(mucs::cString const& string, unsigned int index);
  /// cTextParseException with the message given.
  [[noreturn]] static void throwTextParseError(mucs::cLIMessage const& message, mstd::cAsciiString const& format,
                                               mucs::cString const& fileName, unsigned int row, unsigned int column);
  /// cTypeMissmatchException whose history tells that a cAny was read as the wrong type.
  [[noreturn]] static void throwWrongAnyDereference(mstd::cAsciiString const& requested,
                                                    mstd::cAsciiString const& contained);
  /// cOutOfRangeException, after a stack trace of up to 128 frames on the debug output.
  [[noreturn]] static void throwOutOfRange(char const* container, char const* operation, OutOfRangeType type,
                                           long long value, long long min, long long max);
  /// std::bad_alloc: a length or a number of bytes that the address space cannot hold.
  [[noreturn]] static void throwBadAlloc();
  /// cBugException, after a stack trace of up to 128 frames on the debug output.
  [[noreturn]] static void throwAssertionFailed(char const* condition, char const* file, unsigned int line);
};

#endif
