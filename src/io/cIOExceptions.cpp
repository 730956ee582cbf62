#include "io/cIOExceptions.h"

#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"
#include "ucs/cString.h"

namespace mio
{
namespace
{

int const copiedFileImpl = 12;

template <typename... Values>
[[noreturn]] void throwRuntime(char const* key, Values const&... values)
{
  throw mstd::cRuntimeException(mstd::exceptionMessage(key, values...), 0, 0);
}

[[noreturn]] void throwBehind(char const* key, mstd::cAbstractException const& cause, mucs::cString const& name)
{
  mstd::cRuntimeException exception(mstd::exceptionMessage(key, name), 0, 0);
  exception.link(cause);
  throw exception;
}

} // namespace

void cIOExceptions::throwRelativePathUnderrun(mucs::cString const& path)
{
  throwRuntime("$MTR$Invalid path \"%path%\"!", path);
}

void cIOExceptions::throwIOTimeout(unsigned int milliseconds)
{
  throwRuntime("$MTR$Timeout while i/o operation after %time% milliseconds!", milliseconds);
}

void cIOExceptions::throwUnableToWrite(unsigned long long bytes)
{
  throwRuntime("$MTR$Unable to write %bytes% bytes!", bytes);
}

void cIOExceptions::throwUnableToRead(unsigned long long bytes)
{
  throwRuntime("$MTR$Unable to read %bytes% bytes!", bytes);
}

void cIOExceptions::throwUnableToReadOddAmountOfData(unsigned long long bytes, unsigned int elementSize)
{
  throwRuntime("$MTR$Unable to read odd amount of data (%bytes% bytes but element size is %elementSize%)!", bytes,
               elementSize);
}

void cIOExceptions::throwUnableOpenFile(mstd::cAbstractException const& cause, mucs::cString const& file)
{
  throwBehind("$MTR$Unable to open file \"%file%\"!", cause, file);
}

void cIOExceptions::throwUnableWriteFile(mstd::cAbstractException const& cause, mucs::cString const& file)
{
  throwBehind("$MTR$Unable to write to file \"%file%\"!", cause, file);
}

void cIOExceptions::throwUnableReadFile(mstd::cAbstractException const& cause, mucs::cString const& file)
{
  throwBehind("$MTR$Unable to read from file \"%file%\"!", cause, file);
}

void cIOExceptions::throwUnableRemoveFile(mstd::cAbstractException const& cause, mucs::cString const& file)
{
  throwBehind("$MTR$Unable to remove file \"%file%\"!", cause, file);
}

void cIOExceptions::throwUnableCreatePath(mstd::cAbstractException const& cause, mucs::cString const& path)
{
  throwBehind("$MTR$Unable to remove file %file%!", cause, path);
}

void cIOExceptions::throwEndOfFile(mucs::cString const& file)
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$End of file \"%file%\" reached!", file), 0, 0);
}

void cIOExceptions::throwBindNotSupported()
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$Bind / unbind not supported for filesystem implementation!"),
                            0, 0);
}

void cIOExceptions::throwNoFilesystem(mucs::cString const& path)
{
  if (path.empty())
  {
    throw mstd::cBugException(mstd::exceptionMessage("$MTR$ProxyFs has not valid filesystems!"), 0, 0);
  }
  throw mstd::cBugException(
      mstd::exceptionMessage("$MTR$ProxyFs has not valid filesystem for %path% and no registered filesystems at all!",
                             path),
      0, 0);
}

void cIOExceptions::throwFilesystemInUse(mucs::cString const& path)
{
  throwRuntime("$MTR$Filesystem (%s%) is in use!", path);
}

void cIOExceptions::throwNativeFilesystemInUse()
{
  throwRuntime("$MTR$Native filesystem  is in use!");
}

void cIOExceptions::throwRenameAcrossFilesystems(mucs::cString const& from, mucs::cString const& to)
{
  throwRuntime("$MTR$Rename across filesystem boundaries is not supported (%sFrom% -> %sTo&!", from, to);
}

void cIOExceptions::throwSetSizeNotImplemented()
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$Not implemented: cAbstractIOBlockDevice::setSize()"), 0, 0);
}

void cIOExceptions::throwInsertInMiddle()
{
  throw mstd::cBugException(
      mstd::exceptionMessage("$MTR$Insertion anywhere in the middle of file is not supported yet - sorry!"), 0, 0);
}

void cIOExceptions::throwEraseInMiddle()
{
  throw mstd::cBugException(
      mstd::exceptionMessage("$MTR$Data remove anywhere in the middle of file is not supported yet - sorry!"), 0, 0);
}

void cIOExceptions::throwFileImplCopied()
{
  throw copiedFileImpl;
}

} // namespace mio
