#include "std/tArray.h"
#include "support/survive.h"
#include "ucs/cAbstractLIFileSource.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <stdlib.h>
#include <string.h>

namespace
{
/// Up to four files, one behind the other with a byte 1 between them. Their names are "0" to "3"; any other name leads
/// to one of them, too, so that what the input makes up as a name is no dead end.
class cInput : public mucs::cAbstractLIFileSource
{
public:
  cInput(unsigned char const* pData, size_t size) : miFiles(0), miReads(0)
  {
    char const* pStart = reinterpret_cast<char const*>(pData);
    char const* const pEnd = pStart + size;
    while (miFiles < MaxFiles)
    {
      void const* const pFound =
          pStart == pEnd || miFiles + 1 == MaxFiles ? nullptr : memchr(pStart, 1, static_cast<size_t>(pEnd - pStart));
      char const* const pBorder = pFound != nullptr ? static_cast<char const*>(pFound) : pEnd;
      mpStart[miFiles] = pStart;
      miSize[miFiles] = static_cast<unsigned int>(pBorder - pStart);
      ++miFiles;
      if (pFound == nullptr)
      {
        break;
      }
      pStart = pBorder + 1;
    }
  }

  void read(mucs::cString const& sFile, mstd::tArray<char>& aBytes) override
  {
    ++miReads;
    unsigned int const iFile = sFile.empty() ? 0 : sFile.at(sFile.length() - 1) % miFiles;
    mstd::tArray<char> content;
    content.append(mpStart[iFile], miSize[iFile]);
    aBytes.swap(content);
  }

  unsigned int reads() const { return miReads; }

private:
  enum
  {
    MaxFiles = 4
  };

  char const* mpStart[MaxFiles];
  unsigned int miSize[MaxFiles];
  unsigned int miFiles;
  unsigned int miReads;
};
} // namespace

/// Locale files that include one another. A failure changes nothing, and no input reads more files than are allowed.
extern "C" int LLVMFuzzerTestOneInput(unsigned char const* pData, size_t size)
{
  support::cQuiet const quiet;
  cInput input(pData, size);
  mucs::cLILocale locale("fuzz");
  locale.translator().addTranslation("before", "before");
  bool isLoaded = false;
  support::survive([&] {
    locale.loadFromFile(mucs::cString("0"), input);
    isLoaded = true;
  });
  mucs::cString text;
  bool const isKept = locale.translate(mstd::cAsciiString("before"), text, nullptr) && text == "before";
  if (input.reads() > mucs::cLILocale::MaxIncludedFiles + 1u || (!isLoaded && (!isKept || !locale.name().empty())) ||
      isLoaded != !locale.fileName().empty())
  {
    abort();
  }
  return 0;
}
