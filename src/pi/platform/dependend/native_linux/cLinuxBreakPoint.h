#ifndef MORTISE_PI_PLATFORM_CLINUXBREAKPOINT_H
#define MORTISE_PI_PLATFORM_CLINUXBREAKPOINT_H

namespace mpi
{

/// The trap that a debugger stops at.
class cLinuxBreakPoint
{
public:
  /// Sends SIGTRAP to the own process.
  static void breakPoint();
};

} // namespace mpi

#endif
