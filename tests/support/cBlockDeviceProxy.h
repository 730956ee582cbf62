#ifndef MORTISE_TESTS_SUPPORT_CBLOCKDEVICEPROXY_H
#define MORTISE_TESTS_SUPPORT_CBLOCKDEVICEPROXY_H

#include "std/tAbstractArrayProxy.h"
#include "std/tBounds.h"

#include <string>
#include <vector>

namespace support
{

/// A device in memory that shows its contents through a window only, as a file does: it has a block size, cannot expose
/// its store for writing, and notes every window that it was asked for.
class cBlockDeviceProxy : public mstd::tAbstractArrayProxy<char>
{
public:
  struct cWindow
  {
    unsigned int start;
    unsigned int size;
  };

  cBlockDeviceProxy(std::string const& contents, unsigned int blockSize) : mContents(contents), mBlockSize(blockSize) {}

  std::string const& contents() const { return mContents; }
  std::vector<cWindow> const& windows() const { return mWindows; }

  char const& proxyAt(unsigned int index) const override { return mContents.at(index); }
  char& proxyAt(unsigned int index) override { return mContents.at(index); }
  unsigned int proxyLength() const override { return static_cast<unsigned int>(mContents.size()); }
  void proxyCopyPartTo(char* target, unsigned int start, unsigned int size) const override
  {
    mContents.copy(target, size, start);
  }
  char const* proxyProvideData(unsigned int start, unsigned int size) const override
  {
    mstd::tBounds::startSize2End(proxyLength(), start, size, "cBlockDeviceProxy", "provideData");
    mWindows.push_back(cWindow{start, size});
    mWindow.assign(mContents.begin() + start, mContents.begin() + start + size); // fresh memory: reading past it shows
    mWindow.shrink_to_fit();
    return mWindow.data();
  }
  unsigned int proxyPreferredBlockSize() const override { return mBlockSize; }
  mstd::tAbstractConstArrayProxy<char> const* constProxyPhysical(unsigned int& offset) const override
  {
    offset = 0;
    return this;
  }
  void proxyPatchData(unsigned int start, unsigned int size, char const* source) override
  {
    mContents.replace(start, size, source, size);
  }
  void proxySetSize(unsigned int size) override { mContents.resize(size); }
  void proxyInsert(unsigned int position, char const* source, unsigned int size) override
  {
    mContents.insert(position, source, size);
  }
  void proxyInsertDefaultObjects(unsigned int position, unsigned int size) override
  {
    mContents.insert(position, size, '\0');
  }
  void proxyErase(unsigned int start, unsigned int size) override { mContents.erase(start, size); }
  mstd::tAbstractArrayProxy<char>* proxyPhysical(unsigned int& offset) override
  {
    offset = 0;
    return this;
  }

private:
  std::string mContents;
  unsigned int mBlockSize;
  mutable std::vector<char> mWindow;
  mutable std::vector<cWindow> mWindows;
};

} // namespace support

#endif
