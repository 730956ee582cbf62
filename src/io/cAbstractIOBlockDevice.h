#ifndef MORTISE_IO_CABSTRACTIOBLOCKDEVICE_H
#define MORTISE_IO_CABSTRACTIOBLOCKDEVICE_H

#include "io/cAbstractIODevice.h"
#include "io/cIOBlockDeviceImpl.h"
#include "io/ioTypes.h"
#include "pi/piTypes.h"
#include "std/tAbstractArrayProxy.h"
#include "std/tAutoPtr.h"

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{

/// Device with a position and a size, which is an array of its bytes as well: views of it search and patch a file as
/// they do a buffer.
///
/// Single bytes and provided blocks are served by a window of 64 KiB, larger only for a block that is larger. Changes
/// of single bytes stay in the window until it moves or flush() is called. The operations of the array move the
/// position of the device. As an array a device has the lower 32 bits of its size as length.
///
/// Who derives from it and keeps a file of its own shares the care for the window: leaveWindow().
///
/// Errors:  those of the device; places behind its end raise cOutOfRangeException or cOutOfBoundsException.
/// Threads: one object belongs to one thread.
class MORTISE_API cAbstractIOBlockDevice : public cAbstractIODevice, public mstd::tAbstractArrayProxy<char>
{
public:
  cAbstractIOBlockDevice();
  /// Copies the window, with the changes that it holds.
  cAbstractIOBlockDevice(cAbstractIOBlockDevice const& other);
  ~cAbstractIOBlockDevice() override;
  /// Takes over a copy of the window. What this device's window held is lost.
  cAbstractIOBlockDevice& operator=(cAbstractIOBlockDevice const& other);
  void swap(cAbstractIOBlockDevice& other) noexcept;

  virtual mucs::cString name() const = 0;
  virtual void seek(long long offset, SeekMode mode) = 0;
  /// Bytes from the start.
  virtual unsigned long long pos() const = 0;
  /// Makes the device `size` bytes long; a longer one than it was has zeros at its end.
  virtual void truncate(unsigned int size) = 0;
  /// Maps the device to memory.
  virtual void mmap() = 0;
  /// Whether the position is at the end, or behind it.
  virtual bool eof();
  /// Here it raises mstd::cBugException.
  virtual void setSize(unsigned long long size);

  // as array proxy
  char const& proxyAt(unsigned int index) const override;
  char& proxyAt(unsigned int index) override;
  unsigned int proxyLength() const override;
  /// Reads straight from the device, in at most four pieces. A device that takes more raises mstd::cRuntimeException,
  /// after a fifth read.
  void proxyCopyPartTo(char* pTarget, unsigned int start, unsigned int iSize) const override;
  char const* proxyProvideData(unsigned int start, unsigned int iSize) const override;
  unsigned int proxyPreferredBlockSize() const override;
  /// Writes straight to the device, with the same limit.
  void proxyPatchData(unsigned int start, unsigned int iSize, char const* pSource) override;
  /// As setSize().
  void proxySetSize(unsigned int iSize) override;
  /// Appends. Any place but the end raises mstd::cBugException.
  void proxyInsert(unsigned int position, char const* pSource, unsigned int iSize) override;
  /// Writes zeros from `position` on, over what stands there.
  void proxyInsertDefaultObjects(unsigned int position, unsigned int iSize) override;
  /// Cuts the end off, and tells the debug output of it. Any other range raises mstd::cBugException.
  void proxyErase(unsigned int start, unsigned int iSize) override;
  mstd::tAbstractArrayProxy<char>* proxyPhysical(unsigned int& offset) override;
  mstd::tAbstractConstArrayProxy<char> const* constProxyPhysical(unsigned int& offset) const override;

  /// In bytes, as it was last measured unless that is to be done anew.
  unsigned long long size(bool refresh) const;
  /// From the position to the end; 0 behind it.
  unsigned long long bytesLeft() const;
  /// Forgets the size: for whatever moves the end of the device.
  void touchSize();
  /// Writes changes in the window to the device; the position is behind them then.
  void flush();
  /// What views take as the size of their blocks, 0 for one block of everything. 64 KiB at first.
  void setPreferredBlockSize(unsigned int iSize);

protected:
  /// For an operation that goes past the window: changes in the window go to the device first, without moving its
  /// position, and with `forget` the window is dropped. Does nothing if the operation is one of the window itself.
  void leaveWindow(bool forget) const
  {
    cIOBlockDeviceImpl& window = *mpWindow.get();
    if (!window.isInvalid() && !window.isInTransfer() && (forget || window.isDirty()))
    {
      settleWindow(forget);
    }
  }
  /// Forgets the window with its changes: the device stands for something else from now on.
  void dropWindow() { mpWindow->invalidate(); }
  cIOBlockDeviceImpl& window() const { return *mpWindow.get(); }

private:
  void settleWindow(bool forget) const;
  void writeAll(char const* pSource, unsigned int iSize);

  mstd::tAutoPtr<cIOBlockDeviceImpl> mpWindow; // never null
};

} // namespace mio

#endif
