#include "cLoadedLibraries.h"

#include <algorithm>
#include <filesystem>
#include <link.h>

namespace fs = std::filesystem;

namespace
{
int append(dl_phdr_info* pInfo, size_t, void* pPaths)
{
  std::vector<std::string>& rPaths = *static_cast<std::vector<std::string>*>(pPaths);
  // The program has no name here. What the kernel adds is no file.
  std::string const name = rPaths.empty() ? "/proc/self/exe" : pInfo->dlpi_name;
  if (name.find('/') != std::string::npos)
  {
    rPaths.push_back(name);
  }
  return 0;
}
} // namespace

cLoadedLibraries::cLoadedLibraries()
{
  dl_iterate_phdr(append, &mPaths);
}

bool cLoadedLibraries::has(std::string const& path) const
{
  return std::any_of(mPaths.begin(), mPaths.end(), [&path](std::string const& loaded) {
    std::error_code error;
    return loaded == path || fs::equivalent(loaded, path, error);
  });
}

std::string cLoadedLibraries::pathOf(std::string const& name) const
{
  for (std::string const& path : mPaths)
  {
    if (path.size() > name.size() && path.compare(path.size() - name.size() - 1, std::string::npos, "/" + name) == 0)
    {
      return path;
    }
  }
  return std::string();
}
