#include "mce/cCoreExtensionMgr.h"

#include "io/cFs.h"
#include "mce/cGenericExtension.h"
#include "mce/cUnsupportedExtensionException.h"
#include "mcs/cModuleLoadException.h"
#include "mcs/cUnmatchedInterfaceException.h"
#include "pi/cSystem.h"
#include "sa/cReferenceFrame.h"
#include "std/cRuntimeException.h"
#include "support/cAllocationFault.h"
#include "support/cByteEnDec.h"
#include "support/cTempDir.h"
#include "support/cTestExtension.h"
#include "support/cTestModule.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

using mce::cAbstractCoreExtension;
using mce::cCoreExtensionMgr;
using support::cTestModule;
using support::toString;

namespace
{
typedef support::tExtensionNotes tNotes;

mstd::cAsciiString ascii(char const* text)
{
  return mstd::cAsciiString(text);
}

class cCoreExtensionMgrTest : public testing::Test
{
protected:
  /// Adds an extension that notes what it is asked.
  template <class Extension>
  Extension& add(char const* name, char const* supported)
  {
    Extension* const extension = new Extension(name, supported, mNotes);
    mManager.add(mstd::tAutoPtr<cAbstractCoreExtension>(extension));
    return *extension;
  }

  /// What has been noted since the last time.
  tNotes noted()
  {
    tNotes result;
    result.swap(mNotes);
    return result;
  }

  tNotes mNotes; // outlives the extensions
  cCoreExtensionMgr mManager;
};

/// Kind, name and flag of the refusal of `action`.
template <class Action>
std::string refusalOf(Action const& action)
{
  mce::cUnsupportedExtensionException const e = support::caught<mce::cUnsupportedExtensionException>(action);
  EXPECT_EQ(support::messageOf(e),
            "No " + toString(e.className()) + " of type \"" + toString(e.extensionName()) + "\" found!");
  return toString(e.className()) + "/" + toString(e.extensionName()) + (e.otherExtensionsFound() ? "/others" : "");
}

/// All that can be made, by the kind of what makes it.
struct cRequest
{
  cAbstractCoreExtension::ExtensionType mType;
  std::string mKind;
  std::function<void(cCoreExtensionMgr const&, mstd::cAsciiString const&)> mMake;
};

std::vector<cRequest> requests()
{
  return {
      {cAbstractCoreExtension::EnDec, "Encoder / Decoder",
       [](cCoreExtensionMgr const& m, mstd::cAsciiString const& name) { m.createEnDec(name); }},
      {cAbstractCoreExtension::SA, "serializer",
       [](cCoreExtensionMgr const& m, mstd::cAsciiString const& name) { m.createSerializer(name, ascii("argument")); }},
      {cAbstractCoreExtension::SA, "serializer",
       [](cCoreExtensionMgr const& m, mstd::cAsciiString const& name) {
         m.createDeserializer(name, mstd::tConstArrayRef<char>());
       }},
      {cAbstractCoreExtension::SA, "serializer",
       [](cCoreExtensionMgr const& m, mstd::cAsciiString const& name) {
         m.createDeserializer(name, mucs::cString("f"));
       }},
      {cAbstractCoreExtension::NetAddress, "netwok address",
       [](cCoreExtensionMgr const& m, mstd::cAsciiString const& name) { m.createNetAddress(name); }},
  };
}

TEST_F(cCoreExtensionMgrTest, IsDestroyedThroughItsBaseAndIsOneOfAKind)
{
  EXPECT_TRUE(std::has_virtual_destructor<cCoreExtensionMgr>::value);
  EXPECT_FALSE(std::is_copy_constructible<cCoreExtensionMgr>::value);
}

TEST_F(cCoreExtensionMgrTest, MakesNothingIfItIsEmpty)
{
  EXPECT_EQ(mManager.hasExtension(ascii("X")), nullptr);
  for (cRequest const& request : requests())
  {
    EXPECT_EQ(refusalOf([&] { request.mMake(mManager, ascii("xMl")); }), request.mKind + "/xMl");
  }
  mstd::tVector<mstd::cAsciiString> names;
  mManager.provides(cAbstractCoreExtension::SA, names);
  EXPECT_EQ(names.length(), 0u);
  mManager.clear();
}

TEST_F(cCoreExtensionMgrTest, TellsWhetherThereAreOthersOfTheKind)
{
  for (cRequest const& request : requests())
  {
    for (cAbstractCoreExtension::ExtensionType eType :
         {cAbstractCoreExtension::NetAddress, cAbstractCoreExtension::SA, cAbstractCoreExtension::EnDec})
    {
      cCoreExtensionMgr manager;
      manager.add(mstd::tAutoPtr<cAbstractCoreExtension>(new mce::cGenericExtension(ascii("generic"), eType)));
      EXPECT_EQ(refusalOf([&] { request.mMake(manager, ascii("generic")); }),
                request.mKind + "/generic" + (eType == request.mType ? "/others" : ""));
    }
  }
}

TEST_F(cCoreExtensionMgrTest, FindsAnExtensionOfAnyKindByAnUpperCaseName)
{
  support::cTestAddressExtension& first = add<support::cTestAddressExtension>("first", "A");
  support::cTestEnDecExtension& second = add<support::cTestEnDecExtension>("second", "XML");
  add<support::cTestSAExtension>("third", "XML");
  cCoreExtensionMgr const& constant = mManager;
  EXPECT_EQ(constant.hasExtension(ascii("xMl")), &second) << "the earlier one wins";
  EXPECT_EQ(noted(), (tNotes{"first supports XML", "second supports XML"}));
  EXPECT_EQ(constant.hasExtension(ascii("a")), &first);
  EXPECT_EQ(constant.hasExtension(ascii("b")), nullptr);
}

TEST_F(cCoreExtensionMgrTest, MakesAnEncoderByTheUpperCaseName)
{
  add<support::cTestSAExtension>("other", "LATIN");
  add<support::cTestEnDecExtension>("one", "KOI");
  add<support::cTestEnDecExtension>("two", "LATIN");
  add<support::cTestEnDecExtension>("three", "LATIN");
  mstd::cAsciiString const name("Latin");
  mstd::tAutoPtr<mucs::cAbstractEnDec> const made = mManager.createEnDec(name);
  ASSERT_TRUE(made);
  EXPECT_EQ(toString(made->name()), "bytes");
  EXPECT_EQ(noted(), (tNotes{"one supports LATIN", "two supports LATIN", "two makes LATIN"}))
      << "other kinds are not asked";
  EXPECT_EQ(toString(name), "Latin");
}

TEST_F(cCoreExtensionMgrTest, MakesSerializersAndDeserializers)
{
  add<support::cTestSAExtension>("sa", "XML");
  mstd::tAutoPtr<msa::cAbstractSerializer> const serializer = mManager.createSerializer(ascii("xml"), ascii("indent"));
  EXPECT_NE(dynamic_cast<msa::cSerializeBinary*>(serializer.get()), nullptr);
  EXPECT_EQ(noted(), (tNotes{"sa supports XML", "sa writes indent"}));

  mstd::tArray<char> bytes;
  bytes.append("\x02\x00\x00\x00\x01\x00\x00\x00", 8u);
  mstd::tAutoPtr<msa::cAbstractDeserializer> const reader =
      mManager.createDeserializer(ascii("Xml"), mstd::tConstArrayRef<char>(bytes));
  ASSERT_TRUE(reader);
  EXPECT_FALSE(reader->eoc()) << "it reads the bytes given";
  EXPECT_EQ(noted(), (tNotes{"sa supports XML", "sa reads 8 bytes"}));

  EXPECT_TRUE(mManager.createDeserializer(ascii("xML"), mucs::cString("/a/file.xml")));
  EXPECT_EQ(noted(), (tNotes{"sa supports XML", "sa reads the file /a/file.xml"}));
}

TEST_F(cCoreExtensionMgrTest, MakesANetworkAddressByTheNameAsItWasWritten)
{
  add<support::cTestAddressExtension>("net", "TCPIPV4");
  EXPECT_TRUE(mManager.createNetAddress(ascii("TcpIpv4")));
  EXPECT_EQ(noted(), (tNotes{"net supports TCPIPV4", "net makes TcpIpv4"}));
}

TEST_F(cCoreExtensionMgrTest, CollectsWhatTheExtensionsOfAKindOfferInTheirOrder)
{
  add<support::cTestEnDecExtension>("e1", "KOI");
  add<support::cTestSAExtension>("s1", "XML");
  add<support::cTestEnDecExtension>("e2", "LATIN");
  mManager.add(mstd::tAutoPtr<cAbstractCoreExtension>(
      new mce::cGenericExtension(ascii("generic"), cAbstractCoreExtension::EnDec)));
  mstd::tVector<mstd::cAsciiString> names;
  names.append(ascii("there before"));
  mManager.provides(cAbstractCoreExtension::EnDec, names);
  ASSERT_EQ(names.length(), 3u);
  EXPECT_EQ(toString(names[0]), "there before");
  EXPECT_EQ(toString(names[1]), "e1:KOI");
  EXPECT_EQ(toString(names[2]), "e2:LATIN");
}

/// Says that it is of a kind whose base it has not.
class cImpostor : public mce::cGenericExtension
{
public:
  explicit cImpostor(ExtensionType eType) : cGenericExtension(ascii("impostor"), eType) {}
  bool supports(mstd::cAsciiString const&) const override { return true; }
};

TEST_F(cCoreExtensionMgrTest, RefusesAnExtensionThatIsNotOfItsKind)
{
  for (cRequest const& request : requests())
  {
    cCoreExtensionMgr manager;
    manager.add(mstd::tAutoPtr<cAbstractCoreExtension>(new cImpostor(request.mType)));
    support::expectAssertion([&] { request.mMake(manager, ascii("X")); }, "p != 0", "mce/cCoreExtensionMgr");
    EXPECT_NE(manager.hasExtension(ascii("X")), nullptr);
  }
}

TEST_F(cCoreExtensionMgrTest, RefusesNoExtension)
{
  support::expectAssertion([&] { mManager.add(mstd::tAutoPtr<cAbstractCoreExtension>()); }, "mpPointer != 0",
                           "std/tAutoPtr");
  EXPECT_EQ(mManager.hasExtension(ascii("X")), nullptr);
}

TEST_F(cCoreExtensionMgrTest, DestroysItsExtensionsFromFirstToLast)
{
  add<support::cTestEnDecExtension>("first", "A");
  add<support::cTestSAExtension>("second", "B");
  add<support::cTestAddressExtension>("third", "C");
  mManager.clear();
  EXPECT_EQ(noted(), (tNotes{"first gone", "second gone", "third gone"}));
  EXPECT_EQ(mManager.hasExtension(ascii("A")), nullptr);
  mManager.clear();
  EXPECT_TRUE(noted().empty());
  add<support::cTestEnDecExtension>("again", "A");
  EXPECT_NE(mManager.hasExtension(ascii("A")), nullptr) << "it is of use afterwards";

  tNotes notes;
  {
    cCoreExtensionMgr manager;
    for (char const* name : {"first", "second"})
    {
      manager.add(mstd::tAutoPtr<cAbstractCoreExtension>(new support::cTestEnDecExtension(name, "A", notes)));
    }
  }
  EXPECT_EQ(notes, (tNotes{"first gone", "second gone"})) << "without clear(), too";
}

TEST_F(cCoreExtensionMgrTest, CanBeAskedByAnExtensionThatGoes)
{
  bool found = true;
  add<support::cTestEnDecExtension>("first", "A").mAtEnd = [&] {
    found = mManager.hasExtension(ascii("B")) != nullptr;
  };
  add<support::cTestEnDecExtension>("second", "B");
  mManager.clear();
  EXPECT_FALSE(found) << "all have left the list by then";
}

TEST_F(cCoreExtensionMgrTest, StaysIfThereIsNoMemoryForAnExtension)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the allocations are not seen here";
  }
  for (unsigned int n = 1;; ++n)
  {
    tNotes notes;
    notes.reserve(8);
    cCoreExtensionMgr manager;
    mstd::tAutoPtr<cAbstractCoreExtension> extension(new support::cTestEnDecExtension("e", "A", notes));
    support::cAllocationFault fault(n);
    bool hasThrown = false;
    try
    {
      manager.add(extension);
    }
    catch (std::bad_alloc const&)
    {
      hasThrown = true;
    }
    fault.disarm();
    EXPECT_EQ(hasThrown, fault.hasFired());
    if (!hasThrown)
    {
      EXPECT_NE(manager.hasExtension(ascii("A")), nullptr);
      EXPECT_GT(n, 2u) << "the pair and its place in the list are allocated";
      break;
    }
    EXPECT_EQ(manager.hasExtension(ascii("A")), nullptr);
    EXPECT_EQ(notes.size() + (extension ? 1 : 0), 1u) << "it is destroyed once, or still its owner's";
  }
}

// --- extensions from libraries --------------------------------------------------------------------------------------

class cCoreExtensionMgrLoad : public cCoreExtensionMgrTest
{
protected:
  /// A frame with a text into which modules write.
  msa::cReferenceFrame& frame()
  {
    mFrame.addRef(mText, true, true);
    return mFrame;
  }

  mstd::cAsciiString mText;
  msa::cReferenceFrame mFrame;
};

TEST_F(cCoreExtensionMgrLoad, MakesObjectsOutOfALibrary)
{
  cTestModule const module("extension");
  ASSERT_FALSE(module.isMapped());
  EXPECT_TRUE(mManager.has(module.name()));
  EXPECT_FALSE(module.isMapped()) << "asking loads nothing";
  mManager.load(module.name(), frame());
  EXPECT_TRUE(module.isMapped());
  EXPECT_EQ(toString(mText), "extension made;");

  mstd::tVector<mstd::cAsciiString> names;
  mManager.provides(cAbstractCoreExtension::EnDec, names);
  ASSERT_EQ(names.length(), 1u);
  EXPECT_EQ(toString(names[0]), "MODULE");
  cAbstractCoreExtension* const extension = mManager.hasExtension(ascii("module"));
  ASSERT_NE(extension, nullptr);
  EXPECT_EQ(toString(extension->description()), "an extension of a module");
  {
    mstd::tAutoPtr<mucs::cAbstractEnDec> const made = mManager.createEnDec(ascii("Module"));
    EXPECT_EQ(toString(made->name()), "made in a module");
  }
  mManager.clear();
  EXPECT_EQ(toString(mText), "extension made;extension gone;");
  EXPECT_FALSE(module.isMapped());
}

TEST_F(cCoreExtensionMgrLoad, NeedsNoFrame)
{
  cTestModule const module("extension");
  {
    cCoreExtensionMgr manager;
    manager.load(module.name());
    EXPECT_NE(manager.hasExtension(ascii("MODULE")), nullptr);
    EXPECT_TRUE(module.isMapped());
  }
  EXPECT_FALSE(module.isMapped()) << "the manager's end unloads, too";
}

TEST_F(cCoreExtensionMgrLoad, LoadsTheSameLibraryAsOftenAsItIsAsked)
{
  cTestModule const module("extension");
  for (int round = 0; round < 100; ++round)
  {
    mManager.load(module.name());
    mManager.load(module.name());
    EXPECT_TRUE(mManager.createEnDec(ascii("MODULE")));
    mManager.clear();
    ASSERT_FALSE(module.isMapped());
  }
}

TEST_F(cCoreExtensionMgrLoad, CountsAGenericExtensionAsOneForEncoders)
{
  mManager.load(cTestModule("genericExtension").name());
  EXPECT_EQ(refusalOf([&] { mManager.createEnDec(ascii("generic")); }), "Encoder / Decoder/generic/others");
  EXPECT_EQ(refusalOf([&] { mManager.createNetAddress(ascii("generic")); }), "netwok address/generic");
  EXPECT_EQ(mManager.hasExtension(ascii("GENERIC")), nullptr);
}

TEST_F(cCoreExtensionMgrLoad, KeepsLibrariesBesideLinkedExtensionsInTheOrderOfArrival)
{
  mstd::tAutoPtr<mucs::cAbstractEnDec> made;
  add<support::cTestEnDecExtension>("linked", "MODULE");
  mManager.load(cTestModule("extension").name(), frame());
  made = mManager.createEnDec(ascii("module"));
  EXPECT_EQ(toString(made->name()), "bytes") << "what came later cannot take a type over";
  mManager.clear();
  EXPECT_EQ(noted().back(), "linked gone");

  mManager.load(cTestModule("extension").name());
  add<support::cTestEnDecExtension>("linked", "MODULE");
  EXPECT_EQ(toString(mManager.createEnDec(ascii("module"))->name()), "made in a module");
}

TEST_F(cCoreExtensionMgrLoad, UnloadsALibraryThatIsNoCoreExtension)
{
  cTestModule const module("plugIn");
  add<support::cTestEnDecExtension>("linked", "A");
  mstd::cRuntimeException const e =
      support::caught<mstd::cRuntimeException>([&] { mManager.load(module.name(), frame()); });
  EXPECT_EQ(toString(e.typeName()), "cRuntimeException");
  EXPECT_EQ(support::messageOf(e), "Module (\"" + cTestModule::directory() +
                                       "/mortise-test-plugIn\") does not provide core extension functionality.")
      << "with the name as it was given";
  EXPECT_EQ(toString(mText), "plug-in made;plug-in gone;");
  EXPECT_FALSE(module.isMapped());
  EXPECT_NE(mManager.hasExtension(ascii("A")), nullptr);
  mstd::tVector<mstd::cAsciiString> names;
  mManager.provides(cAbstractCoreExtension::EnDec, names);
  EXPECT_EQ(names.length(), 1u) << "the list is as it was";
}

TEST_F(cCoreExtensionMgrLoad, UnloadsALibraryWhosePlugInBreaksItsPromise)
{
  cTestModule const module("extension");
  bool fails = true;
  frame().addRef(fails, false, true);
  EXPECT_THROW(mManager.load(module.name(), mFrame), mcs::cUnmatchedInterfaceException);
  EXPECT_EQ(toString(mText), "extension made;extension gone;");
  EXPECT_FALSE(module.isMapped());
  EXPECT_EQ(mManager.hasExtension(ascii("MODULE")), nullptr);
}

TEST_F(cCoreExtensionMgrLoad, LetsFailuresOfTheLoaderThrough)
{
  typedef mcs::cModuleLoadException cFailure;
  auto const kindOf = [&](mucs::cString const& name) {
    return support::caught<cFailure>([&] { mManager.load(name); }).kindOfProblem();
  };
  support::cTempDir const dir;
  EXPECT_EQ(kindOf(dir.name("missing")), cFailure::NotLoadable);
  std::ofstream(dir.path() + "/libtext.so") << "no library";
  EXPECT_EQ(kindOf(dir.name("text")), cFailure::NotLoadable);
  for (char const* name : {"component", "null"})
  {
    EXPECT_EQ(kindOf(cTestModule(name).name()), cFailure::NotAvailable) << name;
    EXPECT_FALSE(cTestModule(name).isMapped()) << name;
  }
  for (char const* name : {"noInit", "noVersion", "noKroVersion"})
  {
    EXPECT_EQ(kindOf(cTestModule(name).name()), cFailure::InvalidModule) << name;
    EXPECT_FALSE(cTestModule(name).isMapped()) << name;
  }
  mcs::cModuleLoadException const e = support::caught<cFailure>([&] { mManager.load(dir.name("missing"), mFrame); });
  EXPECT_EQ(toString(e.fileName()), dir.path() + "/libmissing.so") << "the name of the file that was looked for";
  EXPECT_EQ(mManager.hasExtension(ascii("X")), nullptr);
}

TEST_F(cCoreExtensionMgrLoad, LetsWhatAModuleRaisesThrough)
{
  unsigned int number = 2;
  mFrame.addRef(number, false, true);
  EXPECT_THROW(mManager.load(cTestModule("throwing").name(), mFrame), int);
  EXPECT_FALSE(cTestModule("throwing").isMapped());
}

TEST_F(cCoreExtensionMgrLoad, DecodesANameAsTheFileSystemDoes)
{
  support::cTempDir const dir;
  std::filesystem::copy_file(cTestModule("extension").path(), dir.path() + "/libm\xc3\xb6.so");
  mManager.load(ascii((dir.path() + "/m\xc3\xb6").c_str()), frame());
  EXPECT_EQ(toString(mText), "extension made;");
  mManager.clear();

  mio::cFs const former(mpi::system().fs);
  support::cByteEnDec const encoder;
  mpi::system().fs = mio::cFs(encoder);
  std::filesystem::copy_file(cTestModule("extension").path(), dir.path() + "/libn\xf6.so");
  EXPECT_NO_THROW(mManager.load(ascii((dir.path() + "/n\xf6").c_str()), mFrame));
  mManager.clear();
  mpi::system().fs = former;
}

TEST_F(cCoreExtensionMgrLoad, HasAFileWhetherItIsLoadedOrNot)
{
  support::cTempDir const dir;
  cCoreExtensionMgr const& constant = mManager;
  EXPECT_FALSE(constant.has(dir.name("meter")));
  std::ofstream(dir.path() + "/libmeter.so") << "no library";
  EXPECT_TRUE(constant.has(dir.name("meter"))) << "nobody looks inside";
  std::filesystem::create_symlink("nowhere", dir.path() + "/libdangling.so");
  EXPECT_FALSE(constant.has(dir.name("dangling"))) << "links are followed";
  std::filesystem::create_symlink("libmeter.so", dir.path() + "/liblinked.so");
  EXPECT_TRUE(constant.has(dir.name("linked")));

  std::filesystem::copy_file(cTestModule("extension").path(), dir.path() + "/libgoing.so");
  mManager.load(dir.name("going"));
  std::filesystem::remove(dir.path() + "/libgoing.so");
  EXPECT_FALSE(constant.has(dir.name("going")));
  EXPECT_NE(constant.hasExtension(ascii("MODULE")), nullptr) << "it is loaded all the same";
}

TEST_F(cCoreExtensionMgrLoad, LeavesNothingWithoutMemory)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the allocations are not seen here";
  }
  cTestModule const module("extension");
  mucs::cString const name = module.name();
  mManager.load(name); // what is made once and stays is made here
  mManager.clear();
  unsigned int failures = 0;
  for (unsigned int n = 1;; ++n)
  {
    support::cAllocationFault fault(n);
    bool hasThrown = false;
    try
    {
      mManager.load(name);
    }
    catch (std::bad_alloc const&)
    {
      hasThrown = true;
    }
    catch (mstd::cAbstractException const&)
    {
      hasThrown = true; // the dynamic loader had no memory, and said so
    }
    fault.disarm();
    if (!fault.hasFired())
    {
      EXPECT_FALSE(hasThrown);
      break;
    }
    if (hasThrown)
    {
      ++failures;
      EXPECT_FALSE(module.isMapped()) << n;
      EXPECT_EQ(mManager.hasExtension(ascii("MODULE")), nullptr) << n;
    }
    mManager.clear();
    ASSERT_LT(n, 10000u);
  }
  EXPECT_GT(failures, 3u);
}
} // namespace
