#include "mce/net++/cNetAbstractClient.h"
#include "mce/net++/cNetAbstractConnection.h"
#include "mce/net++/cNetAbstractIPAddress.h"
#include "mce/net++/cNetAbstractIPv4Address.h"
#include "mce/net++/cNetAbstractServer.h"

#include "support/tablePlace.h"

#include <gtest/gtest.h>

namespace
{
using support::placeOf;
using support::placeWith;

TEST(NetVirtualOrder, Socket)
{
  typedef mce::cNetAbstractSocket s;
  EXPECT_EQ(placeOf(&s::peer), 2u);
  EXPECT_EQ(placeOf(&s::maxTxSize), 4u);
  EXPECT_EQ(placeOf(&s::raiseError), 5u);
  EXPECT_EQ((placeWith<char*, unsigned int, mce::cNetAbstractAddress*>(&s::read)), 6u);
  EXPECT_EQ((placeWith<mstd::tArray<char>&, mce::cNetAbstractAddress*>(&s::read)), 7u);
  EXPECT_EQ(placeOf(&s::canRead), 8u);
  EXPECT_EQ(placeOf(&s::write), 9u);
  EXPECT_EQ(placeOf(&s::close), 10u);
  EXPECT_EQ(placeOf(&s::closedByPeer), 11u);
}

TEST(NetVirtualOrder, Connection)
{
  typedef mce::cNetAbstractConnection c;
  size_t const first = placeOf(&c::sendRef); // behind those of a connectable
  EXPECT_EQ(placeOf(&c::send), first + 1);
  EXPECT_EQ(placeOf(&c::sendSwap), first + 2);
  EXPECT_EQ(placeWith<mstd::tArray<char>&>(&c::receive), first + 3);
  EXPECT_EQ(placeWith<bool>(&c::receive), first + 4);
  EXPECT_EQ(placeOf(&c::waitRx), first + 5);
  EXPECT_EQ(placeOf(&c::flushTx), first + 6);
  EXPECT_EQ(placeOf(&c::canRead), first + 7);
  EXPECT_EQ(placeOf(&c::isTxBusy), first + 8);
  EXPECT_EQ(placeOf(&c::clearTx), first + 9);
  EXPECT_EQ(placeOf(&c::txBytesLeft), first + 10);
  EXPECT_EQ(placeOf(&c::peer), first + 11);
  EXPECT_EQ(placeOf(&c::isInvalid), first + 12);
}

TEST(NetVirtualOrder, EndPoints)
{
  typedef mce::cNetAbstractClient c;
  size_t const connect = placeOf(&c::connect); // behind those of a connectable
  EXPECT_EQ(placeOf(&c::isConnected), connect + 1);
  EXPECT_EQ(placeOf(&c::takeConnection), connect + 2);
  EXPECT_EQ(placeOf(&c::target), connect + 3);
  EXPECT_EQ(placeOf(&c::processConnection), connect + 4);
  EXPECT_EQ(placeOf(&c::invalidate), connect + 5);
  typedef mce::cNetAbstractServer s;
  EXPECT_EQ(placeOf(&s::listen), connect);
  EXPECT_EQ(placeOf(&s::takeConnection), connect + 3);
}

TEST(NetVirtualOrder, IPAddresses)
{
  EXPECT_EQ(placeOf(&mce::cNetAbstractIPAddress::port), 11u);
  EXPECT_EQ(placeOf(&mce::cNetAbstractIPAddress::setPort), 12u);
  EXPECT_EQ(placeOf(&mce::cNetAbstractIPv4Address::setAddress), 13u);
  EXPECT_EQ(placeOf(&mce::cNetAbstractIPv4Address::getAddress), 14u);
}
} // namespace
