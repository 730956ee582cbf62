#ifndef MORTISE_IO_CREADAHEAD_H
#define MORTISE_IO_CREADAHEAD_H

// What a file has read beyond the line that was asked for. Nobody sees it: the file goes back to where its reader is
// before it does anything else, and drops what a change of any file in this process may have made old.

#include "pi/piTypes.h"
#include "std/tArray.h"

#include <string.h>

namespace mio
{

class cReadAhead
{
public:
  enum
  {
    SmallBlock = 0x1000, // where a file has to be left and entered again, more would be read in vain
    LargeBlock = 0x10000
  };

  cReadAhead() : miBegin(0), miEnd(0), miLineFeed(0), miBlock(SmallBlock), miChanges(0), miPosition(0), mPlaced(false)
  {
  }
  cReadAhead(cReadAhead const&) = delete;
  cReadAhead& operator=(cReadAhead const&) = delete;

  bool isEmpty() const { return miBegin == miEnd; }
  unsigned int length() const { return miEnd - miBegin; }
  char const* data() const { return mBuffer.data() + miBegin; }

  /// Whether position() is known: that of the reader, in front of what is held.
  bool isPlaced() const { return mPlaced; }
  piUInt64 position() const { return miPosition; }
  void place(piUInt64 iPosition)
  {
    miPosition = iPosition;
    mPlaced = true;
  }
  /// Forgets all; the reader's position is that of the file then.
  void drop()
  {
    miBegin = miEnd = 0;
    mPlaced = false;
  }

  /// Room for the next block, of block() bytes. What is held has to be used up.
  char* room()
  {
    mBuffer.setFitOnErase(false);
    mBuffer.setSize(miBlock);
    return mBuffer.data();
  }
  unsigned int block() const { return miBlock; }
  void setFilled(unsigned int iLength, unsigned int iChanges)
  {
    miBegin = 0;
    miEnd = iLength;
    miLineFeed = 0;
    mKnowsLineFeed = false;
    miChanges = iChanges;
    miBlock = LargeBlock;
  }
  void setSmall() { miBlock = SmallBlock; }
  /// What was counted when the block was read.
  unsigned int changes() const { return miChanges; }

  void consume(unsigned int iCount)
  {
    miBegin += iCount;
    miPosition += iCount;
  }
  /// Skips line ends.
  void skipBlank()
  {
    unsigned int iCount = 0;
    char const* const pData = data();
    while (iCount < length() && (pData[iCount] == '\r' || pData[iCount] == '\n'))
    {
      ++iCount;
    }
    consume(iCount);
  }
  /// Bytes in front of the next CR or LF; all if there is none.
  unsigned int lineLength()
  {
    if (!mKnowsLineFeed || miLineFeed < miBegin)
    {
      void const* const pFound = memchr(data(), '\n', length());
      miLineFeed =
          pFound == nullptr ? miEnd : miBegin + static_cast<unsigned int>(static_cast<char const*>(pFound) - data());
      mKnowsLineFeed = true; // so that lines that end with CR do not search the whole block each
    }
    void const* const pFound = memchr(data(), '\r', miLineFeed - miBegin);
    return pFound == nullptr ? miLineFeed - miBegin
                             : static_cast<unsigned int>(static_cast<char const*>(pFound) - data());
  }

private:
  mstd::tArray<char> mBuffer;
  unsigned int miBegin;
  unsigned int miEnd;
  unsigned int miLineFeed; // index of the first line feed from miBegin on, or miEnd
  bool mKnowsLineFeed = false;
  unsigned int miBlock;
  unsigned int miChanges;
  piUInt64 miPosition;
  bool mPlaced;
};

} // namespace mio

#endif
