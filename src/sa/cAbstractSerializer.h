#ifndef MORTISE_SA_CABSTRACTSERIALIZER_H
#define MORTISE_SA_CABSTRACTSERIALIZER_H

#include "pi/piTypes.h"
#include "sa/cContextRef.h"
#include "std/tArrayTraits.h"

#include <type_traits>

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

/// Where values write themselves to: a sequence of typed values, grouped by nestable contexts and marked by labels.
///
/// A value is written by `value >> serializer`. A compound opens a context, writes its members and commits:
///
///     msa::cContext context(serializer.newContext("cPoint"));
///     miX >> serializer;
///     miY >> serializer;
///     context.release();
///
/// An exception between the first and the last line leaves the serializer as it was before the first.
///
/// A type that can be stored with and without labels asks noLabelsPreferred(): bare values in a fixed order if that
/// is true, a label in front of each value if it is not. Its reader asks the same of the deserializer.
///
/// Threads: an object belongs to one thread.
class MORTISE_API cAbstractSerializer
{
public:
  cAbstractSerializer() : mNoLabelsPreferred(false) {}
  cAbstractSerializer(cAbstractSerializer const&) = delete; // open contexts refer to their serializer
  cAbstractSerializer& operator=(cAbstractSerializer const&) = delete;
  virtual ~cAbstractSerializer();

  /// An opaque run of bytes. Null with a size of 0 is an empty one.
  virtual void storeBlock(char const* pData, unsigned int iSize) = 0;
  virtual void store(unsigned char iValue) = 0;
  virtual void store(signed char iValue) = 0;
  /// Here it stores an `unsigned int`.
  virtual void store(unsigned short iValue);
  /// Here it stores an `int`.
  virtual void store(short iValue);
  virtual void store(unsigned int iValue) = 0;
  virtual void store(int iValue) = 0;
  virtual void store(unsigned long long iValue) = 0;
  virtual void store(long long iValue) = 0;
  virtual void store(bool bValue) = 0;
  virtual void store(double dValue) = 0;
  virtual void store(mstd::cAsciiString const& sValue) = 0;
  virtual void store(mucs::cString const& sValue) = 0;

  /// Goes to the start of the content of the current context, or of the data if none is open.
  virtual void rewind() = 0;
  /// Forgets everything that was written. Open contexts are an error of the caller.
  virtual void clear() = 0;
  /// Opens a context inside the current one. `pTypeName` may be null: that context has no name.
  virtual cContextRef newContext(char const* pTypeName) = 0;
  /// Commits and closes the current context. The guards do this; it is rarely called otherwise.
  virtual void releaseCurrentContext() = 0;
  /// Names what follows. Returns this serializer.
  virtual cAbstractSerializer& newLabel(mstd::cAsciiString const& sLabel) = 0;
  /// View of the bytes written so far, valid until the next change. Open contexts are an error of the caller.
  virtual mstd::tArrayRef<char> data() = 0;
  /// Exchanges the bytes written with those of `data` and starts anew, without a copy where the format allows it.
  virtual void swapData(mstd::tArray<char>& data) = 0;
  /// Writes data() to a file of the system's file system, which is made, or emptied before. Raises what opening and
  /// writing raise; the file holds then what was written until then.
  virtual void storeToFile(mucs::cString const& path);

  /// Whether compound values are to write themselves without labels. False at first.
  bool noLabelsPreferred() const { return mNoLabelsPreferred; }
  void setPreferNoLabels(bool bPrefer) { mNoLabelsPreferred = bPrefer; }

private:
  bool mNoLabelsPreferred;
};

/// Whether `T` is one of the types of the language that a stream holds.
template <class T>
struct tIsStreamed
{
  enum
  {
    value = std::is_same<T, bool>::value || std::is_same<T, unsigned char>::value ||
            std::is_same<T, signed char>::value || std::is_same<T, unsigned short>::value ||
            std::is_same<T, short>::value || std::is_same<T, unsigned int>::value || std::is_same<T, int>::value ||
            std::is_same<T, unsigned long long>::value || std::is_same<T, long long>::value ||
            std::is_same<T, double>::value
  };
};

/// Values of the language write themselves as classes do: `value >> serializer`. A type of another width, such as
/// `long` or `char`, has to be turned into one that is the same everywhere first.
template <class T, typename std::enable_if<tIsStreamed<T>::value, int>::type = 0>
inline cAbstractSerializer& operator>>(T const& value, cAbstractSerializer& serializer)
{
  serializer.store(value);
  return serializer;
}

/// No value writes nothing.
inline cAbstractSerializer& operator>>(piVoid const&, cAbstractSerializer& serializer)
{
  return serializer;
}

} // namespace msa

#endif
