#ifndef MORTISE_UCS_CLITRITEM_H
#define MORTISE_UCS_CLITRITEM_H

#include "std/cAsciiString.h"
#include "ucs/cString.h"

namespace mucs
{
/// One entry of a translation table.
class MORTISE_API cLITrItem
{
public:
  cLITrItem();
  cLITrItem(mstd::cAsciiString const& sKey, cString const& sTranslation);
  cLITrItem(mstd::cAsciiString&& sKey, cString&& sTranslation); ///< Takes the texts over.

  /// The English wording, without a marker.
  mstd::cAsciiString const& key() const { return mKey; }
  /// The wording in the language of the table, with the placeholders of the key in any order.
  cString const& translation() const { return mTranslation; }

  /// Key, then translation.
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& sSerializer) const;
  /// A failure leaves the item as it was.
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& sDeserializer);

private:
  friend class cLITrTable;

  /// Shared by the index of a table and its entries, so that it lives as long as any of them.
  struct cGoneState
  {
    unsigned int miUsers;
    bool mIsGone; ///< An entry has gone, or belongs to another table.
  };

  static void leave(cGoneState* pState)
  {
    if (--pState->miUsers == 0)
    {
      delete pState;
    }
  }

  /// Tells an index that its entry is gone. It belongs to one object: copies have none.
  class cGoneMark
  {
  public:
    cGoneMark() : mpState(0) {}
    cGoneMark(cGoneMark const&) : mpState(0) {}
    cGoneMark& operator=(cGoneMark const&) { return *this; }
    ~cGoneMark() { tell(); }
    void set(cGoneState* pState)
    {
      ++pState->miUsers;
      tell();
      mpState = pState;
    }

  private:
    void tell()
    {
      if (mpState != 0)
      {
        mpState->mIsGone = true;
        leave(mpState);
      }
    }

    cGoneState* mpState;
  };

  cGoneMark mGoneMark;
  mstd::cAsciiString mKey;
  cString mTranslation;
};
} // namespace mucs

#endif
