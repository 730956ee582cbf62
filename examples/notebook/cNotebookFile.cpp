#include "cNotebookFile.h"

#include "cNotebook.h"
#include "cQuiet.h"
#include "cText.h"
#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/cOSErrorException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
char const* const EndMissing = "its end is missing";

mstd::cRuntimeException damaged(char const* reason)
{
  return mstd::cRuntimeException(mucs::cLIMessage(reason), "notebook", 0);
}
} // namespace

cNotebookFile::cNotebookFile(mstd::cAsciiString const& sPath, bool bChange) : mName(sPath), mPath(sPath), miFolder(-1)
{
  if (char* const pReal = realpath(sPath.c_str(), nullptr))
  {
    mPath = pReal;
    free(pReal);
  }
  if (!bChange)
  {
    return;
  }
  // The lock is on the folder, as the file itself is replaced.
  char const* const pSlash = strrchr(mPath.c_str(), '/');
  mstd::cAsciiString folder(".");
  if (pSlash != nullptr)
  {
    folder = "";
    folder.append(mPath.c_str(), static_cast<unsigned int>(pSlash - mPath.c_str()) + 1);
  }
  miFolder = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (miFolder < 0)
  {
    fail("open the folder of");
  }
  while (flock(miFolder, LOCK_EX) != 0)
  {
    if (errno != EINTR)
    {
      int const iError = errno;
      close(miFolder);
      errno = iError;
      fail("lock");
    }
  }
}

cNotebookFile::~cNotebookFile()
{
  if (miFolder >= 0)
  {
    close(miFolder);
  }
}

void cNotebookFile::fail(char const* operation) const
{
  throw mstd::cOSErrorException(operation, errno, cText::decode(mName.c_str()));
}

bool cNotebookFile::exists() const
{
  return access(mPath.c_str(), F_OK) == 0;
}

unsigned int cNotebookFile::crc32(char const* pBytes, unsigned int iSize)
{
  unsigned int iSum = 0xFFFFFFFFu;
  for (unsigned int i = 0; i < iSize; i++)
  {
    iSum ^= static_cast<unsigned char>(pBytes[i]);
    for (int iBit = 0; iBit < 8; iBit++)
    {
      iSum = iSum >> 1 ^ (iSum & 1 ? 0xEDB88320u : 0);
    }
  }
  return ~iSum;
}

void cNotebookFile::load(cNotebook& notebook) const
{
  mstd::tArray<char> bytes;
  read(bytes);
  cQuiet const quiet; // what is wrong is said once, and not where in the library it was found
  try
  {
    parse(bytes, notebook);
  }
  catch (mstd::cOutOfRangeException const&)
  {
    throwDamaged(EndMissing);
  }
  catch (mstd::cOutOfBoundsException const&)
  {
    throwDamaged(EndMissing);
  }
  catch (mstd::cAbstractException const& e)
  {
    mucs::cString reason;
    e.createMessage(reason, mucs::cString(" "));
    throwDamaged(reason);
  }
}

void cNotebookFile::throwDamaged(mucs::cString const& reason) const
{
  mucs::cLIMessage message;
  message << "$MTR$%file% is damaged and stays as it is: %reason%" << cText::decode(mName.c_str()) << reason;
  throw mstd::cRuntimeException(message, "notebook", __LINE__);
}

void cNotebookFile::parse(mstd::tArray<char> const& bytes, cNotebook& notebook)
{
  if (bytes.empty())
  {
    throw damaged("it is empty");
  }
  msa::cDeserializeBinary reader{mstd::tConstArrayRef<char>(bytes)};
  reader.setPreferNoLabels(false);

  // The sum comes first: nothing of a file that is not what was written is looked at.
  bool bSummed = false;
  {
    msa::cContext context(reader.getContext("notebook"));
    context.release();
  }
  unsigned int const iEnd = reader.currentPos();
  if (iEnd > bytes.length())
  {
    throw damaged(EndMissing);
  }
  if (reader.isLabel() && reader.getNextLabelName() == "crc32")
  {
    unsigned int iSum = 0;
    iSum << reader;
    if (iSum != crc32(bytes.data(), iEnd))
    {
      throw damaged("its check sum is wrong");
    }
    bSummed = true;
  }
  if (reader.currentPos() != bytes.length())
  {
    throw damaged("something foreign stands behind its end");
  }
  reader.rewind();
  notebook << reader;
  if (!bSummed && notebook.version() > 1)
  {
    throw damaged("its check sum is missing");
  }
}

void cNotebookFile::save(cNotebook const& notebook) const
{
  msa::cSerializeBinary writer;
  writer.setPreferNoLabels(false);
  writer.setStringStoreMode(msa::cSerializeBinary::StoreUTF8);
  notebook >> writer;
  unsigned int const iSum = crc32(writer.ownData().data(), writer.currentPos());
  iSum >> writer.newLabel("crc32");
  mstd::tArray<char> bytes;
  writer.swapData(bytes);
  write(bytes.data(), bytes.length());
}

void cNotebookFile::read(mstd::tArray<char>& bytes) const
{
  FILE* const pFile = fopen(mPath.c_str(), "rbe");
  if (pFile == nullptr)
  {
    fail("open");
  }
  char piece[65536];
  size_t iRead = 0;
  while ((iRead = fread(piece, 1, sizeof piece, pFile)) != 0)
  {
    bytes.append(piece, static_cast<unsigned int>(iRead));
  }
  int const iError = ferror(pFile) ? errno : 0;
  fclose(pFile);
  if (iError != 0)
  {
    errno = iError;
    fail("read");
  }
}

void cNotebookFile::write(char const* pBytes, unsigned int iSize) const
{
  mstd::cAsciiString temporary(mPath);
  temporary += ".XXXXXX";
  mstd::tArray<char> name;
  name.append(temporary.c_str(), temporary.length() + 1);
  int const iDescriptor = mkostemp(name.data(), O_CLOEXEC);
  if (iDescriptor < 0)
  {
    fail("write");
  }
  struct stat status;
  mode_t const iMask = umask(0);
  umask(iMask);
  mode_t const iMode = stat(mPath.c_str(), &status) == 0 ? status.st_mode & 07777 : 0666 & ~iMask;
  FILE* const pFile = fdopen(iDescriptor, "wb");
  bool bDone = pFile != nullptr && fwrite(pBytes, 1, iSize, pFile) == iSize && fflush(pFile) == 0 &&
               fchmod(iDescriptor, iMode) == 0 && fsync(iDescriptor) == 0;
  int iError = errno;
  if (pFile == nullptr)
  {
    close(iDescriptor);
  }
  else if (fclose(pFile) != 0 && bDone)
  {
    bDone = false;
    iError = errno;
  }
  if (bDone && rename(name.data(), mPath.c_str()) != 0)
  {
    bDone = false;
    iError = errno;
  }
  if (!bDone)
  {
    unlink(name.data());
    errno = iError;
    fail("write");
  }
  fsync(miFolder);
}
