#ifndef MORTISE_MEMFS_CMEMFSEXCEPTIONS_H
#define MORTISE_MEMFS_CMEMFSEXCEPTIONS_H

namespace mucs
{
class cString;
} // namespace mucs

namespace mmem
{

/// The throw functions of the memory file system. None of them returns.
class cMemFsExceptions
{
public:
  /// mstd::cOSErrorException, as the platform's file system raises it, so that a program need not ask which one it has.
  [[noreturn]] static void throwOSError(char const* operation, int iCode, mucs::cString const& path);
  /// The same, unless the code is 0.
  static void throwIfError(char const* operation, int iCode, mucs::cString const& path)
  {
    if (iCode != 0)
    {
      throwOSError(operation, iCode, path);
    }
  }
  /// mstd::cRuntimeException.
  [[noreturn]] static void throwUnableMapWriteable();
  /// mstd::cRuntimeException.
  [[noreturn]] static void throwAlreadyMapped();
};

} // namespace mmem

#endif
