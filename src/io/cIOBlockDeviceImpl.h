#ifndef MORTISE_IO_CIOBLOCKDEVICEIMPL_H
#define MORTISE_IO_CIOBLOCKDEVICEIMPL_H

#include "pi/piTypes.h"
#include "std/tArray.h"

namespace mio
{

class cAbstractIOBlockDevice;

/// The window through which a block device is seen as an array: one run of its bytes in memory, which takes changes
/// and is written back as a whole.
///
/// Units:     positions and sizes are bytes.
/// Ownership: the device stays its owner's. The destructor writes nothing: who wants the changes calls flush().
/// Errors:    what the device raises; besides, the device may turn out shorter than it was said to be, or take less
///            than it is given (mstd::cRuntimeException). After a failure to load the window holds nothing; after one
///            to write it holds its changes still.
/// Threads:   one object belongs to one thread.
/// Cost:      an access inside of the window is a comparison; one outside moves the window, with at most one write and
///            one read of it.
class MORTISE_API cIOBlockDeviceImpl
{
public:
  enum
  {
    WindowSize = 0x10000 ///< Bytes that a window has at least, where the device has them.
  };

  cIOBlockDeviceImpl();
  /// Copies the window with its changes, and refers to the same device.
  cIOBlockDeviceImpl(cIOBlockDeviceImpl const& other);
  cIOBlockDeviceImpl& operator=(cIOBlockDeviceImpl const&) = delete;
  ~cIOBlockDeviceImpl();

  void setBD(cAbstractIOBlockDevice* pDevice) { mpDevice = pDevice; }
  /// The device. None is an assertion failure.
  cAbstractIOBlockDevice& bd() const;

  /// Size of the device, as it was last measured unless that is to be done anew. An empty device is always
  /// measured.
  unsigned long long size(bool refresh);
  /// Forgets the size.
  void touchSize() { mCachedSize = 0; }

  /// Makes sure that the `count` bytes from `position` on, as far as there are such, are in the window, and returns the
  /// index of the first. A window that has to move begins at `position`; it takes more than `count` bytes, up to
  /// WindowSize, where the device has them. Without a byte to load the result is 0 and the window stays.
  unsigned int cacheLocation(unsigned int position, unsigned int count);
  /// Whether the window holds all of these bytes.
  bool covers(unsigned int position, unsigned int count) const
  {
    return !mInvalid && position >= mWindowStart &&
           static_cast<unsigned long long>(position) + count <=
               static_cast<unsigned long long>(mWindowStart) + mWindow.length();
  }

  /// One byte; valid until the next access or change. Errors: cOutOfRangeException.
  char const& at(unsigned int position)
  {
    unsigned int const index = position - mWindowStart;
    return __builtin_expect(!mInvalid && index < mWindow.length(), 1) ? mWindow[index] : moveTo(position);
  }
  /// The same for a change, which reaches the device with the next flush() or move of the window.
  char& toModifyAt(unsigned int position)
  {
    unsigned int const index = position - mWindowStart;
    char& byte = __builtin_expect(!mInvalid && index < mWindow.length(), 1) ? mWindow[index] : moveTo(position);
    mDirty = true;
    return byte;
  }
  /// Address of the byte at that index; the window's end is one too.
  char const* data(unsigned int index) const { return mWindow.data() + index; }

  /// Writes the whole window back if it was changed. The device's position is behind it then.
  void flush();
  /// Forgets the window with its changes.
  void invalidate();

  bool isInvalid() const { return mInvalid; }
  bool isDirty() const { return mDirty; }
  /// Whether the window is just being loaded or written: calls of the device are its own.
  bool isInTransfer() const { return mInTransfer; }
  unsigned int windowStart() const { return mWindowStart; }
  unsigned int windowLength() const { return mInvalid ? 0 : mWindow.length(); }

  unsigned int preferredBlockSize() const { return mPreferredBlockSize; }
  void setPreferredBlockSize(unsigned int iSize) { mPreferredBlockSize = iSize; }

private:
  class cTransfer;

  char& moveTo(unsigned int position);
  void load(unsigned int position, unsigned int count, unsigned int wanted);

  mstd::tArray<char> mWindow;
  cAbstractIOBlockDevice* mpDevice;
  unsigned int mWindowStart; // position of the first byte of the window
  bool mInvalid;             // the window holds nothing
  bool mDirty;               // the window holds changes that the device has not
  bool mInTransfer;
  unsigned int mPreferredBlockSize;
  unsigned long long mCachedSize; // 0: unknown
};

} // namespace mio

#endif
