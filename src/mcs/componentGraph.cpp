#include "mcs/componentGraph.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cInterfaceDep.h"
#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgr.h"
#include "mcs/componentName.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"

namespace mcs
{
namespace
{
/// Names of nodes are addresses, as nothing else is unique.
void addId(mstd::cAsciiString& out, char const* pPrefix, void const* pObject)
{
  out += "\"";
  out += pPrefix;
  mstd::cNumberConversion::toString(out, static_cast<piUInt64>(reinterpret_cast<piAddress>(pObject)),
                                    mstd::cNumberConversionFormat(16));
  out += "\"";
}

/// Characters below the blank would break a line of the picture, or the file; bytes above 127 go in as they stand.
void addText(mstd::cAsciiString& out, mstd::cAsciiString const& text)
{
  for (unsigned int i = 0; i < text.length(); ++i)
  {
    char const c = text.c_str()[i];
    if (c == '"' || c == '\\')
    {
      out += '\\';
    }
    out += static_cast<unsigned char>(c) < ' ' || c == '\x7f' ? ' ' : c;
  }
}

void addEdge(mstd::cAsciiString& out, cAbstractComponent const& from, char const* pPrefix, void const* pTo,
             mstd::cAsciiString const& label, char const* pAttributes)
{
  addId(out, "c", &from);
  out += " -> ";
  addId(out, pPrefix, pTo);
  out += " [ label=\"";
  addText(out, label);
  out += "\"";
  out += pAttributes;
  out += " ];\n";
}

void addComponent(mstd::cAsciiString& out, cAbstractComponent const& component)
{
  addId(out, "c", &component);
  out += " [ label=\"";
  addText(out, componentName(component));
  out += "\\n";
  addText(out, component.location().toString());
  out += component.toRemove() ? "\\nto be removed" : component.announced() ? "\\nannounced" : "\\nnot announced";
  out += "\",shape=\"box\",style=\"filled\",color=\"black\",fillcolor=\"";
  out += component.toRemove() ? "salmon" : component.announced() ? "LightSteelBlue" : "white";
  out += "\" ];\n";
  for (unsigned int i = 0; i < component.numInterfaces(); ++i)
  {
    cAbstractInterface const& interface = component.interface(i);
    addId(out, "i", &interface);
    out += " [ label=\"";
    addText(out, interface.desc().name());
    out += "\",shape=\"ellipse\" ];\n";
    addEdge(out, component, "i", &interface, mstd::cAsciiString(), ",dir=\"none\"");
  }
}

void addDependency(mstd::cAsciiString& out, cAbstractComponent const& owner, cInterfaceDep const& dependency)
{
  cAbstractComponent* const provider = dependency.hasProvider();
  cAbstractInterface* const interface =
      provider != nullptr ? dependency.hasPotentialyMatchingInterface(*provider) : nullptr;
  if (interface != nullptr)
  {
    addEdge(out, owner, "i", interface, dependency.wanted().name(), ",color=\"blue\"");
    return;
  }
  addId(out, "d", &dependency);
  out += " [ label=\"";
  addText(out, dependency.wanted().name());
  out += "\",shape=\"note\",color=\"red\" ];\n";
  addEdge(out, owner, "d", &dependency, mstd::cAsciiString(), ",color=\"red\",style=\"dashed\"");
}

void addRequirements(mstd::cAsciiString& out, cModuleMgr const& manager, cAbstractComponent const& component)
{
  // Only what is in the list may be drawn: other pointers may lead to components that are gone.
  for (cManagedComponent* const managed : manager.components())
  {
    if (component.requiresComponent(managed->component()))
    {
      addEdge(out, component, "c", managed->component(), mstd::cAsciiString("requires"), ",style=\"bold\"");
    }
  }
}
} // namespace

mstd::cAsciiString componentGraph(cModuleMgr const& manager)
{
  mstd::cAsciiString out;
  out += "digraph G {\n";
  for (cManagedComponent* const managed : manager.components())
  {
    addComponent(out, *managed->component());
  }
  for (cManagedComponent* const managed : manager.components())
  {
    cAbstractComponent const& component = *managed->component();
    for (unsigned int i = 0; i < component.interfaceDeps().length(); ++i)
    {
      addDependency(out, component, *component.interfaceDeps()[i]);
    }
    addRequirements(out, manager, component);
  }
  out += "}\n";
  return out;
}

} // namespace mcs
