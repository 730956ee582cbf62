// Loads the module as a program does. The argument is its folder and its plain name.

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cModuleMgr.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cAbstractPlatformInfo.h"
#include "pi/cAbstractProcessEvents.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "sa/cReferenceFrame.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "ucs/cString.h"

#include <stdio.h>

namespace
{
int failures = 0;

void check(bool holds, char const* pWhat)
{
  if (!holds)
  {
    fprintf(stderr, "greeterTest: not so: %s\n", pWhat);
    ++failures;
  }
}

void run(char const* pModule)
{
  mpi::system().wq.setEvents(mpi::cPlatform::createProcessEvents());
  mcs::cModuleMgr manager(mpi::system().extensions);

  mucs::cString file(pModule);
  mpi::cPlatform::createPlatformInfo()->osSpecificSOName(file);
  mstd::tAutoPtr<mpi::cAbstractClassLoader> loader(mpi::cPlatform::createClassLoader(file));
  unsigned int major = 0;
  unsigned int minor = 0;
  loader->getModuleVersion(major, minor);
  check(major == 1 && minor == 0, "the version is 1.0");

  msa::cReferenceFrame configuration; // empty
  mstd::tAutoPtr<mcs::cAbstractComponent> made(loader->instance(configuration, manager));
  made->setClassLoader(loader.get(), "greeter");
  mcs::cAbstractComponent& component = manager.addComponent(made, mcs::cComponentAddr());
  mpi::cAbstractClassLoader const& library = *loader;
  manager.registerClassLoader(loader);

  // The work queue announces the component.
  for (int turn = 0; turn < 10 && !component.announced(); ++turn)
  {
    mpi::system().wq.processEvents(true);
  }
  check(component.announced(), "the component is announced");
  check(manager.hasComponent("greeter") == &component, "the component is found by its name");

  mstd::cAsciiString name("World");
  mstd::cAsciiString greeting;
  msa::cReferenceFrame frame;
  frame.addRef(name, false, true).addRef(greeting, true, false);
  component.findInterface("greeter").invokeIndirectSlot("greet", frame);
  check(greeting == "Hello, World!", "the greeting is \"Hello, World!\"");

  check(library.numReferences() == 1, "the library is in use");
  component.removeLater();
  for (int turn = 0; turn < 10 && manager.hasComponent("greeter") != nullptr; ++turn)
  {
    mpi::system().wq.processEvents(true);
  }
  check(manager.hasComponent("greeter") == nullptr, "the component is gone");
}
} // namespace

int main(int argc, char** argv)
{
  if (argc != 2)
  {
    fputs("usage: greeterTest MODULE\n", stderr);
    return 2;
  }
  try
  {
    run(argv[1]);
  }
  catch (mstd::cAbstractException const& e)
  {
    mucs::cString text;
    e.createMessage(text, ": ");
    fprintf(stderr, "greeterTest: %s\n", text.ascii('?').c_str());
    return 1;
  }
  puts(failures == 0 ? "greeterTest: all is well" : "greeterTest: failed");
  return failures == 0 ? 0 : 1;
}
