#ifndef MORTISE_TESTS_SUPPORT_RANGECHECKS_H
#define MORTISE_TESTS_SUPPORT_RANGECHECKS_H

#include "std/cBugException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "support/cCaptureOut.h"

#include <gtest/gtest.h>
#include <string>

namespace support
{

/// Runs `f` and tells what it failed with, as one line: "range container/operation type value min max",
/// "bounds container/operation", "bug condition of the assertion", or "nothing". Mutes the stack trace.
template <class F>
std::string failureOf(F const& f)
{
  cCaptureOut mute;
  try
  {
    f();
  }
  catch (mstd::cOutOfRangeException const& e)
  {
    return std::string("range ") + e.container().c_str() + "/" + e.operation().c_str() + " " +
           std::to_string(static_cast<int>(e.outOfRangeType())) + " " + std::to_string(e.errornousValue()) + " " +
           std::to_string(e.minValue()) + " " + std::to_string(e.maxValue());
  }
  catch (mstd::cOutOfBoundsException const& e)
  {
    return std::string("bounds ") + e.container().c_str() + "/" + e.operation().c_str();
  }
  catch (mstd::cBugException const& e)
  {
    mstd::cAsciiString text;
    e.toMessage().untranslated(text);
    std::string const message(text.c_str());
    std::string::size_type const open = message.find('(');
    std::string::size_type const close = message.rfind(')');
    return open == std::string::npos ? "bug " + message : "bug " + message.substr(open + 1, close - open - 1);
  }
  return "nothing";
}

} // namespace support

#endif
