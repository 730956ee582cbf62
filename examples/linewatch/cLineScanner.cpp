#include "cLineScanner.h"

#include <string.h>

cLineScanner::cLineScanner(mstd::tVector<mstd::cAsciiString> const& patterns, bool bKeep)
    : mPatterns(patterns), mKeep(bKeep), miTailSize(0), miLength(0), miLines(0), miBytes(0), miLongest(0)
{
  sigMatch.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  for (unsigned int i = 0; i < patterns.length(); i++)
  {
    if (patterns.at(i).length() > miTailSize + 1)
    {
      miTailSize = patterns.at(i).length() - 1;
    }
    mFound.append(0);
    mMatches.append(0);
  }
}

void cLineScanner::take(char const* pBytes, unsigned int iSize)
{
  miBytes += iSize;
  char const* const pEnd = pBytes + iSize;
  while (pBytes != pEnd)
  {
    void const* const pBreak = memchr(pBytes, '\n', static_cast<size_t>(pEnd - pBytes));
    char const* const pStop = pBreak == nullptr ? pEnd : static_cast<char const*>(pBreak);
    takePart(pBytes, static_cast<unsigned int>(pStop - pBytes));
    if (pBreak == nullptr)
    {
      return;
    }
    endLine();
    pBytes = pStop + 1;
  }
}

void cLineScanner::finish()
{
  if (miLength != 0)
  {
    endLine();
  }
}

void cLineScanner::takePart(char const* pBytes, unsigned int iSize)
{
  if (mKeep && mShown.length() < MaxShown)
  {
    unsigned int const iRoom = MaxShown - mShown.length();
    mShown.append(pBytes, iSize < iRoom ? iSize : iRoom);
  }
  // A text that began in earlier pieces ends within the first miTailSize bytes of this one.
  mstd::tArray<char> joint;
  if (mTail.length() != 0)
  {
    joint = mTail;
    joint.append(pBytes, iSize < miTailSize ? iSize : miTailSize);
  }
  for (unsigned int i = 0; i < mPatterns.length(); i++)
  {
    mstd::cAsciiString const& pattern = mPatterns.at(i);
    if (!mFound.at(i) &&
        (memmem(pBytes, iSize, pattern.c_str(), pattern.length()) != nullptr ||
         (!joint.empty() && memmem(joint.data(), joint.length(), pattern.c_str(), pattern.length()) != nullptr)))
    {
      mFound.at(i) = 1;
    }
  }
  keepTail(pBytes, iSize);
  miLength += iSize;
}

void cLineScanner::keepTail(char const* pBytes, unsigned int iSize)
{
  if (iSize >= miTailSize)
  {
    mTail.clear();
    mTail.append(pBytes + (iSize - miTailSize), miTailSize);
    return;
  }
  mTail.append(pBytes, iSize);
  if (mTail.length() > miTailSize)
  {
    mTail.erase(0, mTail.length() - miTailSize);
  }
}

void cLineScanner::endLine()
{
  bool bAny = false;
  for (unsigned int i = 0; i < mFound.length(); i++)
  {
    if (mFound.at(i))
    {
      mFound.at(i) = 0;
      mMatches.at(i)++;
      bAny = true;
    }
  }
  miLines++;
  if (miLength > miLongest)
  {
    miLongest = miLength;
  }
  if (bAny)
  {
    sigMatch(mShown, miLength);
  }
  miLength = 0;
  mTail.clear();
  mShown.clear();
}
