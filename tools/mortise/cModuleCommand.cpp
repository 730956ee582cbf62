#include "cModuleCommand.h"

#include "cModuleReport.h"

#include <algorithm>
#include <errno.h>
#include <stdio.h>
#include <string.h>

cModuleCommand::cModuleCommand(CLI::App& app)
    : mpParser(app.add_subcommand("module", "Show what module libraries offer, or why they are of no use"))
{
  mpParser->add_option("FILE", mPaths, "Libraries")->required();
  mpParser->add_flag("--json", mJson, "Print a JSON object for each file, in a line of its own");
  mpParser->add_flag("--no-load", mNoLoad, "Look at the files alone, and run nothing of them");
  mpParser->add_option("--timeout", miSeconds, "How long a module may take to load, to answer and to unload; else 10")
      ->type_name("SECONDS")
      ->check(CLI::Range(1u, 3600u));
  mpParser->footer("Ends with 0, with 1 if a file is no usable module, with 2 if one can't be read.\n"
                   "Without --no-load, code of the module runs, in a process of its own, with the rights of who asks.");
}

cAbstractCommand::ExitCode cModuleCommand::run()
{
  ExitCode eResult = Fine;
  for (std::string const& path : mPaths)
  {
    cModuleReport report(path);
    report.make(!mNoLoad, miSeconds);
    fputs((mJson ? report.json() : report.text()).c_str(), stdout);
    eResult = std::max(eResult, !report.isReadable() ? Unusable : report.isUsable() ? Fine : Damaged);
  }
  if (fflush(stdout) != 0 || ferror(stdout))
  {
    fprintf(stderr, "mortise module: standard output: %s\n", strerror(errno));
    return Unusable;
  }
  return eResult;
}
