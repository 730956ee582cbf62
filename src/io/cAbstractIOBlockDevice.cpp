#include "io/cAbstractIOBlockDevice.h"

#include "io/cIOExceptions.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "std/tBounds.h"
#include "ucs/cString.h"

#include <utility>

namespace mio
{
namespace
{
char const* const SourceMark = "io/cAbstractIOBlockDevice";
unsigned int const EraseMark = 178; // of the record of an erase; whoever filters the output knows it
unsigned int const PieceLimit = 5;  // a transfer that is not done before this piece has failed
} // namespace

cAbstractIOBlockDevice::cAbstractIOBlockDevice() : mpWindow(new cIOBlockDeviceImpl)
{
  mpWindow->setBD(this);
}

cAbstractIOBlockDevice::cAbstractIOBlockDevice(cAbstractIOBlockDevice const& other)
    : cAbstractIODevice(other), mstd::tAbstractArrayProxy<char>(other),
      mpWindow(new cIOBlockDeviceImpl(*other.mpWindow))
{
  mpWindow->setBD(this);
}

cAbstractIOBlockDevice::~cAbstractIOBlockDevice() {}

cAbstractIOBlockDevice& cAbstractIOBlockDevice::operator=(cAbstractIOBlockDevice const& other)
{
  if (this != &other)
  {
    mpWindow.reinit(new cIOBlockDeviceImpl(*other.mpWindow));
    mpWindow->setBD(this);
  }
  return *this;
}

void cAbstractIOBlockDevice::swap(cAbstractIOBlockDevice& other) noexcept
{
  std::swap(mpWindow, other.mpWindow);
  mpWindow->setBD(this);
  other.mpWindow->setBD(&other);
}

bool cAbstractIOBlockDevice::eof()
{
  return pos() >= size(false);
}

void cAbstractIOBlockDevice::setSize(unsigned long long)
{
  cIOExceptions::throwSetSizeNotImplemented();
}

char const& cAbstractIOBlockDevice::proxyAt(unsigned int index) const
{
  return mpWindow.get()->at(index);
}

char& cAbstractIOBlockDevice::proxyAt(unsigned int index)
{
  return mpWindow.get()->toModifyAt(index);
}

unsigned int cAbstractIOBlockDevice::proxyLength() const
{
  return static_cast<unsigned int>(size(false));
}

void cAbstractIOBlockDevice::proxyCopyPartTo(char* pTarget, unsigned int start, unsigned int iSize) const
{
  // Reading moves the position, which is none of an array's business.
  cAbstractIOBlockDevice& device = const_cast<cAbstractIOBlockDevice&>(*this);
  if (iSize != 0)
  {
    mpWindow->flush();
  }
  device.seek(start, SeekFromStart);
  unsigned int done = 0;
  for (unsigned int left = PieceLimit; done < iSize;)
  {
    --left;
    unsigned long long const got = device.read(pTarget + done, iSize - done);
    if (left == 0)
    {
      cIOExceptions::throwUnableToRead(iSize);
    }
    done += static_cast<unsigned int>(got);
  }
}

char const* cAbstractIOBlockDevice::proxyProvideData(unsigned int start, unsigned int iSize) const
{
  unsigned int const index = mpWindow->cacheLocation(start, iSize);
  if (iSize != 0 && !mpWindow->covers(start, iSize))
  {
    mstd::tBounds::startSize2End(static_cast<unsigned int>(size(false)), start, iSize, "cAbstractIOBlockDevice",
                                 "provideData");
    cIOExceptions::throwUnableToRead(iSize);
  }
  return mpWindow->data(index);
}

unsigned int cAbstractIOBlockDevice::proxyPreferredBlockSize() const
{
  return mpWindow->preferredBlockSize();
}

void cAbstractIOBlockDevice::proxyPatchData(unsigned int start, unsigned int iSize, char const* pSource)
{
  if (iSize != 0)
  {
    mpWindow->flush();
    mpWindow->invalidate();
  }
  seek(start, SeekFromStart);
  unsigned int done = 0;
  for (unsigned int left = PieceLimit; done < iSize;)
  {
    --left;
    touchSize();
    unsigned long long const taken = write(pSource + done, iSize - done);
    if (left == 0)
    {
      cIOExceptions::throwUnableToWrite(iSize);
    }
    done += static_cast<unsigned int>(taken);
  }
}

void cAbstractIOBlockDevice::proxySetSize(unsigned int iSize)
{
  setSize(iSize);
}

void cAbstractIOBlockDevice::proxyInsert(unsigned int position, char const* pSource, unsigned int iSize)
{
  if (position != size(false))
  {
    cIOExceptions::throwInsertInMiddle();
  }
  mpWindow->flush();
  mpWindow->invalidate();
  seek(0, SeekFromEnd);
  writeAll(pSource, iSize);
}

void cAbstractIOBlockDevice::proxyInsertDefaultObjects(unsigned int position, unsigned int iSize)
{
  unsigned int const most = 0x10000;
  mpWindow->flush();
  mpWindow->invalidate();
  seek(position, SeekFromStart);
  mstd::tArray<char> zeros(iSize < most ? iSize : most);
  zeros.fill(0);
  unsigned int rest = iSize;
  while (rest != 0)
  {
    unsigned int const piece = rest < most ? rest : most;
    writeAll(zeros.data(), piece);
    rest -= piece;
  }
}

void cAbstractIOBlockDevice::proxyErase(unsigned int start, unsigned int iSize)
{
  unsigned long long const end = static_cast<unsigned long long>(start) + iSize;
  unsigned long long const total = size(false);
  {
    mpi::cAbstractOut& out = mpi::system().out;
    mp::cLocker::cLock const lock(out.mutex());
    out.debugMessage(SourceMark, EraseMark)
        << "AIOB-Erase at " << start << " / " << iSize << " => truncate at " << end << " / size: " << total << "\n"
        << mpi::cAbstractOut::clearDebugMessage();
  }
  if (end != total)
  {
    cIOExceptions::throwEraseInMiddle();
  }
  mpWindow->flush();
  mpWindow->invalidate();
  truncate(start);
  touchSize();
}

mstd::tAbstractArrayProxy<char>* cAbstractIOBlockDevice::proxyPhysical(unsigned int& offset)
{
  offset = 0;
  return this;
}

mstd::tAbstractConstArrayProxy<char> const* cAbstractIOBlockDevice::constProxyPhysical(unsigned int& offset) const
{
  offset = 0;
  return this;
}

unsigned long long cAbstractIOBlockDevice::size(bool refresh) const
{
  return mpWindow->size(refresh);
}

unsigned long long cAbstractIOBlockDevice::bytesLeft() const
{
  unsigned long long const total = size(false);
  unsigned long long const position = pos();
  return total > position ? total - position : 0;
}

void cAbstractIOBlockDevice::touchSize()
{
  mpWindow->touchSize();
}

void cAbstractIOBlockDevice::flush()
{
  mpWindow->flush();
}

void cAbstractIOBlockDevice::setPreferredBlockSize(unsigned int iSize)
{
  mpWindow->setPreferredBlockSize(iSize);
}

void cAbstractIOBlockDevice::settleWindow(bool forget) const
{
  if (mpWindow->isDirty())
  {
    unsigned long long const position = pos();
    mpWindow->flush();
    const_cast<cAbstractIOBlockDevice*>(this)->seek(static_cast<long long>(position), SeekFromStart);
  }
  if (forget)
  {
    mpWindow->invalidate();
  }
}

// A device may take less than it is given, and then say why with the next piece.
void cAbstractIOBlockDevice::writeAll(char const* pSource, unsigned int iSize)
{
  unsigned int done = 0;
  while (done < iSize)
  {
    touchSize();
    unsigned long long const taken = write(pSource + done, iSize - done);
    if (taken == 0)
    {
      cIOExceptions::throwUnableToWrite(iSize);
    }
    done += static_cast<unsigned int>(taken);
  }
}

} // namespace mio
