#ifndef MORTISE_STD_CEXCEPTIONTEXT_H
#define MORTISE_STD_CEXCEPTIONTEXT_H

#include "std/cAsciiString.h"
#include "std/tArray.h"

namespace mstd
{
/// A name or text in a field of an exception. Unlike a cAsciiString, which has a pool from the start, an empty one
/// takes no memory: a copied exception that finds no memory for its texts can so do without them.
class MORTISE_API cExceptionText
{
public:
  cExceptionText() {}
  explicit cExceptionText(char const* text); ///< Null is an empty text.
  explicit cExceptionText(cAsciiString const& text);

  cAsciiString string() const;
  void swap(cExceptionText& other) noexcept { mBytes.swap(other.mBytes); }

private:
  tArray<char> mBytes;
};
} // namespace mstd

#endif
