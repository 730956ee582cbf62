#ifndef MORTISE_SA_CSERIALIZEBINARYSHARED_H
#define MORTISE_SA_CSERIALIZEBINARYSHARED_H

#include "pi/piTypes.h"

namespace msa
{

/// What writer and reader of the binary form share: the ids that stand in front of every value.
///
/// All numbers are little-endian. A value is its id, 32 bits wide, and a payload:
///
///     RawBytes, AsciiString, StringUTF8   count of bytes (32 bits), the bytes
///     RawBytes64                          count of bytes (64 bits), the bytes
///     String                              count of characters (32 bits), 32 bits for each
///     Bool                                32 bits, 0 or 1
///     Context, Context64                  length as a UInt32 or UInt64 value; flag as a Bool value; if that is set,
///                                         the name as an AsciiString value; the content. The length counts from
///                                         the id of the length value to the end of the content.
///     Label                               the text as an AsciiString value
///     all others                          the number, in its own width
class MORTISE_API cSerializeBinaryShared
{
public:
  enum PrivatedTypeIDs : unsigned int
  {
    Invalid = 0,
    RawBytes = 1,
    UChar = 2,
    Char = 3,
    UInt32 = 4,
    Int32 = 5,
    UInt64 = 6,
    Int64 = 7,
    Bool = 8,
    Double = 9,
    AsciiString = 10,
    String = 11,
    Context = 12,
    Label = 13,
    RawBytes64 = 14,
    Context64 = 15,
    StringUTF8 = 16,
    UInt16 = 17,
    Int16 = 18,
    InvalidEnd = 19
  };

  /// The name of an id in messages; "unknown type" for what is none.
  static char const* idToString(PrivatedTypeIDs eId);
};

} // namespace msa

#endif
