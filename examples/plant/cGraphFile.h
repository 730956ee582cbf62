#ifndef MORTISE_EXAMPLES_PLANT_CGRAPHFILE_H
#define MORTISE_EXAMPLES_PLANT_CGRAPHFILE_H

#include "std/cAsciiString.h"

/// A graph in the dot language on disk, and its drawing.
class cGraphFile
{
public:
  /// `path` with or without ".dot" at its end; what stands in front of that is the name of the drawing, too.
  explicit cGraphFile(mstd::cAsciiString const& path);

  /// The file beside it with `pSuffix` behind the name.
  cGraphFile beside(char const* pSuffix) const;
  /// Writes the graph; mstd::cOSErrorException.
  void write(mstd::cAsciiString const& dot) const;
  /// Draws what was written as SVG. False if Graphviz is not there, or fails.
  bool draw() const;

private:
  mstd::cAsciiString mPath;
  mstd::cAsciiString mName;
};

#endif
