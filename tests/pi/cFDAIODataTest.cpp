#include "pi/cFDAIOData.h"

#include "std/cBugException.h"
#include "support/messageOf.h"

#include <gtest/gtest.h>

namespace
{

// Data that has nothing to do with descriptors.
class cOtherAIOData : public mpi::cAbstractAIOData
{
};

} // namespace

TEST(cAbstractAIOData, TheEventFlagIsDownAtFirst)
{
  cOtherAIOData data;
  EXPECT_FALSE(data.isEvent());
  data.setEvent(true);
  EXPECT_TRUE(data.isEvent());
  data.setEvent(false);
  EXPECT_FALSE(data.isEvent());
}

TEST(cAbstractAIOData, OtherDataHasNoDescriptors)
{
  cOtherAIOData data;
  EXPECT_EQ(data.isFDAIOData(), nullptr);
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { data.fdAIOData(); }),
            "Asynchronous I/O data does not have file descriptor information!");
}

TEST(cFDAIOData, IsDescriptorData)
{
  mpi::cFDAIOData data;
  mpi::cAbstractAIOData& base = data;
  EXPECT_EQ(base.isFDAIOData(), &data);
  EXPECT_EQ(&base.fdAIOData(), &data);
}

TEST(cFDAIOData, BeginsWithoutDescriptors)
{
  mpi::cFDAIOData data;
  EXPECT_EQ(data.fds().length(), 0u);
  EXPECT_FALSE(data.isEvent());
}

TEST(cFDAIOData, DescriptorsStandInTheOrderOfAddition)
{
  mpi::cFDAIOData data;
  data.addFd(7, mpi::tFdInfo::Readable);
  data.addFd(3, mpi::tFdInfo::Writable | mpi::tFdInfo::Error);
  mpi::cFDAIOData const& constant = data;
  ASSERT_EQ(constant.fds().length(), 2u);
  EXPECT_EQ(constant.fds().at(0).fd, 7);
  EXPECT_EQ(constant.fds().at(0).flags, 1u);
  EXPECT_EQ(constant.fds().at(1).fd, 3);
  EXPECT_EQ(constant.fds().at(1).flags, 6u);
}

TEST(cFDAIOData, DescriptorsMayBeChangedInPlace)
{
  mpi::cFDAIOData data;
  data.addFd(7, 1);
  data.fds().at(0).flags = 2;
  EXPECT_EQ(data.fds().at(0).flags, 2u);
}

TEST(tFdInfo, FlagBitsHaveTheirValues)
{
  EXPECT_EQ(mpi::tFdInfo::Readable, 1);
  EXPECT_EQ(mpi::tFdInfo::Writable, 2);
  EXPECT_EQ(mpi::tFdInfo::Error, 4);
}
