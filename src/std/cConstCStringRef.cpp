#include "std/cConstCStringRef.h"

#include "std/cArrayMemory.h"
#include "std/cSTDExceptions.h"
#include "std/tBounds.h"

#include <string.h>

mstd::cConstCStringRef::cConstCStringRef(char const* text) : cConstCStringRef(text, cArrayMemory::textLength(text)) {}

mstd::cConstCStringRef::cConstCStringRef(char const* text, unsigned int iLength)
    : mpCStyleStringRef(text), miLength(iLength)
{
  if (mpCStyleStringRef == nullptr)
  {
    cSTDExceptions::throwAssertionFailed("mpCStyleStringRef != 0", "std/cConstCStringRef", __LINE__);
  }
}

mstd::cConstCStringRef::~cConstCStringRef() {}

char const& mstd::cConstCStringRef::proxyAt(unsigned int index) const
{
  return (*this)[index];
}

unsigned int mstd::cConstCStringRef::proxyLength() const
{
  return miLength;
}

void mstd::cConstCStringRef::proxyCopyPartTo(char* target, unsigned int start, unsigned int iSize) const
{
  tBounds::startSize2End(miLength, start, iSize, "cConstCStringRef", "copyPartTo");
  if (iSize != 0)
  {
    memcpy(target, mpCStyleStringRef + start, iSize);
  }
}

char const* mstd::cConstCStringRef::proxyProvideData(unsigned int start, unsigned int iSize) const
{
  tBounds::startSize2End(miLength, start, iSize, "cConstCStringRef", "provideData");
  return mpCStyleStringRef + start;
}

unsigned int mstd::cConstCStringRef::proxyPreferredBlockSize() const
{
  return 0;
}

mstd::tAbstractConstArrayProxy<char> const* mstd::cConstCStringRef::constProxyPhysical(unsigned int& offset) const
{
  offset = 0;
  return this;
}

void mstd::cConstCStringRef::throwBadIndex()
{
  cSTDExceptions::throwAssertionFailed("i < miLength", "std/cConstCStringRef", __LINE__);
}
