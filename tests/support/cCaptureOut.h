#ifndef MORTISE_TESTS_SUPPORT_CCAPTUREOUT_H
#define MORTISE_TESTS_SUPPORT_CCAPTUREOUT_H

#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"

#include <string>
#include <vector>

namespace support
{

/// Catches what is written to the system's debug output while it lives; nothing reaches the standard error stream.
/// The characters come as the sink gets them, so lines end in CR LF and have no prefix; the source position that was
/// in force when each line ended is kept beside it. Restores the former link at the end of its scope.
class cCaptureOut : public mpi::cAbstractOut
{
public:
  struct cLine
  {
    std::string text; ///< without its CR LF
    std::string file; ///< empty if there was no position
    unsigned int line;
    unsigned int indention;
  };

  cCaptureOut() : mpFormer(mpi::system().out.linked()) { mpi::system().out.link(this); }
  ~cCaptureOut() override { mpi::system().out.link(mpFormer); }

  void printChar(char c) override
  {
    mText += c;
    if (c != '\n')
    {
      mLine += c;
      return;
    }
    if (!mLine.empty() && mLine.back() == '\r')
    {
      mLine.pop_back();
    }
    char const* file = debugFileName();
    mLines.push_back(cLine{mLine, file != nullptr ? file : "", debugFileLine(), indentionLevel()});
    mLine.clear();
  }

  /// Everything so far, as the sink got it.
  std::string const& text() const { return mText; }
  /// The lines that have ended.
  std::vector<cLine> const& lines() const { return mLines; }
  /// True if `part` was written.
  bool contains(std::string const& part) const { return mText.find(part) != std::string::npos; }
  void clear()
  {
    mText.clear();
    mLine.clear();
    mLines.clear();
  }

private:
  mpi::cAbstractOut* mpFormer;
  std::string mText;
  std::string mLine;
  std::vector<cLine> mLines;
};

} // namespace support

#endif
