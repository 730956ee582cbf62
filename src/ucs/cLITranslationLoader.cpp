#include "ucs/cLITranslationLoader.h"

#include "ucs/cAbstractLIFileSource.h"
#include "ucs/cLIScanner.h"
#include "ucs/cLISystemFiles.h"
#include "ucs/cLITrTable.h"
#include "ucs/cUCSExceptions.h"

#include <utility>

namespace
{
void readString(mucs::cLIScanner& rScanner, mucs::cString const& sFile, mucs::cString& sText)
{
  if (!rScanner.readString(sText))
  {
    cUCSExceptions::throwTranslationQuoteExpected(sFile, rScanner.row());
  }
}
} // namespace

namespace mucs
{
void cLITranslationLoader::loadFile(cString const& sFile, cLITrTable& tTable)
{
  cLISystemFiles files;
  loadFile(sFile, tTable, files);
}

void cLITranslationLoader::loadFile(cString const& sFile, cLITrTable& tTable, cAbstractLIFileSource& sSource)
{
  tTable.clear();
  patchFromFile(sFile, tTable, sSource);
}

void cLITranslationLoader::patchFromFile(cString const& sFile, cLITrTable& tTable)
{
  cLISystemFiles files;
  patchFromFile(sFile, tTable, files);
}

void cLITranslationLoader::patchFromFile(cString const& sFile, cLITrTable& tTable, cAbstractLIFileSource& sSource)
{
  mstd::tArray<char> aBytes;
  sSource.read(sFile, aBytes);
  cLIScanner scanner(aBytes, cLIScanner::TranslationFile);
  cLIScanner::Token eToken = cLIScanner::Word;
  while (scanner.next(eToken))
  {
    if (eToken != cLIScanner::Quote)
    {
      continue;
    }
    cString sKey;
    cString sText;
    readString(scanner, sFile, sKey);
    if (!scanner.expect(cLIScanner::Equals))
    {
      cUCSExceptions::throwTranslationEqualsExpected(sFile, scanner.row());
    }
    if (!scanner.expect(cLIScanner::Quote))
    {
      cUCSExceptions::throwTranslationQuoteExpected(sFile, scanner.row());
    }
    readString(scanner, sFile, sText);
    tTable.addTranslation(mstd::tAutoPtr<cLITrItem>(new cLITrItem(sKey.ascii('?'), std::move(sText))));
  }
}
} // namespace mucs
