#ifndef MORTISE_TOOLS_CLIBRARYTREE_H
#define MORTISE_TOOLS_CLIBRARYTREE_H

#include "cElfFile.h"

#include <list>
#include <set>
#include <string>
#include <vector>

/// A library and all that it needs, found in the places where the dynamic loader looks for it in this process.
class cLibraryTree
{
public:
  struct cLibrary
  {
    explicit cLibrary(std::string const& path) : mFile(path) {}

    std::string mName;     // as it is asked for
    std::string mNeededBy; // the path of the first that asks for it
    cLibrary const* mpParent = nullptr;
    bool mFound = false;
    bool mHere = false;  // this process has it anyway
    std::string mWhyNot; // a file that was found and is of no use
    cElfFile mFile;
  };

  struct cMissingSymbol
  {
    std::string mName;
    std::string mNeededBy;
  };

  /// `root` is the library itself, which can be read.
  explicit cLibraryTree(std::string const& root);

  /// In the order in which they are needed; without the root.
  std::list<cLibrary> const& libraries() const { return mLibraries; }
  /// Symbols that no library has, also none of this process. Reads a lot.
  std::vector<cMissingSymbol> missingSymbols() const;

private:
  void addNeeds(cLibrary const& library);
  std::vector<std::string> places(cLibrary const& library) const;
  static void appendPath(std::vector<std::string>& places, std::string const& path, std::string const& library);

  cLibrary mRoot;
  std::list<cLibrary> mLibraries;
  std::set<std::string> mNames;
  std::vector<std::string> mSystemPlaces;
};

#endif
