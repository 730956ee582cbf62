#ifndef MORTISE_MCE_NET_CNETABSTRACTSOCKET_H
#define MORTISE_MCE_NET_CNETABSTRACTSOCKET_H

#include "pi/cWork.h"
#include "std/tArray.h"

namespace mpi
{
class cWorkQueue;
}

namespace mce
{
class cNetAbstractAddress;

/// Base of the sockets, which read and write bytes without ever waiting, and know when they can.
///
/// A concrete socket makes its three works due: the read work when there is data, the write work when writing is
/// possible, the exception work on an error or when the line hangs up. A cNetAbstractConnection starts and stops them.
class MORTISE_API cNetAbstractSocket
{
public:
  cNetAbstractSocket();
  cNetAbstractSocket(cNetAbstractSocket const&) = delete; // its works belong to one socket
  cNetAbstractSocket& operator=(cNetAbstractSocket const&) = delete;
  virtual ~cNetAbstractSocket();

  /// The other side.
  virtual cNetAbstractAddress& peer() = 0;
  /// This side.
  virtual cNetAbstractAddress& local() = 0;
  /// The most bytes that one write may be given.
  virtual unsigned int maxTxSize() = 0;
  /// Raises what is wrong: called when the exception work has run and the other side has not closed.
  virtual void raiseError() = 0;
  /// Reads up to `iSize` bytes; 0 if there are none at the moment. The sender goes to `pFrom`, unless that is null.
  virtual unsigned int read(char* pData, unsigned int iSize, cNetAbstractAddress* pFrom) = 0;
  /// Fills an empty array with all that has arrived; false if there is nothing.
  virtual bool read(mstd::tArray<char>& data, cNetAbstractAddress* pFrom) = 0;
  /// True if a read would deliver.
  virtual bool canRead() const = 0;
  /// The number of bytes taken, up to `iSize`; 0 if none can be taken now.
  virtual unsigned int write(char const* pData, unsigned int iSize) = 0;
  /// To call it again changes nothing.
  virtual void close() = 0;
  /// True if the other side has closed.
  virtual bool closedByPeer() const = 0;

  mpi::cWork& readWork() { return mReadWork; }
  mpi::cWork& writeWork() { return mWriteWork; }
  mpi::cWork& exceptionWork() { return mExceptionWork; }
  /// Adds the three works, which leave the queue when the socket goes.
  void schedule(mpi::cWorkQueue& queue);

private:
  mpi::cWork mReadWork;
  mpi::cWork mWriteWork;
  mpi::cWork mExceptionWork;
};

} // namespace mce

#endif
