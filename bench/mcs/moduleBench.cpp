#include "support/bench.h"

#include "modules/cAdder.h"
#include "modules/qtAdder.h"

#include "mcs/cAbstractPlugIn.h"
#include "mcs/cPlugInGuard.h"
#include "mcs/cPlugInMgr.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cPlatform.h"
#include "sa/cReferenceFrame.h"
#include "ucs/cString.h"

#include <QtCore/QPluginLoader>
#include <QtCore/QString>

#include <Poco/ClassLoader.h>

#include <boost/dll/import.hpp>
#include <boost/dll/shared_library.hpp>

#include <dlfcn.h>

#include <memory>
#include <stdexcept>
#include <string>

// One round: the library is loaded, makes an object, the object is called once and destroyed, and the library is
// unloaded again. All the libraries are compiled in the same way, each offers an adder, and each needs the library of
// its framework alone, which the program has anyway.

namespace
{
std::string const folder = MORTISE_BENCH_MODULES;

unsigned int call(cAdder* pAdder)
{
  if (pAdder == nullptr)
  {
    throw std::runtime_error("no adder");
  }
  return pAdder->add(1);
}

/// No contender may get away with a library that stays.
void checkGone(std::string const& file)
{
  if (dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr)
  {
    throw std::runtime_error(file + " is still there");
  }
}
} // namespace

BENCH("modules", "load, make an object, call it, unload", "mortise")
{
  mucs::cString const file((folder + "/libmortise-bench-module.so").c_str());
  unsigned int sum = 0;
  for (auto _ : state)
  {
    msa::cReferenceFrame frame;
    mstd::tAutoPtr<mpi::cAbstractClassLoader> const loader = mpi::cPlatform::createClassLoader(file);
    mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(frame));
    plugIn->setClassLoader(loader.get(), mstd::cAsciiString());
    sum += call(dynamic_cast<cAdder*>(plugIn.get()));
  }
  benchmark::DoNotOptimize(sum);
  checkGone(folder + "/libmortise-bench-module.so");
}

BENCH("modules", "load, make an object, call it, unload", "Qt")
{
  QString const file = QString::fromStdString(folder + "/libmortise-bench-qt.so");
  unsigned int sum = 0;
  for (auto _ : state)
  {
    QPluginLoader loader(file);
    loader.setLoadHints(QLibrary::LoadHints()); // one that is not set otherwise is to keep the library
    sum += call(qobject_cast<cAdder*>(loader.instance()));
    loader.unload();
  }
  benchmark::DoNotOptimize(sum);
  checkGone(folder + "/libmortise-bench-qt.so");
}

BENCH("modules", "load, make an object, call it, unload", "Boost")
{
  std::string const file = folder + "/libmortise-bench-boost.so";
  unsigned int sum = 0;
  for (auto _ : state)
  {
    boost::dll::shared_library library(file);
    auto const create = library.get_alias<std::shared_ptr<cAdder>()>("createAdder");
    sum += call(create().get());
  }
  benchmark::DoNotOptimize(sum);
  checkGone(file);
}

BENCH("modules", "load, make an object, call it, unload", "Poco")
{
  std::string const file = folder + "/libmortise-bench-poco.so";
  unsigned int sum = 0;
  for (auto _ : state)
  {
    Poco::ClassLoader<cAdder> loader;
    loader.loadLibrary(file);
    std::unique_ptr<cAdder> adder(loader.create("cPocoModule"));
    sum += call(adder.get());
    adder.reset();
    loader.unloadLibrary(file);
  }
  benchmark::DoNotOptimize(sum);
  checkGone(file);
}

// What the framework adds is all that the class loader and the base of the module do.
BENCH("modules", "load, make an object, call it, unload", "limit: dlopen() of a bare C++ module")
{
  std::string const file = folder + "/libmortise-bench-bare.so";
  unsigned int sum = 0;
  for (auto _ : state)
  {
    void* const library = dlopen(file.c_str(), RTLD_NOW);
    auto const create = reinterpret_cast<cAdder* (*)()>(dlsym(library, "createAdder"));
    std::unique_ptr<cAdder> adder(create());
    sum += call(adder.get());
    adder.reset();
    dlclose(library);
  }
  benchmark::DoNotOptimize(sum);
  checkGone(file);
}

// The library stays: another one holds it.
BENCH("modules", "load a library that is there, make an object, call it", "mortise")
{
  mucs::cString const file((folder + "/libmortise-bench-module.so").c_str());
  mstd::tAutoPtr<mpi::cAbstractClassLoader> const holder = mpi::cPlatform::createClassLoader(file);
  unsigned int sum = 0;
  for (auto _ : state)
  {
    msa::cReferenceFrame frame;
    mstd::tAutoPtr<mpi::cAbstractClassLoader> const loader = mpi::cPlatform::createClassLoader(file);
    mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(frame));
    plugIn->setClassLoader(loader.get(), mstd::cAsciiString());
    sum += call(dynamic_cast<cAdder*>(plugIn.get()));
  }
  benchmark::DoNotOptimize(sum);
}

BENCH("modules", "load a library that is there, make an object, call it", "limit: dlopen() of a bare C++ module")
{
  std::string const file = folder + "/libmortise-bench-bare.so";
  void* const holder = dlopen(file.c_str(), RTLD_NOW);
  unsigned int sum = 0;
  for (auto _ : state)
  {
    void* const library = dlopen(file.c_str(), RTLD_NOW);
    auto const create = reinterpret_cast<cAdder* (*)()>(dlsym(library, "createAdder"));
    std::unique_ptr<cAdder> adder(create());
    sum += call(adder.get());
    adder.reset();
    dlclose(library);
  }
  dlclose(holder);
  benchmark::DoNotOptimize(sum);
}
