#ifndef MORTISE_UCS_CLIITEM_H
#define MORTISE_UCS_CLIITEM_H

#include "std/cAsciiString.h"
#include "ucs/cString.h"

namespace mucs
{
/// One parameter of a cLIMessage: the placeholder that it fills, and its text.
class MORTISE_API cLIItem
{
public:
  enum Kind
  {
    Text = 0,
    WholeNumber = 1,
    Double = 2
  };

  cLIItem();
  cLIItem(mstd::cAsciiString const& sName, cString const& sValue, unsigned int iKind);

  /// Name of the placeholder, with its leading percent sign and without the closing one.
  mstd::cAsciiString const& name() const { return mName; }
  mstd::cAsciiString& name() { return mName; }
  cString const& value() const { return mValue; }
  cString& value() { return mValue; }
  /// One of Kind; an item that came from a stream may hold any number, and reads as an empty text then.
  unsigned int kind() const { return miKind; }
  void setKind(unsigned int iKind) { miKind = iKind; }

private:
  mstd::cAsciiString mName;
  cString mValue;
  unsigned int miKind;
};
} // namespace mucs

#endif
