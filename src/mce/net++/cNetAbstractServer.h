#ifndef MORTISE_MCE_NET_CNETABSTRACTSERVER_H
#define MORTISE_MCE_NET_CNETABSTRACTSERVER_H

#include "rmi/cConnectable.h"
#include "rmi/localSignal1.h"
#include "rmi/localSignal2.h"
#include "std/tAutoPtr.h"

namespace mpi
{
class cWorkQueue;
}

namespace mce
{
class cNetAbstractAddress;
class cNetAbstractConnection;

/// Base of the servers, which wait for peers and make connections to them.
class MORTISE_API cNetAbstractServer : public mrmi::cConnectable
{
public:
  /// With null it works on the queue of mpi::system().
  explicit cNetAbstractServer(mpi::cWorkQueue* pQueue);
  ~cNetAbstractServer() override;

  /// A peer asks for admission: the slots fill in the answer. May stay unconnected.
  mrmi::localSignal2<piVoid, cNetAbstractAddress const&, bool&> sigPeerQuery;
  /// A peer was admitted, and its connection can be taken. May stay unconnected.
  mrmi::localSignal1<piVoid, cNetAbstractAddress const&> sigPeerAddress;

  /// Begins to wait for peers at an address.
  virtual void listen(cNetAbstractAddress const& address) = 0;
  /// Waits no longer. Connections that were taken stay.
  virtual void close() = 0;
  /// True if there is a connection to be taken.
  virtual bool hasConnection() const = 0;
  /// The next connection, which becomes the caller's, or nothing.
  virtual mstd::tAutoPtr<cNetAbstractConnection> takeConnection() = 0;

  mpi::cWorkQueue& wq() const;

private:
  mpi::cWorkQueue* mpWorkQueue;
};

} // namespace mce

#endif
