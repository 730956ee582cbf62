#include "pi/cWqDebug.h"

#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"

namespace mpi
{

namespace
{

void addNumber(mstd::cAsciiString& out, piUInt64 iValue, unsigned int iBase)
{
  mstd::cNumberConversion::toString(out, iValue, mstd::cNumberConversionFormat(iBase));
}

void addId(mstd::cAsciiString& out, cWork const& work)
{
  out += "\"";
  addNumber(out, reinterpret_cast<piAddress>(&work), 16);
  out += "\"";
}

void addDetailWord(mstd::cAsciiString& detail, char const* pWord)
{
  if (detail.length() != 0)
  {
    detail += ", ";
  }
  detail += pWord;
}

void addNode(mstd::cAsciiString& out, cWork const& work, bool bCurrent)
{
  char const* pTypeText = "Unknown";
  char const* pShape = "ellipse";
  char const* pColor = "lightgrey";
  mstd::cAsciiString detail;
  switch (work.type())
  {
  case cWork::SingleTask: {
    pTypeText = "Single task";
    mstd::cTime const now;
    mstd::cTime const planned = work.plannedTime();
    detail += "planned in ";
    addNumber(detail, planned > now ? (planned - now).toMSec() : 0, 10);
    detail += "ms";
    break;
  }
  case cWork::Periodic:
    pTypeText = "Periodic";
    addNumber(detail, work.interval(), 10);
    detail += "ms interval)";
    break;
  case cWork::AIO:
    pTypeText = "Asynchronous I/O";
    break;
  }

  if (work.isAmuck())
  {
    pColor = "red";
    addDetailWord(detail, "AMUCK");
  }
  else if (work.isStarted())
  {
    pColor = "grey";
    addDetailWord(detail, "Active");
  }
  if (work.isKeep())
  {
    addDetailWord(detail, "Keep");
  }
  if (bCurrent)
  {
    addDetailWord(detail, "Current");
    pColor = "LightSteelBlue";
    pShape = "doubleoctagon";
  }
  if (work.type() == cWork::AIO)
  {
    pColor = "PapayaWhip";
  }

  addId(out, work);
  out += " [ label=\"";
  out += pTypeText;
  out += "\\n";
  out += work.name();
  if (detail.length() != 0)
  {
    out += "\\n(";
    out += detail;
    out += ")";
  }
  out += "\",shape=\"";
  out += pShape;
  out += "\",style=\"filled\",color=\"";
  out += pColor;
  out += "\" ];\n";
}

} // namespace

mstd::cAsciiString cWqDebug::dot(cWorkQueue* pQueue)
{
  mstd::cAsciiString out;
  dotDump(out, pQueue != nullptr ? *pQueue : system().wq);
  return out;
}

void cWqDebug::dotDump(mstd::cAsciiString& out, cWorkQueue& queue)
{
  out += "digraph G {\n";
  for (mstd::tSharedObject<cWork> const& job : queue.jobs())
  {
    if (job.get() != nullptr)
    {
      addNode(out, *job, queue.current() == job.get());
    }
  }
  for (mstd::tSharedObject<cWork> const& job : queue.jobs())
  {
    cWork const* const pParent = job.get() != nullptr ? job->parent() : nullptr;
    if (pParent != nullptr)
    {
      addId(out, *pParent);
      out += " -> ";
      addId(out, *job);
      out += ";\n";
    }
  }
  out += "}\n";
}

} // namespace mpi
