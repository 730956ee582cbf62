#ifndef MORTISE_SA_CDUMMYCONTEXTDATA_H
#define MORTISE_SA_CDUMMYCONTEXTDATA_H

#include "sa/cAbstractContextData.h"

namespace msa
{

class cAbstractSerializer;

/// An open context of a serializer that cannot take back what it has put out: it closes the context if it was
/// committed, and does nothing otherwise.
///
/// Ownership: refers to the serializer, which must outlive it.
class MORTISE_API cDummyContextData : public cAbstractContextData
{
public:
  explicit cDummyContextData(cAbstractSerializer& serializer) : mSerializer(serializer), mReleased(false) {}
  /// What the serializer throws when the context is closed goes to the debug output.
  ~cDummyContextData() override;

  void release() override;

private:
  cAbstractSerializer& mSerializer;
  bool mReleased;
};

} // namespace msa

#endif
