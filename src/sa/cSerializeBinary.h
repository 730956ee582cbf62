#ifndef MORTISE_SA_CSERIALIZEBINARY_H
#define MORTISE_SA_CSERIALIZEBINARY_H

#include "sa/binaryNumber.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cSerializeBinaryShared.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"

namespace msa
{

class cAbstractTypeReference;
class cSBinaryStoreContextData;

/// Writes values in the binary form, see cSerializeBinaryShared: what is kept in files and goes over connections.
/// Prefers values without labels.
///
/// Units:     positions and sizes count bytes.
/// Ownership: writes to a buffer of its own, or to an array of the caller, which has to outlive the serializer.
/// Errors:    std::bad_alloc beyond 2^32 - 1 bytes or without memory, and what the caller's array raises. A value that
///            fails leaves nothing of itself: the position goes back to where it began. Bytes behind the position stay
///            in the array until they are overwritten; data() cuts them off.
/// Threads:   no lock, belongs to one thread.
/// Cost:      one store for a number while the own buffer has room; it grows in sectors of 256 KiB. A caller's array
///            is extended by as much as each value takes.
class MORTISE_API cSerializeBinary final : public cAbstractSerializer
{
public:
  /// How a mucs::cString is written.
  enum StringStoreMode : unsigned int
  {
    StoreUTF32 = 0, ///< 32 bits for each character
    StoreUTF8 = 1
  };

  /// Writes to a buffer of its own.
  cSerializeBinary();
  /// Writes to the elements that `data` refers to, from its first on, and puts more behind them as they are needed.
  /// The caller's other views of that array do not follow.
  explicit cSerializeBinary(mstd::tArrayRef<char> const& data);
  ~cSerializeBinary() override;

  // Both a null pointer and a size: then the size is written, but no bytes.
  void storeBlock(char const* pData, unsigned int iSize) override;
  void store(unsigned char iValue) override { storeNumber<1>(cSerializeBinaryShared::UChar, iValue); }
  void store(signed char iValue) override
  {
    storeNumber<1>(cSerializeBinaryShared::Char, static_cast<unsigned char>(iValue));
  }
  void store(unsigned short iValue) override { storeNumber<2>(cSerializeBinaryShared::UInt16, iValue); }
  void store(short iValue) override
  {
    storeNumber<2>(cSerializeBinaryShared::Int16, static_cast<unsigned short>(iValue));
  }
  void store(unsigned int iValue) override { storeNumber<4>(cSerializeBinaryShared::UInt32, iValue); }
  void store(int iValue) override { storeNumber<4>(cSerializeBinaryShared::Int32, static_cast<unsigned int>(iValue)); }
  void store(unsigned long long iValue) override { storeNumber<8>(cSerializeBinaryShared::UInt64, iValue); }
  void store(long long iValue) override
  {
    storeNumber<8>(cSerializeBinaryShared::Int64, static_cast<unsigned long long>(iValue));
  }
  void store(bool bValue) override { storeNumber<4>(cSerializeBinaryShared::Bool, bValue ? 1 : 0); }
  void store(double dValue) override { storeNumber<8>(cSerializeBinaryShared::Double, binary::bitsOf(dValue)); }
  void store(mstd::cAsciiString const& sValue) override;
  /// Nothing is written in a mode that is none of StringStoreMode.
  void store(mucs::cString const& sValue) override;
  void rewind() override;
  void clear() override;
  cContextRef newContext(char const* pTypeName) override;
  /// Does nothing if no context is open.
  void releaseCurrentContext() override;
  cAbstractSerializer& newLabel(mstd::cAsciiString const& sLabel) override;
  mstd::tArrayRef<char> data() override;
  /// Also a serializer on a caller's array writes to its own buffer afterwards.
  void swapData(mstd::tArray<char>& data) override;

  /// Where the next byte goes.
  unsigned int currentPos() const { return mPos; }
  /// StoreUTF32 at first.
  void setStringStoreMode(StringStoreMode eMode) { mStringStoreMode = eMode; }
  StringStoreMode stringStoreMode() const { return mStringStoreMode; }
  /// The own buffer, cut to what was written. Errors: as data().
  mstd::tArray<char>& ownData();
  /// Writes a value at `iPos` over what stands there. The position then is where it was, or behind the value if that
  /// goes farther.
  void patch(unsigned int iPos, cAbstractTypeReference& reference);
  /// Writes `iSize` bytes without an id at the position, over what stands there, and moves behind them. Null does
  /// nothing. `pData` may lie in the own buffer, but not in an array of the caller.
  void storeRaw(char const* pData, unsigned int iSize);
  /// Writes an id without a value.
  void storeTypeId(unsigned int iId);

private:
  friend class cSBinaryStoreContextData;

  /// Takes the position back to where it was unless commit() was called.
  class cPosGuard
  {
  public:
    explicit cPosGuard(cSerializeBinary& serializer) : mSerializer(serializer), mPos(serializer.mPos), mDone(false) {}
    cPosGuard(cPosGuard const&) = delete;
    cPosGuard& operator=(cPosGuard const&) = delete;
    ~cPosGuard()
    {
      if (!mDone)
      {
        mSerializer.setPos(mPos);
      }
    }
    void commit() { mDone = true; }

  private:
    cSerializeBinary& mSerializer;
    unsigned int const mPos;
    bool mDone;
  };

  /// Where the next `iSize` bytes of the own buffer are, or null if it has no room for them.
  char* room(unsigned int iSize)
  {
    unsigned int const iLength = mOwnData.length();
    if (__builtin_expect(mPos <= iLength && iLength - mPos >= iSize && mOwn, 1))
    {
      return mOwnData.data(true) + mPos;
    }
    return nullptr;
  }
  /// The same after giving it room. Null if the bytes go to a caller's array.
  char* makeRoom(unsigned long long iSize);
  template <unsigned int PayloadSize>
  void storeNumber(unsigned int iId, unsigned long long iPayload)
  {
    unsigned int const iSize = 4 + PayloadSize;
    char* const p = room(iSize);
    if (__builtin_expect(p != nullptr, 1))
    {
      binary::putNumber<PayloadSize>(p, iId, iPayload);
      mPos += iSize;
      return;
    }
    char bytes[iSize];
    binary::putNumber<PayloadSize>(bytes, iId, iPayload);
    storeBytes(bytes, iSize);
  }
  void storeText(unsigned int iId, unsigned int iCount, char const* pBytes, unsigned long long iSize);
  void storeHead(char const* pData, unsigned int iSize);
  void storeBytes(char const* pData, unsigned int iSize);
  void storeForeign(char const* pData, unsigned int iSize);
  bool storeUTF8(mucs::cString const& sValue);
  bool isOwn(char const* pData) const;
  unsigned int finishContext(cSBinaryStoreContextData const& context);
  void setPos(unsigned int iPos);
  void trimOwn();

  mstd::tArray<char> mOwnData; // its length runs ahead of what is written
  mstd::tArrayRef<char> mData; // the caller's array, while that is in use
  unsigned int mPos;
  unsigned int mWritten; // the highest position ever, apart from mPos
  cSBinaryStoreContextData* mpContext;
  StringStoreMode mStringStoreMode;
  bool mOwn; // writes to mOwnData
};

/// The same as for any serializer, without the virtual call: for those who write much.
template <class T, typename std::enable_if<tIsStreamed<T>::value, int>::type = 0>
inline cSerializeBinary& operator>>(T const& value, cSerializeBinary& serializer)
{
  serializer.store(value);
  return serializer;
}

} // namespace msa

#endif
