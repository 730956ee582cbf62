#ifndef MORTISE_SA_CDESERIALIZEBINARY_H
#define MORTISE_SA_CDESERIALIZEBINARY_H

#include "sa/binaryNumber.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cSerializeBinaryShared.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"

namespace msa
{

class cSBinaryLoadContextData;

/// Reads values in the binary form, see cSerializeBinaryShared. Prefers values without labels.
///
/// The data may come from anywhere: it is checked, whatever stands in it ends in a value or in an exception, no more
/// memory is taken than a small multiple of the data, and no depth of nested contexts takes stack.
///
/// Units:     positions and sizes count bytes.
/// Ownership: reads from an array of the caller, which has to outlive the deserializer, or from one that it was given.
///            Nothing is kept of the place of the bytes, so the array may grow and change between two operations.
/// Errors:    mstd::cRuntimeException at the end of the context, for ids that are none, and for a context that ends
///            before its content begins; mstd::cTypeMissmatchException, or cLabeledTypeMissmatchException once a label
///            was passed, for another id than expected; mstd::cOutOfRangeException or mstd::cOutOfBoundsException for
///            a value that the end of the data cuts off. The position is then where the failed operation began, and
///            what was to be loaded is unchanged. The last label stays what it became.
/// Threads:   no lock, belongs to one thread.
class MORTISE_API cDeserializeBinary final : public cAbstractDeserializer
{
public:
  typedef cSerializeBinaryShared::PrivatedTypeIDs PrivatedTypeIDs;

  /// Without data.
  cDeserializeBinary();
  explicit cDeserializeBinary(mstd::tConstArrayRef<char> const& data);
  /// Takes the array over. Null is no data.
  explicit cDeserializeBinary(mstd::tAutoPtr<mstd::tArray<char>> pData);
  ~cDeserializeBinary() override;

  /// Reads from the start of other data, with no open context. An array that was taken over lives on until the end of
  /// the deserializer, so `data` may refer to it.
  void setData(mstd::tConstArrayRef<char> const& data);

  void loadBlock(mstd::tArray<char>& data) override;
  void load(signed char& iValue) override { loadNumber<1>(cSerializeBinaryShared::Char, iValue); }
  void load(unsigned char& iValue) override { loadNumber<1>(cSerializeBinaryShared::UChar, iValue); }
  void load(unsigned short& iValue) override { loadNumber<2>(cSerializeBinaryShared::UInt16, iValue); }
  void load(short& iValue) override { loadNumber<2>(cSerializeBinaryShared::Int16, iValue); }
  void load(unsigned int& iValue) override { loadNumber<4>(cSerializeBinaryShared::UInt32, iValue); }
  void load(int& iValue) override { loadNumber<4>(cSerializeBinaryShared::Int32, iValue); }
  void load(unsigned long long& iValue) override { loadNumber<8>(cSerializeBinaryShared::UInt64, iValue); }
  void load(long long& iValue) override { loadNumber<8>(cSerializeBinaryShared::Int64, iValue); }
  /// Whatever is not 0 is true.
  void load(bool& bValue) override
  {
    unsigned int iWord = 0;
    loadNumber<4>(cSerializeBinaryShared::Bool, iWord);
    bValue = iWord != 0;
  }
  void load(double& dValue) override
  {
    unsigned long long iBits = 0;
    loadNumber<8>(cSerializeBinaryShared::Double, iBits);
    dValue = binary::doubleOf(iBits);
  }
  void load(mstd::cAsciiString& sValue) override;
  /// Takes both forms.
  void load(mucs::cString& sValue) override;
  void rewind() override;
  bool eoc() const override;
  /// A block with a 64-bit size raises the exception for an invalid id. So does a context that reaches beyond the one
  /// around it, or one whose last value does: going on behind it would read bytes twice.
  void reserialize(cAbstractSerializer& target) override;
  bool isContext() override;
  bool isLabel() override;
  cContextRef getContext(char const* pTypeName) override;
  mstd::cAsciiString getNextContextTypeName() override;
  mstd::cAsciiString getNextLabelName() override;
  /// Commits and closes the current context. Does nothing if none is open.
  void releaseCurrentContext() override;
  cAbstractDeserializer& findLabel(mstd::cAsciiString const& sLabel) override;
  bool tryFindLabel(mstd::cAsciiString const& sLabel) override;

  /// Where the next byte is read.
  unsigned int currentPos() const { return mPos; }
  /// The last label that was passed, by whatever operation; empty if there was none.
  mstd::cAsciiString const& lastLabel() const { return mLastLabel; }

  /// Copies the next `iSize` bytes, without an id, and moves behind them.
  void loadRaw(char* pTarget, unsigned int iSize);
  /// The same from `iPos` on, which moves behind them.
  void loadRaw(unsigned int& iPos, char* pTarget, unsigned int iSize) const;
  /// Steps over the payload of a value whose id has been read. Nothing happens for what is no id of a value. The
  /// position may come to stand behind the end of the data.
  void skipType(PrivatedTypeIDs eId);
  /// Searches the current context from the position to its end and then all of it, without entering the contexts in it.
  /// If found, the position is right behind the label; if not, it stays.
  void trySeekToLabel(mstd::cAsciiString const& sLabel, bool& bFound);
  /// Reads an id, behind any labels if those are to be skipped. Returns the position of the id.
  unsigned int getNextTypeId(PrivatedTypeIDs& eId, bool bSkipLabels);
  /// Reads that id, behind any labels unless it is that of a label. Returns its position.
  unsigned int expectTypeId(PrivatedTypeIDs eId);
  /// Reads id and length of a context; the length counts from `iLengthPos` on. Returns the position of the id.
  unsigned int expectContext(unsigned int& iLength, unsigned int& iLengthPos);
  /// Tells where the bytes of the next value, a block, are, and how many. The position stays.
  void getNextBlockInfo(unsigned int& iDataPos, unsigned long long& iSize);
  /// Whether the current context, or the data, ends here. Labels may still stand in front of the end.
  bool eocMayBeLabels() const { return mPos >= mEnd; }
  bool eocMayBeLabels(unsigned int iPos) const { return iPos >= mEnd; }

private:
  friend class cSBinaryLoadContextData;
  class cPosGuard;
  class cCopy;
  struct cHeader;

  /// All bytes of the view, or null if they are not at hand: in something else than an array, or in an array that has
  /// become shorter than the view.
  char const* physical() const
  {
    if (__builtin_expect(mpArray == nullptr || mpArray->length() < mArrayEnd, 0))
    {
      return nullptr;
    }
    return mpArray->data(true) + mArrayStart;
  }
  void checkRange(unsigned int iPos, unsigned long long iSize) const;
  void copy(unsigned int iPos, char* pTarget, unsigned int iSize) const;
  unsigned long long numberAt(unsigned int iPos, unsigned int iSize) const;
  unsigned long long numberElsewhere(unsigned int iPos, unsigned int iSize) const;
  unsigned int wordAt(unsigned int iPos) const;
  void textAt(unsigned int& iPos, mstd::cAsciiString& sText) const;
  void stringAt(unsigned int& iPos, unsigned int iId, mucs::cString& sText) const;
  unsigned int nextId();
  void passLabel();
  template <unsigned int PayloadSize, class T>
  void loadNumber(PrivatedTypeIDs eId, T& iValue)
  {
    unsigned int const iSize = 4 + PayloadSize;
    char const* p = physical();
    if (__builtin_expect(p != nullptr && mPos < mEnd && mLength - mPos >= iSize, 1))
    {
      p += mPos;
      if (__builtin_expect(binary::get32(p) == eId, 1))
      {
        mPos += iSize;
        iValue = static_cast<T>(binary::getNumber(p + 4, PayloadSize));
        return;
      }
    }
    iValue = static_cast<T>(loadNumberSlow(eId, PayloadSize));
  }
  unsigned long long loadNumberSlow(PrivatedTypeIDs eId, unsigned int iSize);
  unsigned int loadLength(unsigned int iId);
  void readHeader(cHeader& header);
  bool tryHeader(cHeader& header) const;
  mstd::cAsciiString nameOf(cHeader const& header) const;
  bool isNamed(cHeader const& header, char const* pTypeName) const;
  bool onlyLabels() const;
  void skip(unsigned int iId);
  void skipContext(unsigned int iId);
  void skipFixed();
  bool seekToLabel(mstd::cAsciiString const& sLabel);
  void updateEnd();
  void detach();
  [[noreturn]] void throwMissmatch(char const* got, char const* expected) const;

  mstd::tAutoPtr<mstd::tArray<char>> mOwner;
  mstd::tConstArrayRef<char> mData;
  unsigned int mPos;
  cSBinaryLoadContextData* mpContext;
  mstd::cAsciiString mLastLabel;
  // The rest follows from mData and mpContext, at hand for the short way of reading.
  mstd::tArray<char> const* mpArray; // that mData is a view of; null if it is one of something else
  unsigned int mArrayStart;          // of the view, in the array
  unsigned int mArrayEnd;
  unsigned int mLength; // of the view
  unsigned int mEnd;    // of the current context or of the data, whichever comes first
};

/// The same as for any deserializer, without the virtual call: for those who read much.
template <class T, typename std::enable_if<tIsStreamed<T>::value, int>::type = 0>
inline cDeserializeBinary& operator<<(T& value, cDeserializeBinary& deserializer)
{
  deserializer.load(value);
  return deserializer;
}

} // namespace msa

#endif
