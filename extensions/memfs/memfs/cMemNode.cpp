#include "memfs/cMemNode.h"

#include "io/cPermissions.h"

#include <limits>
#include <string.h>

namespace mmem
{

namespace
{

unsigned long long const storedPermissions = mio::cPermissions::Archive * 2 - 1;
unsigned int const contentSector = 0x1000;

bool isBefore(mucs::cString const& left, mucs::cString const& right)
{
  unsigned int const shorter = left.length() < right.length() ? left.length() : right.length();
  for (unsigned int i = 0; i < shorter; ++i)
  {
    if (left.at(i) != right.at(i))
    {
      return left.at(i) < right.at(i);
    }
  }
  return left.length() < right.length();
}

} // namespace

cMemNode::cMemNode(mstd::tSharedObject<cMemSpace> const& pSpace, mio::cFileInfoFlags::Type type,
                   unsigned long long iPermissions)
    : mpSpace(pSpace), mType(type), miPermissions(iPermissions & storedPermissions), mModified(mRead), mChanged(mRead),
      mpParent(0)
{
  mpSpace->take(cost);
}

cMemNode::~cMemNode()
{
  mpSpace->give(cost + (isDirectory() ? 0 : size()));
}

unsigned long long cMemNode::size() const
{
  switch (mType)
  {
  case mio::cFileInfoFlags::Directory:
    return mEntries.length() * static_cast<unsigned long long>(cost);
  case mio::cFileInfoFlags::SymLink:
    return mTarget.length();
  default:
    return mContent.length();
  }
}

void cMemNode::setPermissions(unsigned long long iPermissions)
{
  miPermissions = iPermissions & storedPermissions;
  touchChanged();
}

mstd::cTime cMemNode::time(mio::cFileInfoFlags::TimeStamp stamp) const
{
  switch (stamp)
  {
  case mio::cFileInfoFlags::LastAccess:
    return mRead;
  case mio::cFileInfoFlags::LastStatusChange:
    return mChanged;
  default:
    return mModified;
  }
}

void cMemNode::touchRead()
{
  mRead = mstd::cTime();
}

void cMemNode::touchChanged()
{
  mChanged = mstd::cTime();
}

void cMemNode::touchModified()
{
  mModified = mstd::cTime();
  mChanged = mModified;
}

bool cMemNode::resize(unsigned int iSize)
{
  unsigned int const iOld = mContent.length();
  if (iSize <= iOld)
  {
    mContent.truncate(iSize);
    mpSpace->give(iOld - iSize);
    return true;
  }
  unsigned int const iMore = iSize - iOld;
  if (iMore > mpSpace->left())
  {
    return false;
  }
  memset(mContent.extend(iMore), 0, iMore);
  mpSpace->take(iMore);
  return true;
}

unsigned int cMemNode::roomAt(unsigned int iPos, unsigned long long iSize) const
{
  unsigned long long iEnd = mContent.length() + mpSpace->left();
  unsigned int const iLongest = std::numeric_limits<unsigned int>::max() - contentSector;
  if (iEnd > iLongest || iEnd < mContent.length())
  {
    iEnd = iLongest;
  }
  if (iEnd <= iPos)
  {
    return 0;
  }
  unsigned long long const iRoom = iEnd - iPos;
  return static_cast<unsigned int>(iSize < iRoom ? iSize : iRoom);
}

void cMemNode::write(unsigned int iPos, char const* pData, unsigned int iSize)
{
  unsigned int const iOld = mContent.length();
  unsigned int const iEnd = iPos + iSize;
  if (iEnd > iOld)
  {
    char* pNew = mContent.extend(iEnd - iOld);
    mpSpace->take(iEnd - iOld);
    if (iPos > iOld)
    {
      memset(pNew, 0, iPos - iOld);
    }
  }
  if (iSize != 0)
  {
    memcpy(mContent.data(iPos, iSize), pData, iSize);
  }
}

void cMemNode::setTarget(mucs::cString const& target)
{
  mpSpace->give(mTarget.length());
  mTarget = target;
  mpSpace->take(mTarget.length());
}

bool cMemNode::search(mucs::cString const& name, unsigned int& index) const
{
  unsigned int low = 0;
  unsigned int high = mEntries.length();
  while (low < high)
  {
    unsigned int const middle = low + (high - low) / 2;
    if (isBefore(mEntries.at(middle).mName, name))
    {
      low = middle + 1;
    }
    else
    {
      high = middle;
    }
  }
  index = low;
  return low < mEntries.length() && mEntries.at(low).mName == name;
}

cMemNode* cMemNode::find(mucs::cString const& name) const
{
  unsigned int index;
  return search(name, index) ? mEntries.at(index).mpNode.get() : 0;
}

cMemNode::cHandle cMemNode::handleOf(cMemNode const& child) const
{
  unsigned int index = 0;
  while (mEntries.at(index).mpNode.get() != &child)
  {
    ++index;
  }
  return mEntries.at(index).mpNode;
}

void cMemNode::link(mucs::cString const& name, cHandle const& pNode)
{
  unsigned int index;
  search(name, index);
  mEntries.insert(index, cEntry(name, pNode));
  pNode->mpParent = this;
  touchModified();
}

void cMemNode::unlink(mucs::cString const& name)
{
  unsigned int index;
  if (search(name, index))
  {
    cHandle const pNode = mEntries.at(index).mpNode;
    pNode->mpParent = 0;
    pNode->touchChanged();
    mEntries.erase(index);
    touchModified();
  }
}

void cMemNode::replace(mucs::cString const& name, cHandle const& pNode)
{
  unsigned int index;
  if (search(name, index))
  {
    cHandle pOther(pNode);
    cHandle& pPlace = mEntries.at(index).mpNode;
    pPlace->mpParent = 0;
    pPlace.swap(pOther);
    pNode->mpParent = this;
    touchModified();
  }
}

void cMemNode::clear()
{
  cMemNode* pNode = this;
  for (;;)
  {
    unsigned int const count = pNode->mEntries.length();
    if (count != 0)
    {
      cMemNode* pLast = pNode->mEntries.at(count - 1).mpNode.get();
      if (pLast->mEntries.empty())
      {
        pLast->mpParent = 0;
        pNode->mEntries.erase(count - 1);
      }
      else
      {
        pNode = pLast;
      }
    }
    else if (pNode == this)
    {
      return;
    }
    else
    {
      pNode = pNode->mpParent;
    }
  }
}

} // namespace mmem
