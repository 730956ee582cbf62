#include "io/cIOBlockDeviceImpl.h"

#include "io/cAbstractIOBlockDevice.h"
#include "io/cIOExceptions.h"
#include "std/cSTDExceptions.h"
#include "std/tBounds.h"

namespace mio
{

class cIOBlockDeviceImpl::cTransfer
{
public:
  explicit cTransfer(cIOBlockDeviceImpl& window) : mWindow(window) { mWindow.mInTransfer = true; }
  cTransfer(cTransfer const&) = delete;
  cTransfer& operator=(cTransfer const&) = delete;
  ~cTransfer() { mWindow.mInTransfer = false; }

private:
  cIOBlockDeviceImpl& mWindow;
};

cIOBlockDeviceImpl::cIOBlockDeviceImpl()
    : mWindow(static_cast<unsigned int>(WindowSize)), mpDevice(nullptr), mWindowStart(0), mInvalid(true), mDirty(false),
      mInTransfer(false), mPreferredBlockSize(WindowSize), mCachedSize(0)
{
  mWindow.setGrowStep(14);
  mWindow.setFitOnErase(false); // the pool stays while the window moves
}

cIOBlockDeviceImpl::cIOBlockDeviceImpl(cIOBlockDeviceImpl const& other)
    : mWindow(other.mWindow), mpDevice(other.mpDevice), mWindowStart(other.mWindowStart), mInvalid(other.mInvalid),
      mDirty(other.mDirty), mInTransfer(false), mPreferredBlockSize(other.mPreferredBlockSize),
      mCachedSize(other.mCachedSize)
{
}

cIOBlockDeviceImpl::~cIOBlockDeviceImpl() {}

cAbstractIOBlockDevice& cIOBlockDeviceImpl::bd() const
{
  if (!(mpDevice != 0))
  {
    cSTDExceptions::throwAssertionFailed("mpDevice != 0", "io/cIOBlockDeviceImpl", __LINE__);
  }
  return *mpDevice;
}

unsigned long long cIOBlockDeviceImpl::size(bool refresh)
{
  if (mCachedSize != 0 && !refresh)
  {
    return mCachedSize;
  }
  cAbstractIOBlockDevice& device = bd();
  unsigned long long const position = device.pos();
  device.seek(0, SeekFromEnd);
  unsigned long long measured;
  try
  {
    measured = device.pos();
  }
  catch (...)
  {
    device.seek(static_cast<long long>(position), SeekFromStart);
    throw;
  }
  device.seek(static_cast<long long>(position), SeekFromStart);
  mCachedSize = measured;
  return measured;
}

unsigned int cIOBlockDeviceImpl::cacheLocation(unsigned int position, unsigned int count)
{
  if (covers(position, count))
  {
    return position - mWindowStart;
  }
  flush();
  unsigned long long const total = size(false);
  unsigned long long const left = total > position ? total - position : 0;
  if (count > left)
  {
    count = static_cast<unsigned int>(left);
  }
  if (count == 0)
  {
    return 0;
  }
  unsigned long long const full = WindowSize;
  unsigned long long const most = left < full ? left : full;
  load(position, count, count < most ? static_cast<unsigned int>(most) : count);
  return 0;
}

// `wanted`, which is not below `count`, is what the window has room for; `count` is what has to be there.
void cIOBlockDeviceImpl::load(unsigned int position, unsigned int count, unsigned int wanted)
{
  mInvalid = true;
  if (mWindow.capacity() > 2 * WindowSize && wanted <= WindowSize)
  {
    mWindow.clear(); // a huge window was for one access
  }
  mWindow.setSize(wanted);
  cTransfer const transfer(*this);
  cAbstractIOBlockDevice& device = bd();
  device.seek(position, SeekFromStart);
  unsigned int done = 0;
  while (done < count)
  {
    unsigned long long const got = device.read(mWindow.data() + done, wanted - done);
    if (got == 0)
    {
      cIOExceptions::throwUnableToRead(count);
    }
    done += static_cast<unsigned int>(got);
  }
  if (done < wanted)
  {
    mWindow.truncate(done);
  }
  mWindowStart = position;
  mInvalid = false;
}

char& cIOBlockDeviceImpl::moveTo(unsigned int position)
{
  if (!mInvalid && position < mWindowStart && mWindowStart - position <= WindowSize)
  {
    // A walk towards the front: the window ends behind the byte.
    unsigned int const reach = WindowSize - 1;
    unsigned int const start = position > reach ? position - reach : 0;
    cacheLocation(start, position - start + 1);
  }
  unsigned int const index = cacheLocation(position, 1);
  if (!covers(position, 1))
  {
    mstd::tBounds::throwIndexOutOfRange("cAbstractIOBlockDevice", "at", position,
                                        static_cast<unsigned int>(size(false)));
  }
  return mWindow[index];
}

void cIOBlockDeviceImpl::flush()
{
  if (!mDirty)
  {
    return;
  }
  cTransfer const transfer(*this);
  cAbstractIOBlockDevice& device = bd();
  device.seek(mWindowStart, SeekFromStart);
  unsigned int const length = mWindow.length();
  unsigned int done = 0;
  while (done < length)
  {
    unsigned long long const taken = device.write(mWindow.data() + done, length - done);
    if (taken == 0)
    {
      cIOExceptions::throwUnableToWrite(length);
    }
    done += static_cast<unsigned int>(taken);
  }
  mDirty = false;
}

void cIOBlockDeviceImpl::invalidate()
{
  mInvalid = true;
  mDirty = false;
}

} // namespace mio
