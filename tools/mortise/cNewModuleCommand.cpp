#include "cNewModuleCommand.h"

#include "cMessage.h"

#include <algorithm>
#include <errno.h>
#include <fstream>
#include <iterator>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace
{
// The name that the template has, in the forms in which it stands there. The parts of longer words count, too.
char const OldName[] = "greeter";

// Targets of this name are CMake's own, or would hide the library.
char const* const TakenNames[] = {
    "all",          "clean",     "edit_cache",         "help",          "install", "list_install_components",
    "mortise",      "package",   "package_source",     "rebuild_cache", "test",    "Continuous",
    "Experimental", "Nightly",   "NightlyMemoryCheck", "ALL_BUILD",     "INSTALL", "PACKAGE",
    "RUN_TESTS",    "ZERO_CHECK"};

char upper(char c)
{
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string big(std::string name)
{
  name[0] = upper(name[0]);
  return name;
}

std::string capitals(std::string name)
{
  std::transform(name.begin(), name.end(), name.begin(), upper);
  return name;
}

[[noreturn]] void fail(fs::path const& path, int iError)
{
  throw fs::filesystem_error("", path, std::error_code(iError, std::generic_category()));
}
} // namespace

cNewModuleCommand::cNewModuleCommand(CLI::App& app)
    : mpParser(app.add_subcommand("new-module", "Write the project of a new module, which builds as it stands"))
{
  mpParser->add_option("NAME", mName, "What the module is to be called: letters, digits and '_'")->required();
  mpParser->add_option("--dir", mDirectory, "The folder in which the project's folder is made; else the current one")
      ->type_name("DIR");
  mpParser
      ->add_option("--template", mTemplate, "The folder of the template, in place of the one that came with the tool")
      ->type_name("DIR");
  mpParser->footer("Ends with 0, or with 2 if the project can't be written.");
}

std::string cNewModuleCommand::whyNotName() const
{
  bool const bLetters = std::all_of(mName.begin(), mName.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  });
  if (mName.empty() || !bLetters || (mName[0] >= '0' && mName[0] <= '9') || mName.find("__") != std::string::npos ||
      mName[0] == '_')
  {
    return "is no name of a module: it is made of letters, digits and '_', and begins with a letter; no two '_' follow "
           "each other";
  }
  if (std::find(std::begin(TakenNames), std::end(TakenNames), mName) != std::end(TakenNames))
  {
    return "is no name of a module: it has another meaning in the build";
  }
  return std::string();
}

fs::path cNewModuleCommand::findTemplate() const
{
  if (!mTemplate.empty())
  {
    return mTemplate;
  }
  return fs::read_symlink("/proc/self/exe").parent_path() / MORTISE_TOOL_DATA_DIR / "template-module";
}

std::string cNewModuleCommand::renamed(std::string text) const
{
  std::pair<std::string, std::string> const forms[] = {
      {OldName, mName}, {big(OldName), big(mName)}, {capitals(OldName), capitals(mName)}};
  std::string result;
  for (size_t i = 0; i < text.size();)
  {
    size_t const before = i;
    for (auto const& form : forms)
    {
      if (text.compare(i, form.first.size(), form.first) == 0)
      {
        result += form.second;
        i += form.first.size();
        break;
      }
    }
    if (i == before)
    {
      result += text[i++];
    }
  }
  return result;
}

void cNewModuleCommand::copy(fs::path const& source, fs::path const& target) const
{
  for (fs::directory_entry const& entry : fs::directory_iterator(source))
  {
    fs::path const made = target / renamed(entry.path().filename().string());
    if (entry.is_directory())
    {
      fs::create_directory(made);
      copy(entry.path(), made);
      continue;
    }
    errno = 0;
    std::ifstream from(entry.path(), std::ios::binary);
    std::string const text((std::istreambuf_iterator<char>(from)), std::istreambuf_iterator<char>());
    if (!from)
    {
      fail(entry.path(), errno != 0 ? errno : EIO);
    }
    std::ofstream to(made, std::ios::binary);
    to << renamed(text);
    to.close();
    if (!to)
    {
      fail(made, errno != 0 ? errno : EIO);
    }
    if ((entry.status().permissions() & fs::perms::owner_exec) != fs::perms::none)
    {
      fs::permissions(made, fs::perms::owner_exec, fs::perm_options::add);
    }
  }
}

cAbstractCommand::ExitCode cNewModuleCommand::run()
{
  std::string const wrong = whyNotName();
  if (!wrong.empty())
  {
    fprintf(stderr, "mortise new-module: %s %s\n", cMessage::clean(mName).c_str(), wrong.c_str());
    return Unusable;
  }
  fs::path target;
  bool bMade = false;
  try
  {
    fs::path const source = findTemplate();
    if (!fs::is_regular_file(source / "CMakeLists.txt"))
    {
      fprintf(stderr, "mortise new-module: %s: no template of a module\n", source.c_str());
      return Unusable;
    }
    target = mDirectory == "." ? fs::path(mName) : fs::path(mDirectory) / mName;
    // Its own call, as it tells what is there already from what can be made.
    if (mkdir(target.c_str(), 0777) != 0)
    {
      fail(target, errno);
    }
    bMade = true;
    copy(source, target);
  }
  catch (fs::filesystem_error const& e)
  {
    fprintf(stderr, "mortise new-module: %s: %s\n", e.path1().c_str(), e.code().message().c_str());
    if (bMade)
    {
      std::error_code error;
      fs::remove_all(target, error); // half a project helps nobody
    }
    return Unusable;
  }
  printf("%s holds the new module. It is built and tested so:\n\n"
         "  cmake -S %s -B %s/build\n"
         "  cmake --build %s/build\n"
         "  ctest --test-dir %s/build\n",
         target.c_str(), target.c_str(), target.c_str(), target.c_str(), target.c_str());
  if (fflush(stdout) != 0 || ferror(stdout))
  {
    fprintf(stderr, "mortise new-module: standard output: %s\n", strerror(errno));
    return Unusable;
  }
  return Fine;
}
