#ifndef MORTISE_TESTS_SUPPORT_CTEMPDIR_H
#define MORTISE_TESTS_SUPPORT_CTEMPDIR_H

#include "ucs/cString.h"

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace support
{

/// A fresh directory for the life of the object. Whatever stands in it when the object goes is removed.
class cTempDir
{
public:
  cTempDir()
  {
    std::string pattern = (std::filesystem::temp_directory_path() / "mortise-XXXXXX").string();
    if (mkdtemp(&pattern[0]) == nullptr)
    {
      throw std::runtime_error("No temporary directory");
    }
    mPath = pattern;
  }
  cTempDir(cTempDir const&) = delete;
  cTempDir& operator=(cTempDir const&) = delete;
  ~cTempDir()
  {
    std::error_code ignored;
    std::filesystem::permissions(mPath, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(mPath, ignored);
  }

  /// The directory, without a final slash.
  std::string const& path() const { return mPath; }
  /// The path of something in it. ASCII only.
  mucs::cString name(std::string const& entry) const { return mucs::cString((mPath + "/" + entry).c_str()); }

private:
  std::string mPath;
};

} // namespace support

#endif
