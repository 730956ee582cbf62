#ifndef MORTISE_MCE_NET_CNETABSTRACTCONNECTION_H
#define MORTISE_MCE_NET_CNETABSTRACTCONNECTION_H

#include "mce/net++/cNetAbstractSocket.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"
#include "rmi/localSignal2.h"
#include "rmi/localSignal3.h"
#include "std/cLife.h"
#include "std/tArray.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"

namespace mstd
{
class cAbstractException;
}

namespace mce
{

/// A channel over a socket that is driven by the work queue: one buffer goes out at a time, in pieces as the socket
/// takes them; one buffer comes in, as many bytes as the caller asks for, or all that arrives in continuous mode.
///
/// What crosses it is exactly what was sent: it adds nothing, and does not know where a message ends.
///
/// Slots of its signals may send, receive, close and invalidate. Nothing happens by itself until schedule() is called.
///
/// A slot may also destroy the connection: what was under way is left then without touching it again. The signal that
/// called the slot reports its early end on the debug output, as every signal does. A socket with a work that is
/// running at that moment goes in a later turn of the queue; it is closed at once.
///
/// An action that fails clears what was being sent, and raises errorHandler(), if anybody has asked for it, or else the
/// exception, which goes to the work queue.
///
/// Threads: that of the work queue; nothing is locked.
class MORTISE_API cNetAbstractConnection : public mrmi::cConnectable
{
public:
  typedef mrmi::localSignal2<piVoid, cNetAbstractConnection&, mstd::cAbstractException const&> tErrorSignal;
  typedef mrmi::localSignal3<piVoid, cNetAbstractConnection&, mstd::tArray<char> const&, cNetAbstractAddress const&>
      tFromSignal;

  /// Owns the socket, also if it fails. No socket is an assertion failure; what peer() raises goes through.
  explicit cNetAbstractConnection(mstd::tAutoPtr<cNetAbstractSocket> pSocket);
  /// invalidate(). What a slot or the socket raises goes to the debug output.
  ~cNetAbstractConnection() override;

  /// \name Signals
  /// All may stay unconnected.
  /// @{
  mrmi::localSignal1<piVoid, cNetAbstractConnection&> sigClosedByPeer; ///< once
  mrmi::localSignal1<piVoid, cNetAbstractConnection&> sigInvalidated;  ///< once; the connection can still be used
  /// The buffer is full; in continuous mode, this has arrived.
  mrmi::localSignal2<piVoid, cNetAbstractConnection&, mstd::tArray<char> const&> sigDataReceived;
  mrmi::localSignal0<piVoid> sigTxProgress; ///< the socket has taken bytes
  mrmi::localSignal0<piVoid> sigTxComplete; ///< the socket has taken the whole buffer
  /// @}

  /// \name Sending
  /// A small buffer is gone when these return; the rest of a larger one follows from the queue. On an invalid
  /// connection, and while a buffer is on its way, they raise mstd::cRuntimeException and change nothing. What the
  /// socket or a slot raises leaves the buffer as it stands then.
  /// @{
  /// The bytes must live, as they are, until sigTxComplete.
  virtual cNetAbstractConnection& sendRef(mstd::tConstArrayRef<char> const& data);
  virtual cNetAbstractConnection& send(mstd::tArray<char> const& data);
  /// Without a copy: `rData` gets the buffer of the one before.
  virtual cNetAbstractConnection& sendSwap(mstd::tArray<char>& rData);
  /// @}

  /// Asks for as many bytes as `rBuffer` is long. It must live until sigDataReceived, and replaces an earlier one.
  /// mstd::cRuntimeException on an invalid connection.
  virtual void receive(mstd::tArray<char>& rBuffer);
  /// Continuous mode: what arrives is delivered as it comes, unless a buffer is asked for.
  virtual void receive(bool bOn);
  /// Polls the socket until the buffer is full, or until `iMSec` milliseconds have passed: mstd::cRuntimeException
  /// then. 0 is no limit; an invalid connection would be waited for without end. Neither sleeps nor runs the queue.
  virtual void waitRx(unsigned int iMSec);
  /// The same until everything is sent.
  virtual void flushTx(unsigned int iMSec);
  virtual bool canRead() const;
  virtual bool isTxBusy() const;
  /// Forgets what is left to send.
  virtual void clearTx();
  virtual unsigned int txBytesLeft() const;
  virtual cNetAbstractAddress& peer();
  virtual bool isInvalid() const;

  /// Lets the works of the socket run in a queue, that of mpi::system() if it is null.
  void schedule(mpi::cWorkQueue* pQueue);
  /// Closes the socket, now, and also if a slot of sigInvalidated fails.
  void invalidate();
  /// Closes the socket when everything is sent, which is looked at every 10 milliseconds.
  void invalidateLater();
  bool toInvalidateLater() const { return mpDelayedInvalidation->isStarted(); }
  /// Reads and writes what is possible.
  void tryTransfer();
  /// From the first call on, failures go to this signal, and have to: without a slot it raises
  /// mrmi::cUnconnectedSignalException.
  tErrorSignal& errorHandler();
  /// As sigDataReceived, with the address of the sender. May stay unconnected.
  tFromSignal& sigDataReceivedFrom();

  void sltSocketReadable();
  void sltSocketWritable();
  void sltSocketException();
  void sltDelayedSocketDestroy();
  void sltException(mstd::cAbstractException const& e, bool);

private:
  static bool handleTxPacket(cNetAbstractSocket& socket, mstd::tConstArrayRef<char> const& view, unsigned int& riLeft);
  void checkCanSend(char const* pInvalidKey);
  cNetAbstractConnection& startTx(mstd::tConstArrayRef<char> const& view);
  bool readContinuously(mstd::cLifeWatch const& watch);
  bool readPieces(mstd::cLifeWatch const& watch);
  bool deliver(mstd::tArray<char> const& data, mstd::cLifeWatch const& watch);
  bool checkClosedByPeer();
  void handOver();
  mpi::cWorkQueue& queue() const;

  mstd::tAutoPtr<cNetAbstractSocket> mpSocket;
  bool mInvalid;
  mstd::tAutoPtr<tFromSignal> mpSigDataReceivedFrom;
  mstd::tAutoPtr<cNetAbstractAddress> mpFromAddress;
  mstd::tArray<char> mTxCopy;
  mstd::tConstArrayRef<char> mTxView;
  unsigned int miTxLeft;
  mstd::tArray<char>* mpRxPacket; // not owned
  unsigned int miRxLeft;
  bool mContinuous;
  mstd::tAutoPtr<mpi::cWork> mpDelayedInvalidation; // never empty; apart, since it may have to outlive this object
  bool mClosedByPeerReported;
  mstd::tAutoPtr<tErrorSignal> mpSigError;
  bool mInvalidatedReported;
  mpi::cWorkQueue* mpQueue; // null: that of the system
  mstd::cLife mLife;
};

} // namespace mce

#endif
