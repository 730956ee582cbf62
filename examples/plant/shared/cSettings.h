#ifndef MORTISE_EXAMPLES_PLANT_SHARED_CSETTINGS_H
#define MORTISE_EXAMPLES_PLANT_SHARED_CSETTINGS_H

#include "sa/cReferenceFrame.h"
#include "std/cAsciiString.h"

/// What the program hands to each module when it makes it.
class cSettings
{
public:
  cSettings(unsigned int iIntervalMSec, mstd::cAsciiString const& procFolder, mstd::cAsciiString const& diskPath)
      : miIntervalMSec(iIntervalMSec), mProcFolder(procFolder), mDiskPath(diskPath)
  {
  }
  /// Reads them from the frame that toFrame() filled.
  explicit cSettings(msa::cReferenceFrame& frame)
      : miIntervalMSec(frame.readNext<unsigned int>()), mProcFolder(frame.readNext<mstd::cAsciiString>()),
        mDiskPath(frame.readNext<mstd::cAsciiString>())
  {
  }
  /// The frame refers to this object.
  void toFrame(msa::cReferenceFrame& frame)
  {
    frame.addRef(miIntervalMSec, false, true).addRef(mProcFolder, false, true).addRef(mDiskPath, false, true);
  }

  /// Milliseconds between two measurements.
  unsigned int intervalMSec() const { return miIntervalMSec; }
  /// The folder of the kernel's figures.
  mstd::cAsciiString const& procFolder() const { return mProcFolder; }
  /// A path on the disk that is watched.
  mstd::cAsciiString const& diskPath() const { return mDiskPath; }

private:
  unsigned int miIntervalMSec;
  mstd::cAsciiString mProcFolder;
  mstd::cAsciiString mDiskPath;
};

#endif
