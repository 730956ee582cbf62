#ifndef MORTISE_TESTS_SUPPORT_CTESTMODULE_H
#define MORTISE_TESTS_SUPPORT_CTESTMODULE_H

#include "ucs/cString.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace support
{

/// One of the libraries of tests/modules.
class cTestModule
{
public:
  explicit cTestModule(std::string const& name) : mName("mortise-test-" + name) {}

  /// The folder of all of them: "modules" beside the test program.
  static std::string directory()
  {
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "modules").string();
  }
  /// The path of the library.
  std::string path() const { return directory() + "/lib" + mName + ".so"; }
  /// The same for a class loader.
  mucs::cString file() const { return mucs::cString(path().c_str()); }
  /// The plain name with its folder, for what makes the name of the file itself.
  mucs::cString name() const { return mucs::cString((directory() + "/" + mName).c_str()); }
  /// True while the process has it.
  bool isMapped() const { return isMapped("/lib" + mName + ".so"); }

  /// True while the process has a file mapped whose path ends like this.
  static bool isMapped(std::string const& ending)
  {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);)
    {
      if (line.size() >= ending.size() && line.compare(line.size() - ending.size(), ending.size(), ending) == 0)
      {
        return true;
      }
    }
    return false;
  }

private:
  std::string mName;
};

} // namespace support

#endif
