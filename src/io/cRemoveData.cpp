#include "io/cRemoveData.h"

#include "io/cDir.h"
#include "io/cDirInfo.h"
#include "io/cFileInfo.h"
#include "io/cFs.h"
#include "io/ioTypes.h"
#include "std/tStack.h"

namespace mio
{

namespace
{

/// How many listings stay open, at most. Each one of the platform costs a descriptor.
unsigned int const openListings = 64;

bool beginsWith(mucs::cString const& text, mucs::cString const& start)
{
  unsigned int const length = start.length();
  return length == 0 || (length <= text.length() && start.isEqual(text.data(0, length), length));
}

} // namespace

void cRemoveData::removeTree(cFs& fs, mucs::cString const& path)
{
  mstd::tStack<mstd::tAutoPtr<cRemoveData>> stack;
  stack.push(mstd::tAutoPtr<cRemoveData>(new cRemoveData(fs, path)));
  while (!stack.empty())
  {
    cRemoveData& current = *stack.top();
    if (current.isEnd())
    {
      mucs::cString const gone = current.mPath;
      current.mpDir.reinit(0);
      fs.remove(gone);
      stack.pop();
      if (!stack.empty())
      {
        stack.top()->resume(gone);
      }
      continue;
    }
    mucs::cString const entry = current.takeEntry();
    cFileInfo const info(fs, entry);
    // Of a link its own type is asked: what a dead one leads to has none.
    if (info.type(false) == cFileInfoFlags::Directory)
    {
      mstd::tAutoPtr<cRemoveData> pChild(new cRemoveData(fs, entry));
      if (stack.length() >= openListings)
      {
        current.suspend(entry);
      }
      stack.push(pChild);
    }
    else
    {
      fs.remove(entry);
    }
  }
}

cRemoveData::cRemoveData(cFs& fs, mucs::cString const& path)
    : mrFs(fs), mPath(path), miLength(path.length()), mpDir(new cDir(fs, path, DirHideDot | DirHideDotDot)),
      mWasAtEnd(false)
{
}

cRemoveData::~cRemoveData() {}

bool cRemoveData::isEnd()
{
  return mpDir.get() == 0 || mpDir->isEnd();
}

mucs::cString cRemoveData::takeEntry()
{
  mucs::cString const entry = mpDir->element().fullPath();
  mpDir->setNext();
  return entry;
}

void cRemoveData::suspend(mucs::cString const& child)
{
  mWasAtEnd = mpDir->isEnd();
  mpDir.reinit(0);
  if (beginsWith(child, mPath))
  {
    mucs::cString().swap(mPath);
  }
}

void cRemoveData::resume(mucs::cString const& child)
{
  if (mpDir.get() != 0)
  {
    return;
  }
  if (mPath.empty())
  {
    mPath = child;
    mPath.erase(miLength, mPath.length() - miLength);
  }
  // Each listing of a path far down costs a walk through all that is above it.
  if (!mWasAtEnd)
  {
    mpDir.reinit(new cDir(mrFs, mPath, DirHideDot | DirHideDotDot));
  }
}

} // namespace mio
