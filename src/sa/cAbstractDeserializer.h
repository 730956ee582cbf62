#ifndef MORTISE_SA_CABSTRACTDESERIALIZER_H
#define MORTISE_SA_CABSTRACTDESERIALIZER_H

#include "pi/piTypes.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cContextRef.h"
#include "std/tArrayTraits.h"

namespace mstd
{
class cAsciiString;
}

namespace mucs
{
class cString;
}

namespace msa
{

/// Where values read themselves from, in the order and with the types in which they were written: `value <<
/// deserializer`. A compound enters its context, reads its members and commits:
///
///     msa::cContext context(deserializer.getContext("cPoint"));
///     miX << deserializer;
///     miY << deserializer;
///     context.release();
///
/// A committed context leaves the reader at its end, however much of it was read, so an old reader passes over new
/// members. An exception before that leaves the reader in front of the context.
///
/// Errors:  another type than asked for raises mstd::cTypeMissmatchException, or cLabeledTypeMissmatchException once a
/// label
///          has been passed; the end of the context raises mstd::cRuntimeException. The position is then where the
///          failed operation began.
/// Threads: an object belongs to one thread.
class MORTISE_API cAbstractDeserializer
{
public:
  cAbstractDeserializer() : mNoLabelsPreferred(false), mpPlace(nullptr) {}
  cAbstractDeserializer(cAbstractDeserializer const&) = delete; // open contexts refer to their deserializer
  cAbstractDeserializer& operator=(cAbstractDeserializer const&) = delete;
  virtual ~cAbstractDeserializer();

  /// Replaces the contents of `data` by an opaque run of bytes.
  virtual void loadBlock(mstd::tArray<char>& data) = 0;
  virtual void load(signed char& iValue) = 0;
  virtual void load(unsigned char& iValue) = 0;
  /// Here it loads an `unsigned int` and cuts it.
  virtual void load(unsigned short& iValue);
  /// Here it loads an `int` and cuts it.
  virtual void load(short& iValue);
  virtual void load(unsigned int& iValue) = 0;
  virtual void load(int& iValue) = 0;
  virtual void load(unsigned long long& iValue) = 0;
  virtual void load(long long& iValue) = 0;
  virtual void load(bool& bValue) = 0;
  virtual void load(double& dValue) = 0;
  virtual void load(mstd::cAsciiString& sValue) = 0;
  virtual void load(mucs::cString& sValue) = 0;

  /// Goes to the start of the content of the current context, or of the data if none is open.
  virtual void rewind() = 0;
  /// True at the end of the current context; labels with nothing behind them do not count.
  virtual bool eoc() const = 0;
  /// Copies the rest of the current context into another serializer. The position stays.
  virtual void reserialize(cAbstractSerializer& target) = 0;
  /// True if a context comes next.
  virtual bool isContext() = 0;
  /// True if a label comes next.
  virtual bool isLabel() = 0;
  /// Enters the next context. A name that is not null must be that of the context.
  virtual cContextRef getContext(char const* pTypeName) = 0;
  /// Name of the next context, which is not entered.
  virtual mstd::cAsciiString getNextContextTypeName() = 0;
  /// Name of the next label, which is not passed.
  virtual mstd::cAsciiString getNextLabelName() = 0;
  /// Leaves the current context at its end.
  virtual void releaseCurrentContext() = 0;
  /// Goes right behind the label, wherever in the current context it stands. Returns this deserializer.
  /// An unknown label raises mstd::cRuntimeException.
  virtual cAbstractDeserializer& findLabel(mstd::cAsciiString const& sLabel) = 0;
  /// As findLabel(); tells whether there is one. If not, the position stays.
  virtual bool tryFindLabel(mstd::cAsciiString const& sLabel) = 0;

  /// Whether compound values are to read themselves without labels; to be set as it was for the writer. False at first.
  bool noLabelsPreferred() const { return mNoLabelsPreferred; }
  void setPreferNoLabels(bool bPrefer) { mNoLabelsPreferred = bPrefer; }

  /// How far the reading is, a number that grows with each value that is read. It is for loops over a foreign stream,
  /// which must not go on for ever if there is nothing that grows. Always 0 if the format does not tell.
  unsigned int place() const { return mpPlace != nullptr ? *mpPlace : 0; }
  /// Whether place() tells something.
  bool hasPlace() const { return mpPlace != nullptr; }

protected:
  /// For a format that keeps its place in `*pPlace`.
  explicit cAbstractDeserializer(unsigned int const* pPlace) : mNoLabelsPreferred(false), mpPlace(pPlace) {}

private:
  bool mNoLabelsPreferred;
  unsigned int const* mpPlace; // not owned, null if the format has none
};

/// Values of the language read themselves as classes do: `value << deserializer`.
template <class T, typename std::enable_if<tIsStreamed<T>::value, int>::type = 0>
inline cAbstractDeserializer& operator<<(T& value, cAbstractDeserializer& deserializer)
{
  deserializer.load(value);
  return deserializer;
}

/// No value reads nothing.
inline cAbstractDeserializer& operator<<(piVoid&, cAbstractDeserializer& deserializer)
{
  return deserializer;
}

} // namespace msa

#endif
