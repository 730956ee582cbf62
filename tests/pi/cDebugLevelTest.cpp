#include "pi/cDebugLevel.h"

#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "support/cCaptureOut.h"

#include <gtest/gtest.h>

#include <type_traits>

TEST(cDebugLevel, IndentsTheSystemsOutputForItsScope)
{
  support::cCaptureOut capture;
  mpi::cAbstractOut& out = mpi::system().out;
  unsigned int const before = out.indentionLevel();
  {
    cDebugLevel level;
    EXPECT_EQ(out.indentionLevel(), before + 1);
    {
      cDebugLevel inner;
      out << "inner\n";
    }
    out << "outer\n";
  }
  EXPECT_EQ(out.indentionLevel(), before);
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].indention, before + 2);
  EXPECT_EQ(capture.lines()[1].indention, before + 1);
}

TEST(cDebugLevel, AnExceptionLeavesTheLevelToo)
{
  support::cCaptureOut capture;
  mpi::cAbstractOut& out = mpi::system().out;
  try
  {
    cDebugLevel level;
    throw 1;
  }
  catch (int)
  {
  }
  EXPECT_EQ(out.indentionLevel(), 0u);
}

TEST(cDebugLevel, IsNotCopied)
{
  EXPECT_FALSE(std::is_copy_constructible<cDebugLevel>::value);
}
