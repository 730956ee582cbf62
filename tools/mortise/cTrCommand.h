#ifndef MORTISE_TOOLS_CTRCOMMAND_H
#define MORTISE_TOOLS_CTRCOMMAND_H

#include "cAbstractCommand.h"
#include "cKeyTable.h"
#include "cTranslationFile.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// `mortise tr`: keeps translation files in step with the messages of a source tree.
class cTrCommand : public cAbstractCommand
{
public:
  explicit cTrCommand(CLI::App& app);

  bool isChosen() const override { return mpParser->parsed(); }
  ExitCode run() override;

private:
  bool findSources(std::vector<std::string>& paths) const;
  bool collect();
  std::string shownPath(std::string const& path) const;
  bool isExcluded(std::string const& path) const;
  void printTemplate() const;
  bool writePseudo() const;
  bool isFoundByLoader(std::string const& path, cTranslationFile::cReport const& report) const;
  ExitCode updateFile(std::string const& path);

  CLI::App* mpParser; // the app owns it
  std::vector<std::string> mSources;
  std::vector<std::string> mFiles;
  std::vector<std::string> mExcluded;
  std::string mPseudo;
  std::string mName;
  std::string mBase;
  bool mCheck = false;
  bool mPlain = false;
  bool mDropObsolete = false;
  cKeyTable mKeys;
};

#endif
