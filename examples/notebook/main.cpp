// notebook: keeps entries of several kinds in a file. See cCommand::usage().
#include "cCommand.h"
#include "cText.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"

#include <new>
#include <stdio.h>

int main(int argc, char** argv)
{
  try
  {
    mpi::system();
    return cCommand().run(argc - 1, argv + 1);
  }
  catch (mstd::cAbstractException const& e)
  {
    fprintf(stderr, "notebook: %s\n", cText::message(e).c_str());
  }
  catch (std::bad_alloc const&)
  {
    fputs("notebook: out of memory\n", stderr);
  }
  return 1;
}
