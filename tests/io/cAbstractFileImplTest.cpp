#include "io/cAbstractFileImpl.h"

#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cFile.h"
#include "io/cFs.h"
#include "std/cDateTime.h"
#include "support/cTraceFs.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

typedef std::vector<std::string> tRecord;

/// A file that only writes down how it is opened.
class cTraceFile : public mio::cAbstractFileImpl
{
public:
  cTraceFile(mio::cFs& fs, mio::cAbstractIOBlockDevice& device, tRecord& record)
      : mio::cAbstractFileImpl(fs, device), mrRecord(record)
  {
  }
  cTraceFile(cTraceFile const& other) = default;

  mstd::tAutoPtr<mio::cAbstractFileImpl> deepCopy(mio::cAbstractIOBlockDevice& device) const override
  {
    return mstd::tAutoPtr<mio::cAbstractFileImpl>(new cTraceFile(fs(), device, mrRecord));
  }
  mucs::cString name() const override { return mucs::cString("traced"); }
  void remove() override {}
  void setRemoveOnClose() override {}
  void release() override {}
  void rename(mucs::cString const&) override {}
  mstd::cDateTime lastModified() const override { return mstd::cDateTime(); }
  void open(mucs::cString const& name, mio::OpenMode mode, mio::CreateMode create, mio::WriteMode write,
            bool followLinks) override
  {
    mrRecord.push_back("open " + support::toText(name) + " " + std::to_string(mode) + " " + std::to_string(create) +
                       " " + std::to_string(write) + (followLinks ? " followed" : ""));
  }
  void close() override {}
  void truncate(unsigned int) override {}
  unsigned long long readBytes(char*, unsigned long long) override { return 0; }
  unsigned long long writeBytes(char const*, unsigned long long) override { return 0; }
  void mmap() override {}
  void seek(long long, mio::SeekMode) override {}
  unsigned long long pos() const override { return 0; }
  void flush() override {}
  void munmap() override {}

private:
  tRecord& mrRecord;
};

class cTraceFileFs : public support::cTraceFs
{
public:
  cTraceFileFs(mio::cFs& fs, tRecord& record) : support::cTraceFs(fs, "fs", "", record), mrRecord(record) {}

  mstd::tAutoPtr<mio::cAbstractFileImpl> createFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device,
                                                        mucs::cString const&) const override
  {
    return mstd::tAutoPtr<mio::cAbstractFileImpl>(new cTraceFile(fs, device, mrRecord));
  }

private:
  tRecord& mrRecord;
};

class cAbstractFileImplTest : public testing::Test
{
protected:
  tRecord mRecord;
  mio::cFs mFs;
  mio::cFile mFirst{mFs, "/first"};
  mio::cFile mSecond{mFs, "/second"};
};

TEST_F(cAbstractFileImplTest, ItKnowsItsFileSystemAndItsDevice)
{
  cTraceFile const file(mFs, mFirst, mRecord);
  EXPECT_EQ(&file.fs(), &mFs);
  EXPECT_EQ(&file.bd(), &mFirst);
}

TEST_F(cAbstractFileImplTest, TwoExchangeTheirDevices)
{
  cTraceFile first(mFs, mFirst, mRecord);
  cTraceFile second(mFs, mSecond, mRecord);
  first.swapBD(second);
  EXPECT_EQ(&first.bd(), &mSecond);
  EXPECT_EQ(&second.bd(), &mFirst);
}

TEST_F(cAbstractFileImplTest, ItIsNotCopiedByItsConstructor)
{
  cTraceFile const file(mFs, mFirst, mRecord);
  int thrown = 0;
  try
  {
    cTraceFile const copy(file);
  }
  catch (int number)
  {
    thrown = number;
  }
  EXPECT_EQ(thrown, 12);
}

TEST_F(cAbstractFileImplTest, TheHandleOpensFilesInItsThreeWays)
{
  mio::cFs fs;
  fs.setImpl(mstd::tAutoPtr<mio::cAbstractFsImpl>(new cTraceFileFs(fs, mRecord)));
  fs.fileOpenRead("/a");
  fs.fileOpenWrite("/b", mio::CreateIfMissing, mio::WriteAppend);
  fs.openFile("/c", mio::OpenWriteOnly, mio::CreateAlways, mio::WriteTruncate);
  EXPECT_EQ(mRecord, (tRecord{"open /a 0 0 1 followed", "open /b 2 2 0 followed", "open /c 1 1 1 followed"}));
}

} // namespace
