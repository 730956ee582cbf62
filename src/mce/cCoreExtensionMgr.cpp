#include "mce/cCoreExtensionMgr.h"

#include "io/cFs.h"
#include "mce/cAbstractEnDecExtension.h"
#include "mce/cAbstractSAExtension.h"
#include "mce/cExtensionPair.h"
#include "mce/cMCEExceptions.h"
#include "mce/cNetAbstractAddressExtension.h"
#include "mce/net++/cNetAbstractAddress.h"
#include "mcs/cAbstractPlugIn.h"
#include "mcs/cMCSExceptions.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cAbstractPlatformInfo.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "sa/cReferenceFrame.h"
#include "std/tVector.h"
#include "ucs/cAbstractEnDec.h"
#include "ucs/cString.h"

namespace mce
{
namespace
{
char const NetAddressKind[] = "netwok address";
char const SAKind[] = "serializer";
char const EnDecKind[] = "Encoder / Decoder";

mucs::cString libraryName(mucs::cString const& file)
{
  mucs::cString name(file);
  mpi::cPlatform::createPlatformInfo()->osSpecificSOName(name);
  return name;
}
} // namespace

cCoreExtensionMgr::cCoreExtensionMgr() : mExtensions(mstd::tPtrList<cExtensionPair>::Object) {}

cCoreExtensionMgr::~cCoreExtensionMgr() {}

void cCoreExtensionMgr::load(mucs::cString const& file, msa::cReferenceFrame& frame)
{
  mstd::tAutoPtr<mpi::cAbstractClassLoader> loader(mpi::cPlatform::createClassLoader(libraryName(file)));
  mstd::tAutoPtr<mcs::cAbstractPlugIn> plugIn(loader->instance(frame));
  plugIn->setClassLoader(loader.get(), mstd::cAsciiString());
  if (!plugIn->isCoreExtension())
  {
    mcs::cMCSExceptions::throwNoCoreExtension(file);
  }
  mstd::tAutoPtr<cExtensionPair> pair(new cExtensionPair(plugIn));
  loader.release(); // the pair deletes it from here on
  mExtensions.append(pair);
}

void cCoreExtensionMgr::load(mucs::cString const& file)
{
  msa::cReferenceFrame frame;
  load(file, frame);
}

void cCoreExtensionMgr::load(mstd::cAsciiString const& file, msa::cReferenceFrame& frame)
{
  mucs::cString name;
  mpi::system().fs.endec().decode(mstd::tConstArrayRef<char>(file), name);
  load(name, frame);
}

bool cCoreExtensionMgr::has(mucs::cString const& file) const
{
  return mpi::system().fs.exists(libraryName(file), true, nullptr, mio::cFileInfoFlags::LastModification);
}

void cCoreExtensionMgr::add(mstd::tAutoPtr<cAbstractCoreExtension> pExtension)
{
  mExtensions.append(mstd::tAutoPtr<cExtensionPair>(new cExtensionPair(pExtension)));
}

cAbstractCoreExtension* cCoreExtensionMgr::hasExtension(mstd::cAsciiString const& name) const
{
  mstd::cAsciiString const upper = name.upperCase();
  for (cExtensionPair* const pair : mExtensions)
  {
    if (pair->extension().supports(upper))
    {
      return &pair->extension();
    }
  }
  return nullptr;
}

void cCoreExtensionMgr::provides(cAbstractCoreExtension::ExtensionType eType, mstd::tVector<mstd::cAsciiString>& names)
{
  for (cExtensionPair* const pair : mExtensions)
  {
    if (pair->extension().extensionType() == eType)
    {
      pair->extension().provides(names);
    }
  }
}

template <class T>
T& cCoreExtensionMgr::findExtension(cAbstractCoreExtension::ExtensionType eType, char const* pKind,
                                    mstd::cAsciiString const& name) const
{
  mstd::cAsciiString const upper = name.upperCase();
  bool othersFound = false;
  for (cExtensionPair* const pair : mExtensions)
  {
    if (pair->extension().extensionType() != eType)
    {
      continue;
    }
    othersFound = true;
    if (pair->extension().supports(upper))
    {
      T* const p = dynamic_cast<T*>(&pair->extension());
      if (!(p != 0))
      {
        cSTDExceptions::throwAssertionFailed("p != 0", "mce/cCoreExtensionMgr", __LINE__);
      }
      return *p;
    }
  }
  cMCEExceptions::throwUnsupportedExtension(mstd::cAsciiString(pKind), name, othersFound);
}

mstd::tAutoPtr<mucs::cAbstractEnDec> cCoreExtensionMgr::createEnDec(mstd::cAsciiString const& name) const
{
  return findExtension<cAbstractEnDecExtension>(cAbstractCoreExtension::EnDec, EnDecKind, name)
      .createEnDec(name.upperCase());
}

mstd::tAutoPtr<msa::cAbstractSerializer> cCoreExtensionMgr::createSerializer(mstd::cAsciiString const& type,
                                                                             mstd::cAsciiString const& argument) const
{
  return findExtension<cAbstractSAExtension>(cAbstractCoreExtension::SA, SAKind, type).createSerializer(argument);
}

mstd::tAutoPtr<msa::cAbstractDeserializer>
cCoreExtensionMgr::createDeserializer(mstd::cAsciiString const& type, mstd::tConstArrayRef<char> const& data) const
{
  return findExtension<cAbstractSAExtension>(cAbstractCoreExtension::SA, SAKind, type).createDeserializer(data);
}

mstd::tAutoPtr<msa::cAbstractDeserializer> cCoreExtensionMgr::createDeserializer(mstd::cAsciiString const& type,
                                                                                 mucs::cString const& file) const
{
  return findExtension<cAbstractSAExtension>(cAbstractCoreExtension::SA, SAKind, type).createDeserializer(file);
}

mstd::tAutoPtr<cNetAbstractAddress> cCoreExtensionMgr::createNetAddress(mstd::cAsciiString const& type) const
{
  return findExtension<cNetAbstractAddressExtension>(cAbstractCoreExtension::NetAddress, NetAddressKind, type)
      .createNetAddress(type);
}

void cCoreExtensionMgr::clear()
{
  mExtensions.clear();
}

} // namespace mce
