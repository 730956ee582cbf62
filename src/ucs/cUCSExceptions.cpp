#include "ucs/cUCSExceptions.h"

#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "std/cSTDExceptions.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

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

[[noreturn]] void throwWithHistory(mucs::cLIMessage const& message, mstd::cAbstractException const& cause)
{
  mstd::cRuntimeException exception(message, 0, 0);
  exception.link(cause);
  throw exception;
}

[[noreturn]] void throwWithHistory(char const* key, mstd::cAbstractException const& cause)
{
  throwWithHistory(mucs::cLIMessage() << key, cause);
}

char const cTranslationFormat[] = "tr";
char const cQuoteExpected[] = "$MTR$\" expected!";
char const cEqualsExpected[] = "$MTR$\"=\" expected!";
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

void cUCSExceptions::throwUnableToReadTranslationFile(mstd::cAbstractException const& cause,
                                                      mucs::cString const& fileName)
{
  throwWithHistory(mucs::cLIMessage() << "$MTR$Unable to read translation file (%filename%)!" << fileName, cause);
}

void cUCSExceptions::throwUnableToParseTranslationFile(mstd::cAbstractException const& cause,
                                                       mucs::cString const& fileName, unsigned int line)
{
  throwWithHistory(mucs::cLIMessage() << "$MTR$Unable to parse translation file (%filename%) line %line%!" << fileName
                                      << line,
                   cause);
}

void cUCSExceptions::throwTranslationQuoteExpected(mucs::cString const& fileName, unsigned int row)
{
  cSTDExceptions::throwTextParseError(mucs::cLIMessage() << cQuoteExpected, cTranslationFormat, fileName, row, 0);
}

void cUCSExceptions::throwTranslationEqualsExpected(mucs::cString const& fileName, unsigned int row)
{
  cSTDExceptions::throwTextParseError(mucs::cLIMessage() << cEqualsExpected, cTranslationFormat, fileName, row, 0);
}

void cUCSExceptions::throwIncludeDepthExceeded()
{
  throwRuntime("$MTR$Maximum include depth exceeded!");
}

void cUCSExceptions::throwTooManyIncludedFiles(unsigned int max)
{
  throwRuntime("$MTR$More than %max% files for one locale!", max);
}

void cUCSExceptions::throwQuoteExpected()
{
  throwRuntime(cQuoteExpected);
}

void cUCSExceptions::throwEqualsExpected()
{
  throwRuntime(cEqualsExpected);
}

void cUCSExceptions::throwOpeningParenthesisExpected()
{
  throwRuntime("$MTR$\"(\" expected!");
}

void cUCSExceptions::throwClosingParenthesisExpected()
{
  throwRuntime("$MTR$\")\" expected!");
}

void cUCSExceptions::throwFileNameExpected()
{
  throwRuntime("$MTR$Filename expected!");
}
