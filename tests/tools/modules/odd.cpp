// A module that does what the environment tells it to: MORTISE_TEST_ODD is "<when> <what>".

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"

#include <dlfcn.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string>
#include <unistd.h>

namespace
{
struct cForeign
{
};

// The path of this library.
std::string self()
{
  Dl_info info;
  return dladdr(reinterpret_cast<void*>(&self), &info) != 0 ? info.dli_fname : "";
}

void* rest(void*)
{
  for (;;)
  {
    sleep(1);
  }
}

void when(char const* pWhen)
{
  char const* const pWish = getenv("MORTISE_TEST_ODD");
  std::string const wish = pWish != nullptr ? pWish : "";
  std::string const what = wish.compare(0, wish.find(' '), pWhen) == 0 ? wish.substr(wish.find(' ') + 1) : "";
  if (what == "crash")
  {
    signal(SIGSEGV, SIG_DFL);
    raise(SIGSEGV);
  }
  else if (what == "abort")
  {
    abort();
  }
  else if (what == "exit")
  {
    _exit(0);
  }
  else if (what == "hang" || what == "flood")
  {
    while (what == "hang" || write(STDOUT_FILENO, "flood\n", 6) > 0)
    {
    }
  }
  else if (what == "raise")
  {
    throw cForeign();
  }
  else if (what == "print")
  {
    puts("to standard output");
    fputs("to standard \x1B error", stderr);
  }
  else if (what == "tell" || what == "deluge")
  {
    // Whatever stands open may be what the tool listens to.
    std::string const message("\x12\0\0\0\x06\0\0\0failed\xFF\xFF\xFF\x7F....", 22);
    std::string all;
    while (all.size() < (what == "tell" ? 1 : 65536))
    {
      all += message;
    }
    do
    {
      for (int i = 3; i < 32; ++i)
      {
        if (write(i, all.data(), all.size()) < 0)
        {
          continue;
        }
      }
    } while (what == "deluge");
  }
  else if (what == "fork")
  {
    if (fork() == 0)
    {
      rest(nullptr);
    }
  }
  else if (what == "thread")
  {
    pthread_t thread;
    pthread_create(&thread, nullptr, rest, nullptr);
  }
  else if (what == "open")
  {
    dlopen(self().c_str(), RTLD_NOW);
  }
  else if (what == "held")
  {
    std::string const path = self();
    dlopen((path.substr(0, path.rfind('/') + 1) + "libmortise-test-holder.so").c_str(), RTLD_NOW);
  }
}

struct cStatic
{
  cStatic() { when("load"); }
  ~cStatic() { when("unload"); }
} object;

class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame)
  {
    moduleInfo().setName("odd");
    when("make");
  }
  ~cPlugIn() override { when("destroy"); }
  mstd::cAsciiString pluginTypeName() const override
  {
    when("ask");
    return mstd::cAsciiString("odd");
  }
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
