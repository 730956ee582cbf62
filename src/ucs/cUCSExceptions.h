#ifndef MORTISE_UCS_CUCSEXCEPTIONS_H
#define MORTISE_UCS_CUCSEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mstd
{
class cAbstractException;
class cAsciiString;
} // namespace mstd

namespace mucs
{
class cString;
} // namespace mucs

/// The throw functions of Unicode text. None of them returns.
class MORTISE_API cUCSExceptions
{
public:
  /// cRuntimeException with a copy of `cause` as history.
  [[noreturn]] static void throwUCSDecodeError(mstd::cAbstractException const& cause);
  /// cRuntimeException with a copy of `cause` as history. (The exchanged letters are the name.)
  [[noreturn]] static void throwUSCEncodeError(mstd::cAbstractException const& cause);

  /// cBugException: the encoder `name` does not do what `key` tells with its placeholder.
  [[noreturn]] static void throwNotImplemented(char const* key, mstd::cAsciiString const& name);
  /// cRuntimeException: a 0 byte or the end of the data, `index` bytes behind the start of the character.
  [[noreturn]] static void throwUTF8EndOfData(unsigned int index);
  /// cRuntimeException: a sequence of `length` continuation bytes, which is more than three.
  [[noreturn]] static void throwUTF8UnsupportedLength(unsigned int length);
  /// cRuntimeException: one byte is left, where two make a unit.
  [[noreturn]] static void throwUTF16SourceExhausted();
  /// cRuntimeException: the first two bytes are no byte order mark.
  [[noreturn]] static void throwUTF16InvalidByteOrderMark();
  /// cRuntimeException: the text ends within a surrogate pair.
  [[noreturn]] static void throwUTF16CorruptData();
  /// cRuntimeException: a surrogate without its partner.
  [[noreturn]] static void throwUTF16InvalidSequence();
  /// cRuntimeException: a code point that is a surrogate or above 0x10FFFF.
  [[noreturn]] static void throwUTF16UnmappableCharacter();

  /// cRuntimeException with a copy of `cause` as history. For whoever loads a translation file.
  [[noreturn]] static void throwUnableToReadTranslationFile(mstd::cAbstractException const& cause,
                                                            mucs::cString const& fileName);
  /// cRuntimeException with a copy of `cause` as history. For whoever loads a translation file.
  [[noreturn]] static void throwUnableToParseTranslationFile(mstd::cAbstractException const& cause,
                                                             mucs::cString const& fileName, unsigned int line);
  /// cTextParseException: a string in a translation file does not begin or does not end.
  [[noreturn]] static void throwTranslationQuoteExpected(mucs::cString const& fileName, unsigned int row);
  /// cTextParseException: no equals sign behind the key in a translation file.
  [[noreturn]] static void throwTranslationEqualsExpected(mucs::cString const& fileName, unsigned int row);

  // All of these are a cRuntimeException about a locale file.
  [[noreturn]] static void throwIncludeDepthExceeded();
  [[noreturn]] static void throwTooManyIncludedFiles(unsigned int max);
  [[noreturn]] static void throwQuoteExpected();
  [[noreturn]] static void throwEqualsExpected();
  [[noreturn]] static void throwOpeningParenthesisExpected();
  [[noreturn]] static void throwClosingParenthesisExpected();
  [[noreturn]] static void throwFileNameExpected();
};

#endif
