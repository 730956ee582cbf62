// linewatch: watches the lines of several descriptors at once. See cOptions::usage().
#include "cLanguage.h"
#include "cOptions.h"
#include "cText.h"
#include "cWatch.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"

#include <fcntl.h>
#include <new>
#include <stdio.h>
#include <unistd.h>

int main(int argc, char** argv)
{
  // What is opened later must not become a standard stream by chance.
  for (int i = 0; i <= STDERR_FILENO; i++)
  {
    if (fcntl(i, F_GETFD) < 0 && open("/dev/null", O_RDWR) != i)
    {
      return 1;
    }
  }
  try
  {
    mpi::system();
    cLanguage language;
    cOptions options;
    switch (options.parse(argc, argv))
    {
    case cOptions::Help:
      fputs(cOptions::usage(), stdout);
      return 0;
    case cOptions::Wrong:
      fprintf(stderr, "linewatch: %s\nTry linewatch --help.\n", options.error().c_str());
      return 2;
    default:
      if (!options.locale().empty())
      {
        language.load(cText::decode(options.locale().c_str()));
      }
      return cWatch(options).run();
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    fprintf(stderr, "linewatch: %s\n", cText::message(e).c_str());
  }
  catch (std::bad_alloc const&)
  {
    fputs("linewatch: out of memory\n", stderr);
  }
  return 1;
}
