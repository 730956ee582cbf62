#ifndef MORTISE_TESTS_EXTENSIONS_CFILESYSTEM_H
#define MORTISE_TESTS_EXTENSIONS_CFILESYSTEM_H

#include "io/cFs.h"
#include "memfs/cMemFs.h"
#include "std/cOSErrorException.h"
#include "support/cTempDir.h"
#include "support/exceptionText.h"

#include <memory>
#include <string>

namespace support
{

/// A file system with an empty directory to work in.
class cFileSystem
{
public:
  virtual ~cFileSystem() {}

  mio::cFs& fs() { return mFs; }
  /// The directory, without a final slash.
  virtual std::string root() const = 0;

protected:
  mio::cFs mFs;
};

class cPlatformFileSystem : public cFileSystem
{
public:
  std::string root() const override { return mDir.path(); }

private:
  cTempDir mDir;
};

class cMountedMemory : public cFileSystem
{
public:
  cMountedMemory()
  {
    mFs.installProxy();
    mFs.bind(mstd::tAutoPtr<mio::cAbstractFsImpl>(new mmem::cMemFs(mFs, "/mounted/memory")));
  }
  std::string root() const override { return "/mounted/memory"; }
};

class cBareMemory : public cFileSystem
{
public:
  cBareMemory()
  {
    mFs.setImpl(mstd::tAutoPtr<mio::cAbstractFsImpl>(new mmem::cMemFs(mFs)));
    mFs.mkdir("/work");
  }
  std::string root() const override { return "/work"; }
};

/// The failure of the operating system, or of what acts like it, that an action ends with, also when it stands behind
/// another one: operation and error number. "nothing" if the action goes through.
template <class tAction>
std::string failureOf(tAction const& action)
{
  try
  {
    action();
  }
  catch (mstd::cAbstractException const& e)
  {
    for (mstd::cAbstractException const* pLink = &e; pLink != nullptr; pLink = pLink->history())
    {
      auto const* pError = dynamic_cast<mstd::cOSErrorException const*>(pLink);
      if (pError != nullptr)
      {
        return toString(pError->operation()) + " " + std::to_string(pError->osErrorCode());
      }
    }
    return "another failure";
  }
  return "nothing";
}

inline std::string failure(std::string const& operation, int iCode)
{
  return operation + " " + std::to_string(iCode);
}

} // namespace support

#endif
