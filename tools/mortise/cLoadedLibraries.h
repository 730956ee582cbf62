#ifndef MORTISE_TOOLS_CLOADEDLIBRARIES_H
#define MORTISE_TOOLS_CLOADEDLIBRARIES_H

#include <string>
#include <vector>

/// What the dynamic loader has in this process, at the moment it is made.
class cLoadedLibraries
{
public:
  cLoadedLibraries();

  /// The files, the program first.
  std::vector<std::string> const& paths() const { return mPaths; }
  bool has(std::string const& path) const;
  /// The path of the library with this plain name, or nothing.
  std::string pathOf(std::string const& name) const;

private:
  std::vector<std::string> mPaths;
};

#endif
