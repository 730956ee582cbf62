#ifndef MORTISE_MCE_NET_CNETABSTRACTCLIENT_H
#define MORTISE_MCE_NET_CNETABSTRACTCLIENT_H

#include "pi/cWork.h"
#include "rmi/cConnectable.h"
#include "rmi/signal0.h"
#include "std/tAutoPtr.h"

namespace mpi
{
class cWorkQueue;
}

namespace mce
{
class cNetAbstractAddress;
class cNetAbstractConnection;

/// Base of the clients; one makes one attempt to connect. A slot of its signals may destroy it.
///
/// Threads: that of the work queue; nothing is locked.
class MORTISE_API cNetAbstractClient : public mrmi::cConnectable
{
public:
  /// With null it works on the queue of mpi::system().
  explicit cNetAbstractClient(mpi::cWorkQueue* pQueue);
  ~cNetAbstractClient() override;

  /// The connection stands. May stay unconnected.
  mrmi::signal0<piVoid> sigEstablished;
  /// The time limit has passed. Without a slot, an exception that names the target goes to the work queue instead.
  mrmi::signal0<piVoid> sigTimeout;

  /// Begins the attempt.
  virtual void connect(cNetAbstractAddress const& target) = 0;
  virtual bool isConnected() = 0;
  /// The connection, which becomes the caller's.
  virtual mstd::tAutoPtr<cNetAbstractConnection> takeConnection() = 0;
  /// To where the attempt goes.
  virtual cNetAbstractAddress& target() = 0;
  /// Does a step of the attempt.
  virtual void processConnection() = 0;
  /// Gives up; does nothing here.
  virtual void invalidate();

  /// Limits the attempt to so many milliseconds.
  void startTimeout(unsigned int iMSec);
  void stopTimeout();
  /// Does step upon step until the connection stands, without sleep and without limit, and takes it. No timer of the
  /// queue runs meanwhile.
  mstd::tAutoPtr<cNetAbstractConnection> waitConnection();

  mpi::cWorkQueue& wq() const;

  /// The action of the time limit.
  void sltTimeout();

private:
  mstd::tAutoPtr<mpi::cWork> mpTimeoutWork; // never empty; apart, since it may have to outlive this object
  mpi::cWorkQueue* mpWorkQueue;
};

} // namespace mce

#endif
