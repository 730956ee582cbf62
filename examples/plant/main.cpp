// plant: figures of this machine by modules that come and go. See cOptions::usage().
#include "cOptions.h"
#include "cPlant.h"
#include "cQuiet.h"
#include "cText.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"
#include "std/tAutoPtr.h"
#include "ucs/cLILocale.h"

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
    cOptions options;
    switch (options.parse(argc, argv))
    {
    case cOptions::Help:
      fputs(cOptions::usage(), stdout);
      return 0;
    case cOptions::Wrong:
      fprintf(stderr, "plant: %s\nTry plant --help.\n", options.error().c_str());
      return 2;
    default:
      break;
    }
    mstd::tAutoPtr<cQuiet> pQuiet(options.isVerbose() ? nullptr : new cQuiet);
    if (!options.locale().empty())
    {
      mpi::system().locale.loadFromFile(cText::decode(options.locale()));
    }
    return cPlant(options).run();
  }
  catch (mstd::cAbstractException const& e)
  {
    fprintf(stderr, "plant: %s\n", cText::message(e).c_str());
  }
  catch (std::bad_alloc const&)
  {
    fputs("plant: out of memory\n", stderr);
  }
  return 1;
}
