#include "mce/cExtensionPair.h"

#include "mcs/cAbstractPlugIn.h"
#include "mcs/cMCSExceptions.h"
#include "mcs/cUnmatchedInterfaceException.h"
#include "pi/cAbstractClassLoader.h"
#include "sa/cReferenceFrame.h"
#include "support/cTestExtension.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

#include <string>

using mce::cExtensionPair;

namespace
{
typedef support::tExtensionNotes tNotes;

class cLoader : public mpi::cAbstractClassLoader
{
public:
  explicit cLoader(tNotes& notes) : cAbstractClassLoader(mucs::cString("none")), mNotes(notes) {}
  ~cLoader() override { mNotes.push_back("loader gone, references " + std::to_string(numReferences())); }
  mcs::cAbstractPlugIn* instance(msa::cReferenceFrame&) override { return nullptr; }
  mcs::cAbstractComponent* instance(msa::cReferenceFrame&, mcs::cModuleMgr&) override { return nullptr; }
  void getModuleVersion(unsigned int&, unsigned int&) const override {}
  void getModuleKROVersion(unsigned int&, unsigned int&) const override {}

private:
  tNotes& mNotes;
};

class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  cPlugIn(msa::cReferenceFrame& frame, tNotes& notes, bool bFails = false)
      : cAbstractPlugIn(frame), mExtension("extension", "X", notes), mNotes(notes), mFails(bFails)
  {
  }
  ~cPlugIn() override { mNotes.push_back("plug-in gone"); }
  bool isCoreExtension() const override { return true; }
  mce::cAbstractCoreExtension& coreExtension() const override
  {
    if (mFails)
    {
      mcs::cMCSExceptions::throwUnmatchedInterface();
    }
    return mExtension;
  }

private:
  mutable support::cTestEnDecExtension mExtension;
  tNotes& mNotes;
  bool mFails;
};

TEST(cExtensionPair, OwnsAnExtensionThatWasGivenDirectly)
{
  tNotes notes;
  {
    mce::cAbstractCoreExtension* const extension = new support::cTestSAExtension("extension", "X", notes);
    mstd::tAutoPtr<mce::cAbstractCoreExtension> owner(extension);
    cExtensionPair const pair(owner);
    EXPECT_FALSE(owner);
    EXPECT_EQ(&pair.extension(), extension);
    EXPECT_EQ(pair.plugIn(), nullptr);
    EXPECT_TRUE(notes.empty());
  }
  EXPECT_EQ(notes, tNotes{"extension gone"});
}

TEST(cExtensionPair, DestroysThePlugInBeforeItsLoader)
{
  tNotes notes;
  msa::cReferenceFrame frame;
  {
    cPlugIn* const plugIn = new cPlugIn(frame, notes);
    mpi::cAbstractClassLoader* const loader = new cLoader(notes);
    loader->incRef();
    plugIn->setClassLoader(loader, mstd::cAsciiString());
    cExtensionPair const pair{mstd::tAutoPtr<mcs::cAbstractPlugIn>(plugIn)};
    EXPECT_EQ(&pair.extension(), &plugIn->coreExtension());
    EXPECT_EQ(pair.plugIn(), plugIn);
  }
  EXPECT_EQ(notes, (tNotes{"plug-in gone", "extension gone", "loader gone, references 0"}));
}

TEST(cExtensionPair, NeedsNoLoader)
{
  tNotes notes;
  msa::cReferenceFrame frame;
  {
    cExtensionPair const pair{mstd::tAutoPtr<mcs::cAbstractPlugIn>(new cPlugIn(frame, notes))};
  }
  EXPECT_EQ(notes, (tNotes{"plug-in gone", "extension gone"}));
}

TEST(cExtensionPair, TakesAPlugInThatFailsDownAndLeavesItsLoader)
{
  tNotes notes;
  msa::cReferenceFrame frame;
  cLoader loader(notes);
  loader.incRef();
  mstd::tAutoPtr<mcs::cAbstractPlugIn> plugIn(new cPlugIn(frame, notes, true));
  plugIn->setClassLoader(&loader, mstd::cAsciiString());
  EXPECT_THROW(cExtensionPair{plugIn}, mcs::cUnmatchedInterfaceException);
  EXPECT_EQ(notes, (tNotes{"plug-in gone", "extension gone"}));
  EXPECT_TRUE(loader.isUnused());
}

TEST(cExtensionPair, RefusesNothing)
{
  support::expectAssertion([] { cExtensionPair{mstd::tAutoPtr<mce::cAbstractCoreExtension>()}; }, "mpPointer != 0",
                           "std/tAutoPtr");
  support::expectAssertion([] { cExtensionPair{mstd::tAutoPtr<mcs::cAbstractPlugIn>()}; }, "mpPointer != 0",
                           "std/tAutoPtr");
}
} // namespace
