#ifndef MORTISE_TOOLS_CDUMPCOMMAND_H
#define MORTISE_TOOLS_CDUMPCOMMAND_H

#include "cAbstractCommand.h"

#include <CLI/CLI.hpp>
#include <string>

/// `mortise dump`: prints a stored stream as the debug listing.
class cDumpCommand : public cAbstractCommand
{
public:
  explicit cDumpCommand(CLI::App& app);

  bool isChosen() const override { return mpParser->parsed(); }
  ExitCode run() override;

private:
  CLI::App* mpParser; // the app owns it
  std::string mPath;
  bool mOffsets = false;
};

#endif
