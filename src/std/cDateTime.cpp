#include "std/cDateTime.h"

#include "pi/cSysTime.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/cAsciiString.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"

#include <string.h>

namespace mstd
{

namespace
{

char const* const StreamLabel = "DateTime";

piInt64 const iUSecPerSec = 1000000;
piInt64 const iUSecPerDay = iUSecPerSec * 24 * 60 * 60;
unsigned int const iDaysTo1970 = 719164;

cTime toUTC(cTime const& time, cDateTime::ZoneInfo iZone)
{
  // in seconds and from microseconds: see the constructors
  return iZone == cDateTime::Local ? time - static_cast<long long>(mpi::cSysTime::zoneOffset()) : time;
}

cTime atDate(cTime const& time, cDate const& date)
{
  if (date.daysPast() < iDaysTo1970)
  {
    return time - static_cast<long long>(iDaysTo1970 - date.daysPast()) * iUSecPerDay;
  }
  return time + cTime((date.daysPast() - iDaysTo1970) * static_cast<piUInt64>(iUSecPerDay));
}

void replaceText(cAsciiString& text, char const* pMark, char const* pValue)
{
  text.replace(pMark, static_cast<unsigned int>(strlen(pMark)), pValue, static_cast<unsigned int>(strlen(pValue)), 0);
}

void replaceNumber(cAsciiString& text, char const* pMark, unsigned int iValue, unsigned int iWidth)
{
  cNumberConversionFormat format(10);
  format.setFixedWidth(iWidth);
  cAsciiString const digits = cNumberConversion::toString(static_cast<unsigned long long>(iValue), format);
  replaceText(text, pMark, digits.c_str());
}

} // namespace

cDateTime::cDateTime(cTime const& time, ZoneInfo iZone) : cTime(toUTC(time, iZone)) {}

cDateTime::cDateTime(cTime const& time, cDate const& date, ZoneInfo iZone) : cTime(toUTC(atDate(time, date), iZone)) {}

cTime cDateTime::localTime(cTime const& time)
{
  return time + static_cast<long long>(mpi::cSysTime::zoneOffset()) * iUSecPerSec;
}

cAsciiString cDateTime::formatString(cAsciiString const& format) const
{
  return formatString(*this, format);
}

cAsciiString cDateTime::formatString(cTime const& time, cAsciiString const& format)
{
  cDate const date(time);
  cAsciiString text(format);
  replaceNumber(text, "HH", time.hour(), 2);
  replaceNumber(text, "MM", time.minutes(), 2);
  replaceNumber(text, "SS", time.sec(), 2);
  replaceNumber(text, "dd", date.day(), 2);
  replaceNumber(text, "mm", date.month(), 2);
  replaceNumber(text, "yyyy", date.year(), 4);
  replaceText(text, "dn", date.nameOfDay());
  replaceText(text, "mn", date.nameOfMonth());
  return text;
}

msa::cAbstractSerializer& cDateTime::operator>>(msa::cAbstractSerializer& serializer) const
{
  if (!serializer.noLabelsPreferred())
  {
    serializer.newLabel(StreamLabel);
  }
  return get() >> serializer;
}

msa::cAbstractDeserializer& cDateTime::operator<<(msa::cAbstractDeserializer& deserializer)
{
  if (!deserializer.noLabelsPreferred())
  {
    deserializer.findLabel(StreamLabel);
  }
  piUInt64 iUSec = 0;
  iUSec << deserializer;
  set(iUSec);
  return deserializer;
}

} // namespace mstd
