#ifndef MORTISE_IO_CPERMISSIONS_H
#define MORTISE_IO_CPERMISSIONS_H

#include "pi/piTypes.h"

namespace mio
{

/// What may be done with a file: three groups of read, write and execute, and some marks.
///
/// Threads: a plain value.
class MORTISE_API cPermissions
{
public:
  /// The bits of the word.
  enum Bits
  {
    SetUserId = 0x1,
    SetGroupId = 0x2,
    Sticky = 0x4,
    OwnerRead = 0x8,
    OwnerWrite = 0x10,
    OwnerExecute = 0x20,
    GroupRead = 0x40,
    GroupWrite = 0x80,
    GroupExecute = 0x100,
    OthersRead = 0x200,
    OthersWrite = 0x400,
    OthersExecute = 0x800,
    Archive = 0x1000,
    Hidden = 0x2000 ///< Only read: a file is hidden by its name.
  };

  explicit cPermissions(unsigned long long iPermissions = 0) : miPermissions(iPermissions) {}

  unsigned long long permissions() const { return miPermissions; }
  /// Replaces the whole word.
  void setPermission(unsigned long long iPermissions) { miPermissions = iPermissions; }

  /// Whether anybody may read.
  bool isReadable() const { return (miPermissions & (OwnerRead | GroupRead | OthersRead)) != 0; }
  /// Whether anybody may write.
  bool isWriteable() const { return (miPermissions & (OwnerWrite | GroupWrite | OthersWrite)) != 0; }
  /// Whether anybody may execute.
  bool isExecutable() const { return (miPermissions & (OwnerExecute | GroupExecute | OthersExecute)) != 0; }
  bool isArchive() const { return (miPermissions & Archive) != 0; }

  bool operator==(cPermissions const& other) const { return miPermissions == other.miPermissions; }
  bool operator!=(cPermissions const& other) const { return miPermissions != other.miPermissions; }

private:
  unsigned long long miPermissions;
};

} // namespace mio

#endif
