#ifndef MORTISE_TOOLS_CSOURCESCANNER_H
#define MORTISE_TOOLS_CSOURCESCANNER_H

#include "cSourceCursor.h"

#include <string>

/// Finds the string literals of C++ source text, without compiling it.
///
/// Adjacent literals are one, as they are for the compiler. Comments, what stands between `#if 0` and its end, file
/// names of includes and literals of wide characters are left out. Macros are not expanded.
class cSourceScanner
{
public:
  explicit cSourceScanner(std::string const& text) : mCursor(text), mText(text) {}
  cSourceScanner(cSourceScanner const&) = delete; // the cursor refers to the text of the caller
  cSourceScanner& operator=(cSourceScanner const&) = delete;

  /// Goes to the next literal; false at the end of the text.
  bool next();

  /// Its characters, with the escapes resolved, in UTF-8.
  std::string const& literal() const { return mLiteral; }
  /// The line where it begins, from 1 on.
  unsigned int line() const { return miLine; }
  /// Whether a name follows directly, so that a macro may add to the text.
  bool isOpen() const { return mOpen; }

private:
  void skipLineComment();
  void skipBlockComment();
  bool skipBlank();
  void skipDirectiveLine();
  void skipNumber();
  void skipCharacter();
  std::string readName();
  void readDirective();
  void readString(bool bCollect);
  void readRawString(bool bCollect);
  void readEscape(std::string& text);

  cSourceCursor mCursor;
  std::string const& mText;
  std::string mLiteral;
  unsigned int miLine = 0;
  unsigned int miSkipDepth = 0; // of conditions inside `#if 0`, counting that one
  bool mLineStart = true;       // nothing but blanks before
  bool mInDirective = false;
  bool mPending = false; // a literal that another one may go on
  bool mOpen = false;
};

#endif
