#ifndef MORTISE_SA_CSBINARYLOADCONTEXTDATA_H
#define MORTISE_SA_CSBINARYLOADCONTEXTDATA_H

#include "sa/cAbstractContextData.h"

namespace msa
{

class cDeserializeBinary;

/// A context that is open in a cDeserializeBinary.
///
/// Closing one closes those that are still open in it as well: their guards then do nothing. The same happens when
/// the deserializer goes first or gets other data.
class MORTISE_API cSBinaryLoadContextData : public cAbstractContextData
{
public:
  ~cSBinaryLoadContextData() override;

  /// Marks the context as read: closing it then leaves the deserializer at its end.
  void release() override;
  /// Sets the deserializer to the start of the content.
  virtual void rewind() const;

private:
  friend class cDeserializeBinary;

  cSBinaryLoadContextData(cDeserializeBinary& deserializer, cSBinaryLoadContextData* pParent, unsigned int iStartPos,
                          unsigned int iLengthPos, unsigned int iContentPos, unsigned int iLength);
  void close();
  /// Where the context ends. At most the largest position, which no data reaches beyond.
  unsigned int end() const;

  cDeserializeBinary* mpDeserializer;
  cSBinaryLoadContextData* mpParent; // the context that was current before, or null
  unsigned int mStartPos;            // of the context's id, behind any labels
  unsigned int mLengthPos;           // of the id of the length value
  unsigned int mContentPos;
  unsigned int mLength; // from mLengthPos on
  bool mFinished;
  bool mClosed; // has stopped being current
};

} // namespace msa

#endif
