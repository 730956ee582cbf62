#include "mce/cGenericExtension.h"

#include "mce/cGenericPlugIn.h"
#include "sa/cReferenceFrame.h"
#include "support/cTestExtension.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

using mce::cAbstractCoreExtension;
using mce::cGenericExtension;
using support::toString;

namespace
{
TEST(cAbstractCoreExtension, HasFixedNumbersForTheKinds)
{
  EXPECT_EQ(static_cast<int>(cAbstractCoreExtension::NetAddress), 1);
  EXPECT_EQ(static_cast<int>(cAbstractCoreExtension::SA), 2);
  EXPECT_EQ(static_cast<int>(cAbstractCoreExtension::EnDec), 3);
}

TEST(cAbstractCoreExtension, HasNoDataAndIsDestroyedThroughItsBase)
{
  EXPECT_EQ(sizeof(cAbstractCoreExtension), sizeof(void*));
  EXPECT_TRUE(std::has_virtual_destructor<cAbstractCoreExtension>::value);
}

TEST(cAbstractCoreExtension, IsOfTheKindOfItsTypedBase)
{
  support::tExtensionNotes notes;
  EXPECT_EQ(support::cTestEnDecExtension("e", "X", notes).extensionType(), cAbstractCoreExtension::EnDec);
  EXPECT_EQ(support::cTestSAExtension("s", "X", notes).extensionType(), cAbstractCoreExtension::SA);
  EXPECT_EQ(support::cTestAddressExtension("a", "X", notes).extensionType(), cAbstractCoreExtension::NetAddress);
}

TEST(cGenericExtension, ReportsItself)
{
  for (cAbstractCoreExtension::ExtensionType eType :
       {cAbstractCoreExtension::NetAddress, cAbstractCoreExtension::SA, cAbstractCoreExtension::EnDec})
  {
    cGenericExtension const extension(mstd::cAsciiString("reports itself"), eType);
    EXPECT_EQ(extension.extensionType(), eType);
    EXPECT_EQ(toString(extension.description()), "reports itself");
    EXPECT_EQ(extension.buildInfo().buildCount(), 0u);
    EXPECT_TRUE(extension.buildInfo().compiler().empty());
    EXPECT_EQ(&extension.buildInfo(), &extension.buildInfo()) << "its own one";
  }
}

TEST(cGenericExtension, CanMakeNothing)
{
  cGenericExtension const extension(mstd::cAsciiString("X"), cAbstractCoreExtension::SA);
  EXPECT_FALSE(extension.supports(mstd::cAsciiString("X")));
  EXPECT_FALSE(extension.supports(mstd::cAsciiString()));
  mstd::tVector<mstd::cAsciiString> names;
  names.append(mstd::cAsciiString("there before"));
  extension.provides(names);
  EXPECT_EQ(names.length(), 1u);
}

TEST(cGenericPlugIn, HasAnExtensionForEncoders)
{
  msa::cReferenceFrame frame;
  mce::cGenericPlugIn const plugIn(frame, mstd::cAsciiString("generic"));
  EXPECT_TRUE(plugIn.isPlugIn());
  EXPECT_FALSE(plugIn.isComponent());
  EXPECT_TRUE(plugIn.isCoreExtension());
  EXPECT_EQ(toString(plugIn.pluginTypeName()), "none");
  EXPECT_TRUE(plugIn.isStatic());
  cAbstractCoreExtension& extension = plugIn.coreExtension();
  EXPECT_EQ(&extension, &plugIn.coreExtension());
  EXPECT_NE(dynamic_cast<cGenericExtension*>(&extension), nullptr);
  EXPECT_EQ(extension.extensionType(), cAbstractCoreExtension::EnDec);
  EXPECT_EQ(toString(extension.description()), "generic");
  EXPECT_FALSE(extension.supports(mstd::cAsciiString("GENERIC")));
}
} // namespace
