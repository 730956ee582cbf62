#ifndef MORTISE_TOOLS_CSOURCECURSOR_H
#define MORTISE_TOOLS_CSOURCECURSOR_H

#include <string>

/// A place in C++ source text that steps over line splices (a backslash at the end of a line) and counts lines.
///
/// Copies are places of their own, which serves to look ahead. The text has to outlive them.
class cSourceCursor
{
public:
  static int const End = -1;

  explicit cSourceCursor(std::string const& text) : mpText(&text) { skipSplices(); }

  /// The character here, as an unsigned number; End behind the last one.
  int get() const;
  /// The character `iAhead` places on.
  int peek(unsigned int iAhead) const;
  void step();
  void step(unsigned int iCount);
  /// Steps as inside a raw string, where a backslash ends no line.
  void stepRaw();
  unsigned int line() const { return miLine; }
  size_t pos() const { return miPos; }

private:
  bool isLineEnd(size_t iPos) const;
  void skipSplices();
  void stepByte();

  std::string const* mpText;
  size_t miPos = 0;
  unsigned int miLine = 1;
};

#endif
