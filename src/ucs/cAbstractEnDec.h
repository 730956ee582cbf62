#ifndef MORTISE_UCS_CABSTRACTENDEC_H
#define MORTISE_UCS_CABSTRACTENDEC_H

#include "pi/piTypes.h"
#include "std/tArrayTraits.h"

namespace mstd
{
class cAsciiString;
}

namespace mucs
{
class cString;

/// Interface of the encoders, which turn code points into bytes or 16-bit units and back.
///
/// An encoder overrides what it can do; what it does not override raises cBugException with its name.
/// Every operation appends to its result. An operation that fails leaves in the result what it had
/// converted up to the failure.
///
/// Threads: an encoder has no mutable state and may be shared.
class MORTISE_API cAbstractEnDec
{
public:
  virtual ~cAbstractEnDec();

  virtual mstd::cAsciiString name() const = 0;

  virtual void encode(cString const& sText, mstd::tArray<char>& aOut) const;
  virtual void encode(cString const& sText, mstd::tArray<unsigned short>& aOut) const;
  /// From code points to code points; here it does nothing and leaves `sOut` untouched.
  virtual void reEncode(cString const& sText, cString& sOut) const;
  /// As encode(), and one 0 byte behind the text.
  virtual void encodeCString(cString const& sText, mstd::tArray<char>& aOut) const;

  virtual void decode(mstd::tConstArrayRef<char> const& rBytes, cString& sOut) const;
  virtual void decode(mstd::tConstArrayRef<unsigned short> const& rUnits, cString& sOut) const;
  /// Reverse of reEncode(); here it does nothing and leaves `sOut` untouched.
  virtual void reDecode(cString const& sText, cString& sOut) const;
};
} // namespace mucs

#endif
