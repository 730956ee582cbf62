#include "sa/cSBinaryLoadContextData.h"

#include "sa/cDeserializeBinary.h"

namespace msa
{

cSBinaryLoadContextData::cSBinaryLoadContextData(cDeserializeBinary& deserializer, cSBinaryLoadContextData* pParent,
                                                 unsigned int iStartPos, unsigned int iLengthPos,
                                                 unsigned int iContentPos, unsigned int iLength)
    : mpDeserializer(&deserializer), mpParent(pParent), mStartPos(iStartPos), mLengthPos(iLengthPos),
      mContentPos(iContentPos), mLength(iLength), mFinished(false), mClosed(false)
{
}

cSBinaryLoadContextData::~cSBinaryLoadContextData()
{
  close();
}

void cSBinaryLoadContextData::release()
{
  mFinished = true;
}

void cSBinaryLoadContextData::rewind() const
{
  if (!mClosed)
  {
    mpDeserializer->mPos = mContentPos;
  }
}

void cSBinaryLoadContextData::close()
{
  if (mClosed)
  {
    return;
  }
  while (mpDeserializer->mpContext != this)
  {
    mpDeserializer->mpContext->close();
  }
  mpDeserializer->mPos = mFinished ? end() : mStartPos;
  mpDeserializer->mpContext = mpParent;
  mpDeserializer->updateEnd();
  mClosed = true;
}

unsigned int cSBinaryLoadContextData::end() const
{
  unsigned int const iEnd = mLengthPos + mLength;
  return iEnd < mLengthPos ? 0xFFFFFFFFu : iEnd;
}

} // namespace msa
