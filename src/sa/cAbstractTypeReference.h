#ifndef MORTISE_SA_CABSTRACTTYPEREFERENCE_H
#define MORTISE_SA_CABSTRACTTYPEREFERENCE_H

#include "pi/piTypes.h"

namespace msa
{

class cAbstractDeserializer;
class cAbstractSerializer;
class cReferenceFrame;

/// Reference to a variable of any type: one entry of a typed argument list.
///
/// Ownership: refers to the variable, which must outlive it.
class MORTISE_API cAbstractTypeReference
{
public:
  cAbstractTypeReference() : mpSubFrame(nullptr) {}
  /// For a reference that stands for a nested argument list.
  explicit cAbstractTypeReference(cReferenceFrame* pSubFrame) : mpSubFrame(pSubFrame) {}
  cAbstractTypeReference& operator=(cAbstractTypeReference const&) = delete;
  virtual ~cAbstractTypeReference();

  /// A copy on the heap, which is the caller's and refers to the same variable.
  virtual cAbstractTypeReference* create() = 0;
  /// Writes the value of the variable.
  virtual void store(cAbstractSerializer& serializer) = 0;
  /// Reads the value of the variable.
  virtual void load(cAbstractDeserializer& deserializer) = 0;
  /// The type's name as the compiler writes it: the same for the same type in two libraries.
  virtual char const* mangeledTypeName() = 0;
  /// The type's readable name.
  virtual char const* typeName() = 0;
  /// Whether the receiver may write to the variable; its value then goes back to the caller.
  virtual bool alterable() const = 0;
  /// Whether the variable has a value on entry; it then goes from the caller to the receiver.
  virtual bool readable() const = 0;

  /// The nested argument list that this reference stands for, or null.
  cReferenceFrame* isSubReferenceFrame() const { return mpSubFrame; }

protected:
  cAbstractTypeReference(cAbstractTypeReference const&) = default;

private:
  cReferenceFrame* mpSubFrame; // not owned
};

} // namespace msa

#endif
