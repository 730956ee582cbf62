#include "sa/cSerializeToTypeString.h"

#include "std/cSTDExceptions.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"

namespace msa
{

cSerializeToTypeString::cSerializeToTypeString() {}

cSerializeToTypeString::~cSerializeToTypeString() {}

void cSerializeToTypeString::storeType(char const* pTypeName)
{
  unsigned int const length = mTypeString.length();
  try
  {
    if (length != 0)
    {
      mTypeString += ", ";
    }
    mTypeString += pTypeName;
  }
  catch (...)
  {
    mTypeString.truncate(length);
    throw;
  }
}

void cSerializeToTypeString::storeBlock(char const*, unsigned int)
{
  storeType("char*");
}

void cSerializeToTypeString::store(unsigned char)
{
  storeType("piUChar");
}

void cSerializeToTypeString::store(signed char)
{
  storeType("piChar");
}

void cSerializeToTypeString::store(unsigned short)
{
  storeType("piUInt16");
}

void cSerializeToTypeString::store(short)
{
  storeType("piInt16");
}

void cSerializeToTypeString::store(unsigned int)
{
  storeType("piUInt32");
}

void cSerializeToTypeString::store(int)
{
  storeType("piInt32");
}

void cSerializeToTypeString::store(unsigned long long)
{
  storeType("piUInt64");
}

void cSerializeToTypeString::store(long long)
{
  storeType("piInt64");
}

void cSerializeToTypeString::store(bool)
{
  storeType("piBool");
}

void cSerializeToTypeString::store(double)
{
  storeType("piDouble");
}

void cSerializeToTypeString::store(mstd::cAsciiString const&)
{
  storeType("cAsciiString");
}

void cSerializeToTypeString::store(mucs::cString const&)
{
  storeType("cString");
}

void cSerializeToTypeString::rewind()
{
  mTypeString.clear();
}

void cSerializeToTypeString::clear()
{
  mTypeString.clear();
}

cContextRef cSerializeToTypeString::newContext(char const*)
{
  cSTDExceptions::throwUnsupportedOperation("cSerializeToTypeString::newContext(...)");
}

void cSerializeToTypeString::releaseCurrentContext() {}

cAbstractSerializer& cSerializeToTypeString::newLabel(mstd::cAsciiString const&)
{
  return *this;
}

mstd::tArrayRef<char> cSerializeToTypeString::data()
{
  cSTDExceptions::throwUnsupportedOperation("cSerializeToTypeString::data()");
}

void cSerializeToTypeString::swapData(mstd::tArray<char>& data)
{
  mstd::tArray<char> bytes;
  bytes.append(mTypeString.c_str(), mTypeString.length());
  data.swap(bytes);
}

} // namespace msa
