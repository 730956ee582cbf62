#include "cDumpCommand.h"

#include "cMessage.h"
#include "cStreamFile.h"
#include "cStreamListing.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

cDumpCommand::cDumpCommand(CLI::App& app)
    : mpParser(app.add_subcommand("dump", "Print a stored stream as the debug listing")), mPath("-")
{
  mpParser->add_option("FILE", mPath, "The stream; - or nothing for standard input");
  mpParser->add_flag("--offsets", mOffsets, "Show byte positions in front of the lines");
  mpParser->footer("Ends with 0, with 1 if the stream is damaged, with 2 if it can't be read or printed.");
}

cAbstractCommand::ExitCode cDumpCommand::run()
{
  cStreamFile file(mPath);
  if (!file.read())
  {
    fprintf(stderr, "mortise dump: %s: %s\n", file.name().c_str(), file.error().c_str());
    return Unusable;
  }
  unsigned int iStyle = 0;
  if (mOffsets)
  {
    iStyle |= cStreamListing::Offsets;
  }
  if (isatty(STDOUT_FILENO))
  {
    iStyle |= cStreamListing::Harmless;
  }
  cStreamListing listing(file.data(), stdout, iStyle);
  bool const bWhole = listing.print();
  if (fflush(stdout) != 0 || ferror(stdout))
  {
    fprintf(stderr, "mortise dump: standard output: %s\n", strerror(errno));
    return Unusable;
  }
  if (!bWhole)
  {
    fprintf(stderr, "mortise dump: %s: damaged at byte %u of %u: %s\n", file.name().c_str(), listing.damagePos(),
            file.data().length(), cMessage::harmless(listing.damage()).c_str());
    return Damaged;
  }
  return Fine;
}
