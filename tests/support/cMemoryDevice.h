#ifndef MORTISE_TESTS_SUPPORT_CMEMORYDEVICE_H
#define MORTISE_TESTS_SUPPORT_CMEMORYDEVICE_H

#include "io/cAbstractIOBlockDevice.h"
#include "ucs/cString.h"

#include <string>
#include <vector>

namespace support
{

/// A block device in memory that notes what is asked of it, and may give and take less than it is asked for.
class cMemoryDevice : public mio::cAbstractIOBlockDevice
{
public:
  explicit cMemoryDevice(std::string const& contents = "") : mContents(contents) {}

  std::string const& contents() const { return mContents; }
  /// As by somebody else, behind the device's back.
  void setContents(std::string const& contents) { mContents = contents; }
  /// Bytes that one call moves at most.
  void setPiece(unsigned long long piece) { mPiece = piece; }
  /// Calls of read() and write() give no byte from now on.
  void setStuck(bool stuck) { mStuck = stuck; }
  /// Calls so far, each as a word: "seek 5/0", "read 10", "write 3", "truncate 7".
  std::vector<std::string> const& calls() const { return mCalls; }
  void forgetCalls() { mCalls.clear(); }
  /// Number of calls that begin with `what`.
  unsigned int count(std::string const& what) const
  {
    unsigned int number = 0;
    for (std::string const& call : mCalls)
    {
      number += call.compare(0, what.size(), what) == 0;
    }
    return number;
  }

  mucs::cString name() const override { return mucs::cString("memory"); }
  void seek(long long offset, mio::SeekMode mode) override
  {
    mCalls.push_back("seek " + std::to_string(offset) + "/" + std::to_string(static_cast<int>(mode)));
    long long const base = mode == mio::SeekFromStart     ? 0
                           : mode == mio::SeekFromCurrent ? static_cast<long long>(mPosition)
                                                          : static_cast<long long>(mContents.size());
    mPosition = static_cast<unsigned long long>(base + offset);
  }
  unsigned long long pos() const override { return mPosition; }
  void truncate(unsigned int size) override
  {
    mCalls.push_back("truncate " + std::to_string(size));
    mContents.resize(size);
  }
  void mmap() override {}
  unsigned long long read(void* target, unsigned long long size) override
  {
    mCalls.push_back("read " + std::to_string(size));
    if (mStuck || mPosition >= mContents.size())
    {
      return 0;
    }
    unsigned long long const left = mContents.size() - mPosition;
    size = size < left ? size : left;
    size = size < mPiece ? size : mPiece;
    mContents.copy(static_cast<char*>(target), size, mPosition);
    mPosition += size;
    return size;
  }
  unsigned long long write(void const* source, unsigned long long size) override
  {
    mCalls.push_back("write " + std::to_string(size));
    if (mStuck)
    {
      return 0;
    }
    size = size < mPiece ? size : mPiece;
    if (mContents.size() < mPosition + size)
    {
      mContents.resize(mPosition + size);
    }
    mContents.replace(mPosition, size, static_cast<char const*>(source), size);
    mPosition += size;
    return size;
  }

private:
  std::string mContents;
  unsigned long long mPosition = 0;
  unsigned long long mPiece = ~0ull;
  bool mStuck = false;
  std::vector<std::string> mCalls;
};

/// The bytes of an array as a standard string.
inline std::string bytesOf(mstd::tArray<char> const& bytes)
{
  return std::string(bytes.length() == 0 ? "" : bytes.data(), bytes.length());
}

} // namespace support

#endif
