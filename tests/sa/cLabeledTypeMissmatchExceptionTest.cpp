#include "sa/cLabeledTypeMissmatchException.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

std::string const Text = "Type mismatch: Expecting type \"piBool\" but got object of type \"piInt32\" - last label was "
                         "\"val\"!";

} // namespace

TEST(cLabeledTypeMissmatchException, TellsBothTypesAndTheLabel)
{
  msa::cLabeledTypeMissmatchException const e("piInt32", "piBool", "val");
  EXPECT_EQ(support::messageOf(e), Text);
  EXPECT_EQ(support::toString(e.lastLabel()), "val");
  EXPECT_EQ(support::toString(e.typeName()), "cLabeledTypeMissmatchException");
}

TEST(cLabeledTypeMissmatchException, IsCaughtAsATypeMismatch)
{
  EXPECT_THROW(throw msa::cLabeledTypeMissmatchException("a", "b", "c"), mstd::cTypeMissmatchException);
}

TEST(cLabeledTypeMissmatchException, CopiesAndClonesKeepTheLabel)
{
  msa::cLabeledTypeMissmatchException const e("piInt32", "piBool", "val");
  msa::cLabeledTypeMissmatchException const copy(e);
  EXPECT_EQ(support::toString(copy.lastLabel()), "val");
  EXPECT_EQ(support::messageOf(copy), Text);
  msa::cLabeledTypeMissmatchException other;
  EXPECT_EQ(support::toString(other.lastLabel()), "");
  other.swap(const_cast<msa::cLabeledTypeMissmatchException&>(copy));
  EXPECT_EQ(support::toString(other.lastLabel()), "val");
  EXPECT_EQ(support::messageOf(other), Text);
  EXPECT_EQ(support::toString(copy.lastLabel()), "");
}
