#ifndef MORTISE_TOOLS_CTEXTFILE_H
#define MORTISE_TOOLS_CTEXTFILE_H

#include <string>

/// A file that is read and written whole.
class cTextFile
{
public:
  explicit cTextFile(std::string const& path) : mPath(path) {}

  bool exists() const;
  /// False if it can't be read, or is longer than 256 MiB; error() tells why.
  bool read(std::string& text);
  /// Puts a new file with the text in its place, in one step; a file that has the text already stays untouched. False
  /// if that can't be done: what was there is still there then. Into a pipe or a device the text is written.
  bool write(std::string const& text);

  std::string const& path() const { return mPath; }
  std::string const& error() const { return mError; }

private:
  bool fail();
  bool writeInto(std::string const& text);

  std::string mPath;
  std::string mError;
};

#endif
