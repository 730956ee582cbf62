#ifndef MORTISE_IO_CIOEXCEPTIONS_H
#define MORTISE_IO_CIOEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mstd
{
class cAbstractException;
} // namespace mstd

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{

/// The throw functions of files and devices. None of them returns. Where a cause is given, a copy of it stands behind
/// the exception in the chain.
class MORTISE_API cIOExceptions
{
public:
  /// cRuntimeException.
  [[noreturn]] static void throwRelativePathUnderrun(mucs::cString const& path);
  /// cRuntimeException.
  [[noreturn]] static void throwIOTimeout(unsigned int milliseconds);
  /// cRuntimeException.
  [[noreturn]] static void throwUnableToWrite(unsigned long long bytes);
  /// cRuntimeException.
  [[noreturn]] static void throwUnableToRead(unsigned long long bytes);
  /// cRuntimeException.
  [[noreturn]] static void throwUnableToReadOddAmountOfData(unsigned long long bytes, unsigned int elementSize);
  /// cRuntimeException.
  [[noreturn]] static void throwUnableOpenFile(mstd::cAbstractException const& cause, mucs::cString const& file);
  /// cRuntimeException.
  [[noreturn]] static void throwUnableWriteFile(mstd::cAbstractException const& cause, mucs::cString const& file);
  /// cRuntimeException.
  [[noreturn]] static void throwUnableReadFile(mstd::cAbstractException const& cause, mucs::cString const& file);
  /// cRuntimeException.
  [[noreturn]] static void throwUnableRemoveFile(mstd::cAbstractException const& cause, mucs::cString const& file);
  /// cRuntimeException. Its text speaks of removing a file; programs know it by that.
  [[noreturn]] static void throwUnableCreatePath(mstd::cAbstractException const& cause, mucs::cString const& path);
  /// cBugException.
  [[noreturn]] static void throwEndOfFile(mucs::cString const& file);

  /// cBugException: this implementation mounts nothing.
  [[noreturn]] static void throwBindNotSupported();
  /// cBugException: a proxy has nobody for `path`.
  [[noreturn]] static void throwNoFilesystem(mucs::cString const& path);
  /// cRuntimeException: what stands at `path` can't be unmounted now.
  [[noreturn]] static void throwFilesystemInUse(mucs::cString const& path);
  /// cRuntimeException: the native implementation can't be unmounted now.
  [[noreturn]] static void throwNativeFilesystemInUse();
  /// cRuntimeException: the two paths belong to different implementations.
  [[noreturn]] static void throwRenameAcrossFilesystems(mucs::cString const& from, mucs::cString const& to);
  /// cBugException: the device can't be given a size.
  [[noreturn]] static void throwSetSizeNotImplemented();
  /// cBugException: a device takes new bytes at its end only.
  [[noreturn]] static void throwInsertInMiddle();
  /// cBugException: a device loses bytes at its end only.
  [[noreturn]] static void throwEraseInMiddle();
  /// The number 12: an implementation of a file was copied without a device for the copy.
  [[noreturn]] static void throwFileImplCopied();
};

} // namespace mio

#endif
