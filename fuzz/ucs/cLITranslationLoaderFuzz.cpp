#include "std/tArray.h"
#include "support/survive.h"
#include "ucs/cAbstractLIFileSource.h"
#include "ucs/cLIMessage.h"
#include "ucs/cLITrTable.h"
#include "ucs/cLITranslationLoader.h"
#include "ucs/cString.h"

#include <stdlib.h>

namespace
{
class cInput : public mucs::cAbstractLIFileSource
{
public:
  cInput(unsigned char const* pData, size_t size) : mpData(pData), mSize(size) {}
  void read(mucs::cString const&, mstd::tArray<char>& aBytes) override
  {
    mstd::tArray<char> content;
    content.append(reinterpret_cast<char const*>(mpData), static_cast<unsigned int>(mSize));
    aBytes.swap(content);
  }

private:
  unsigned char const* mpData;
  size_t mSize;
};
} // namespace

/// A translation file. Every entry stands where it is looked for, and translates its own key.
extern "C" int LLVMFuzzerTestOneInput(unsigned char const* pData, size_t size)
{
  support::cQuiet const quiet;
  cInput input(pData, size);
  mucs::cLITrTable table;
  support::survive([&] { mucs::cLITranslationLoader::loadFile(mucs::cString("f"), table, input); });
  for (unsigned int i = 0; i < table.length(); ++i)
  {
    for (unsigned int j = 0; table.at(i) != nullptr && j < table.at(i)->length(); ++j)
    {
      if (table.at(i)->at(j) == nullptr)
      {
        continue;
      }
      for (mucs::cLITrItem const* pItem : *table.at(i)->at(j))
      {
        mucs::cLITrItem const* const pFound = table.hasTranslation(pItem->key());
        mucs::cString text;
        if (mucs::cLITrTable::hashKey1(pItem->key()) != i || mucs::cLITrTable::hashKey2(pItem->key()) != j ||
            pFound == nullptr || !(pFound->key() == pItem->key()) ||
            !table.translation(mucs::cLIMessage(pItem->key()), text))
        {
          abort();
        }
      }
    }
  }
  return 0;
}
