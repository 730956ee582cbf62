#include "rmi/tPublishedSlot.h"

#include "rmi/cConnectable.h"
#include "rmi/cPublicSlot.h"
#include "std/cSTDExceptions.h"
#include "std/tVector.h"

#include <string.h>

namespace mrmi
{
namespace
{
/// Takes the next name, without the blanks in front of it, and moves behind its comma.
mstd::cAsciiString nextName(char const*& pNames)
{
  pNames += ::strspn(pNames, " ");
  unsigned int const length = static_cast<unsigned int>(::strcspn(pNames, ","));
  mstd::cAsciiString name;
  name.append(pNames, length);
  pNames += length;
  if (*pNames != 0)
  {
    ++pNames;
  }
  return name;
}

unsigned int countNames(char const* pNames)
{
  unsigned int names = *pNames != 0 ? 1 : 0;
  for (; *pNames != 0; ++pNames)
  {
    names += *pNames == ',' ? 1 : 0;
  }
  return names;
}
} // namespace

cPublicSlot& cSlotPublisher::publish(cConnectable& object, mstd::cAsciiString const& name, cType const& result,
                                     cType const* pParameters, unsigned int parameters,
                                     mstd::cAsciiString const& parameterNames, mstd::cAsciiString const& description,
                                     mstd::tAutoPtr<cAbstractSlotCall> call)
{
  if (!(parameterNames.empty() || countNames(parameterNames.c_str()) == parameters))
  {
    cSTDExceptions::throwAssertionFailed("parameterNames.empty() || countNames(parameterNames) == parameters",
                                         "rmi/tPublishedSlot", __LINE__);
  }
  mstd::cAsciiString types;
  mstd::tVector<cSSValue> values;
  char const* pNames = parameterNames.c_str();
  for (unsigned int i = 0; i < parameters; ++i)
  {
    if (i != 0)
    {
      types.append(", ");
    }
    types.append(pParameters[i].mpName);
    cSSValue value;
    value.set(pParameters[i].mpName, pParameters[i].mAlterable, false);
    value.setDescription(nextName(pNames));
    values.append(value);
  }
  bool const isVoid = !result.mAlterable; // only a slot without a result does not write to it
  cSSValue returnValue;
  returnValue.set(result.mpName, result.mAlterable, isVoid);
  cPublicSlot& slot = object.registerSlot(name, result.mpName, types, description, call);
  slot.parameters().swap(values);
  slot.returnValue().swap(returnValue);
  return slot;
}

void cSlotPublisher::checkEnd(msa::cReferenceFrame const& frame)
{
  if (frame.canRead())
  {
    cSTDExceptions::throwOutOfBounds("cReferenceFrame", "readNext");
  }
}
} // namespace mrmi
