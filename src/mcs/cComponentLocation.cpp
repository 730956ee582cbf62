#include "mcs/cComponentLocation.h"

#include "pi/cPlatform.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cContext.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"

#include <utility>

namespace mcs
{
namespace
{
char const AddressLabel[] = "LocalAddress";
char const AddressContext[] = "ModuleAddress";
char const HostLabel[] = "HostName";
char const LocalIdLabel[] = "LocalID";
char const PidLabel[] = "PID";

bool isBlank(char c)
{
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Words of a text between blanks, and between whatever borders one adds on the way.
class cWords
{
public:
  explicit cWords(mstd::cAsciiString const& text) : mText(text), miPos(0) {}

  void addBorder(char border)
  {
    for (unsigned int i = miPos; i < mText.length(); ++i)
    {
      if (mText[i] == border)
      {
        mText[i] = ' ';
      }
    }
  }

  /// Empty if there is none any more.
  mstd::cAsciiString next()
  {
    while (miPos < mText.length() && isBlank(mText[miPos]))
    {
      ++miPos;
    }
    mstd::cAsciiString word;
    while (miPos < mText.length() && !isBlank(mText[miPos]))
    {
      word += mText[miPos++];
    }
    return word;
  }

private:
  mstd::cAsciiString mText;
  unsigned int miPos;
};
} // namespace

cComponentLocation::cComponentLocation() : miPid(0)
{
  provide();
}

cComponentLocation::cComponentLocation(cComponentAddr const& address, mstd::cAsciiString const& hostName,
                                       mstd::cAsciiString const& localId, unsigned int iPid)
    : mAddress(address), mHostName(hostName), mLocalId(localId), miPid(iPid)
{
}

cComponentLocation::cComponentLocation(mstd::cAsciiString const& text) : miPid(0)
{
  fromString(text);
}

void cComponentLocation::provide()
{
  cComponentLocation here(mAddress, mpi::cPlatform::hostname(), mstd::cAsciiString(), mpi::cPlatform::pid());
  swap(here);
}

void cComponentLocation::swap(cComponentLocation& other) noexcept
{
  mAddress.swap(other.mAddress);
  mHostName.swap(other.mHostName);
  mLocalId.swap(other.mLocalId);
  std::swap(miPid, other.miPid);
}

cComponentLocation& cComponentLocation::operator=(cComponentLocation const& other)
{
  cComponentLocation copy(other);
  swap(copy);
  return *this;
}

bool cComponentLocation::operator==(cComponentLocation const& other) const
{
  return mAddress == other.mAddress && mHostName == other.mHostName && mLocalId == other.mLocalId &&
         miPid == other.miPid;
}

mstd::cAsciiString cComponentLocation::toString() const
{
  mstd::cAsciiString text(mAddress.toString());
  text += '-';
  text.addUNum32(miPid, mstd::cNumberConversionFormat(10));
  text += '@';
  text += mHostName;
  if (!mLocalId.empty())
  {
    text += ':';
    text += mLocalId;
  }
  return text;
}

void cComponentLocation::fromString(mstd::cAsciiString const& text)
{
  cWords words(text);
  words.addBorder('-');
  mstd::cAsciiString const address = words.next();
  cWords rest(words.next());
  rest.addBorder('@');
  unsigned int const pid =
      static_cast<unsigned int>(mstd::cNumberConversion::fromString(rest.next(), mstd::cNumberConversionFormat(10)));
  rest.addBorder(':');
  mstd::cAsciiString const hostName = rest.next();
  mstd::cAsciiString const localId = rest.next();

  cComponentLocation read(cComponentAddr(address), hostName, localId, pid);
  swap(read);
}

msa::cAbstractSerializer& cComponentLocation::operator>>(msa::cAbstractSerializer& serializer) const
{
  if (serializer.noLabelsPreferred())
  {
    mAddress >> serializer;
    mHostName >> serializer;
    mLocalId >> serializer;
    return miPid >> serializer;
  }
  {
    msa::cContext context(serializer.newLabel(mstd::cAsciiString(AddressLabel)).newContext(AddressContext));
    mAddress >> serializer;
    context.release();
  }
  mHostName >> serializer.newLabel(mstd::cAsciiString(HostLabel));
  mLocalId >> serializer.newLabel(mstd::cAsciiString(LocalIdLabel));
  return miPid >> serializer.newLabel(mstd::cAsciiString(PidLabel));
}

msa::cAbstractDeserializer& cComponentLocation::operator<<(msa::cAbstractDeserializer& deserializer)
{
  cComponentAddr address;
  mstd::cAsciiString hostName;
  mstd::cAsciiString localId;
  unsigned int pid = 0;
  if (deserializer.noLabelsPreferred())
  {
    address << deserializer;
    hostName << deserializer;
    localId << deserializer;
    pid << deserializer;
  }
  else
  {
    {
      msa::cContext context(deserializer.findLabel(mstd::cAsciiString(AddressLabel)).getContext(AddressContext));
      address << deserializer;
      context.release();
    }
    hostName << deserializer.findLabel(mstd::cAsciiString(HostLabel));
    localId << deserializer.findLabel(mstd::cAsciiString(LocalIdLabel));
    pid << deserializer.findLabel(mstd::cAsciiString(PidLabel));
  }
  cComponentLocation read(address, hostName, localId, pid);
  swap(read);
  return deserializer;
}

} // namespace mcs
