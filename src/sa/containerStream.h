#ifndef MORTISE_SA_CONTAINERSTREAM_H
#define MORTISE_SA_CONTAINERSTREAM_H

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cContext.h"
#include "sa/cSAExceptions.h"
#include "sa/cSerializeBinaryShared.h"
#include "std/tList.h"
#include "std/tVector.h"

/// \file
/// Stream operators of the containers: a context that holds the elements one behind the other, each written by its own
/// operator. The writer gives every such context the same name; the reader takes any, and leaves its target as it was
/// if an element can't be read.

namespace msa
{

/// Name of the context that a container writes.
constexpr char const* ContainerContextName = "unknown";

template <class T>
cAbstractSerializer& operator>>(mstd::tVector<T> const& vector, cAbstractSerializer& serializer)
{
  cContext context(serializer.newContext(ContainerContextName));
  for (unsigned int i = 0; i < vector.length(); ++i)
  {
    vector.at(i) >> serializer;
  }
  context.release();
  return serializer;
}

template <class T>
cAbstractSerializer& operator>>(mstd::tList<T> const& list, cAbstractSerializer& serializer)
{
  cContext context(serializer.newContext(ContainerContextName));
  for (T const& element : list)
  {
    element >> serializer;
  }
  context.release();
  return serializer;
}

/// Reads the elements of the next context into a container that has append() and swap(). An element that reads
/// nothing never comes to the end of what a hostile stream has for it: cSAExceptions::throwInvalidTypeId().
template <class T, class tContainer>
cAbstractDeserializer& loadElements(tContainer& target, cAbstractDeserializer& deserializer)
{
  tContainer container;
  cContext context(deserializer.getContext(nullptr));
  while (!deserializer.eoc())
  {
    unsigned int const iPlace = deserializer.place();
    T element = T();
    element << deserializer;
    if (deserializer.place() <= iPlace && deserializer.hasPlace())
    {
      cSAExceptions::throwInvalidTypeId(cSerializeBinaryShared::Context);
    }
    container.append(element);
  }
  context.release();
  target.swap(container);
  return deserializer;
}

template <class T>
cAbstractDeserializer& operator<<(mstd::tVector<T>& vector, cAbstractDeserializer& deserializer)
{
  return loadElements<T>(vector, deserializer);
}

template <class T>
cAbstractDeserializer& operator<<(mstd::tList<T>& list, cAbstractDeserializer& deserializer)
{
  return loadElements<T>(list, deserializer);
}

} // namespace msa

#endif
