#include "cLibraryTree.h"

#include "cLoadedLibraries.h"

#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <glob.h>
#include <gnu/lib-names.h>
#include <link.h>
#include <stdlib.h>
#include <unordered_set>

namespace fs = std::filesystem;

namespace
{
size_t const MostLibraries = 1000;
unsigned int const DeepestInclude = 8;

// The folders of the configuration from which the loader's cache is made.
void appendConfigured(std::vector<std::string>& places, std::string const& path, unsigned int iDepth)
{
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);)
  {
    line.erase(std::min(line.size(), line.find('#')));
    line.erase(0, line.find_first_not_of(" \t"));
    line.erase(line.find_last_not_of(" \t\r") + 1);
    if (line.compare(0, 8, "include ") == 0 && iDepth < DeepestInclude)
    {
      glob_t found;
      if (glob(line.substr(line.find_first_not_of(" \t", 8)).c_str(), 0, nullptr, &found) == 0)
      {
        for (size_t i = 0; i < found.gl_pathc; ++i)
        {
          appendConfigured(places, found.gl_pathv[i], iDepth + 1);
        }
      }
      globfree(&found);
    }
    else if (!line.empty() && line[0] == '/')
    {
      places.push_back(line);
    }
  }
}

// Where the loader looks for what any library asks for. Each has folders of its own as well: not so the C library.
void appendOfLoader(std::vector<std::string>& places)
{
  void* const handle = dlopen(LIBC_SO, RTLD_LAZY | RTLD_NOLOAD);
  Dl_serinfo size;
  if (handle != nullptr && dlinfo(handle, RTLD_DI_SERINFOSIZE, &size) == 0)
  {
    std::vector<char> bytes(size.dls_size);
    Dl_serinfo* const pInfo = reinterpret_cast<Dl_serinfo*>(bytes.data());
    if (dlinfo(handle, RTLD_DI_SERINFOSIZE, pInfo) == 0 && dlinfo(handle, RTLD_DI_SERINFO, pInfo) == 0)
    {
      for (unsigned int i = 0; i < pInfo->dls_cnt; ++i)
      {
        places.push_back(pInfo->dls_serpath[i].dls_name);
      }
    }
  }
  if (handle != nullptr)
  {
    dlclose(handle);
  }
}
typedef std::unordered_set<std::string_view> tNames;

// Symbols that somebody has.
class cOffered
{
public:
  /// Those of this process.
  cOffered()
  {
    cLoadedLibraries const here;
    for (std::string const& path : here.paths())
    {
      cElfFile& rFile = mFiles.emplace_back(path);
      rFile.read();
      add(rFile);
    }
  }
  explicit cOffered(tNames const& others) : mpOthers(&others) {}

  tNames const& symbols() const { return mNames; }

  void add(cElfFile const& file)
  {
    for (cElfFile::cSymbol const& symbol : file.symbols())
    {
      if (symbol.mDefined)
      {
        mNames.insert(symbol.mName);
      }
    }
  }

  // What the file wants and nobody has.
  void ask(cElfFile const& file, std::vector<cLibraryTree::cMissingSymbol>& missing) const
  {
    for (cElfFile::cSymbol const& symbol : file.symbols())
    {
      if (!symbol.mDefined && !symbol.mWeak && !symbol.mName.empty() && mNames.count(symbol.mName) == 0 &&
          mpOthers->count(symbol.mName) == 0)
      {
        missing.push_back({std::string(symbol.mName), file.path()});
      }
    }
  }

private:
  std::list<cElfFile> mFiles; // to which the names refer
  tNames mNames;
  tNames const* mpOthers = nullptr;
};
} // namespace

cLibraryTree::cLibraryTree(std::string const& root) : mRoot(root)
{
  appendOfLoader(mSystemPlaces);
  appendConfigured(mSystemPlaces, "/etc/ld.so.conf", 0);
  mRoot.mFound = mRoot.mFile.read();
  addNeeds(mRoot);
  for (cLibrary const& library : mLibraries) // it grows meanwhile
  {
    if (library.mFound && !library.mHere)
    {
      addNeeds(library);
    }
  }
}

void cLibraryTree::appendPath(std::vector<std::string>& places, std::string const& path, std::string const& library)
{
  std::string const folder = fs::path(library).parent_path().string();
  for (size_t start = 0; start <= path.size() && !path.empty();)
  {
    size_t const end = std::min(path.size(), path.find(':', start));
    std::string place = path.substr(start, end - start);
    for (char const* const pWord : {"${ORIGIN}", "$ORIGIN"})
    {
      size_t const at = place.find(pWord);
      if (at != std::string::npos)
      {
        place.replace(at, std::string(pWord).size(), folder.empty() ? "." : folder);
      }
    }
    places.push_back(place);
    start = end + 1;
  }
}

std::vector<std::string> cLibraryTree::places(cLibrary const& library) const
{
  std::vector<std::string> result;
  if (library.mFile.runPath().empty())
  {
    for (cLibrary const* pAsking = &library; pAsking != nullptr; pAsking = pAsking->mpParent)
    {
      if (pAsking->mFile.runPath().empty())
      {
        appendPath(result, pAsking->mFile.rPath(), pAsking->mFile.path());
      }
    }
  }
  char const* const pVariable = getenv("LD_LIBRARY_PATH");
  appendPath(result, pVariable != nullptr ? pVariable : "", library.mFile.path());
  appendPath(result, library.mFile.runPath(), library.mFile.path());
  result.insert(result.end(), mSystemPlaces.begin(), mSystemPlaces.end());
  return result;
}

void cLibraryTree::addNeeds(cLibrary const& library)
{
  cLoadedLibraries const here;
  std::vector<std::string> const folders = places(library);
  for (std::string const& name : library.mFile.needed())
  {
    if (!mNames.insert(name).second || mLibraries.size() >= MostLibraries)
    {
      continue;
    }
    std::string const loaded = here.pathOf(name);
    std::vector<std::string> candidates(1, name);
    if (name.find('/') == std::string::npos)
    {
      candidates.clear();
      for (std::string const& folder : folders)
      {
        candidates.push_back(folder + "/" + name);
      }
    }
    std::string whyNot;
    std::string path = loaded.empty() ? name : loaded;
    for (std::string const& candidate : loaded.empty() ? candidates : std::vector<std::string>())
    {
      cElfFile file(candidate);
      std::error_code error;
      bool const bReads = file.read();
      if (bReads && file.isForProcessorOf(mRoot.mFile))
      {
        path = candidate;
        whyNot.clear();
        break;
      }
      if (whyNot.empty() && (bReads || file.problem() != cElfFile::Unreadable || fs::exists(candidate, error)))
      {
        whyNot =
            candidate + (bReads ? " is for another processor (" + file.processor() + ")" : " " + file.explanation());
      }
    }
    mLibraries.emplace_back(path);
    cLibrary& rAdded = mLibraries.back();
    rAdded.mName = name;
    rAdded.mNeededBy = library.mFile.path();
    rAdded.mpParent = &library;
    rAdded.mHere = !loaded.empty();
    // What this process has is known to be whole.
    rAdded.mFound = rAdded.mHere || (path.find('/') != std::string::npos && whyNot.empty() && rAdded.mFile.read());
    rAdded.mWhyNot = whyNot;
  }
}

std::vector<cLibraryTree::cMissingSymbol> cLibraryTree::missingSymbols() const
{
  static cOffered const here;
  cOffered offered(here.symbols());
  offered.add(mRoot.mFile);
  for (cLibrary const& library : mLibraries)
  {
    offered.add(library.mFile);
  }
  std::vector<cMissingSymbol> missing;
  offered.ask(mRoot.mFile, missing);
  for (cLibrary const& library : mLibraries)
  {
    offered.ask(library.mFile, missing); // no symbols are read of what this process has anyway
  }
  return missing;
}
