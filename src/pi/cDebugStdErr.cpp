#include "pi/cDebugStdErr.h"

#include "pi/cPlatform.h"
#include "std/cAsciiStringTokenizer.h"

#include <stdio.h>
#include <string.h>

namespace mpi
{

namespace
{

char const lineFeed = 10;
unsigned int const blanksPerLevel = 2;
unsigned int const deepestLevel = 1u << 20; // of which the indentation is shown

// The first sector holds a usual line. The pool of a line above the second length isn't kept for the next one.
unsigned int const firstGrowStep = 8;
unsigned int const longestKept = 65536;

char const* baseName(char const* path)
{
  char const* base = path;
  for (; *path != 0; ++path)
  {
    if (*path == '\\' || *path == '/' || *path == ':')
    {
      base = path + 1;
    }
  }
  return base;
}

} // namespace

cDebugStdErr::cDebugStdErr()
{
  mLine.setGrowStep(firstGrowStep);
  mLine.setFitOnErase(false);

  mstd::cAsciiString const words = cPlatform::getEnv("PIDBG_FILTER");
  mstd::cAsciiStringTokenizerContext context;
  context.addSeparator(" ");
  mstd::cAsciiStringTokenizer tokenizer(words);
  tokenizer.setContext(&context);
  mstd::cAsciiString word;
  unsigned int id = 0;
  while (tokenizer.getNextToken(word, id))
  {
    mFilters.append(word);
  }
}

cDebugStdErr::~cDebugStdErr() = default;

void cDebugStdErr::printChar(char c)
{
  if (c != lineFeed)
  {
    // Sectors grow with the line, so that a line of any length costs time proportional to it.
    unsigned int const step = mLine.growStep();
    if ((mLine.length() >> step) != 0 && step < 31)
    {
      mLine.setGrowStep(step + 1);
    }
    mLine.append(c);
    return;
  }
  writeLine();
}

void cDebugStdErr::flush()
{
  if (linked() != 0)
  {
    linked()->flush();
    return;
  }
  fprintf(stderr, "%s", mLine.c_str());
  emptyLine();
  fflush(stderr);
}

void cDebugStdErr::writeLine()
{
  char const* file = debugFileName();
  if (file != 0 && isFiltered(file))
  {
    emptyLine();
    return;
  }
  // One call for the whole line: lines of several processes on one stream stay apart.
  unsigned int const level = indentionLevel() < deepestLevel ? indentionLevel() : deepestLevel;
  int const blanks = static_cast<int>(blanksPerLevel * level);
  if (file != 0)
  {
    fprintf(stderr, "%s:%u: %*s%s\n", baseName(file), debugFileLine(), blanks, "", mLine.c_str());
  }
  else
  {
    fprintf(stderr, "%*s%s\n", blanks, "", mLine.c_str());
  }
  emptyLine();
}

bool cDebugStdErr::isFiltered(char const* file) const
{
  unsigned int const count = mFilters.length();
  for (unsigned int i = 0; i < count; ++i)
  {
    mstd::cAsciiString const& filter = mFilters.at(i);
    // An empty word stands in every path and would drop everything.
    if (!filter.empty() && *file != 0 && strstr(file, filter.c_str()) != 0)
    {
      return true;
    }
  }
  return false;
}

void cDebugStdErr::emptyLine()
{
  if (mLine.length() > longestKept)
  {
    mLine.clear();
    mLine.setGrowStep(firstGrowStep);
    return;
  }
  mLine.truncate(0);
}

} // namespace mpi
