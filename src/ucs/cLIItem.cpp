#include "ucs/cLIItem.h"

namespace mucs
{
cLIItem::cLIItem() : miKind(Text) {}

cLIItem::cLIItem(mstd::cAsciiString const& sName, cString const& sValue, unsigned int iKind)
    : mName(sName), mValue(sValue), miKind(iKind)
{
}
} // namespace mucs
