#ifndef MORTISE_STD_TABSTRACTCONSTARRAYPROXY_H
#define MORTISE_STD_TABSTRACTCONSTARRAYPROXY_H

#include "pi/piTypes.h"

namespace mstd
{
/// Anything that can be read like an array: a buffer, a view, a literal, a file.
///
/// Errors: a range outside of `proxyLength()` raises cOutOfRangeException or cOutOfBoundsException; a proxy on a
/// device also raises what the device raises.
template <class T>
class MORTISE_API tAbstractConstArrayProxy
{
public:
  virtual ~tAbstractConstArrayProxy() {}

  /// One element; valid until the next access or change.
  virtual T const& proxyAt(unsigned int index) const = 0;
  /// Number of elements.
  virtual unsigned int proxyLength() const = 0;
  /// Copies the `size` elements from `start` on to `target`.
  virtual void proxyCopyPartTo(T* target, unsigned int start, unsigned int size) const = 0;
  /// The `size` elements from `start` on as one run in memory, valid until the next access or change.
  virtual T const* proxyProvideData(unsigned int start, unsigned int size) const = 0;
  /// Size of the blocks in which the data is best visited; 0 if any size will do.
  virtual unsigned int proxyPreferredBlockSize() const = 0;
  /// The proxy that really holds the data, and in `offset` where this one starts in it. Null for a view that is
  /// not set.
  virtual tAbstractConstArrayProxy<T> const* constProxyPhysical(unsigned int& offset) const = 0;

protected:
  tAbstractConstArrayProxy() = default;
  tAbstractConstArrayProxy(tAbstractConstArrayProxy const&) = default;
  tAbstractConstArrayProxy& operator=(tAbstractConstArrayProxy const&) = default;
};
} // namespace mstd

#endif
