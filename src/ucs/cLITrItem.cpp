#include "ucs/cLITrItem.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"

#include <utility>

namespace mucs
{
cLITrItem::cLITrItem() = default;

cLITrItem::cLITrItem(mstd::cAsciiString const& sKey, cString const& sTranslation)
    : mKey(sKey), mTranslation(sTranslation)
{
}

cLITrItem::cLITrItem(mstd::cAsciiString&& sKey, cString&& sTranslation)
    : mKey(std::move(sKey)), mTranslation(std::move(sTranslation))
{
}

msa::cAbstractSerializer& cLITrItem::operator>>(msa::cAbstractSerializer& sSerializer) const
{
  mKey >> sSerializer;
  return mTranslation >> sSerializer;
}

msa::cAbstractDeserializer& cLITrItem::operator<<(msa::cAbstractDeserializer& sDeserializer)
{
  cLITrItem read;
  read.mKey << sDeserializer;
  read.mTranslation << sDeserializer;
  mKey.swap(read.mKey);
  mTranslation.swap(read.mTranslation);
  return sDeserializer;
}
} // namespace mucs
