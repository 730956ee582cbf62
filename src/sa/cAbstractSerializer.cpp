#include "sa/cAbstractSerializer.h"

#include "io/cFile.h"
#include "io/cFs.h"
#include "io/cIOExceptions.h"
#include "pi/cSystem.h"
#include "std/tArrayRef.h"
#include "ucs/cString.h"

namespace msa
{

cAbstractSerializer::~cAbstractSerializer() {}

void cAbstractSerializer::store(unsigned short iValue)
{
  store(static_cast<unsigned int>(iValue));
}

void cAbstractSerializer::store(short iValue)
{
  store(static_cast<int>(iValue));
}

void cAbstractSerializer::storeToFile(mucs::cString const& path)
{
  mio::cFile file(mpi::system().fs.fileOpenWrite(path, mio::CreateIfMissing, mio::WriteTruncate));
  mstd::tArrayRef<char> const bytes = data();
  unsigned int const length = bytes.proxyLength();
  unsigned int const block = bytes.proxyPreferredBlockSize();
  for (unsigned int position = 0; position < length;)
  {
    unsigned int const left = length - position;
    unsigned int const piece = block == 0 || block > left ? left : block;
    unsigned long long const taken = file.write(bytes.proxyProvideData(position, piece), piece);
    if (taken == 0)
    {
      mio::cIOExceptions::throwUnableToWrite(piece);
    }
    position += static_cast<unsigned int>(taken);
  }
  file.touchSize();
  file.close();
}

} // namespace msa
