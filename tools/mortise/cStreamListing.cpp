#include "cStreamListing.h"

#include "cMessage.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "pi/piByteOrder.h"
#include "sa/cSerializeDebug.h"
#include "std/cAbstractException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "ucs/cString.h"

namespace
{

typedef msa::cSerializeBinaryShared cIds;

char const* nameOf(unsigned int iId)
{
  return cIds::idToString(static_cast<cIds::PrivatedTypeIDs>(iId));
}

std::string byte(unsigned int iPos)
{
  return "byte " + std::to_string(iPos);
}

/// Takes what is written to the debug output while it lives, and drops it.
class cSilence : public mpi::cAbstractOut
{
public:
  cSilence() : mpFormer(mpi::system().out.linked()) { mpi::system().out.link(this); }
  ~cSilence() override { mpi::system().out.link(mpFormer); }

  void printChar(char) override {}

private:
  mpi::cAbstractOut* mpFormer;
};

/// Takes it and keeps it.
class cLineSink : public cSilence
{
public:
  void printChar(char c) override
  {
    if (c == '\n')
    {
      mText.pop_back(); // the stream put a carriage return in front of it
    }
    mText += c;
  }

  std::string& text() { return mText; }

private:
  std::string mText;
};

} // namespace

/// Ends the walk.
class cStreamListing::cDamage
{
public:
  cDamage(unsigned int iPos, std::string const& text) : miPos(iPos), mText(text) {}

  unsigned int miPos;
  std::string mText;
};

cStreamListing::cStreamListing(mstd::tArray<char> const& data, FILE* pTarget, unsigned int iStyle)
    : mData(data), mReader(mstd::tConstArrayRef<char>(data)), mpTarget(pTarget), miStyle(iStyle)
{
}

bool cStreamListing::print()
{
  cSilence const silence; // the library traces where a read goes beyond the data, which here is no bug
  unsigned int iPos = 0;
  try
  {
    try
    {
      for (;;)
      {
        iPos = mReader.currentPos();
        if (!mLevels.empty() && iPos == mLevels.back().miEnd)
        {
          leave();
        }
        else if (iPos < mData.length())
        {
          walkValue(iPos);
        }
        else if (mLevels.empty())
        {
          return true;
        }
        else
        {
          throw cDamage(iPos, "the data ends inside the context at " + byte(mLevels.back().miStart) +
                                  ", which goes on to " + byte(mLevels.back().miEnd));
        }
      }
    }
    catch (mstd::cOutOfRangeException const&)
    {
      throw cDamage(iPos, "");
    }
    catch (mstd::cOutOfBoundsException const&)
    {
      throw cDamage(iPos, "");
    }
    catch (mstd::cAbstractException const& e)
    {
      throw cDamage(iPos, cMessage::of(e));
    }
  }
  catch (cDamage const& damage)
  {
    miDamagePos = damage.miPos;
    mDamage = damage.mText;
    if (mDamage.empty()) // a read went beyond the data
    {
      mDamage = mData.length() - iPos < 4
                    ? "the data ends inside a type id"
                    : std::string("the data ends inside a value of the type ") + nameOf(wordAt(iPos));
    }
    if (!mLabel.empty())
    {
      mDamage += std::string(" (behind the label \"") + mLabel.c_str() + "\")";
    }
    return false;
  }
}

void cStreamListing::walkValue(unsigned int iPos)
{
  unsigned int const iId = wordAt(iPos);
  switch (iId)
  {
  case cIds::RawBytes:
  case cIds::RawBytes64:
    return walkBlock(iPos);
  case cIds::UChar:
    return walkStored<unsigned char>(iPos);
  case cIds::Char:
    return walkStored<signed char>(iPos);
  case cIds::UInt32:
    return walkStored<unsigned int>(iPos);
  case cIds::Int32:
    return walkStored<int>(iPos);
  case cIds::UInt64:
    return walkStored<unsigned long long>(iPos);
  case cIds::Int64:
    return walkStored<long long>(iPos);
  case cIds::Bool:
    return walkStored<bool>(iPos);
  case cIds::Double:
    return walkStored<double>(iPos);
  case cIds::UInt16:
    return walkStored<unsigned short>(iPos);
  case cIds::Int16:
    return walkStored<short>(iPos);
  case cIds::AsciiString:
    return walkStored<mstd::cAsciiString>(iPos);
  case cIds::String:
  case cIds::StringUTF8:
    return walkStored<mucs::cString>(iPos);
  case cIds::Label:
    return walkLabel(iPos);
  case cIds::Context:
  case cIds::Context64:
    return walkContext(iPos);
  default:
    throw cDamage(iPos, std::to_string(iId) + " is no type id");
  }
}

template <class T>
void cStreamListing::walkStored(unsigned int iPos)
{
  T value = T();
  mReader.load(value);
  checkEnd(iPos);
  printLines(iPos, textOf([&value](msa::cSerializeDebug& debug) { debug.store(value); }));
}

void cStreamListing::walkBlock(unsigned int iPos)
{
  unsigned int iDataPos = 0;
  unsigned long long iSize = 0;
  mReader.getNextBlockInfo(iDataPos, iSize);
  // A block's bytes are not shown, so they need not be copied either.
  cIds::PrivatedTypeIDs eId;
  mReader.getNextTypeId(eId, false);
  mReader.skipType(eId);
  if (mReader.currentPos() > mData.length())
  {
    throw cDamage(iPos, "");
  }
  checkEnd(iPos);
  printLines(iPos, textOf([iSize](msa::cSerializeDebug& debug) {
               debug.storeBlock(nullptr, static_cast<unsigned int>(iSize));
             }));
}

void cStreamListing::walkLabel(unsigned int iPos)
{
  expect(iPos + 4, cIds::AsciiString, "the text of a label");
  cIds::PrivatedTypeIDs eId;
  mReader.getNextTypeId(eId, false);
  mstd::cAsciiString label;
  mReader.load(label);
  checkEnd(iPos);
  mLabel.swap(label);
}

void cStreamListing::walkContext(unsigned int iPos)
{
  unsigned int iLength = 0;
  unsigned int iLengthPos = 0;
  bool const bLong = wordAt(iPos) == cIds::Context64;
  expect(iPos + 4, bLong ? cIds::UInt64 : cIds::UInt32, "the length of a context");
  mReader.expectContext(iLength, iLengthPos);
  unsigned long long const iEnd = static_cast<unsigned long long>(iLengthPos) + iLength;
  expect(mReader.currentPos(), cIds::Bool, "the flag of a context");
  bool bNamed = false;
  mReader.load(bNamed);
  mstd::cAsciiString name;
  if (bNamed)
  {
    expect(mReader.currentPos(), cIds::AsciiString, "the name of a context");
    mReader.load(name);
  }
  unsigned int const iContentPos = mReader.currentPos();
  if (iEnd < iContentPos)
  {
    throw cDamage(iPos, "a context that ends before its content begins");
  }
  unsigned long long const iOuterEnd = mLevels.empty() ? 0xFFFFFFFFu : mLevels.back().miEnd;
  if (iEnd > iOuterEnd)
  {
    throw cDamage(iPos, mLevels.empty() ? "a context that ends beyond all positions"
                                        : "a context that ends behind the one around it, at byte " +
                                              std::to_string(iEnd) + " and not up to " + byte(mLevels.back().miEnd));
  }
  std::string text = textOf([&name, bNamed](msa::cSerializeDebug& debug) {
    msa::cContextRef const context(debug.newContext(bNamed ? name.c_str() : nullptr));
  });
  // The brace stands at the content.
  size_t const iBrace = text.rfind("  {");
  printLines(iPos, text.substr(0, iBrace));
  printLines(iContentPos, text.substr(iBrace));
  mLevels.push_back(cLevel{iPos, static_cast<unsigned int>(iEnd)});
}

void cStreamListing::leave()
{
  unsigned int const iEnd = mLevels.back().miEnd;
  mLevels.pop_back();
  printLines(iEnd, textOf([](msa::cSerializeDebug& debug) { debug.releaseCurrentContext(); }));
}

void cStreamListing::expect(unsigned int iPos, cIds::PrivatedTypeIDs eId, char const* what) const
{
  unsigned int const iFound = wordAt(iPos);
  if (iFound != eId)
  {
    throw cDamage(iPos, std::string(what) + " is to be of the type " + cIds::idToString(eId) + ", not of the type " +
                            nameOf(iFound));
  }
}

unsigned int cStreamListing::wordAt(unsigned int iPos) const
{
  piUInt32 iWire = 0;
  mReader.loadRaw(iPos, reinterpret_cast<char*>(&iWire), sizeof iWire);
  return mpi::littleEndianToPlatformType32(iWire);
}

/// What was read from `iPos` on has to end within its context.
void cStreamListing::checkEnd(unsigned int iPos) const
{
  if (!mLevels.empty() && mReader.currentPos() > mLevels.back().miEnd)
  {
    throw cDamage(iPos, std::string("a value of the type ") + nameOf(wordAt(iPos)) + " goes on behind " +
                            byte(mLevels.back().miEnd) + ", where its context ends");
  }
}

/// The lines that the library prints for what `store` does, at the outermost level.
template <class tStore>
std::string cStreamListing::textOf(tStore const& store)
{
  cLineSink sink;
  msa::cSerializeDebug debug;
  debug.newLabel(mLabel);
  mLabel.truncate(0);
  store(debug);
  return std::move(sink.text());
}

void cStreamListing::printLines(unsigned int iPos, std::string const& text)
{
  if (miStyle & Offsets)
  {
    fprintf(mpTarget, "%10u  ", iPos);
  }
  size_t const iDepth = mLevels.size() < MaxIndent ? mLevels.size() : MaxIndent;
  fprintf(mpTarget, "%*s", static_cast<int>(4 * iDepth), "");
  std::string const shown = miStyle & Harmless ? cMessage::harmless(text) : text;
  fwrite(shown.data(), 1, shown.size(), mpTarget);
}
