#include "pi/cPIExceptions.h"

#include "pi/cUnsupportedPlatformException.h"
#include "std/cAsciiString.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

std::string textOf(mstd::cAbstractException const& e)
{
  mucs::cString text;
  e.createMessage(text, mucs::cString(" <- "), 1, nullptr);
  return text.ascii('?').c_str();
}

/// Class, place and text of what `raise` throws.
template <typename Raise>
std::string thrown(Raise raise)
{
  try
  {
    raise();
  }
  catch (mstd::cAbstractException const& e)
  {
    return std::string(e.typeName().c_str()) + "@" + e.sourceFileName() + ":" + std::to_string(e.sourceFileLine()) +
           " " + textOf(e);
  }
  return "nothing";
}

} // namespace

TEST(cPIExceptions, EachThrowsItsClassWithItsText)
{
  using mpi::cPIExceptions;
  EXPECT_EQ(thrown([] { cPIExceptions::throwUnimplemented("file implementation"); }),
            "cUnsupportedPlatformException@:0 Operation (\"file implementation\") not supported for this platform!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwUnableGetCWD(); }),
            "cRuntimeException@:0 Unable to find out current working directory!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwUnableGetOSSpecificPath(); }),
            "cRuntimeException@:0 Unable to find out os specific path!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwRunnableNotCopyable(); }), "cBugException@:0 Threads could not be copied!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwRunnableNotAssignable(); }),
            "cBugException@:0 Threads could not be assigned!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwProcessDataInUse(); }),
            "cBugException@:0 Never use process data for more than one process!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwNoApplication(); }), "cBugException@:0 No application object set!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwNoAIOData(); }),
            "cBugException@:0 Work does not own asynchronous I/O data!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwNoFDAIOData(); }),
            "cBugException@:0 Asynchronous I/O data does not have file descriptor information!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwNoProcessEvents(); }),
            "cBugException@:0 No process event manager for workqueue!");
  EXPECT_EQ(thrown([] { cPIExceptions::throwAmuckWork("busy"); }), "cBugException@:0 Stopping amuck work \"busy\"!");
}

TEST(cPIExceptions, TheTextsAreMarkedForTranslation)
{
  try
  {
    mpi::cPIExceptions::throwUnableGetCWD();
    FAIL();
  }
  catch (mstd::cRuntimeException const& e)
  {
    ASSERT_NE(e.liMessage(), nullptr);
    EXPECT_TRUE(e.liMessage()->isTranslatable());
    EXPECT_STREQ(e.liMessage()->key().c_str(), "Unable to find out current working directory!");
  }
}

TEST(cPIExceptions, ARunnableThatIsCopiedRaisesTheNumberTwelve)
{
  try
  {
    mpi::cPIExceptions::throwRunnableCopyCode();
    FAIL();
  }
  catch (int code)
  {
    EXPECT_EQ(code, 12);
  }
}

TEST(cPIExceptions, AThreadThatCannotBeMadeTellsItInItsOldestCause)
{
  try
  {
    mpi::cPIExceptions::throwUnableCreateThread();
    FAIL();
  }
  catch (mstd::cOSErrorException const& e)
  {
    EXPECT_STREQ(e.operation().c_str(), "pthread_create");
    EXPECT_EQ(e.osErrorCode(), 1);
    ASSERT_NE(e.history(), nullptr);
    mstd::cAbstractException const* pOldest = e.history()->history();
    ASSERT_NE(pOldest, nullptr);
    EXPECT_EQ(textOf(*pOldest), "Unable to create thread!");
    EXPECT_STREQ(pOldest->typeName().c_str(), "cRuntimeException");
    EXPECT_EQ(pOldest->history(), nullptr);
  }
}
