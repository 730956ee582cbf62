#include "ucs/cUCSExceptions.h"

#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "ucs/cLIMessage.h"

namespace
{
[[noreturn]] void throwRuntime(char const* key)
{
  throw mstd::cRuntimeException(mucs::cLIMessage() << key, 0, 0);
}

[[noreturn]] void throwRuntime(char const* key, unsigned int parameter)
{
  throw mstd::cRuntimeException(mucs::cLIMessage() << key << parameter, 0, 0);
}

[[noreturn]] void throwWithHistory(char const* key, mstd::cAbstractException const& cause)
{
  mstd::cRuntimeException exception(mucs::cLIMessage() << key, 0, 0);
  exception.link(cause);
  throw exception;
}
} // namespace

void cUCSExceptions::throwUCSDecodeError(mstd::cAbstractException const& cause)
{
  throwWithHistory("$MTR$Unicode decode error!", cause);
}

void cUCSExceptions::throwUSCEncodeError(mstd::cAbstractException const& cause)
{
  throwWithHistory("$MTR$Unicode encoding error!", cause);
}

void cUCSExceptions::throwNotImplemented(char const* key, mstd::cAsciiString const& name)
{
  throw mstd::cBugException(mucs::cLIMessage() << key << name, 0, 0);
}

void cUCSExceptions::throwUTF8EndOfData(unsigned int index)
{
  throwRuntime("$MTR$UTF8 decode error - unexpected end of data at index %index%!", index);
}

void cUCSExceptions::throwUTF8UnsupportedLength(unsigned int length)
{
  throwRuntime("$MTR$UTF8 decode error - unsupported length of %length%!", length);
}

void cUCSExceptions::throwUTF16SourceExhausted()
{
  throwRuntime("$MTR$Source buffer exhausted!");
}

void cUCSExceptions::throwUTF16InvalidByteOrderMark()
{
  throwRuntime("$MTR$Invalid byte order mark while decoding utf16!");
}

void cUCSExceptions::throwUTF16CorruptData()
{
  throwRuntime("$MTR$Unable to read corrupt utf16 data!");
}

void cUCSExceptions::throwUTF16InvalidSequence()
{
  throwRuntime("$MTR$Invalid byte sequence while decoding utf16!");
}

void cUCSExceptions::throwUTF16UnmappableCharacter()
{
  throwRuntime("$MTR$Unable to convert unmappable character to utf16!");
}
