#include "std/tArray.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/cAsciiString.h"

namespace
{
char const* const GrowLabel = "Grow";
char const* const DataLabel = "Data";
} // namespace

namespace mstd
{
template class tArray<char, tArrayAsciiStringTraits<char>>;
template class tArray<char, tArrayByteLevelTraits<char>>;
template class tArray<unsigned int, tArrayByteLevelTraits<unsigned int>>;
template class tArray<unsigned short, tArrayByteLevelTraits<unsigned short>>;

msa::cAbstractSerializer& operator>>(tArray<char> const& array, msa::cAbstractSerializer& serializer)
{
  bool const labels = !serializer.noLabelsPreferred();
  if (labels)
  {
    serializer.newLabel(GrowLabel);
  }
  serializer.store(array.growStep());
  if (labels)
  {
    serializer.newLabel(DataLabel);
  }
  serializer.storeBlock(array.empty() ? nullptr : array.data(), array.length());
  return serializer;
}

msa::cAbstractDeserializer& operator<<(tArray<char>& array, msa::cAbstractDeserializer& deserializer)
{
  bool const labels = !deserializer.noLabelsPreferred();
  if (labels)
  {
    deserializer.findLabel(GrowLabel);
  }
  unsigned int step = 0;
  deserializer.load(step);
  tArray<char> fresh;
  fresh.setGrowStep(step);
  if (labels)
  {
    deserializer.findLabel(DataLabel);
  }
  deserializer.loadBlock(fresh);
  array.swap(fresh);
  return deserializer;
}
} // namespace mstd
