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

  /// Tells a table that its entry is gone. It belongs to one object: copies have none.
  class cGoneMark
  {
  public:
    cGoneMark() : mpIsGone(0) {}
    cGoneMark(cGoneMark const&) : mpIsGone(0) {}
    cGoneMark& operator=(cGoneMark const&) { return *this; }
    ~cGoneMark()
    {
      if (mpIsGone != 0)
      {
        *mpIsGone = true;
      }
    }
    void set(bool* pIsGone) { mpIsGone = pIsGone; }

  private:
    bool* mpIsGone;
  };

  cGoneMark mGoneMark;
  mstd::cAsciiString mKey;
  cString mTranslation;
};
} // namespace mucs

#endif
