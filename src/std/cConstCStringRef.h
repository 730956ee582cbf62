#ifndef MORTISE_STD_CCONSTCSTRINGREF_H
#define MORTISE_STD_CCONSTCSTRINGREF_H

#include "std/tAbstractConstArrayProxy.h"

namespace mstd
{
/// View on a plain character pointer, so that a literal can stand where an array proxy is expected, without a copy.
///
/// Ownership: does not own the characters, which have to outlive the view and stay where they are.
/// Errors:    a null pointer, and an index that is not below the length, are assertion failures.
class MORTISE_API cConstCStringRef : public tAbstractConstArrayProxy<char>
{
public:
  /// View on a zero-terminated text, without the zero.
  cConstCStringRef(char const* text);
  /// View on `iLength` characters of any value.
  cConstCStringRef(char const* text, unsigned int iLength);
  ~cConstCStringRef() override;

  unsigned int length() const { return miLength; }
  /// The same as length().
  unsigned int size() const { return miLength; }
  bool empty() const { return miLength == 0; }
  char const& operator[](unsigned int i) const
  {
    if (__builtin_expect(i >= miLength, 0))
    {
      throwBadIndex();
    }
    return mpCStyleStringRef[i];
  }

  // as array proxy
  char const& proxyAt(unsigned int index) const override;
  unsigned int proxyLength() const override;
  void proxyCopyPartTo(char* target, unsigned int start, unsigned int iSize) const override;
  char const* proxyProvideData(unsigned int start, unsigned int iSize) const override;
  unsigned int proxyPreferredBlockSize() const override;
  tAbstractConstArrayProxy<char> const* constProxyPhysical(unsigned int& offset) const override;

private:
  [[noreturn]] static void throwBadIndex();

  char const* mpCStyleStringRef;
  unsigned int miLength;
};
} // namespace mstd

#endif
