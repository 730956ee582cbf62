#ifndef MORTISE_UCS_CLIMESSAGE_H
#define MORTISE_UCS_CLIMESSAGE_H

#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mpi
{
class cAbstractOut;
}

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mstd
{
class cAsciiString;
class cNumberConversionFormat;
template <class T>
class tList;
} // namespace mstd

namespace mucs
{
class cLIItem;
class cLILocale;
class cString;

/// A text that is not yet put into a language: the English wording with named placeholders (the key) and
/// the values of its parameters.
///
/// It is built where something happens, carried about, and turned into a cString only when somebody reads
/// it: `cLIMessage() << "$MTR$File %file% is not a plugin!" << name`. The first text streamed in is the key,
/// each further value fills the next placeholder. A placeholder is `%name%`, or `%name` up to a blank; a
/// backslash takes the character behind it literally. Placeholders without a value read "???", values
/// without a placeholder are dropped: a message never fails to exist.
///
/// Ownership: copies are deep; swap() and moving exchange pointers.
/// Errors:    std::bad_alloc only, and what number conversion raises; the message stays as it was.
/// Threads:   belongs to one thread.
/// Cost:      an empty message allocates nothing.
class MORTISE_API cLIMessage
{
public:
  cLIMessage();
  /// Takes the key as it stands, without a search for a marker; translatable.
  cLIMessage(mstd::cAsciiString const& sKey);
  cLIMessage(cLIMessage const& mOther);
  cLIMessage(cLIMessage&& mOther) noexcept; ///< Leaves `mOther` empty.
  virtual ~cLIMessage();
  cLIMessage& operator=(cLIMessage const& mOther);
  cLIMessage& operator=(cLIMessage&& mOther) noexcept;
  void swap(cLIMessage& mOther) noexcept;

  /// The key while there is none: "$MTR$" (to be translated) or "$MNTR$" (not to be translated) at its start
  /// is taken off. Afterwards a text parameter. A null pointer counts as an empty text.
  cLIMessage& operator<<(char const* sText);
  cLIMessage& operator<<(mstd::cAsciiString const& sText);
  cLIMessage& operator<<(cString const& sText); ///< Always a text parameter.
  cLIMessage& operator<<(int iValue);
  cLIMessage& operator<<(unsigned int iValue);
  cLIMessage& operator<<(long long iValue);
  cLIMessage& operator<<(unsigned long long iValue);
  cLIMessage& operator<<(double dValue);
  /// Own format of this message, for the numbers streamed in later. It does not travel on a stream.
  cLIMessage& operator<<(mstd::cNumberConversionFormat const& fFormat);

  /// This message's own format, or else the system's default. Valid until the next change of the message.
  mstd::cNumberConversionFormat const& numberConversionFormat() const;
  /// The wording without its marker. Valid until the next change of the message.
  mstd::cAsciiString const& key() const;
  bool isTranslatable() const;
  /// Index in the key at which the next parameter looks for its placeholder.
  unsigned int scanPosition() const;
  /// The parameters in the order of streaming. Valid until the next change of the message.
  mstd::tList<cLIItem> const& items() const;

  /// Appends the other's key to this key and copies its items behind these. Scan position, translatable flag and
  /// format stay.
  void merge(cLIMessage const& mOther);

  /// Replaces `sOut` by the English wording with its parameters. Key bytes above 127 read "?".
  void untranslated(cString& sOut) const;
  /// As above; code points above 127 read "?".
  void untranslated(mstd::cAsciiString& sOut) const;
  /// Replaces `sOut` by `sText` with the parameters of this message if it is translatable, else as untranslated().
  /// `sText` and `sOut` may be the same.
  void translate(cString const& sText, cString& sOut) const;

  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& sSerializer) const;
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& sDeserializer);

private:
  class cImpl;

  cImpl& impl() const;
  cLIMessage& addText(char const* pText, unsigned int iLength);
  cLIMessage& addNumber(mstd::cAsciiString const& sNumber, unsigned int iKind);

  // Null stands for the empty message, so that a message that nobody fills costs nothing.
  mutable mstd::tAutoPtr<cImpl> mpImpl;
};

/// Writes the message, in the language of the system's locale and in the system's default encoding, to the debug
/// stream.
MORTISE_API mpi::cAbstractOut& operator<<(mpi::cAbstractOut& oOut, cLIMessage const& mMessage);
} // namespace mucs

#endif
