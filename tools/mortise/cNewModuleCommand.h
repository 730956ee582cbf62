#ifndef MORTISE_TOOLS_CNEWMODULECOMMAND_H
#define MORTISE_TOOLS_CNEWMODULECOMMAND_H

#include "cAbstractCommand.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <string>

/// `mortise new-module`: writes the project of a new module from the template.
class cNewModuleCommand : public cAbstractCommand
{
public:
  explicit cNewModuleCommand(CLI::App& app);

  bool isChosen() const override { return mpParser->parsed(); }
  ExitCode run() override;

private:
  std::string whyNotName() const;
  std::filesystem::path findTemplate() const;
  std::string renamed(std::string text) const;
  void copy(std::filesystem::path const& source, std::filesystem::path const& target) const;

  CLI::App* mpParser; // the app owns it
  std::string mName;
  std::string mDirectory = ".";
  std::string mTemplate;
};

#endif
