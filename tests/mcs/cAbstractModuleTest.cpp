#include "mcs/cAbstractModule.h"

#include "mcs/cAbstractInterface.h"
#include "pi/cAbstractClassLoader.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cReferenceFrame.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

using mcs::cAbstractModule;
using support::toString;

namespace
{
/// Counts, and makes nothing.
class cLoader : public mpi::cAbstractClassLoader
{
public:
  cLoader() : cAbstractClassLoader(mucs::cString("none")) {}
  mcs::cAbstractPlugIn* instance(msa::cReferenceFrame&) override { return nullptr; }
  mcs::cAbstractComponent* instance(msa::cReferenceFrame&, mcs::cModuleMgr&) override { return nullptr; }
  void getModuleVersion(unsigned int&, unsigned int&) const override {}
  void getModuleKROVersion(unsigned int&, unsigned int&) const override {}
};

class cModule : public cAbstractModule
{
public:
  cModule() = default;
  explicit cModule(msa::cReferenceFrame& frame) : cAbstractModule(frame) {}
  bool isPlugIn() const override { return false; }
  bool isComponent() const override { return false; }
};

/// Tells how many references the loader has when it goes.
class cInterface : public mcs::cAbstractInterface
{
public:
  cInterface(mpi::cAbstractClassLoader const& loader, int& iSeen)
      : cAbstractInterface(mcs::cInterfaceDesc()), mLoader(loader), miSeen(iSeen)
  {
  }
  ~cInterface() override { miSeen = static_cast<int>(mLoader.numReferences()); }
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}

private:
  mpi::cAbstractClassLoader const& mLoader;
  int& miSeen;
};

TEST(cAbstractModule, IsAConnectableBeforeItIsAProvider)
{
  cModule module;
  cAbstractModule& base = module;
  EXPECT_EQ(static_cast<void*>(static_cast<mrmi::cConnectable*>(&base)), static_cast<void*>(&base));
  EXPECT_GT(static_cast<void*>(static_cast<mcs::cAbstractInterfaceProvider*>(&base)), static_cast<void*>(&base));
  EXPECT_TRUE(std::is_abstract<cAbstractModule>::value);
}

TEST(cAbstractModule, ComesFromTheProgramUnlessSomebodySaysOtherwise)
{
  msa::cReferenceFrame frame;
  int value = 3;
  frame.addRef(value, false, true);
  cModule const plain;
  cModule const framed(frame);
  for (cModule const* module : {&plain, &framed})
  {
    EXPECT_TRUE(module->isStatic());
    EXPECT_EQ(module->classLoader(), nullptr);
    EXPECT_EQ(module->numInterfaces(), 0u);
    EXPECT_TRUE(module->info().name().empty());
    EXPECT_TRUE(module->info().context().empty());
  }
  EXPECT_EQ(frame.readNext<int>(), 3) << "nobody has read it";
}

TEST(cAbstractModule, NotesItsClassLoaderAndDoesNotCountIt)
{
  cLoader loader;
  loader.incRef();
  {
    cModule module;
    module.setClassLoader(&loader, mstd::cAsciiString("plant"));
    EXPECT_EQ(loader.numReferences(), 1u);
    EXPECT_EQ(module.classLoader(), &loader);
    EXPECT_FALSE(module.isStatic());
    EXPECT_EQ(toString(module.info().context()), "plant");
    module.setClassLoader(&loader, mstd::cAsciiString("other"));
    EXPECT_EQ(loader.numReferences(), 1u);
    EXPECT_EQ(toString(module.info().context()), "other");
  }
  EXPECT_EQ(loader.numReferences(), 0u);
  EXPECT_TRUE(loader.isUnused());
}

TEST(cAbstractModule, GivesItsReferenceBackBeforeItsInterfacesGo)
{
  cLoader loader;
  loader.incRef();
  int seen = -1;
  {
    cModule module;
    module.setClassLoader(&loader, mstd::cAsciiString());
    module.addInterface(mstd::tAutoPtr<mcs::cAbstractInterface>(new cInterface(loader, seen)));
  }
  EXPECT_EQ(seen, 0);
}

TEST(cAbstractModule, LeavesTheClassLoaderThatItWasTakenFrom)
{
  cLoader loader;
  loader.incRef();
  {
    cModule module;
    module.setClassLoader(&loader, mstd::cAsciiString("plant"));
    module.setClassLoader(nullptr, mstd::cAsciiString());
    EXPECT_TRUE(module.isStatic());
  }
  EXPECT_EQ(loader.numReferences(), 1u);
}

TEST(cAbstractModule, LetsItsInformationBeChanged)
{
  cModule module;
  module.moduleInfo().setName(mstd::cAsciiString("meter"));
  EXPECT_EQ(toString(module.info().name()), "meter");
  EXPECT_EQ(&module.info(), &module.moduleInfo());
}

TEST(cAbstractModule, HasNoSettings)
{
  cModule module;
  msa::cSerializeBinary serializer;
  module.storeSettings(serializer);
  EXPECT_EQ(support::written(serializer), "");
  msa::cDeserializeBinary deserializer; // has nothing to read
  module.loadSettings(deserializer);
  module.applySettings();
  EXPECT_EQ(module.numInterfaces(), 0u);
}
} // namespace
