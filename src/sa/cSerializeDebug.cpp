#include "sa/cSerializeDebug.h"

#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "sa/cDummyContextData.h"
#include "std/cNumberConversionFormat.h"
#include "std/cSTDExceptions.h"
#include "std/tArrayRef.h"
#include "ucs/cString.h"

#include <string.h>

namespace msa
{

namespace
{

unsigned int const IndentWidth = 4;

// Not the system's default, which an application may change: a listing is decimal.
mstd::cNumberConversionFormat decimal()
{
  return mstd::cNumberConversionFormat(10);
}

} // namespace

cSerializeDebug::cSerializeDebug() : miIndent(0) {}

cSerializeDebug::~cSerializeDebug() {}

void cSerializeDebug::storeDataLine(mstd::cAsciiString const& sText, bool bSemicolon)
{
  mstd::cAsciiString line;
  line.leftAdjust(miIndent * IndentWidth);
  if (!mPendingLabel.empty())
  {
    line += "<label ";
    line += mPendingLabel;
    line += "> ";
  }
  line += sText;
  if (bSemicolon)
  {
    line += ';';
  }
  {
    mpi::cAbstractOut& out = mpi::system().out;
    mp::cLocker::cLock lock(out.mutex());
    out.debugMessage("sa/cSerializeDebug", __LINE__) << line << "\n" << mpi::cAbstractOut::clearDebugMessage();
  }
  mPendingLabel.clear();
}

void cSerializeDebug::storeNumber(char const* pTypeName, long long iValue)
{
  mstd::cAsciiString text(pTypeName);
  text += " = ";
  text.addNum(iValue, decimal());
  storeDataLine(text, true);
}

void cSerializeDebug::storeNumber(char const* pTypeName, unsigned long long iValue)
{
  mstd::cAsciiString text(pTypeName);
  text += " = ";
  text.addUNum(iValue, decimal());
  storeDataLine(text, true);
}

void cSerializeDebug::storeBlock(char const*, unsigned int iSize)
{
  mstd::cAsciiString text("<raw bytes of size ");
  text.addUNum32(iSize, decimal());
  text += '>';
  storeDataLine(text, true);
}

void cSerializeDebug::store(unsigned char iValue)
{
  storeNumber("piUChar", static_cast<unsigned long long>(iValue));
}

void cSerializeDebug::store(signed char iValue)
{
  storeNumber("piChar", static_cast<long long>(iValue));
}

void cSerializeDebug::store(unsigned short iValue)
{
  storeNumber("piUInt16", static_cast<unsigned long long>(iValue));
}

void cSerializeDebug::store(short iValue)
{
  storeNumber("piInt16", static_cast<long long>(iValue));
}

void cSerializeDebug::store(unsigned int iValue)
{
  storeNumber("piUInt32", static_cast<unsigned long long>(iValue));
}

void cSerializeDebug::store(int iValue)
{
  storeNumber("piInt32", static_cast<long long>(iValue));
}

void cSerializeDebug::store(unsigned long long iValue)
{
  storeNumber("piUInt64", iValue);
}

void cSerializeDebug::store(long long iValue)
{
  storeNumber("piInt64", iValue);
}

void cSerializeDebug::store(bool bValue)
{
  storeDataLine(bValue ? "piBool = true" : "piBool = false", true);
}

void cSerializeDebug::store(double)
{
  storeDataLine("piDoubleID = x.y", true);
}

void cSerializeDebug::store(mstd::cAsciiString const& sValue)
{
  mstd::cAsciiString text("cAsciiString = \"");
  text += sValue;
  text += '"';
  storeDataLine(text, true);
}

void cSerializeDebug::store(mucs::cString const& sValue)
{
  mstd::cAsciiString value;
  sValue.toAscii(value, '?');
  mstd::cAsciiString text("cString = \"");
  text += value;
  text += '"';
  storeDataLine(text, true);
}

void cSerializeDebug::rewind()
{
  cSTDExceptions::throwUnsupportedOperation("cSerializeDebug::rewind()");
}

void cSerializeDebug::clear()
{
  cSTDExceptions::throwUnsupportedOperation("cSerializeDebug::clear()");
}

cContextRef cSerializeDebug::newContext(char const* pTypeName)
{
  mstd::cAsciiString text("<context ");
  if (pTypeName != nullptr)
  {
    text += '"';
    text += pTypeName;
    text += '"';
  }
  else
  {
    text += "(unnamed)";
  }
  text += '>';
  cContextRef context(new cDummyContextData(*this));
  storeDataLine(text, false);
  storeDataLine("  {", false);
  ++miIndent;
  return context;
}

void cSerializeDebug::releaseCurrentContext()
{
  if (miIndent != 0) // without a context there is nothing to step back from
  {
    --miIndent;
  }
  storeDataLine("  }", false);
}

cAbstractSerializer& cSerializeDebug::newLabel(mstd::cAsciiString const& sLabel)
{
  mPendingLabel = sLabel;
  return *this;
}

mstd::tArrayRef<char> cSerializeDebug::data()
{
  cSTDExceptions::throwUnsupportedOperation("cSerializeDebug::data()");
}

void cSerializeDebug::swapData(mstd::tArray<char>&)
{
  cSTDExceptions::throwUnsupportedOperation("cSerializeDebug::swapData()");
}

} // namespace msa
