#ifndef MORTISE_TOOLS_CMODULECOMMAND_H
#define MORTISE_TOOLS_CMODULECOMMAND_H

#include "cAbstractCommand.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// `mortise module`: shows what module libraries offer, or why they are of no use.
class cModuleCommand : public cAbstractCommand
{
public:
  explicit cModuleCommand(CLI::App& app);

  bool isChosen() const override { return mpParser->parsed(); }
  ExitCode run() override;

private:
  CLI::App* mpParser; // the app owns it
  std::vector<std::string> mPaths;
  bool mJson = false;
  bool mNoLoad = false;
  unsigned int miSeconds = 10;
};

#endif
