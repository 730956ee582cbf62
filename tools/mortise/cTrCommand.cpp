#include "cTrCommand.h"

#include "cMessage.h"
#include "cTextFile.h"
#include "cTrText.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "ucs/cLILocale.h"
#include "ucs/cLITrTable.h"
#include "ucs/cLITranslationLoader.h"
#include "ucs/cString.h"

#include <algorithm>
#include <errno.h>
#include <filesystem>
#include <set>
#include <stdio.h>
#include <string.h>

namespace fs = std::filesystem;

cTrCommand::cTrCommand(CLI::App& app)
    : mpParser(app.add_subcommand("tr", "Keep translation files in step with the messages of source files"))
{
  mpParser->add_option("SOURCE", mSources, "Files, and folders with files, of C++")->required();
  mpParser
      ->add_option("-f,--file", mFiles, "A translation file or locale file to bring up to date; made if there is none")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->take_all();
  mpParser->add_flag("-c,--check", mCheck, "Change nothing, and end with 1 if a file is not complete");
  mpParser->add_option("--pseudo", mPseudo, "Write a locale file of a made-up language, for tests")->type_name("FILE");
  mpParser->add_option("--name", mName, "The name of the language, for the locale file")->type_name("NAME");
  mpParser->add_flag("--plain", mPlain, "Files have entries only, which any loader reads");
  mpParser->add_flag("--drop", mDropObsolete, "Leave translations out that no source uses any more");
  mpParser->add_option("--base", mBase, "The folder from which paths of sources are shown; else the current one")
      ->type_name("DIR");
  mpParser->add_option("--exclude", mExcluded, "A file or folder to leave out")
      ->type_name("PATH")
      ->allow_extra_args(false)
      ->take_all();
  mpParser->footer(
      "Ends with 0, with 1 if a file is damaged or, with --check, not complete, with 2 if one can't be read or "
      "written.");
}

cAbstractCommand::ExitCode cTrCommand::run()
{
  if (!mName.empty() && (mPlain || mFiles.size() + (mPseudo.empty() ? 0 : 1) != 1))
  {
    fputs("mortise tr: --name goes with one file, and not with --plain\n", stderr);
    return Unusable;
  }
  if (!collect())
  {
    return Unusable;
  }
  ExitCode eResult = mCheck && !mKeys.problems().empty() ? Damaged : Fine;
  for (std::string const& problem : mKeys.problems())
  {
    fprintf(stderr, "mortise tr: %s\n", problem.c_str());
  }
  if (mFiles.empty() && mPseudo.empty())
  {
    printTemplate();
  }
  for (std::string const& path : mFiles)
  {
    eResult = std::max(eResult, updateFile(path));
  }
  if (!mPseudo.empty() && !writePseudo())
  {
    return Unusable;
  }
  if (fflush(stdout) != 0 || ferror(stdout))
  {
    fprintf(stderr, "mortise tr: standard output: %s\n", strerror(errno));
    return Unusable;
  }
  return eResult;
}

bool cTrCommand::isExcluded(std::string const& path) const
{
  for (std::string const& excluded : mExcluded)
  {
    std::error_code error;
    if (fs::equivalent(excluded, path, error))
    {
      return true;
    }
  }
  return false;
}

/// The files to read, each once, in an order that does not depend on the file system.
bool cTrCommand::findSources(std::vector<std::string>& paths) const
{
  static std::set<std::string> const endings = {".h",   ".hh",  ".hpp", ".hxx", ".h++", ".inl", ".inc", ".ipp",
                                                ".tpp", ".txx", ".c",   ".cc",  ".cpp", ".cxx", ".c++", ".C"};
  for (std::string const& source : mSources)
  {
    std::error_code error;
    std::vector<std::string> found;
    if (!fs::is_directory(source, error))
    {
      found.push_back(source);
    }
    else
    {
      fs::recursive_directory_iterator walk(source, error);
      for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error))
      {
        std::string const path = walk->path().string();
        bool const bFolder = walk->is_directory(error);
        if (walk->path().filename().string()[0] == '.' || isExcluded(path))
        {
          walk.disable_recursion_pending();
        }
        else if (!bFolder && endings.count(walk->path().extension().string()) != 0)
        {
          found.push_back(path);
        }
      }
      if (error)
      {
        fprintf(stderr, "mortise tr: %s: %s\n", source.c_str(), error.message().c_str());
        return false;
      }
      std::sort(found.begin(), found.end());
    }
    for (std::string const& path : found)
    {
      if (!isExcluded(path) && std::find(paths.begin(), paths.end(), path) == paths.end())
      {
        paths.push_back(path);
      }
    }
  }
  return true;
}

/// As files name it for translators: relative, so that it is the same wherever the tree lies.
std::string cTrCommand::shownPath(std::string const& path) const
{
  std::error_code error;
  fs::path const base = mBase.empty() ? fs::current_path(error) : fs::absolute(mBase, error);
  fs::path const shown = fs::absolute(path, error).lexically_normal().lexically_relative(base.lexically_normal());
  return shown.empty() ? path : shown.generic_string();
}

bool cTrCommand::collect()
{
  std::vector<std::string> paths;
  if (!findSources(paths))
  {
    return false;
  }
  for (std::string const& path : paths)
  {
    cTextFile file(path);
    std::string text;
    if (!file.read(text))
    {
      fprintf(stderr, "mortise tr: %s: %s\n", path.c_str(), file.error().c_str());
      return false;
    }
    mKeys.collect(text, shownPath(path));
  }
  return true;
}

void cTrCommand::printTemplate() const
{
  std::string const text = cTranslationFile("").text(mKeys, false);
  fwrite(text.data(), 1, text.size(), stdout);
}

bool cTrCommand::writePseudo() const
{
  cTranslationFile file(mPseudo);
  if (!mPlain)
  {
    file.setName(mName.empty() ? "Pseudo" : mName);
  }
  file.fillWithPseudo(mKeys);
  if (!file.save(file.text(mKeys, false)))
  {
    fprintf(stderr, "mortise tr: %s\n", file.error().c_str());
    return false;
  }
  return true;
}

/// Whether the library finds, too, what is translated.
bool cTrCommand::isFoundByLoader(std::string const& path, cTranslationFile::cReport const& report) const
{
  std::set<std::string> without;
  for (cKeyTable::cKey const* pKey : report.mMissing)
  {
    without.insert(pKey->mText);
  }
  mucs::cLILocale locale("mortise tr");
  mucs::cString const file(cMessage::text(path));
  bool bFound = true;
  try
  {
    mPlain ? mucs::cLITranslationLoader::loadFile(file, locale.translator()) : locale.loadFromFile(file);
    for (cKeyTable::cKey const& key : mKeys.keys())
    {
      if (without.count(key.mText) == 0 && !locale.translator().hasTranslation(mstd::cAsciiString(key.mText.c_str())))
      {
        fprintf(stderr, "mortise tr: %s: the loader does not find %s\n", path.c_str(),
                cTrText::quoted(key.mText).c_str());
        bFound = false;
      }
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    fprintf(stderr, "mortise tr: %s: the loader refuses it: %s\n", path.c_str(), cMessage::of(e).c_str());
    return false;
  }
  return bFound;
}

cAbstractCommand::ExitCode cTrCommand::updateFile(std::string const& path)
{
  cTranslationFile file(path);
  if (!file.load())
  {
    fprintf(stderr, "mortise tr: %s\n", file.error().c_str());
    return file.isDamaged() ? Damaged : Unusable;
  }
  if (!mName.empty() && !mCheck)
  {
    file.setName(mName);
  }
  cTranslationFile::cReport const report =
      file.compare(mKeys, mPlain ? cTranslationFile::Plain : cTranslationFile::Any);
  for (std::string const& wrong : report.mWrong)
  {
    fprintf(stderr, "mortise tr: %s\n", wrong.c_str());
  }
  for (cKeyTable::cKey const* pKey : report.mMissing)
  {
    printf("%s: no translation of %s (%s)\n", path.c_str(), cTrText::quoted(pKey->mText).c_str(),
           pKey->mPlaces.front().text().c_str());
  }
  size_t const iAll = mKeys.keys().size();
  printf("%s: %u of %u translated (%u %%), %u missing, %u wrong, %u obsolete\n", file.title().c_str(),
         report.miTranslated, static_cast<unsigned int>(iAll),
         iAll == 0 ? 100 : static_cast<unsigned int>(100ull * report.miTranslated / iAll),
         static_cast<unsigned int>(report.mMissing.size()), report.miWrongKeys, report.miObsolete);
  if (mCheck)
  {
    bool const bFound = !cTextFile(path).exists() || isFoundByLoader(path, report);
    return bFound && report.mMissing.empty() && report.mWrong.empty() ? Fine : Damaged;
  }
  if (!file.save(file.text(mKeys, !mDropObsolete)))
  {
    fprintf(stderr, "mortise tr: %s\n", file.error().c_str());
    return Unusable;
  }
  return Fine;
}
