#ifndef MORTISE_STD_CABSTRACTTOKENSPEC_H
#define MORTISE_STD_CABSTRACTTOKENSPEC_H

#include "pi/piTypes.h"

namespace mstd
{

/// One entry of a tokenizer's context, as far as it does not depend on the kind of text: what it is
/// and how often it was met.
///
/// Ownership: an outer counter stays its owner's and must outlive the entry, or be taken away.
/// Errors:    none. Counts are taken modulo 2^32.
class MORTISE_API cAbstractTokenSpec
{
public:
  enum Type
  {
    Separator = 0, ///< divides words and vanishes
    Key = 1        ///< divides words and comes as a token of its own
  };

  explicit cAbstractTokenSpec(Type iType) : mType(iType), miHints(0), mpCounter(nullptr) {}
  virtual ~cAbstractTokenSpec();

  Type type() const { return mType; }

  /// How often the entry was met.
  unsigned int numHints() const { return miHints; }
  void setHints(unsigned int iHints) { miHints = iHints; }

  /// Counts each further hint in `*pCounter` too; null ends that. Several entries may share one counter,
  /// so a parser can count lines whatever context it is in.
  void leaveCount(unsigned int* pCounter) { mpCounter = pCounter; }

  /// Counts one more.
  void hint()
  {
    ++miHints;
    if (mpCounter != nullptr)
    {
      ++*mpCounter;
    }
  }

private:
  Type mType;
  unsigned int miHints;
  unsigned int* mpCounter;
};

} // namespace mstd

#endif
