#include "ucs/cUCSExceptions.h"

#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "textSupport.h"

#include <gtest/gtest.h>

namespace
{

/// Runs `fThrow` and hands what it throws to `fLook`.
template <class Exception, class Throw, class Look>
void expectThrown(Throw fThrow, Look fLook)
{
  try
  {
    fThrow();
    FAIL() << "no exception";
  }
  catch (Exception const& exception)
  {
    fLook(exception);
  }
}

mstd::cRuntimeException cause()
{
  mucs::cLIMessage message;
  message << "$MTR$Byte %byte% is bad" << 17;
  return mstd::cRuntimeException(message, "cause.cpp", 5);
}

TEST(cUCSExceptions, ADecodeErrorCarriesACopyOfItsCause)
{
  mstd::cRuntimeException const original = cause();
  expectThrown<mstd::cRuntimeException>([&] { cUCSExceptions::throwUCSDecodeError(original); },
                                        [&](mstd::cRuntimeException const& exception) {
                                          EXPECT_STREQ(exception.liMessage()->key().c_str(), "Unicode decode error!");
                                          EXPECT_TRUE(exception.liMessage()->isTranslatable());
                                          ASSERT_NE(exception.history(), nullptr);
                                          EXPECT_NE(exception.history(), &original);
                                          mstd::cAsciiString sText;
                                          exception.history()->liMessage()->untranslated(sText);
                                          EXPECT_STREQ(sText.c_str(), "Byte 17 is bad");
                                          EXPECT_EQ(exception.history()->sourceFileLine(), 5u);
                                        });
}

TEST(cUCSExceptions, AnEncodeErrorCarriesACopyOfItsCause)
{
  mstd::cRuntimeException const original = cause();
  expectThrown<mstd::cRuntimeException>([&] { cUCSExceptions::throwUSCEncodeError(original); },
                                        [&](mstd::cRuntimeException const& exception) {
                                          EXPECT_STREQ(exception.liMessage()->key().c_str(), "Unicode encoding error!");
                                          ASSERT_NE(exception.history(), nullptr);
                                          EXPECT_NE(exception.history(), &original);
                                        });
}

TEST(cUCSExceptions, TheFailuresOfEncodersHaveTheirTexts)
{
  using support::failureText;
  EXPECT_EQ(failureText([] { cUCSExceptions::throwNotImplemented("$MTR$No %name%", mstd::cAsciiString("X")); }),
            "cBugException: No X");
  EXPECT_EQ(failureText([] { cUCSExceptions::throwUTF8EndOfData(3); }),
            "cRuntimeException: UTF8 decode error - unexpected end of data at index 3!");
  EXPECT_EQ(failureText([] { cUCSExceptions::throwUTF8UnsupportedLength(5); }),
            "cRuntimeException: UTF8 decode error - unsupported length of 5!");
  EXPECT_EQ(failureText([] { cUCSExceptions::throwUTF16SourceExhausted(); }),
            "cRuntimeException: Source buffer exhausted!");
  EXPECT_EQ(failureText([] { cUCSExceptions::throwUTF16InvalidByteOrderMark(); }),
            "cRuntimeException: Invalid byte order mark while decoding utf16!");
  EXPECT_EQ(failureText([] { cUCSExceptions::throwUTF16CorruptData(); }),
            "cRuntimeException: Unable to read corrupt utf16 data!");
  EXPECT_EQ(failureText([] { cUCSExceptions::throwUTF16InvalidSequence(); }),
            "cRuntimeException: Invalid byte sequence while decoding utf16!");
  EXPECT_EQ(failureText([] { cUCSExceptions::throwUTF16UnmappableCharacter(); }),
            "cRuntimeException: Unable to convert unmappable character to utf16!");
}

TEST(cUCSExceptions, ATranslationFileThatCannotBeReadCarriesACopyOfTheCause)
{
  mstd::cRuntimeException const original = cause();
  expectThrown<mstd::cRuntimeException>(
      [&] { cUCSExceptions::throwUnableToReadTranslationFile(original, mucs::cString("a.tr")); },
      [&](mstd::cRuntimeException const& exception) {
        EXPECT_STREQ(exception.liMessage()->key().c_str(), "Unable to read translation file (%filename%)!");
        mstd::cAsciiString sText;
        exception.liMessage()->untranslated(sText);
        EXPECT_STREQ(sText.c_str(), "Unable to read translation file (a.tr)!");
        ASSERT_NE(exception.history(), nullptr);
        EXPECT_NE(exception.history(), &original);
        EXPECT_EQ(exception.history()->sourceFileLine(), 5u);
      });
}

TEST(cUCSExceptions, ATranslationFileThatCannotBeParsedCarriesACopyOfTheCause)
{
  mstd::cRuntimeException const original = cause();
  expectThrown<mstd::cRuntimeException>(
      [&] { cUCSExceptions::throwUnableToParseTranslationFile(original, mucs::cString("a.tr"), 12); },
      [&](mstd::cRuntimeException const& exception) {
        EXPECT_STREQ(exception.liMessage()->key().c_str(),
                     "Unable to parse translation file (%filename%) line %line%!");
        mstd::cAsciiString sText;
        exception.liMessage()->untranslated(sText);
        EXPECT_STREQ(sText.c_str(), "Unable to parse translation file (a.tr) line 12!");
        ASSERT_NE(exception.history(), nullptr);
        EXPECT_NE(exception.history(), &original);
        EXPECT_EQ(exception.history()->sourceFileLine(), 5u);
      });
}

} // namespace
