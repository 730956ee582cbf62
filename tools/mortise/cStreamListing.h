#ifndef MORTISE_TOOLS_CSTREAMLISTING_H
#define MORTISE_TOOLS_CSTREAMLISTING_H

#include "sa/cDeserializeBinary.h"
#include "std/tArray.h"

#include <stdio.h>
#include <string>
#include <vector>

namespace msa
{
class cSerializeDebug;
}

/// Prints the values of a stream, with the lines that msa::cSerializeDebug has for them.
///
/// The walk goes from value to value and keeps the open contexts in an array, so that any depth of them takes neither
/// stack nor more than a few bytes for each. Lines deeper than `MaxIndent` contexts are indented as if they were that
/// deep: else the blanks would grow with the square of the depth.
class cStreamListing
{
public:
  enum Style
  {
    Offsets = 1, ///< a byte position in front of each line
    Harmless = 2 ///< nothing in a text can steer a terminal
  };
  static constexpr unsigned int MaxIndent = 64;

  /// Both must live as long as the listing.
  cStreamListing(mstd::tArray<char> const& data, FILE* pTarget, unsigned int iStyle);

  /// Whether the stream is whole. If not, all that comes before the damage is printed.
  bool print();

  /// First byte of the value that is damaged, or the end of the data if that is where more should be.
  unsigned int damagePos() const { return miDamagePos; }
  /// What is wrong there.
  std::string const& damage() const { return mDamage; }

private:
  struct cLevel
  {
    unsigned int miStart;
    unsigned int miEnd;
  };
  class cDamage;

  void walkValue(unsigned int iPos);
  void walkLabel(unsigned int iPos);
  void walkBlock(unsigned int iPos);
  void walkContext(unsigned int iPos);
  void leave();
  template <class T>
  void walkStored(unsigned int iPos);
  void expect(unsigned int iPos, msa::cSerializeBinaryShared::PrivatedTypeIDs eId, char const* what) const;
  unsigned int wordAt(unsigned int iPos) const;
  void checkEnd(unsigned int iPos) const;
  void printLines(unsigned int iPos, std::string const& text);
  template <class tStore>
  std::string textOf(tStore const& store);

  mstd::tArray<char> const& mData;
  msa::cDeserializeBinary mReader;
  FILE* mpTarget;
  unsigned int miStyle;
  std::vector<cLevel> mLevels;
  mstd::cAsciiString mLabel; // for the next line
  unsigned int miDamagePos = 0;
  std::string mDamage;
};

#endif
