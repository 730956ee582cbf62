#ifndef MORTISE_SA_CTYPEREFERENCE_H
#define MORTISE_SA_CTYPEREFERENCE_H

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cAbstractTypeReference.h"
#include "sa/tTypeName.h"

#include <type_traits>

namespace msa
{

/// Reference to a variable of type `T`, which has stream operators.
template <class T>
class MORTISE_API cTypeReference : public cAbstractTypeReference
{
public:
  cTypeReference(T& value, bool bAlterable, bool bReadable)
      : cAbstractTypeReference(subFrame(value)), mpValue(&value), mAlterable(bAlterable), mReadable(bReadable)
  {
  }

  cAbstractTypeReference* create() override { return new cTypeReference(*this); }
  void store(cAbstractSerializer& serializer) override { *mpValue >> serializer; }
  void load(cAbstractDeserializer& deserializer) override { *mpValue << deserializer; }
  char const* mangeledTypeName() override { return typeid(T).name(); }
  char const* typeName() override { return tTypeName<T>::name(); }
  bool alterable() const override { return mAlterable; }
  bool readable() const override { return mReadable; }

  /// The variable.
  T& value() const { return *mpValue; }

private:
  cTypeReference(cTypeReference const&) = default;

  static cReferenceFrame* subFrame(cReferenceFrame& frame) { return &frame; }
  template <class tOther>
  static cReferenceFrame* subFrame(tOther&)
  {
    return nullptr;
  }

  T* mpValue; // not owned
  bool mAlterable;
  bool mReadable;
};

} // namespace msa

#endif
