#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cAbstractFsImpl.h"
#include "io/cFile.h"
#include "mce/cAbstractEnDecExtension.h"
#include "mce/cAbstractSAExtension.h"
#include "mce/cNetAbstractAddressExtension.h"
#include "mce/net++/cNetAbstractAddress.h"
#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cAbstractInterfaceProvider.h"
#include "mcs/cAbstractModule.h"
#include "mcs/cAbstractPlugIn.h"
#include "mcs/cInterfaceDep.h"
#include "mp/cAbstractRunnable.h"
#include "pi/cAbstractAIOData.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cAbstractMutexImpl.h"
#include "pi/cAbstractOut.h"
#include "pi/cAbstractProcessEvents.h"
#include "pi/cAbstractRunnableImpl.h"
#include "pi/cWork.h"
#include "rmi/cAbstractRMIFactory.h"
#include "rmi/cAbstractSignal.h"
#include "rmi/cAbstractSlotCall0.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cAbstractTypeReference.h"
#include "sa/cSerializeToTypeString.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/tAbstractArrayProxy.h"
#include "support/tablePlace.h"
#include "ucs/cAbstractEnDec.h"

#include <gtest/gtest.h>

using support::placeOf;
using support::placeWith;
using support::placeWithConst;

TEST(VirtualOrder, Work)
{
  EXPECT_EQ(placeOf(&mpi::cWork::action), 2u);
  EXPECT_EQ(placeOf(&mp::cAbstractRunnable::run), 2u);
  EXPECT_EQ(placeOf(&mpi::cAbstractAIOData::isFDAIOData), 2u);
}

TEST(VirtualOrder, ProcessEvents)
{
  EXPECT_EQ(placeOf(&mpi::cAbstractProcessEvents::supportsAIO), 2u);
  EXPECT_EQ(placeOf(&mpi::cAbstractProcessEvents::isAsynchronous), 3u);
  EXPECT_EQ(placeOf(&mpi::cAbstractProcessEvents::yield), 4u);
  EXPECT_EQ(placeOf(&mpi::cAbstractProcessEvents::wakeUp), 5u);
  EXPECT_EQ(placeOf(&mpi::cAbstractProcessEvents::poll), 6u);
}

TEST(VirtualOrder, HostObjects)
{
  EXPECT_EQ(placeOf(&mpi::cAbstractMutexImpl::lock), 2u);
  EXPECT_EQ(placeOf(&mpi::cAbstractMutexImpl::tryLock), 3u);
  EXPECT_EQ(placeOf(&mpi::cAbstractMutexImpl::unlock), 4u);
  EXPECT_EQ(placeOf(&mpi::cAbstractRunnableImpl::start), 2u);
  EXPECT_EQ(placeOf(&mpi::cAbstractRunnableImpl::stop), 3u);
}

TEST(VirtualOrder, DebugOutput)
{
  typedef mpi::cAbstractOut o;
  EXPECT_EQ(placeOf(&o::printChar), 2u);
  EXPECT_EQ(placeOf(&o::flush), 3u);
  EXPECT_EQ(placeOf(&o::debugMessage), 4u);
  EXPECT_EQ(placeWith<long long>(&o::operator<<), 5u);
  EXPECT_EQ(placeWith<unsigned long long>(&o::operator<<), 6u);
  EXPECT_EQ(placeWith<int>(&o::operator<<), 7u);
  EXPECT_EQ(placeWith<unsigned int>(&o::operator<<), 8u);
  EXPECT_EQ(placeWith<char const*>(&o::operator<<), 9u);
  EXPECT_EQ(placeWith<mstd::cAsciiString const&>(&o::operator<<), 10u);
  EXPECT_EQ(placeWith<double>(&o::operator<<), 11u);
  EXPECT_EQ(placeWith<mpi::NumberFmt>(&o::operator<<), 12u);
  EXPECT_EQ(placeWith<mstd::cNumberConversionFormat const&>(&o::operator<<), 13u);
  EXPECT_EQ(placeWith<o::clearDebugMessage const&>(&o::operator<<), 14u);
  EXPECT_EQ(placeWith<o::indent const&>(&o::operator<<), 15u);
  EXPECT_EQ(placeWith<o::unindent const&>(&o::operator<<), 16u);
  EXPECT_EQ(placeOf(&o::hasEnDec), 17u);
}

TEST(VirtualOrder, Exceptions)
{
  typedef mstd::cAbstractException e;
  EXPECT_EQ(placeOf(&e::createObject), 2u);
  EXPECT_EQ(placeOf(&e::typeName), 3u);
  EXPECT_EQ(placeOf(&e::liMessage), 4u);
  EXPECT_EQ(placeOf(&e::dialog), 5u);
  EXPECT_EQ(placeOf(&e::isRemote), 6u);
  EXPECT_EQ(placeOf(&e::remoteLocation), 7u);
  EXPECT_EQ(placeOf(&e::dump), 8u);
  EXPECT_EQ(placeOf(&e::store), 9u);
  EXPECT_EQ(placeOf(&e::load), 10u);
  EXPECT_EQ(placeOf(&e::outOfMemoryCondition), 11u);
}

TEST(VirtualOrder, ArrayProxies)
{
  typedef mstd::tAbstractArrayProxy<char> p;
  typedef mstd::tAbstractConstArrayProxy<char> c;
  EXPECT_EQ(placeOf(&c::proxyAt), 2u);
  EXPECT_EQ(placeOf(&c::proxyLength), 3u);
  EXPECT_EQ(placeOf(&c::proxyCopyPartTo), 4u);
  EXPECT_EQ(placeOf(&c::proxyProvideData), 5u);
  EXPECT_EQ(placeOf(&c::proxyPreferredBlockSize), 6u);
  EXPECT_EQ(placeOf(&c::constProxyPhysical), 7u);
  EXPECT_EQ(placeWith<unsigned int>(&p::proxyAt), 8u);
  EXPECT_EQ(placeOf(&p::proxyProvideWriteableData), 9u);
  EXPECT_EQ(placeOf(&p::proxyPatchData), 10u);
  EXPECT_EQ(placeOf(&p::proxySetSize), 11u);
  EXPECT_EQ(placeOf(&p::proxyInsert), 12u);
  EXPECT_EQ(placeOf(&p::proxyInsertDefaultObjects), 13u);
  EXPECT_EQ(placeOf(&p::proxyErase), 14u);
  EXPECT_EQ(placeOf(&p::proxyPhysical), 15u);
}

TEST(VirtualOrder, Signals)
{
  typedef mrmi::cAbstractSignal s;
  EXPECT_EQ(placeOf(&s::notifyConnectableDestroyed), 2u);
  EXPECT_EQ(placeOf(&s::connect), 3u);
  EXPECT_EQ(placeOf(&s::disconnect), 4u);
  EXPECT_EQ(placeOf(&s::addParameterInfo), 5u);
  EXPECT_EQ(placeOf(&s::parametersTypeString), 6u);
  EXPECT_EQ(placeOf(&s::returnTypeString), 7u);
}

TEST(VirtualOrder, SlotCalls)
{
  typedef mrmi::cAbstractSlotCall c;
  typedef mrmi::cAbstractSlotCall0<piVoid> c0;
  EXPECT_EQ(placeOf(&c::matchSlotOfObject), 2u);
  EXPECT_EQ((placeWithConst<msa::cReferenceFrame&>(&c::call)), 3u);
  EXPECT_EQ((placeWithConst<msa::cAbstractDeserializer&, msa::cAbstractSerializer&>(&c::call)), 4u);
  EXPECT_EQ(placeOf(static_cast<void (c0::*)() const>(&c0::call)), 5u);
  EXPECT_EQ(placeOf(&c0::parametersTypeString), 6u);
  EXPECT_EQ(placeOf(&c0::returnTypeString), 7u);
  EXPECT_EQ(placeOf(&c0::callRef), 8u);
  EXPECT_EQ(placeOf(&c0::createConnectedInstance), 9u);
}

TEST(VirtualOrder, RemoteCalls)
{
  typedef mrmi::cAbstractRMIFactory f;
  EXPECT_EQ(placeOf(&f::createRemoteSlotCall), 2u);
  EXPECT_EQ(placeOf(&f::createRemoteSignal), 3u);
}

TEST(VirtualOrder, Encoders)
{
  typedef mucs::cAbstractEnDec e;
  EXPECT_EQ(placeOf(&e::name), 2u);
  EXPECT_EQ((placeWithConst<mucs::cString const&, mstd::tArray<char>&>(&e::encode)), 3u);
  EXPECT_EQ((placeWithConst<mucs::cString const&, mstd::tArray<unsigned short>&>(&e::encode)), 4u);
  EXPECT_EQ(placeOf(&e::reEncode), 5u);
  EXPECT_EQ(placeOf(&e::encodeCString), 6u);
  EXPECT_EQ((placeWithConst<mstd::tConstArrayRef<char> const&, mucs::cString&>(&e::decode)), 7u);
  EXPECT_EQ((placeWithConst<mstd::tConstArrayRef<unsigned short> const&, mucs::cString&>(&e::decode)), 8u);
  EXPECT_EQ(placeOf(&e::reDecode), 9u);
}

TEST(VirtualOrder, Serializers)
{
  typedef msa::cAbstractSerializer s;
  EXPECT_EQ(placeOf(&s::storeBlock), 2u);
  EXPECT_EQ(placeWith<unsigned char>(&s::store), 3u);
  EXPECT_EQ(placeWith<signed char>(&s::store), 4u);
  EXPECT_EQ(placeWith<unsigned short>(&s::store), 5u);
  EXPECT_EQ(placeWith<short>(&s::store), 6u);
  EXPECT_EQ(placeWith<unsigned int>(&s::store), 7u);
  EXPECT_EQ(placeWith<int>(&s::store), 8u);
  EXPECT_EQ(placeWith<unsigned long long>(&s::store), 9u);
  EXPECT_EQ(placeWith<long long>(&s::store), 10u);
  EXPECT_EQ(placeWith<bool>(&s::store), 11u);
  EXPECT_EQ(placeWith<double>(&s::store), 12u);
  EXPECT_EQ(placeWith<mstd::cAsciiString const&>(&s::store), 13u);
  EXPECT_EQ(placeWith<mucs::cString const&>(&s::store), 14u);
  EXPECT_EQ(placeOf(&s::rewind), 15u);
  EXPECT_EQ(placeOf(&s::clear), 16u);
  EXPECT_EQ(placeOf(&s::newContext), 17u);
  EXPECT_EQ(placeOf(&s::releaseCurrentContext), 18u);
  EXPECT_EQ(placeOf(&s::newLabel), 19u);
  EXPECT_EQ(placeOf(&s::data), 20u);
  EXPECT_EQ(placeOf(&s::swapData), 21u);
  EXPECT_EQ(placeOf(&s::storeToFile), 22u);
  EXPECT_EQ(placeOf(&msa::cSerializeToTypeString::storeType), 23u);
}

TEST(VirtualOrder, Devices)
{
  typedef mstd::tArray<char> a;
  typedef mio::cAbstractIODevice d;
  typedef bool (d::*cTerminatedLimited)(a&, a const&, bool, unsigned int);
  typedef bool (d::*cTerminated)(a&, a const&, bool);
  typedef bool (d::*cLine)(a&, unsigned int);
  typedef void (d::*cText)(mstd::cAsciiString const&, mstd::cAsciiString const&);
  typedef void (d::*cView)(mstd::tConstArrayRef<char> const&, mstd::cAsciiString const&);
  EXPECT_EQ(placeOf(static_cast<cTerminatedLimited>(&d::readTextLine)), 2u);
  EXPECT_EQ(placeOf(static_cast<cTerminated>(&d::readTextLine)), 3u);
  EXPECT_EQ(placeOf(static_cast<cLine>(&d::readTextLine)), 4u);
  EXPECT_EQ(placeOf(static_cast<cText>(&d::writeTextLine)), 5u);
  EXPECT_EQ(placeOf(static_cast<cView>(&d::writeTextLine)), 6u);
  EXPECT_EQ(placeOf(&d::read), 7u);
  EXPECT_EQ(placeOf(&d::write), 8u);
}

TEST(VirtualOrder, BlockDevices)
{
  typedef mio::cAbstractIOBlockDevice b;
  EXPECT_EQ(placeOf(&b::name), 9u);
  EXPECT_EQ(placeOf(&b::seek), 10u);
  EXPECT_EQ(placeOf(&b::pos), 11u);
  EXPECT_EQ(placeOf(&b::truncate), 12u);
  EXPECT_EQ(placeOf(&b::mmap), 13u);
  EXPECT_EQ(placeOf(&b::eof), 14u);
  EXPECT_EQ(placeOf(&b::setSize), 15u);
  EXPECT_EQ(placeWithConst<unsigned int>(&b::proxyAt), 16u);
  EXPECT_EQ(placeWith<unsigned int>(&b::proxyAt), 17u);
  EXPECT_EQ(placeOf(&b::proxyLength), 18u);
  EXPECT_EQ(placeOf(&b::proxyCopyPartTo), 19u);
  EXPECT_EQ(placeOf(&b::proxyProvideData), 20u);
  EXPECT_EQ(placeOf(&b::proxyPreferredBlockSize), 21u);
  EXPECT_EQ(placeOf(&b::proxyPatchData), 22u);
  EXPECT_EQ(placeOf(&b::proxySetSize), 23u);
  EXPECT_EQ(placeOf(&b::proxyInsert), 24u);
  EXPECT_EQ(placeOf(&b::proxyInsertDefaultObjects), 25u);
  EXPECT_EQ(placeOf(&b::proxyErase), 26u);
  EXPECT_EQ(placeOf(&b::proxyPhysical), 27u);
  EXPECT_EQ(placeOf(&b::constProxyPhysical), 28u);
  typedef mio::cFile f;
  EXPECT_EQ(placeOf(&f::remove), 29u);
  EXPECT_EQ(placeOf(&f::setRemoveOnClose), 30u);
  EXPECT_EQ(placeOf(&f::release), 31u);
  EXPECT_EQ(placeOf(&f::rename), 32u);
  EXPECT_EQ(placeOf(&f::lastModified), 33u);
  EXPECT_EQ(placeOf(&f::open), 34u);
  EXPECT_EQ(placeOf(&f::close), 35u);
  EXPECT_EQ(placeOf(&f::flush), 36u);
}

TEST(VirtualOrder, Deserializers)
{
  typedef msa::cAbstractDeserializer d;
  EXPECT_EQ(placeOf(&d::loadBlock), 2u);
  EXPECT_EQ(placeWith<signed char&>(&d::load), 3u);
  EXPECT_EQ(placeWith<unsigned char&>(&d::load), 4u);
  EXPECT_EQ(placeWith<unsigned short&>(&d::load), 5u);
  EXPECT_EQ(placeWith<short&>(&d::load), 6u);
  EXPECT_EQ(placeWith<unsigned int&>(&d::load), 7u);
  EXPECT_EQ(placeWith<int&>(&d::load), 8u);
  EXPECT_EQ(placeWith<mucs::cString&>(&d::load), 14u);
  EXPECT_EQ(placeOf(&d::rewind), 15u);
  EXPECT_EQ(placeOf(&d::eoc), 16u);
  EXPECT_EQ(placeOf(&d::reserialize), 17u);
  EXPECT_EQ(placeOf(&d::isContext), 18u);
  EXPECT_EQ(placeOf(&d::isLabel), 19u);
  EXPECT_EQ(placeOf(&d::getContext), 20u);
  EXPECT_EQ(placeOf(&d::getNextContextTypeName), 21u);
  EXPECT_EQ(placeOf(&d::getNextLabelName), 22u);
  EXPECT_EQ(placeOf(&d::releaseCurrentContext), 23u);
  EXPECT_EQ(placeOf(&d::findLabel), 24u);
  EXPECT_EQ(placeOf(&d::tryFindLabel), 25u);
}

TEST(VirtualOrder, TypeReferences)
{
  typedef msa::cAbstractTypeReference r;
  EXPECT_EQ(placeOf(&r::create), 2u);
  EXPECT_EQ(placeOf(&r::store), 3u);
  EXPECT_EQ(placeOf(&r::load), 4u);
  EXPECT_EQ(placeOf(&r::mangeledTypeName), 5u);
  EXPECT_EQ(placeOf(&r::typeName), 6u);
  EXPECT_EQ(placeOf(&r::alterable), 7u);
  EXPECT_EQ(placeOf(&r::readable), 8u);
}

TEST(VirtualOrder, WhatStandsBehindAFileSystem)
{
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::exists), 2u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::remove), 3u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::cwd), 4u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::mkdir), 5u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::rename), 6u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::supportsSymLinks), 7u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::createSymLink), 8u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::setPermissions), 9u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::createDirImpl), 10u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::createFileInfoImpl), 11u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::createFileImpl), 12u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::isUsed), 13u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::matches), 14u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::bind), 15u);
  EXPECT_EQ(placeOf(&mio::cAbstractFsImpl::unbind), 16u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::deepCopy), 2u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::name), 3u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::remove), 4u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::setRemoveOnClose), 5u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::release), 6u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::rename), 7u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::lastModified), 8u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::open), 9u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::close), 10u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::truncate), 11u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::readBytes), 12u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::writeBytes), 13u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::mmap), 14u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::seek), 15u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::pos), 16u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::flush), 17u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileImpl::munmap), 18u);
  EXPECT_EQ(placeOf(&mio::cAbstractDirImpl::setNext), 2u);
  EXPECT_EQ(placeOf(&mio::cAbstractDirImpl::element), 3u);
  EXPECT_EQ(placeOf(&mio::cAbstractDirImpl::isEnd), 4u);
  EXPECT_EQ(placeOf(&mio::cAbstractDirImpl::createCopy), 5u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileInfoImpl::timeStamp), 2u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileInfoImpl::filePath), 3u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileInfoImpl::readLink), 4u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileInfoImpl::size), 5u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileInfoImpl::type), 6u);
  EXPECT_EQ(placeOf(&mio::cAbstractFileInfoImpl::readPermissions), 7u);
}

TEST(VirtualOrder, Modules)
{
  typedef mcs::cAbstractInterfaceProvider p;
  typedef mcs::cAbstractModule m;
  EXPECT_EQ(placeOf(&mcs::cAbstractInterface::interfaceMatched), 2u);
  EXPECT_EQ(placeOf(&mcs::cAbstractInterface::interfaceUnmatched), 3u);
  EXPECT_EQ(placeWith<mstd::tAutoPtr<mcs::cAbstractInterface>>(&p::addInterface), 2u);
  EXPECT_EQ(placeWith<mcs::cAbstractInterface&>(&p::addInterface), 3u);
  EXPECT_EQ(placeOf(&p::removeInterface), 4u);
  EXPECT_EQ(placeOf(&m::isPlugIn), 2u);
  EXPECT_EQ(placeOf(&m::isComponent), 3u);
  EXPECT_EQ(placeOf(&m::storeSettings), 4u);
  EXPECT_EQ(placeOf(&m::loadSettings), 5u);
  EXPECT_EQ(placeOf(&m::applySettings), 6u);
  typedef mcs::cAbstractPlugIn i;
  EXPECT_EQ(placeOf(&i::isCoreExtension), 7u);
  EXPECT_EQ(placeOf(&i::coreExtension), 8u);
  EXPECT_EQ(placeOf(&i::pluginTypeName), 9u);
}

TEST(VirtualOrder, Components)
{
  typedef mcs::cAbstractComponent c;
  EXPECT_EQ(placeOf(&c::isPlugIn), 2u);
  EXPECT_EQ(placeOf(&c::isComponent), 3u);
  EXPECT_EQ(placeOf(&c::isSpecific), 7u);
  EXPECT_EQ(placeOf(&c::explicitLocal), 8u);
  EXPECT_EQ(placeOf(&c::fixedQueueID), 9u);
  EXPECT_EQ(placeOf(&c::fixedModuleID), 10u);
  EXPECT_EQ(placeOf(&c::isLocal), 11u);
  EXPECT_EQ(placeOf(&c::notifyComponentRegistered), 12u);
  EXPECT_EQ(placeOf(&c::notifyShortlyRemove), 13u);
  EXPECT_EQ(placeOf(&c::applicationCloseAdvisable), 14u);
  EXPECT_EQ(placeOf(&c::interfaceDeps), 15u);
  EXPECT_EQ(placeOf(&c::delayAnnouncement), 16u);
  EXPECT_EQ(placeOf(&mcs::cInterfaceDep::validateMatch), 2u);
}

TEST(VirtualOrder, ClassLoaders)
{
  typedef mpi::cAbstractClassLoader l;
  typedef mcs::cAbstractPlugIn* (l::*cPlugInMaker)(msa::cReferenceFrame&);
  typedef mcs::cAbstractComponent* (l::*cComponentMaker)(msa::cReferenceFrame&, mcs::cModuleMgr&);
  EXPECT_EQ(placeOf(static_cast<cPlugInMaker>(&l::instance)), 2u);
  EXPECT_EQ(placeOf(static_cast<cComponentMaker>(&l::instance)), 3u);
  EXPECT_EQ(placeOf(&l::getModuleVersion), 4u);
  EXPECT_EQ(placeOf(&l::getModuleKROVersion), 5u);
}

TEST(VirtualOrder, CoreExtensions)
{
  typedef mce::cAbstractCoreExtension e;
  typedef mce::cAbstractSAExtension s;
  EXPECT_EQ(placeOf(&e::extensionType), 2u);
  EXPECT_EQ(placeOf(&e::description), 3u);
  EXPECT_EQ(placeOf(&e::buildInfo), 4u);
  EXPECT_EQ(placeOf(&e::supports), 5u);
  EXPECT_EQ(placeOf(&e::provides), 6u);
  EXPECT_EQ(placeOf(&mce::cAbstractEnDecExtension::createEnDec), 7u);
  EXPECT_EQ(placeOf(&mce::cNetAbstractAddressExtension::createNetAddress), 7u);
  EXPECT_EQ(placeOf(&s::createSerializer), 7u);
  EXPECT_EQ(placeWith<mstd::tConstArrayRef<char> const&>(&s::createDeserializer), 8u);
  EXPECT_EQ(placeWith<mucs::cString const&>(&s::createDeserializer), 9u);

  typedef mce::cNetAbstractAddress a;
  EXPECT_EQ(placeOf(&a::addrType), 2u);
  EXPECT_EQ(placeOf(&a::fromString), 3u);
  EXPECT_EQ(placeOf(&a::toString), 4u);
  EXPECT_EQ(placeOf(&a::newAddress), 8u);
  EXPECT_EQ(placeOf(static_cast<mce::cNetAbstractIPAddress* (a::*)()>(&a::isIPAddress)), 9u);
  EXPECT_EQ(placeOf(static_cast<mce::cNetAbstractIPAddress const* (a::*)() const>(&a::isIPAddress)), 10u);
}
