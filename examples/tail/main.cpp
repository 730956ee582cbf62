// tail: follows files that grow, through rotation, truncation and removal. See cOptions::usage().
#include "cOptions.h"
#include "cTail.h"
#include "cText.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"
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
      fprintf(stderr, "tail: %s\nTry tail --help.\n", options.error().c_str());
      return 2;
    default:
      break;
    }
    if (!options.locale().empty())
    {
      mpi::system().locale.loadFromFile(cText::decode(options.locale()));
    }
    return cTail(options).run();
  }
  catch (mstd::cAbstractException const& e)
  {
    fprintf(stderr, "tail: %s\n", cText::message(e).c_str());
  }
  catch (std::bad_alloc const&)
  {
    fputs("tail: out of memory\n", stderr);
  }
  return 1;
}
