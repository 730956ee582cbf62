#ifndef MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXEXCEPTIONS_H
#define MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXEXCEPTIONS_H

namespace mucs
{
class cString;
} // namespace mucs

namespace mpi
{

/// The throw functions of the file system on Linux. None of them returns.
class cLinuxExceptions
{
public:
  /// mstd::cOSErrorException of the system call `operation` on `path`, with an error number.
  [[noreturn]] static void throwOSError(char const* operation, int iCode, mucs::cString const& path);
  /// The same with the number of the present failure, as the C library has it.
  [[noreturn]] static void throwOSError(char const* operation, mucs::cString const& path);
  /// mstd::cRuntimeException.
  [[noreturn]] static void throwUnableMapWriteable();
  /// mstd::cRuntimeException.
  [[noreturn]] static void throwAlreadyMapped();
};

} // namespace mpi

#endif
