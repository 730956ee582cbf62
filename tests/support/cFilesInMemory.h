#ifndef MORTISE_TESTS_SUPPORT_CFILESINMEMORY_H
#define MORTISE_TESTS_SUPPORT_CFILESINMEMORY_H

#include "std/cAsciiString.h"
#include "std/cRuntimeException.h"
#include "std/tArray.h"
#include "ucs/cAbstractLIFileSource.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace support
{

/// Translation files that exist only here. A missing one raises cRuntimeException.
class cFilesInMemory : public mucs::cAbstractLIFileSource
{
public:
  cFilesInMemory() {}
  cFilesInMemory(std::initializer_list<std::pair<std::string const, std::string>> named) : files(named) {}

  std::map<std::string, std::string> files;
  std::vector<std::string> asked; ///< names in the order of reading

  void read(mucs::cString const& sFile, mstd::tArray<char>& aBytes) override
  {
    std::string const name = sFile.ascii('?').c_str();
    asked.push_back(name);
    auto const found = files.find(name);
    if (found == files.end())
    {
      throw mstd::cRuntimeException(mucs::cLIMessage() << "$MTR$There is no %file%!" << sFile, 0, 0);
    }
    mstd::tArray<char> content;
    content.append(found->second.data(), static_cast<unsigned int>(found->second.size()));
    aBytes.swap(content);
  }
};

} // namespace support

#endif
