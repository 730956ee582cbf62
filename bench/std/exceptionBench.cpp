#include "support/bench.h"

#include "pi/cSystem.h"
#include "std/cRuntimeException.h"
#include "ucs/cLIMessage.h"

#include <boost/exception/all.hpp>
#include <boost/stacktrace.hpp>

#include <stdexcept>
#include <utility>

namespace
{
typedef boost::error_info<struct cTraceTag, boost::stacktrace::stacktrace> tTrace;
typedef boost::error_info<struct cFileTag, std::string> tFile;

struct cBoostError : virtual boost::exception, virtual std::exception
{
};

/// Calls `f` with `iDepth` more frames on the stack.
template <class F>
__attribute__((noinline)) void deeper(unsigned int iDepth, F const& f)
{
  if (iDepth == 0)
  {
    f();
  }
  else
  {
    deeper(iDepth - 1, f);
  }
  asm volatile("" ::: "memory"); // keeps the call from becoming a jump
}

__attribute__((noinline)) void throwOurs()
{
  mucs::cLIMessage message;
  message << "$MTR$Cannot read %file%"
          << "a.txt";
  throw mstd::cRuntimeException(std::move(message), __FILE__, __LINE__);
}

__attribute__((noinline)) void throwBoost()
{
  throw boost::enable_error_info(cBoostError()) << tFile("a.txt") << tTrace(boost::stacktrace::stacktrace());
}

void catchOurs(benchmark::State& state, unsigned int iDepth)
{
  mpi::system();
  deeper(iDepth, [&state] {
    for (auto _ : state)
    {
      try
      {
        throwOurs();
      }
      catch (mstd::cAbstractException const& e)
      {
        benchmark::DoNotOptimize(&e);
      }
    }
  });
}

void catchBoost(benchmark::State& state, unsigned int iDepth)
{
  deeper(iDepth, [&state] {
    for (auto _ : state)
    {
      try
      {
        throwBoost();
      }
      catch (boost::exception const& e)
      {
        benchmark::DoNotOptimize(&e);
      }
    }
  });
}

__attribute__((noinline)) void throwStd()
{
  throw std::runtime_error("Cannot read a.txt");
}

void catchStd(benchmark::State& state, unsigned int iDepth)
{
  deeper(iDepth, [&state] {
    for (auto _ : state)
    {
      try
      {
        throwStd();
      }
      catch (std::exception const& e)
      {
        benchmark::DoNotOptimize(&e);
      }
    }
  });
}
} // namespace

BENCH("exceptions", "construct, throw and catch at depth 10", "mortise")
{
  catchOurs(state, 10);
}
BENCH("exceptions", "construct, throw and catch at depth 10", "Boost with back trace")
{
  catchBoost(state, 10);
}
BENCH("exceptions", "construct, throw and catch at depth 10", "limit: std, no back trace")
{
  catchStd(state, 10);
}
BENCH("exceptions", "construct, throw and catch at depth 64", "mortise")
{
  catchOurs(state, 64);
}
BENCH("exceptions", "construct, throw and catch at depth 64", "Boost with back trace")
{
  catchBoost(state, 64);
}
BENCH("exceptions", "construct, throw and catch at depth 64", "limit: std, no back trace")
{
  catchStd(state, 64);
}
