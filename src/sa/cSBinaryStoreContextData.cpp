#include "sa/cSBinaryStoreContextData.h"

#include "sa/cSerializeBinary.h"

namespace msa
{

cSBinaryStoreContextData::cSBinaryStoreContextData(cSerializeBinary& serializer, cSBinaryStoreContextData* pParent,
                                                   unsigned int iStartPos, unsigned int iContentPos)
    : mpSerializer(&serializer), mpParent(pParent), mStartPos(iStartPos),
      mLengthPos(iStartPos + static_cast<unsigned int>(sizeof(unsigned int))), mContentPos(iContentPos),
      mEndPos(iStartPos), mFinished(false), mClosed(false)
{
}

cSBinaryStoreContextData::~cSBinaryStoreContextData()
{
  close();
}

void cSBinaryStoreContextData::release()
{
  if (mFinished || mClosed)
  {
    return;
  }
  while (mpSerializer->mpContext != this)
  {
    mpSerializer->mpContext->close();
  }
  mEndPos = mpSerializer->finishContext(*this);
  mFinished = true;
  close();
}

void cSBinaryStoreContextData::rewind() const
{
  if (!mClosed)
  {
    mpSerializer->setPos(mContentPos);
  }
}

void cSBinaryStoreContextData::close()
{
  if (mClosed)
  {
    return;
  }
  while (mpSerializer->mpContext != this)
  {
    mpSerializer->mpContext->close();
  }
  mpSerializer->setPos(mFinished ? mEndPos : mStartPos);
  mpSerializer->mpContext = mpParent;
  mClosed = true;
}

} // namespace msa
