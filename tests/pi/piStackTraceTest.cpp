#include "pi/piStackTrace.h"

#include "pi/cPlatform.h"
#include "std/cAsciiString.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <execinfo.h>
#include <string.h>

#include <algorithm>
#include <string>
#include <vector>

// The program's own backtrace() and dladdr() come before those of the C library, so a test can hand out the stack and
// the symbols that it wants. Without a test's wish they pass everything on.
namespace
{

struct cFakeStack
{
  bool isOn = false;
  std::vector<void*> frames;
  int lastCount = 0;
  unsigned int numCalls = 0;
  void (*hook)() = nullptr;
  std::vector<std::pair<void*, char const*>> symbols; // by the byte that is looked up
};

cFakeStack fake;

void* place(unsigned long value)
{
  return reinterpret_cast<void*>(static_cast<uintptr_t>(value));
}

/// A faked stack for a scope.
class cFakeScope
{
public:
  explicit cFakeScope(std::vector<void*> frames)
  {
    fake = cFakeStack();
    fake.isOn = true;
    fake.frames = std::move(frames);
  }
  ~cFakeScope() { fake = cFakeStack(); }

  /// Names the function that a return address belongs to.
  void name(unsigned long frame, char const* symbol) { fake.symbols.emplace_back(place(frame - 1), symbol); }
};

} // namespace

extern "C" __attribute__((visibility("default"))) int backtrace(void** frames, int count)
{
  if (!fake.isOn)
  {
    static auto const real = reinterpret_cast<int (*)(void**, int)>(dlsym(RTLD_NEXT, "backtrace"));
    return real(frames, count);
  }
  fake.lastCount = count;
  ++fake.numCalls;
  if (fake.hook != nullptr)
  {
    fake.hook();
  }
  int const found = std::min(count, static_cast<int>(fake.frames.size()));
  std::copy(fake.frames.begin(), fake.frames.begin() + found, frames);
  return found;
}

extern "C" __attribute__((visibility("default"))) int dladdr(void const* address, Dl_info* info)
{
  if (!fake.isOn)
  {
    static auto const real = reinterpret_cast<int (*)(void const*, Dl_info*)>(dlsym(RTLD_NEXT, "dladdr"));
    return real(address, info);
  }
  for (auto const& symbol : fake.symbols)
  {
    if (symbol.first == address)
    {
      memset(info, 0, sizeof(*info));
      info->dli_sname = symbol.second;
      info->dli_saddr = symbol.first;
      return 1;
    }
  }
  return 0;
}

TEST(piBackTrace, OneElementYieldsASingleZero)
{
  piAddress frames[2] = {7, 7};
  piBackTrace(frames, 1);
  EXPECT_EQ(frames[0], 0u);
  EXPECT_EQ(frames[1], 7u);
}

TEST(piBackTrace, ACountOfZeroIsTakenAsOne)
{
  piAddress frames[2] = {7, 7};
  piBackTrace(frames, 0);
  EXPECT_EQ(frames[0], 0u);
  EXPECT_EQ(frames[1], 7u);
}

TEST(piBackTrace, ACountAbove128IsTakenAs128)
{
  cFakeScope scope(std::vector<void*>(500, place(0x1000)));
  piAddress frames[130];
  frames[127] = 7;
  frames[128] = 7;
  piBackTrace(frames, 500);
  EXPECT_EQ(frames[126], 0x1000u);
  EXPECT_EQ(frames[127], 0u);
  EXPECT_EQ(frames[128], 7u) << "nothing behind the 128th element is touched";
}

TEST(piBackTrace, AlwaysEndsWithAZeroAndKeepsTheOrder)
{
  cFakeScope scope({place(0x10), place(0x20), place(0x30), place(0x40)});
  piAddress frames[4] = {7, 7, 7, 7};
  piBackTrace(frames, 4);
  EXPECT_EQ(frames[0], 0x10u);
  EXPECT_EQ(frames[1], 0x20u);
  EXPECT_EQ(frames[2], 0x30u);
  EXPECT_EQ(frames[3], 0u);
}

TEST(piBackTrace, WhatLiesBehindTheFramesFoundIsZero)
{
  cFakeScope scope({place(0x10)});
  piAddress frames[4] = {7, 7, 7, 7};
  piBackTrace(frames, 4);
  EXPECT_EQ(frames[0], 0x10u);
  EXPECT_EQ(frames[1], 0u);
  EXPECT_EQ(frames[2], 0u);
  EXPECT_EQ(frames[3], 0u);
}

TEST(piBackTrace, FindsRealReturnAddresses)
{
  piAddress frames[64];
  piBackTrace(frames, 64);
  EXPECT_NE(frames[0], 0u);
  EXPECT_NE(frames[1], 0u);
  EXPECT_EQ(frames[63], 0u);
}

TEST(piStackTrace, IsAStaircaseBehindTwoLineFeeds)
{
  cFakeScope scope({place(0x100), place(0x200), place(0x300)});
  scope.name(0x100, "_ZN3mpi5cWork5startEjNS0_4TypeE");
  scope.name(0x200, "plain_c_name");
  EXPECT_STREQ(piStackTrace(10).c_str(), "\n\n"
                                         "mpi::cWork::start(unsigned int, mpi::cWork::Type)\n"
                                         "  plain_c_name\n"
                                         "    0x300\n");
  EXPECT_EQ(fake.lastCount, 10);
}

TEST(piStackTrace, A500LevelTraceIsTreatedAs128)
{
  cFakeScope scope(std::vector<void*>(500, place(0x1000)));
  std::string const trace = piStackTrace(500).c_str();
  EXPECT_EQ(fake.lastCount, 128);
  EXPECT_EQ(std::count(trace.begin(), trace.end(), '\n'), 2 + 128);
}

TEST(piStackTrace, ACountOfZeroIsTreatedAsOne)
{
  cFakeScope scope(std::vector<void*>(5, place(0x1000)));
  EXPECT_STREQ(piStackTrace(0).c_str(), "\n\n0x1000\n");
  EXPECT_EQ(fake.lastCount, 1);
}

TEST(piStackTrace, AnUnknownStackIsTwoLineFeeds)
{
  cFakeScope scope({});
  EXPECT_STREQ(piStackTrace(128).c_str(), "\n\n");
}

TEST(piStackTrace, AZeroAddressLeavesItsLineEmptyAndTheStairGoesOn)
{
  cFakeScope scope({place(0x10), nullptr, place(0x30)});
  EXPECT_STREQ(piStackTrace(3).c_str(), "\n\n0x10\n\n    0x30\n");
}

TEST(piStackTrace, AStackEndsAtAFunctionCalledMainWhateverLiesBelow)
{
  cFakeScope scope({place(0x10), place(0x20), place(0x30), place(0x40)});
  scope.name(0x10, "_ZN1a4mainEv");
  scope.name(0x20, "mainly");
  scope.name(0x30, "main");
  EXPECT_STREQ(piStackTrace(128).c_str(), "\n\na::main()\n  mainly\n    main\n");
}

TEST(piStackTrace, TheNameOfAReturnAddressBehindALastCallIsThatOfTheCaller)
{
  cFakeScope scope({place(0x20)});
  fake.symbols.emplace_back(place(0x1f), "caller");
  fake.symbols.emplace_back(place(0x20), "next");
  EXPECT_STREQ(piStackTrace(1).c_str(), "\n\ncaller\n");
}

TEST(piStackTrace, TheArrayFormWritesOneNamePerLevel)
{
  cFakeScope scope({place(0x10), nullptr, place(0x30), place(0x40), place(0x50)});
  scope.name(0x10, "first");
  scope.name(0x40, "main");
  mstd::cAsciiString names[6];
  for (auto& name : names)
  {
    name = mstd::cAsciiString("as before");
  }
  piStackTrace(6, names);
  EXPECT_EQ(fake.lastCount, 6);
  EXPECT_STREQ(names[0].c_str(), "first");
  EXPECT_STREQ(names[1].c_str(), "as before");
  EXPECT_STREQ(names[2].c_str(), "0x30");
  EXPECT_STREQ(names[3].c_str(), "main");
  EXPECT_STREQ(names[4].c_str(), "as before");
  EXPECT_STREQ(names[5].c_str(), "as before");
}

TEST(piStackTrace, TheArrayFormIsClampedToo)
{
  cFakeScope scope(std::vector<void*>(500, place(0x1000)));
  std::vector<mstd::cAsciiString> names(129);
  piStackTrace(500, names.data());
  EXPECT_EQ(fake.lastCount, 128);
  EXPECT_STREQ(names[127].c_str(), "0x1000");
  EXPECT_STREQ(names[128].c_str(), "");
}

TEST(piStackTrace, ShowsTheFunctionsOfTheLibraryItself)
{
  EXPECT_NE(std::string(piStackTrace(128).c_str()).find("piStackTrace(unsigned int)\n"), std::string::npos);
}

TEST(piStackDump, PrintsTheTraceToTheStandardErrorStream)
{
  cFakeScope scope({place(0x10), place(0x20)});
  testing::internal::CaptureStderr();
  piStackDump();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Stackdump: \n\n\n0x10\n  0x20\n\n");
  EXPECT_EQ(fake.lastCount, 128);
}

TEST(piStackDump, ADumpFromInsideADumpDoesNothing)
{
  cFakeScope scope({place(0x10)});
  fake.hook = [] { piStackDump(); };
  testing::internal::CaptureStderr();
  piStackDump();
  piStackDump();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Stackdump: \n\n\n0x10\n\nStackdump: \n\n\n0x10\n\n")
      << "the guard is off again after a dump";
  EXPECT_EQ(fake.numCalls, 2u);
}

TEST(piResolveAddress, KnownSymbolsAreDemangledWithTheirFullSignature)
{
  cFakeScope scope({});
  fake.symbols.emplace_back(place(0x10), "_ZNK3foo3barERKSs");
  fake.symbols.emplace_back(place(0x20), "no_cplusplus");
  mstd::cAsciiString name("old");
  EXPECT_TRUE(piResolveAddress(0x10, name));
  EXPECT_STREQ(name.c_str(), "foo::bar(std::string const&) const");
  EXPECT_TRUE(piResolveAddress(0x20, name));
  EXPECT_STREQ(name.c_str(), "no_cplusplus");
}

TEST(piResolveAddress, AnUnknownAddressIsShownInBase16)
{
  cFakeScope scope({});
  mstd::cAsciiString name("old");
  EXPECT_FALSE(piResolveAddress(0xabcd12, name));
  EXPECT_STREQ(name.c_str(), "0xabcd12");
  EXPECT_FALSE(piResolveAddress(0, name));
  EXPECT_STREQ(name.c_str(), "0x0");
  EXPECT_FALSE(piResolveAddress(static_cast<piAddress>(-1), name));
  EXPECT_EQ(std::string(name.c_str()), "0x" + std::string(2 * sizeof(piAddress), 'f'));
}

TEST(piResolveAddress, ASymbolWithoutNameOrAddressIsUnknown)
{
  cFakeScope scope({});
  fake.symbols.emplace_back(place(0x10), nullptr);
  fake.symbols.emplace_back(nullptr, "at_zero");
  mstd::cAsciiString name;
  EXPECT_FALSE(piResolveAddress(0x10, name));
  EXPECT_STREQ(name.c_str(), "0x10");
  EXPECT_FALSE(piResolveAddress(0, name));
  EXPECT_STREQ(name.c_str(), "0x0");
}

TEST(piResolveAddress, FindsTheFunctionsOfTheLibraryItself)
{
  mstd::cAsciiString name;
  // The address of a function of the library, as the loader knows it.
  void* pFunction = dlsym(RTLD_DEFAULT, "_ZN3mpi9cPlatform8userNameEv");
  ASSERT_NE(pFunction, nullptr);
  EXPECT_TRUE(piResolveAddress(reinterpret_cast<piAddress>(pFunction), name));
  EXPECT_STREQ(name.c_str(), "mpi::cPlatform::userName()");
}
