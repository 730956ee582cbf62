#include "cFollowed.h"

#include "cOptions.h"
#include "cText.h"
#include "io/cFileInfo.h"
#include "pi/schedule.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "std/cAbstractException.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"
#include "std/tArray.h"
#include "ucs/cLIMessage.h"

#include <sys/stat.h>

namespace
{
unsigned int const Block = 0x10000;
int const BlocksAtOnce = 64; // so that one file that grows fast does not keep the others waiting
unsigned int const LooksPerCheck = 4;
} // namespace

cFollowed::cFollowed(mstd::cAsciiString const& path, cOptions const& options)
    : mOptions(options), mName(path), mPath(cText::decode(path)), mFollowed(true)
{
  mCheck.setName("check of a path");
  mCheck.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cFollowed::sltCheck));
}

void cFollowed::start()
{
  guarded([this] {
    open();
    if (mpFile)
    {
      seekToLastLines();
      readOn();
    }
    else
    {
      tell("$MTR$\"%file%\" is not there; waiting for it.");
    }
    mCheck.start(mOptions.intervalMSec() * LooksPerCheck, mpi::cWork::Periodic);
    mpi::schedule(mCheck);
  });
}

// What stands at the path now.
cFollowed::cIdentity cFollowed::identity() const
{
  struct stat info;
  cIdentity found;
  if (stat(mName.c_str(), &info) == 0)
  {
    found.device = info.st_dev;
    found.number = info.st_ino;
    found.exists = true;
  }
  return found;
}

void cFollowed::open()
{
  close();
  do
  {
    mIdentity = identity();
    if (!mIdentity.exists)
    {
      close();
      return;
    }
    try
    {
      if (!mio::cFileInfo(mPath).isFile())
      {
        throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$\"%file%\" is not a file!", mPath), 0, 0);
      }
      mpFile.reinit(new mio::cFile(mPath, mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend));
      mpWatch.reinit(new mio::cFileWatch(mPath));
    }
    catch (mstd::cAbstractException const&)
    {
      if (identity() == mIdentity)
      {
        throw;
      }
    }
  } while (!(identity() == mIdentity)); // somebody was faster
  mpWatch->sigChanged.connect(mrmi::cDirectLocalSlotCall0(*this, &cFollowed::sltChanged));
  mpWatch->start(mOptions.intervalMSec());
}

void cFollowed::close()
{
  mpWatch.reinit(nullptr);
  mpFile.reinit(nullptr);
}

void cFollowed::sltChanged()
{
  // The watch must not go while it tells, so the path is left to the check.
  guarded([this] { readOn(); });
}

void cFollowed::sltCheck()
{
  guarded([this] { check(); });
}

void cFollowed::check()
{
  cIdentity const found = identity();
  if (!mpFile)
  {
    if (found.exists)
    {
      open();
      if (mpFile)
      {
        tell("$MTR$\"%file%\" is there; following it.");
        readOn();
      }
    }
    return;
  }
  readOn(); // the rest, before the file is left
  if (!found.exists)
  {
    tell("$MTR$\"%file%\" is gone; waiting for it.");
    close();
  }
  else if (!(found == mIdentity))
  {
    tell("$MTR$\"%file%\" is another file now; following the new one.");
    open();
    if (mpFile)
    {
      readOn();
    }
  }
}

void cFollowed::seekToLastLines()
{
  unsigned long long start = mpFile->size(true);
  if (mOptions.lines() == 0)
  {
    mpFile->seek(0, mio::SeekFromEnd);
    return;
  }
  unsigned int iLines = 0;
  bool bLast = true; // the line break at the very end ends the last line
  mstd::tArray<char> block;
  while (start != 0)
  {
    unsigned int const iLength = start < Block ? static_cast<unsigned int>(start) : Block;
    block.setSize(iLength);
    mpFile->seek(static_cast<long long>(start - iLength), mio::SeekFromStart);
    unsigned int const iRead = static_cast<unsigned int>(mpFile->read(block.data(), iLength));
    for (unsigned int i = iRead; i-- > 0;)
    {
      if (block.at(i) == '\n' && !bLast && ++iLines >= mOptions.lines())
      {
        mpFile->seek(static_cast<long long>(start - iLength + i + 1), mio::SeekFromStart);
        return;
      }
      bLast = false;
    }
    start -= iLength;
  }
  mpFile->seek(0, mio::SeekFromStart);
}

void cFollowed::readOn()
{
  if (mpFile->pos() > mpFile->size(true))
  {
    tell("$MTR$\"%file%\" has become shorter; reading it from its start.");
    mpFile->seek(0, mio::SeekFromStart);
  }
  mstd::tArray<char> block;
  block.setFitOnErase(false);
  for (int i = 0; i < BlocksAtOnce; i++)
  {
    block.setSize(Block);
    unsigned int const iRead = static_cast<unsigned int>(mpFile->read(block.data(), Block));
    if (iRead == 0)
    {
      return;
    }
    block.truncate(iRead);
    sigText(this, &block);
  }
}

void cFollowed::tell(char const* key)
{
  mucs::cLIMessage message;
  message << key << mPath;
  sigTold(&message);
}

template <class tAction>
void cFollowed::guarded(tAction const& action)
{
  if (!mFollowed)
  {
    return;
  }
  try
  {
    action();
  }
  catch (mstd::cAbstractException const& e)
  {
    mFollowed = false;
    mCheck.stop();
    if (mpWatch)
    {
      mpWatch->stop(); // and goes with this, since it may be the one that runs
    }
    sigFailed(&e);
  }
}
