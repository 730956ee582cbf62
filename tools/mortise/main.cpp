// mortise: the command line tool of the library. Each sub-command is a class of its own.
#include "cDumpCommand.h"
#include "cMessage.h"
#include "cModuleCommand.h"
#include "cNewModuleCommand.h"
#include "cTrCommand.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"

#include <new>
#include <stdio.h>

int main(int argc, char** argv)
{
  try
  {
    mpi::system();
    CLI::App app("Helps to build programs with the mortise library, and looks at what they store.", "mortise");
    app.set_version_flag("--version", "mortise " MORTISE_TOOL_VERSION);
    app.require_subcommand(1);
    cDumpCommand dump(app);
    cModuleCommand module(app);
    cNewModuleCommand newModule(app);
    cTrCommand tr(app);
    cAbstractCommand* const commands[] = {&dump, &module, &newModule, &tr};
    try
    {
      app.parse(argc, argv);
    }
    catch (CLI::ParseError const& e)
    {
      return app.exit(e) == 0 ? cAbstractCommand::Fine : cAbstractCommand::Unusable;
    }
    for (cAbstractCommand* pCommand : commands)
    {
      if (pCommand->isChosen())
      {
        return pCommand->run();
      }
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    fprintf(stderr, "mortise: %s\n", cMessage::of(e).c_str());
  }
  catch (std::bad_alloc const&)
  {
    fputs("mortise: out of memory\n", stderr);
  }
  return cAbstractCommand::Unusable;
}
