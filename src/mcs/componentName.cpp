#include "mcs/componentName.h"

#include "mcs/cAbstractComponent.h"

namespace mcs
{

mstd::cAsciiString componentName(cAbstractComponent const& component)
{
  cModuleInfo const& info = component.info();
  mstd::cAsciiString name(info.name().length() != 0 ? info.name() : info.context());
  if (!component.address().valid())
  {
    return name.length() != 0 ? name : mstd::cAsciiString("unnamed");
  }
  mstd::cAsciiString const address = component.address().toString();
  if (name.length() == 0)
  {
    return address;
  }
  name += " (";
  name += address;
  name += ")";
  return name;
}

mstd::cAsciiString componentNames(mstd::tList<cAbstractComponent*> const& components, char const* pSeparator)
{
  mstd::cAsciiString names;
  for (cAbstractComponent const* const component : components)
  {
    if (names.length() != 0)
    {
      names += pSeparator;
    }
    names += componentName(*component);
  }
  return names;
}

} // namespace mcs
