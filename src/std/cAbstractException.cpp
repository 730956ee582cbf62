#include "std/cAbstractException.h"

#include "mcs/cComponentLocation.h"
#include "mp/cLocker.h"
#include "pi/breakPoint.h"
#include "pi/cAbstractOut.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "pi/piStackTrace.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/cAbstractExceptionFactory.h"
#include "std/cRuntimeException.h"
#include "std/cSTDExceptions.h"
#include "std/debugLines.h"
#include "std/exceptionMessage.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <stdlib.h>
#include <string.h>

#include <utility>

namespace mstd
{
namespace
{
/// Copies at most `maxLength` characters of `source`, which may be null, and fills the rest with zeros.
void copyText(char* target, char const* source, unsigned int maxLength)
{
  ::memset(target, 0, maxLength + 1);
  if (source != 0)
  {
    ::memcpy(target, source, ::strnlen(source, maxLength));
  }
}

/// True if the environment asks for `what` at the raising of exceptions.
bool isWanted(char const* what)
{
  try
  {
    return mpi::cPlatform::getEnv("ME") == what;
  }
  catch (...)
  {
    return false;
  }
}

/// Does what the environment asks for, a dump or a break.
__attribute__((noinline)) void obeyEnvironment()
{
  if (isWanted("dump"))
  {
    writeDebugStackTrace("std/cAbstractException", __LINE__);
  }
  if (isWanted("break"))
  {
    mpi::breakPoint();
  }
}
} // namespace

cAbstractException::cAbstractException(char const* what, Type type, char const* file, unsigned int line)
    : miSourceLine(line), mType(type), mpHistory(0), mOutOfMemory(false), mpRemoteLocation(0), mIsCopiedAlone(false)
{
  copyText(mSourceFile, file, MaxFileNameLength);
  copyText(mWhat, what, MaxWhatLength);
  piBackTrace(mBackTrace, MaxBackTrace);
  // Asking the C library first keeps the heap out of the ordinary case: this may be the moment it is exhausted.
  if (__builtin_expect(::getenv("ME") != 0, 0))
  {
    obeyEnvironment();
  }
}

cAbstractException::cAbstractException(cAbstractException const& other)
    : miSourceLine(other.miSourceLine), mType(other.mType), mpHistory(0), mOutOfMemory(other.mOutOfMemory),
      mpRemoteLocation(0), mIsCopiedAlone(false)
{
  ::memcpy(mSourceFile, other.mSourceFile, sizeof(mSourceFile));
  ::memcpy(mWhat, other.mWhat, sizeof(mWhat));
  ::memcpy(mBackTrace, other.mBackTrace, sizeof(mBackTrace));
  if (other.mpRemoteLocation != 0)
  {
    try
    {
      mpRemoteLocation = new mcs::cComponentLocation(*other.mpRemoteLocation);
    }
    catch (std::bad_alloc const&)
    {
      mOutOfMemory = true;
    }
  }
  if (other.mIsCopiedAlone)
  {
    other.mIsCopiedAlone = false;
  }
  else
  {
    mpHistory = other.getHistory(mOutOfMemory);
  }
}

cAbstractException::~cAbstractException()
{
  delete mpRemoteLocation;
  destroyHistory();
}

mucs::cLIMessage const* cAbstractException::liMessage() const
{
  return 0;
}

void* cAbstractException::dialog() const
{
  return 0;
}

bool cAbstractException::isRemote() const
{
  return mpRemoteLocation != 0;
}

mcs::cComponentLocation const& cAbstractException::remoteLocation() const
{
  if (!(mpRemoteLocation != 0))
  {
    cSTDExceptions::throwAssertionFailed("mpRemoteLocation != 0", "std/cAbstractException", __LINE__);
  }
  return *mpRemoteLocation;
}

void cAbstractException::dump() const
{
  for (cAbstractException const* e = this; e != 0; e = e->mpHistory)
  {
    cAsciiString text(e->mWhat);
    if (mucs::cLIMessage const* const message = e->liMessage())
    {
      message->untranslated(text);
    }
    else if (e->mWhat[0] == 0)
    {
      text = " --- no message ---";
    }
    cAsciiString const name = e->typeName();
    mpi::cAbstractOut& out = mpi::system().out;
    mp::cLocker::cLock lock(out.mutex());
    out.debugMessage("std/cAbstractException", __LINE__)
        << "[" << name << (e->mType == Bug ? " (bug)" : " (runtime)") << "]: " << text << "\n"
        << mpi::cAbstractOut::clearDebugMessage();
  }
}

void cAbstractException::store(msa::cAbstractSerializer& serializer) const
{
  typeName() >> serializer;
  static_cast<unsigned int>(mType) >> serializer;
  outOfMemoryCondition() >> serializer;
}

void cAbstractException::load(msa::cAbstractDeserializer& deserializer)
{
  setMarks(loadMarks(deserializer));
}

cAbstractException::cMarks cAbstractException::loadMarks(msa::cAbstractDeserializer& deserializer)
{
  unsigned int type = 0;
  cMarks marks;
  type << deserializer;
  marks.mOutOfMemory << deserializer;
  marks.mType = type == Bug ? Bug : Runtime;
  return marks;
}

void cAbstractException::setMarks(cMarks const& marks) noexcept
{
  mType = marks.mType;
  mOutOfMemory = marks.mOutOfMemory;
  copyText(mSourceFile, 0, MaxFileNameLength);
  miSourceLine = 0;
  ::memset(mBackTrace, 0, sizeof(mBackTrace));
}

bool cAbstractException::outOfMemoryCondition() const
{
  return mOutOfMemory;
}

cAbstractException* cAbstractException::getHistory(bool& outOfMemory) const
{
  // Each exception is copied without its own history, and the loop hangs the copies together: a copy that clones its
  // history, which clones its history and so on, would need a stack frame for each exception.
  cAbstractException* newest = 0;
  cAbstractException* last = 0;
  for (cAbstractException const* e = mpHistory; e != 0; e = e->mpHistory)
  {
    cAbstractException* copy = 0;
    e->mIsCopiedAlone = true;
    try
    {
      copy = e->createObject();
    }
    catch (std::bad_alloc const&)
    {
      (last != 0 ? last->mOutOfMemory : outOfMemory) = true;
    }
    catch (...)
    {
      // the copy just ends here
    }
    // A class whose createObject() does not copy has made a history of its own, or none.
    bool const isWhole = e->mIsCopiedAlone;
    e->mIsCopiedAlone = false;
    if (copy == 0)
    {
      break;
    }
    (last != 0 ? last->mpHistory : newest) = copy;
    if (isWhole)
    {
      break;
    }
    last = copy;
    while (last->mpHistory != 0)
    {
      last = last->mpHistory;
    }
  }
  return newest;
}

cAbstractException const* cAbstractException::has(cAsciiString const& name) const
{
  for (cAbstractException const* e = this; e != 0; e = e->mpHistory)
  {
    if (e->typeName() == name)
    {
      return e;
    }
  }
  return 0;
}

void cAbstractException::swap(cAbstractException& other) noexcept
{
  std::swap(mSourceFile, other.mSourceFile);
  std::swap(miSourceLine, other.miSourceLine);
  std::swap(mWhat, other.mWhat);
  std::swap(mType, other.mType);
  std::swap(mpHistory, other.mpHistory);
  std::swap(mOutOfMemory, other.mOutOfMemory);
  std::swap(mBackTrace, other.mBackTrace);
}

cAbstractException& cAbstractException::operator=(cAbstractException const& other)
{
  if (this == &other)
  {
    return *this;
  }
  bool outOfMemory = other.mOutOfMemory;
  cAbstractException* history = 0;
  // The old history goes first, so that its memory serves the new one, unless the source needs it.
  bool const isRelated = isInChain(other) || other.isInChain(*this);
  if (isRelated)
  {
    history = other.getHistory(outOfMemory);
  }
  ::memcpy(mSourceFile, other.mSourceFile, sizeof(mSourceFile));
  ::memcpy(mWhat, other.mWhat, sizeof(mWhat));
  ::memcpy(mBackTrace, other.mBackTrace, sizeof(mBackTrace));
  miSourceLine = other.miSourceLine;
  mType = other.mType;
  destroyHistory();
  mpHistory = isRelated ? history : other.getHistory(outOfMemory);
  mOutOfMemory = outOfMemory;
  return *this;
}

bool cAbstractException::hasOutOfMemoryCondition() const
{
  for (cAbstractException const* e = this; e != 0; e = e->mpHistory)
  {
    if (e->outOfMemoryCondition())
    {
      return true;
    }
  }
  return false;
}

mucs::cLIMessage cAbstractException::toMessage() const
{
  if (hasOutOfMemoryCondition())
  {
    return mucs::cLIMessage() << "$MTR$Out of memory!";
  }
  if (mucs::cLIMessage const* const message = liMessage())
  {
    return *message;
  }
  return mucs::cLIMessage() << "$MTR$%s%" << mWhat;
}

void cAbstractException::setRemoteInfo(mcs::cComponentLocation const& location)
{
  mcs::cComponentLocation* const copy = new mcs::cComponentLocation(location);
  delete mpRemoteLocation;
  mpRemoteLocation = copy;
}

void cAbstractException::link(cAbstractException* older)
{
  cAbstractException* last = this;
  while (last->mpHistory != 0 && last != older)
  {
    last = last->mpHistory;
  }
  if (!(last != older))
  {
    cSTDExceptions::throwAssertionFailed("last != older", "std/cAbstractException", __LINE__);
  }
  last->mpHistory = older;
}

void cAbstractException::link(cAbstractException const& older)
{
  link(older.createObject());
}

void cAbstractException::storeRecursive(msa::cAbstractSerializer& serializer) const
{
  writeDebugLine("std/cAbstractException", __LINE__, "cAbstractException::storeRecursive");
  for (cAbstractException const* e = this; e != 0; e = e->mpHistory)
  {
    true >> serializer;
    e->store(serializer);
  }
  false >> serializer;
}

tAutoPtr<cAbstractException> cAbstractException::createFromStream(msa::cAbstractDeserializer& deserializer,
                                                                  cAbstractExceptionFactory const& factory)
{
  tAutoPtr<cAbstractException> newest;
  cAbstractException* oldest = 0; // end of the chain, so that a long one costs no walk for each record
  bool isContinued = false;
  isContinued << deserializer;
  while (isContinued)
  {
    cAsciiString name;
    name << deserializer;
    tAutoPtr<cAbstractException> e;
    bool isKnown = false;
    try
    {
      e = factory.createException(name);
      isKnown = true;
    }
    catch (...)
    {
      e.reinit(new cRuntimeException(exceptionMessage("$MTR$Unknown exception type %s%!", name), 0, 0));
    }
    isContinued = false; // the length of an unknown record is unknown: what follows it stays unread
    if (isKnown)
    {
      e->load(deserializer);
      isContinued << deserializer;
    }
    cAbstractException* const added = e.get();
    if (newest)
    {
      oldest->link(e.release());
    }
    else
    {
      newest = e;
    }
    oldest = added;
  }
  return newest;
}

void cAbstractException::createMessage(cAbstractException const& e, mucs::cString& out, unsigned int,
                                       mucs::cLILocale const* locale)
{
  mucs::cLIMessage const* const message = e.liMessage();
  if (message == 0)
  {
    out.appendC(e.mWhat);
    return;
  }
  mucs::cString text;
  if (locale != 0)
  {
    locale->translate(*message, text, 0);
  }
  else
  {
    message->untranslated(text);
  }
  out += text;
}

void cAbstractException::createMessage(mucs::cString& out, mucs::cString const& separator, unsigned int flags,
                                       mucs::cLILocale const* locale) const
{
  mucs::cString text; // made aside: `separator` may be `out`
  unsigned int depth = 0;
  for (cAbstractException const* e = this; e != 0; e = (flags & WithHistory) != 0 ? e->mpHistory : 0)
  {
    if (e != this)
    {
      text += separator;
      if ((flags & Indent) != 0)
      {
        ++depth;
        mucs::cString blanks;
        blanks.leftAdjust(depth, 0x20);
        text += blanks;
      }
    }
    createMessage(*e, text, flags, locale);
  }
  out = text;
}

void cAbstractException::destroyHistory()
{
  // In a loop: each destructor finds an empty history.
  while (mpHistory != 0)
  {
    cAbstractException* const older = mpHistory;
    mpHistory = older->mpHistory;
    older->mpHistory = 0;
    delete older;
  }
}

bool cAbstractException::isInChain(cAbstractException const& other) const
{
  cAbstractException const* e = this;
  while (e != 0 && e != &other)
  {
    e = e->mpHistory;
  }
  return e != 0;
}
} // namespace mstd
