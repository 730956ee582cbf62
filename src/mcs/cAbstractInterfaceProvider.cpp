#include "mcs/cAbstractInterfaceProvider.h"

#include "mcs/cAbstractInterface.h"
#include "mcs/cMCSExceptions.h"
#include "std/cAbstractException.h"

namespace mcs
{
namespace
{
char const GivenByIndex[] = "given by index";

/// The first interface for which `isIt` is true, or null.
template <class Test>
cAbstractInterface* findFirst(mstd::tPtrVector<cRegisteredInterface> const& interfaces, Test const& isIt)
{
  for (unsigned int i = 0; i < interfaces.length(); ++i)
  {
    cAbstractInterface& interface = interfaces[i]->interface();
    if (isIt(interface))
    {
      return &interface;
    }
  }
  return nullptr;
}

cAbstractInterface* findByName(mstd::tPtrVector<cRegisteredInterface> const& interfaces, mstd::cAsciiString const& name)
{
  return findFirst(interfaces, [&name](cAbstractInterface const& i) { return i.desc().name() == name; });
}

cAbstractInterface* findMatching(mstd::tPtrVector<cRegisteredInterface> const& interfaces, cInterfaceDesc const& desc)
{
  return findFirst(interfaces, [&desc](cAbstractInterface const& i) { return i.matches(desc); });
}

cAbstractInterface& existing(cAbstractInterface* pInterface, mstd::cAsciiString const& name)
{
  if (pInterface == nullptr)
  {
    cMCSExceptions::throwNoSuchInterface(name);
  }
  return *pInterface;
}
} // namespace

cAbstractInterfaceProvider::cAbstractInterfaceProvider() : mInterfaces(mstd::tAutoPtrType::Object) {}

cAbstractInterfaceProvider::~cAbstractInterfaceProvider() {}

cAbstractInterface& cAbstractInterfaceProvider::addInterface(mstd::tAutoPtr<cAbstractInterface> pInterface)
{
  return mInterfaces.append(mstd::tAutoPtr<cRegisteredInterface>(new cRegisteredInterface(pInterface)))->interface();
}

cAbstractInterface& cAbstractInterfaceProvider::addInterface(cAbstractInterface& interface)
{
  return mInterfaces.append(mstd::tAutoPtr<cRegisteredInterface>(new cRegisteredInterface(interface)))->interface();
}

void cAbstractInterfaceProvider::removeInterface(cAbstractInterface& interface)
{
  cRegisteredInterface entry(interface);
  for (unsigned int i = 0; i < mInterfaces.length(); ++i)
  {
    if (mInterfaces[i] == &entry) // never: the entries are objects of their own
    {
      mInterfaces.erase(i);
      return;
    }
  }
}

cAbstractInterface& cAbstractInterfaceProvider::interface(unsigned int iIndex) const
{
  try
  {
    return mInterfaces.at(iIndex)->interface();
  }
  catch (mstd::cAbstractException const& cause)
  {
    cMCSExceptions::throwNoSuchInterface(mstd::cAsciiString(GivenByIndex), &cause);
  }
}

cAbstractInterface& cAbstractInterfaceProvider::getInterface(unsigned int iIndex)
{
  try
  {
    if (iIndex >= mInterfaces.length())
    {
      cSTDExceptions::throwOutOfRange("cAbstractInterfaceProvider", "getInterface", cSTDExceptions::IndexOutOfRange,
                                      iIndex, 0, static_cast<long long>(mInterfaces.length()) - 1);
    }
    return mInterfaces[iIndex]->interface();
  }
  catch (mstd::cAbstractException const& cause)
  {
    cMCSExceptions::throwNoSuchInterface(mstd::cAsciiString(GivenByIndex), &cause);
  }
}

cAbstractInterface const* cAbstractInterfaceProvider::tryFindInterface(mstd::cAsciiString const& name) const
{
  return findByName(mInterfaces, name);
}

cAbstractInterface* cAbstractInterfaceProvider::tryFindInterface(mstd::cAsciiString const& name)
{
  return findByName(mInterfaces, name);
}

cAbstractInterface const& cAbstractInterfaceProvider::findInterface(mstd::cAsciiString const& name) const
{
  return existing(findByName(mInterfaces, name), name);
}

cAbstractInterface& cAbstractInterfaceProvider::findInterface(mstd::cAsciiString const& name)
{
  return existing(findByName(mInterfaces, name), name);
}

cAbstractInterface const* cAbstractInterfaceProvider::hasMatchingInterface(cInterfaceDesc const& desc) const
{
  return findMatching(mInterfaces, desc);
}

cAbstractInterface* cAbstractInterfaceProvider::hasMatchingInterface(cInterfaceDesc const& desc)
{
  return findMatching(mInterfaces, desc);
}

cAbstractInterface& cAbstractInterfaceProvider::getMatchingInterface(cInterfaceDesc const& desc) const
{
  return existing(findMatching(mInterfaces, desc), desc.name());
}

cAbstractInterface* cAbstractInterfaceProvider::hasInterface(mrmi::cConnectable const& connectable) const
{
  return findFirst(mInterfaces, [&connectable](cAbstractInterface const& i) { return &i == &connectable; });
}

cAbstractInterface& cAbstractInterfaceProvider::findInterface(mrmi::cConnectable const& connectable) const
{
  cAbstractInterface* const found = hasInterface(connectable);
  if (found == nullptr)
  {
    cMCSExceptions::throwNoPublicInterface(connectable);
  }
  return *found;
}

mstd::tAutoPtr<mstd::tPtrList<cAbstractInterface>> cAbstractInterfaceProvider::interfaces() const
{
  mstd::tAutoPtr<mstd::tPtrList<cAbstractInterface>> all(
      new mstd::tPtrList<cAbstractInterface>(mstd::tPtrList<cAbstractInterface>::NotOwned));
  for (unsigned int i = 0; i < mInterfaces.length(); ++i)
  {
    all->append(&mInterfaces[i]->interface());
  }
  return all;
}

} // namespace mcs
