#ifndef MORTISE_TOOLS_CMODULEREPORT_H
#define MORTISE_TOOLS_CMODULEREPORT_H

#include "cElfFile.h"
#include "cModuleProbe.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class cLibraryTree;

/// All that can be found out about a module library, as text or as JSON.
class cModuleReport
{
public:
  /// A point, with a word for programs and a sentence for people.
  struct cPoint
  {
    std::string mKind;
    std::string mText;
  };

  explicit cModuleReport(std::string const& path);
  ~cModuleReport();

  /// Looks at the file, and then at what it is when it is loaded, unless `bLoads` is false or the file is of no use.
  void make(bool bLoads, unsigned int iSeconds);

  bool isReadable() const { return mFile.problem() != cElfFile::Unreadable; }
  bool isUsable() const { return mProblems.empty(); }
  std::string text() const;
  /// One line.
  std::string json() const;

private:
  void lookAtEntries();
  void lookAtLoading();
  void lookAtMissing(std::string const& reason);
  void lookAtUnloading();
  void addHolders(cElfFile const& file, std::vector<cPoint>& holders);
  void learn(std::vector<std::string> const& symbols);
  std::string shown(std::string const& symbol) const;
  std::string unloading() const;

  std::string mPath; // as it was given
  cElfFile mFile;
  std::unique_ptr<cLibraryTree> mTree; // of a library that can be loaded
  std::unique_ptr<cModuleProbe> mProbe;
  std::vector<std::string> mEntries;
  std::vector<cPoint> mProblems;
  std::vector<cPoint> mNotes;
  std::vector<cPoint> mHolders;                 // what speaks against unloading
  std::map<std::string, std::string> mReadable; // symbols, and what people write
};

#endif
