#ifndef MORTISE_SA_CSERIALIZEDEBUG_H
#define MORTISE_SA_CSERIALIZEDEBUG_H

#include "sa/cAbstractSerializer.h"
#include "std/cAsciiString.h"

namespace msa
{

/// Prints what is stored to the debug output of the system, one item a line, so that whatever has stream operators can
/// be looked at: `msa::cSerializeDebug dump; invoice >> dump;`.
///
/// A line is indented by four blanks for each context around it. A label stands in front of the next line, whatever
/// that is. A context that is dropped without a commit stays open: its closing brace is not printed, and what follows
/// is indented as if it were inside.
///
/// Errors:  there are no bytes: rewind(), clear(), data() and swapData() raise mstd::cBugException.
/// Threads: an object belongs to one thread. Each line is written under the lock of the output, so lines of several
///          threads may alternate and do not tear.
class MORTISE_API cSerializeDebug : public cAbstractSerializer
{
public:
  cSerializeDebug();
  ~cSerializeDebug() override;

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
  /// Prints a fixed text: the value is not shown.
  void store(double dValue) override;
  void store(mstd::cAsciiString const& sValue) override;
  /// Characters beyond ASCII show as "?".
  void store(mucs::cString const& sValue) override;
  void rewind() override;
  void clear() override;
  cContextRef newContext(char const* pTypeName) override;
  void releaseCurrentContext() override;
  cAbstractSerializer& newLabel(mstd::cAsciiString const& sLabel) override;
  mstd::tArrayRef<char> data() override;
  void swapData(mstd::tArray<char>& data) override;

private:
  void storeDataLine(mstd::cAsciiString const& sText, bool bSemicolon);
  void storeNumber(char const* pTypeName, long long iValue);
  void storeNumber(char const* pTypeName, unsigned long long iValue);

  unsigned int miIndent;
  mstd::cAsciiString mPendingLabel;
};

} // namespace msa

#endif
