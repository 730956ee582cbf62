#include "ucs/cLISystemFiles.h"

#include "io/cFile.h"
#include "io/cFs.h"
#include "pi/cSystem.h"
#include "std/cSTDExceptions.h"
#include "std/tArray.h"
#include "ucs/cString.h"

#include <limits>

namespace mucs
{
void cLISystemFiles::read(cString const& sFile, mstd::tArray<char>& aBytes)
{
  mio::cFile file(mpi::system().fs.fileOpenRead(sFile));
  unsigned long long const iSize = file.size(true);
  if (iSize > std::numeric_limits<unsigned int>::max())
  {
    char first; // a directory may claim any size, but can't be read, and that is the better report
    file.read(&first, sizeof first);
    cSTDExceptions::throwBadAlloc();
  }
  mstd::tArray<char> aRead;
  aRead.setSize(static_cast<unsigned int>(iSize));
  unsigned int iDone = 0;
  while (iDone < aRead.length())
  {
    unsigned int const iRead = static_cast<unsigned int>(file.read(aRead.data() + iDone, aRead.length() - iDone));
    if (iRead == 0)
    {
      aRead.truncate(iDone); // it has become shorter meanwhile
      break;
    }
    iDone += iRead;
  }
  aBytes.swap(aRead);
}
} // namespace mucs
