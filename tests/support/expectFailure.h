#ifndef MORTISE_TESTS_SUPPORT_EXPECTFAILURE_H
#define MORTISE_TESTS_SUPPORT_EXPECTFAILURE_H

#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cSTDExceptions.h"
#include "support/cCaptureOut.h"
#include "support/rangeChecks.h"
#include "ucs/cLIMessage.h"

#include <gtest/gtest.h>
#include <string>

namespace support
{

/// Runs `action`, which has to raise a cOutOfBoundsException of this container and operation.
template <class Action>
void expectOutOfBounds(Action const& action, std::string const& container, std::string const& operation)
{
  EXPECT_EQ(failureOf(action), "bounds " + container + "/" + operation);
}

/// Runs `action`, which has to raise a cOutOfRangeException with these arguments and 0 as the smallest legal value.
template <class Action>
void expectOutOfRange(Action const& action, std::string const& container, std::string const& operation,
                      cSTDExceptions::OutOfRangeType type, long long value, long long max)
{
  EXPECT_EQ(failureOf(action), "range " + container + "/" + operation + " " + std::to_string(static_cast<int>(type)) +
                                   " " + std::to_string(value) + " 0 " + std::to_string(max));
}

/// Runs `action`, which has to raise a cBugException, and returns its untranslated message.
template <class Action>
std::string bugMessageOf(Action const& action)
{
  cCaptureOut mute;
  try
  {
    action();
  }
  catch (mstd::cBugException const& e)
  {
    mstd::cAsciiString message;
    e.liMessage()->untranslated(message);
    return message.c_str();
  }
  return "nothing";
}

/// Runs `action`, which has to break the assertion `condition` of the source `source`.
template <class Action>
void expectAssertion(Action const& action, std::string const& condition, std::string const& source)
{
  std::string const message = bugMessageOf(action);
  EXPECT_EQ(message.find("Assertion failed in file " + source + ":"), 0u) << message;
  EXPECT_NE(message.find(". (" + condition + ")!"), std::string::npos) << message;
}

} // namespace support

#endif
