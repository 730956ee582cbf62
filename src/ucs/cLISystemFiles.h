#ifndef MORTISE_UCS_CLISYSTEMFILES_H
#define MORTISE_UCS_CLISYSTEMFILES_H

#include "ucs/cAbstractLIFileSource.h"

namespace mucs
{
/// The files of the system's file system. What is read is at most as long as the file was when it was opened.
class cLISystemFiles : public cAbstractLIFileSource
{
public:
  void read(cString const& sFile, mstd::tArray<char>& aBytes) override;
};
} // namespace mucs

#endif
