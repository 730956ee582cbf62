#ifndef MORTISE_SA_TTYPENAME_H
#define MORTISE_SA_TTYPENAME_H

#include "pi/piTypes.h"

#include <typeinfo>

namespace mstd
{
class cAsciiString;
}

namespace mucs
{
class cString;
}

namespace msa
{

class cReferenceFrame;

/// The readable name of a type in signatures and error texts. An application names its own type by
///
///     template <>
///     struct msa::tTypeName<cInvoice>
///     {
///       static char const* name() { return "cInvoice"; }
///     };
///
/// in the header of the type. A type without a name of its own shows the one that the compiler made.
template <class T>
struct tTypeName
{
  static char const* name() { return typeid(T).name(); }
};

/// Defines the name of a type as it is written here. To stand outside of all namespaces.
#define MORTISE_TYPE_NAME(Type, Text)                                                                                  \
  template <>                                                                                                          \
  struct msa::tTypeName<Type>                                                                                          \
  {                                                                                                                    \
    static char const* name() { return Text; }                                                                         \
  };

} // namespace msa

MORTISE_TYPE_NAME(piVoid, "piVoid")
MORTISE_TYPE_NAME(msa::cReferenceFrame, "cReferenceFrame")
MORTISE_TYPE_NAME(unsigned char, "piUChar")
MORTISE_TYPE_NAME(signed char, "piChar")
MORTISE_TYPE_NAME(unsigned short, "piUInt16")
MORTISE_TYPE_NAME(short, "piInt16")
MORTISE_TYPE_NAME(unsigned int, "piUInt32")
MORTISE_TYPE_NAME(int, "piInt32")
MORTISE_TYPE_NAME(unsigned long long, "piUInt64")
MORTISE_TYPE_NAME(long long, "piInt64")
MORTISE_TYPE_NAME(bool, "piBool")
MORTISE_TYPE_NAME(double, "piDouble")
MORTISE_TYPE_NAME(mstd::cAsciiString, "cAsciiString")
MORTISE_TYPE_NAME(mucs::cString, "cString")

#endif
