#include "io/cIOExceptions.h"

#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "support/messageOf.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using mio::cIOExceptions;
using support::messageOf;

template <class tException, class tBody>
std::string textOf(tBody const& body)
{
  return messageOf<tException>(body);
}

/// The message of the exception and those behind it.
template <class tBody>
std::vector<std::string> chainOf(tBody const& body)
{
  std::vector<std::string> texts;
  try
  {
    body();
  }
  catch (mstd::cRuntimeException const& e)
  {
    for (mstd::cAbstractException const* pLink = &e; pLink != nullptr; pLink = pLink->history())
    {
      texts.push_back(messageOf(*pLink));
    }
  }
  return texts;
}

mstd::cRuntimeException cause()
{
  mucs::cLIMessage message;
  message << "$MTR$the cause";
  return mstd::cRuntimeException(message, 0, 0);
}

TEST(cIOExceptions, EachTellsWhatFailed)
{
  typedef mstd::cRuntimeException tRuntime;
  EXPECT_EQ(textOf<tRuntime>([] { cIOExceptions::throwRelativePathUnderrun("../a"); }), "Invalid path \"../a\"!");
  EXPECT_EQ(textOf<tRuntime>([] { cIOExceptions::throwIOTimeout(250); }),
            "Timeout while i/o operation after 250 milliseconds!");
  EXPECT_EQ(textOf<tRuntime>([] { cIOExceptions::throwUnableToWrite(0x100000000ull); }),
            "Unable to write 4294967296 bytes!");
  EXPECT_EQ(textOf<tRuntime>([] { cIOExceptions::throwUnableToRead(7); }), "Unable to read 7 bytes!");
  EXPECT_EQ(textOf<tRuntime>([] { cIOExceptions::throwUnableToReadOddAmountOfData(7, 2); }),
            "Unable to read odd amount of data (7 bytes but element size is 2)!");
}

TEST(cIOExceptions, TheCauseStandsBehindWhatItPrevented)
{
  mstd::cRuntimeException const why = cause();
  EXPECT_EQ(chainOf([&] { cIOExceptions::throwUnableOpenFile(why, "a/b"); }),
            (std::vector<std::string>{"Unable to open file \"a/b\"!", "the cause"}));
  EXPECT_EQ(chainOf([&] { cIOExceptions::throwUnableWriteFile(why, "a/b"); }),
            (std::vector<std::string>{"Unable to write to file \"a/b\"!", "the cause"}));
  EXPECT_EQ(chainOf([&] { cIOExceptions::throwUnableReadFile(why, "a/b"); }),
            (std::vector<std::string>{"Unable to read from file \"a/b\"!", "the cause"}));
  EXPECT_EQ(chainOf([&] { cIOExceptions::throwUnableRemoveFile(why, "a/b"); }),
            (std::vector<std::string>{"Unable to remove file \"a/b\"!", "the cause"}));
}

TEST(cIOExceptions, APathThatCannotBeMadeIsReportedAsOneThatCannotBeRemoved)
{
  mstd::cRuntimeException const why = cause();
  EXPECT_EQ(chainOf([&] { cIOExceptions::throwUnableCreatePath(why, "a/b"); }),
            (std::vector<std::string>{"Unable to remove file a/b!", "the cause"}));
}

TEST(cIOExceptions, TheEndOfAFileIsABugOfTheReader)
{
  EXPECT_EQ(textOf<mstd::cBugException>([] { cIOExceptions::throwEndOfFile("a"); }), "End of file \"a\" reached!");
}

TEST(cIOExceptions, MountingHasItsOwn)
{
  typedef mstd::cRuntimeException tRuntime;
  typedef mstd::cBugException tBug;
  EXPECT_EQ(textOf<tBug>([] { cIOExceptions::throwBindNotSupported(); }),
            "Bind / unbind not supported for filesystem implementation!");
  EXPECT_EQ(textOf<tBug>([] { cIOExceptions::throwNoFilesystem(mucs::cString()); }),
            "ProxyFs has not valid filesystems!");
  EXPECT_EQ(textOf<tBug>([] { cIOExceptions::throwNoFilesystem("/x"); }),
            "ProxyFs has not valid filesystem for /x and no registered filesystems at all!");
  EXPECT_EQ(textOf<tRuntime>([] { cIOExceptions::throwFilesystemInUse("/x"); }), "Filesystem (/x) is in use!");
  EXPECT_EQ(textOf<tRuntime>([] { cIOExceptions::throwNativeFilesystemInUse(); }), "Native filesystem  is in use!");
  EXPECT_EQ(textOf<tRuntime>([] { cIOExceptions::throwRenameAcrossFilesystems("/x", "/y"); }),
            "Rename across filesystem boundaries is not supported (/x -> /y"); // its last placeholder has no end
}

TEST(cIOExceptions, ACopiedFileImplementationThrowsANumber)
{
  EXPECT_THROW(
      {
        try
        {
          cIOExceptions::throwFileImplCopied();
        }
        catch (int number)
        {
          EXPECT_EQ(number, 12);
          throw;
        }
      },
      int);
}

} // namespace
