#ifndef MORTISE_TOOLS_CKEYTABLE_H
#define MORTISE_TOOLS_CKEYTABLE_H

#include <map>
#include <string>
#include <vector>

/// The keys of messages that a source tree marks for translation, in the order in which they stand there.
class cKeyTable
{
public:
  struct cPlace
  {
    std::string mFile;
    unsigned int miLine;

    std::string text() const { return mFile + ":" + std::to_string(miLine); }
  };

  struct cKey
  {
    std::string mText; // without the marker
    std::vector<cPlace> mPlaces;
  };

  /// Collects from the text of one source file, which is called `name` in what is said about it.
  void collect(std::string const& text, std::string const& name);

  std::vector<cKey> const& keys() const { return mKeys; }
  bool has(std::string const& key) const { return mIndex.count(key) != 0; }
  /// What is marked, but can't be translated: a line each.
  std::vector<std::string> const& problems() const { return mProblems; }

private:
  void add(std::string const& key, cPlace const& place);

  std::vector<cKey> mKeys;
  std::map<std::string, size_t> mIndex;
  std::vector<std::string> mProblems;
};

#endif
