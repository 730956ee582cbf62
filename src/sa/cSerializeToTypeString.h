#ifndef MORTISE_SA_CSERIALIZETOTYPESTRING_H
#define MORTISE_SA_CSERIALIZETOTYPESTRING_H

#include "sa/cAbstractSerializer.h"
#include "std/cAsciiString.h"

namespace msa
{

/// Keeps the names of the types that are stored, in order and separated by ", ", and forgets the values. Run over a
/// reference frame it gives the text of a signature.
///
/// Errors:  a context has no name as a type: newContext() raises mstd::cBugException, and so does data().
/// Threads: an object belongs to one thread.
class MORTISE_API cSerializeToTypeString : public cAbstractSerializer
{
public:
  cSerializeToTypeString();
  ~cSerializeToTypeString() override;

  void storeBlock(char const* pData, unsigned int iSize) override;
  void store(unsigned char iValue) override;
  void store(signed char iValue) override;
  void store(unsigned short iValue) override;
  void store(short iValue) override;
  void store(unsigned int iValue) override;
  void store(int iValue) override;
  void store(unsigned long long iValue) override;
  void store(long long iValue) override;
  void store(bool bValue) override;
  void store(double dValue) override;
  void store(mstd::cAsciiString const& sValue) override;
  void store(mucs::cString const& sValue) override;
  /// Forgets all names.
  void rewind() override;
  /// Forgets all names.
  void clear() override;
  cContextRef newContext(char const* pTypeName) override;
  void releaseCurrentContext() override;
  /// Does nothing: a label is no type.
  cAbstractSerializer& newLabel(mstd::cAsciiString const& sLabel) override;
  mstd::tArrayRef<char> data() override;
  /// Replaces the contents of `data` by the bytes of the type string, which stays.
  void swapData(mstd::tArray<char>& data) override;
  /// Adds one name.
  virtual void storeType(char const* pTypeName);

  mstd::cAsciiString const& typeString() const { return mTypeString; }

private:
  mstd::cAsciiString mTypeString;
};

} // namespace msa

#endif
