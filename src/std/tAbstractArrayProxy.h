#ifndef MORTISE_STD_TABSTRACTARRAYPROXY_H
#define MORTISE_STD_TABSTRACTARRAYPROXY_H

#include "std/tAbstractConstArrayProxy.h"

namespace mstd
{
/// Anything that can be read and changed like an array.
template <class T>
class MORTISE_API tAbstractArrayProxy : public tAbstractConstArrayProxy<T>
{
public:
  using tAbstractConstArrayProxy<T>::proxyAt;

  /// One element to write to; valid until the next access or change.
  virtual T& proxyAt(unsigned int index) = 0;
  /// The `size` elements from `start` on as one writeable run in memory, valid until the next access or change.
  /// Null if the proxy cannot expose its store: use proxyPatchData() then.
  virtual T* proxyProvideWriteableData(unsigned int start, unsigned int size);
  /// Overwrites the `size` elements from `start` on with those at `source`.
  virtual void proxyPatchData(unsigned int start, unsigned int size, T const* source) = 0;
  /// Sets the length; the contents may be lost.
  virtual void proxySetSize(unsigned int size) = 0;
  /// Inserts the `size` elements at `source` in front of `position`.
  virtual void proxyInsert(unsigned int position, T const* source, unsigned int size) = 0;
  /// Inserts `size` elements of undefined value in front of `position`.
  virtual void proxyInsertDefaultObjects(unsigned int position, unsigned int size) = 0;
  /// Removes the `size` elements from `start` on.
  virtual void proxyErase(unsigned int start, unsigned int size) = 0;
  /// As constProxyPhysical(), for writing.
  virtual tAbstractArrayProxy<T>* proxyPhysical(unsigned int& offset) = 0;

protected:
  tAbstractArrayProxy() = default;
  tAbstractArrayProxy(tAbstractArrayProxy const&) = default;
  tAbstractArrayProxy& operator=(tAbstractArrayProxy const&) = default;
};

template <class T>
T* tAbstractArrayProxy<T>::proxyProvideWriteableData(unsigned int, unsigned int)
{
  return nullptr;
}
} // namespace mstd

#endif
