#ifndef MORTISE_EXAMPLES_PLANT_MODULES_METER_CPROCREADER_H
#define MORTISE_EXAMPLES_PLANT_MODULES_METER_CPROCREADER_H

#include "pi/piTypes.h"
#include "std/cAsciiString.h"

/// Reads the kernel's figures. What cannot be read raises mstd::cOSErrorException, what cannot be understood
/// mstd::cRuntimeException.
class cProcReader
{
public:
  struct cCpu
  {
    piUInt64 miBusy;
    piUInt64 miTotal;
  };
  struct cMemory
  {
    piUInt64 miAvailable;
    piUInt64 miTotal;
  };
  struct cNet
  {
    piUInt64 miReceived;
    piUInt64 miSent;
  };

  explicit cProcReader(mstd::cAsciiString const& folder);

  /// Ticks since the start of the machine.
  cCpu cpu() const;
  /// Kilobytes.
  cMemory memory() const;
  /// Bytes on all network devices but the loopback.
  cNet net() const;
  /// Percent of the disk on which `path` is that are in use, of what everybody may use.
  static double diskPercent(mstd::cAsciiString const& path);

private:
  mstd::cAsciiString path(char const* pName) const;

  mstd::cAsciiString mFolder;
};

#endif
