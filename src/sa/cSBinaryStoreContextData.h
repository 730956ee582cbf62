#ifndef MORTISE_SA_CSBINARYSTORECONTEXTDATA_H
#define MORTISE_SA_CSBINARYSTORECONTEXTDATA_H

#include "sa/cAbstractContextData.h"

namespace msa
{

class cSerializeBinary;

/// A context that is open in a cSerializeBinary.
///
/// Closing one closes those that are still open in it as well: their guards then do nothing. The same happens when
/// the serializer goes first.
class MORTISE_API cSBinaryStoreContextData : public cAbstractContextData
{
public:
  ~cSBinaryStoreContextData() override;

  /// Writes the length in front of the content and closes the context.
  void release() override;
  /// Sets the serializer to the start of the content.
  virtual void rewind() const;

private:
  friend class cSerializeBinary;

  cSBinaryStoreContextData(cSerializeBinary& serializer, cSBinaryStoreContextData* pParent, unsigned int iStartPos,
                           unsigned int iContentPos);
  void close();

  cSerializeBinary* mpSerializer;
  cSBinaryStoreContextData* mpParent; // the context that was current before, or null
  unsigned int mStartPos;             // of the context's id; where an uncommitted context leaves the serializer
  unsigned int mLengthPos;            // of the id of the length value
  unsigned int mContentPos;
  unsigned int mEndPos; // valid once finished
  bool mFinished;
  bool mClosed; // has stopped being current
};

} // namespace msa

#endif
