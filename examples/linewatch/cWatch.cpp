#include "cWatch.h"

#include "cOptions.h"
#include "cText.h"
#include "pi/cFDAIOData.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "pi/cWqDebug.h"
#include "pi/schedule.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "rmi/cDirectLocalSlotCall3.h"
#include "std/cAsciiStringStream.h"
#include "std/cOSErrorException.h"

#include <errno.h>
#include <signal.h>
#include <spawn.h>
#include <stdio.h>
#include <string.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

cWatch::cWatch(cOptions const& options)
    : mOptions(options), miLastLines(0), miLastBytes(0), miSignalDescriptor(-1), miSignal(0), mComplained(false),
      mOutputLost(false)
{
  mParent.setName("sources");
  mParent.sigActionError().connect(mrmi::cDirectLocalSlotCall2(*this, &cWatch::sltFailed));
  mpi::schedule(mParent);
  mRates.setName("rates");
  mRates.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cWatch::sltRates));
  mpi::schedule(mRates);
  mLastTime = mStart;
}

cWatch::~cWatch()
{
  if (miSignalDescriptor >= 0)
  {
    close(miSignalDescriptor);
  }
}

int cWatch::run()
{
  watchSignals();
  mRates.start(mOptions.intervalMSec(), mpi::cWork::Periodic);
  openSources();
  while (mpi::cSystem::exec() != 0)
  {
  }
  printTotals();
  mpi::system().wq.debugDump();
  writeGraph();
  return miSignal != 0 ? 128 + miSignal : mComplained ? 1 : 0;
}

void cWatch::openSources()
{
  for (unsigned int i = 0; i < mOptions.sources().length(); i++)
  {
    mstd::tAutoPtr<cSource> pSource(new cSource(mOptions.sources().at(i), mOptions));
    cSource& source = *pSource;
    mSources.append(pSource);
    source.sigEnded.connect(mrmi::cDirectLocalSlotCall1(*this, &cWatch::sltEnded));
    if (mOptions.isPrint())
    {
      source.sigMatch.connect(mrmi::cDirectLocalSlotCall3(*this, &cWatch::sltMatch));
    }
    try
    {
      source.open(mParent);
    }
    catch (mstd::cOSErrorException const& e)
    {
      complain(cText::message(e));
    }
  }
  finishIfAllEnded();
}

void cWatch::watchSignals()
{
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  // A reader that goes away is an error of a write, and not the end of this program.
  signal(SIGPIPE, SIG_IGN);
  miSignalDescriptor = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
  if (miSignalDescriptor < 0)
  {
    throw mstd::cOSErrorException("signalfd", errno);
  }
  mstd::tAutoPtr<mpi::cFDAIOData> pData(new mpi::cFDAIOData);
  pData->addFd(miSignalDescriptor, mpi::tFdInfo::Readable);
  mSignals.setName("signals");
  mSignals.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cWatch::sltSignal));
  mSignals.setAIOData(pData);
  mpi::schedule(mSignals);
}

void cWatch::sltSignal()
{
  signalfd_siginfo info;
  if (read(miSignalDescriptor, &info, sizeof info) != static_cast<ssize_t>(sizeof info))
  {
    return;
  }
  miSignal = static_cast<int>(info.ssi_signo);
  // A second one ends the process at once, should this orderly end not come to its own.
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigprocmask(SIG_UNBLOCK, &signals, nullptr);
  print(mstd::cAsciiString(miSignal == SIGINT ? "interrupted\n" : "terminated\n"));
  finish();
}

void cWatch::finish()
{
  for (unsigned int i = 0; i < mSources.length(); i++)
  {
    if (mSources.at(i)->state() == cSource::Open)
    {
      mSources.at(i)->close(cSource::Stopped);
    }
  }
  mRates.stop();
  mSignals.stop();
}

void cWatch::finishIfAllEnded()
{
  for (unsigned int i = 0; i < mSources.length(); i++)
  {
    if (mSources.at(i)->state() == cSource::Open)
    {
      return;
    }
  }
  finish();
}

void cWatch::sltEnded(cSource&)
{
  finishIfAllEnded();
}

void cWatch::sltFailed(mstd::cAbstractException const& e, bool)
{
  complain(cText::message(e));
  for (unsigned int i = 0; i < mSources.length(); i++)
  {
    if (&mSources.at(i)->work() == mpi::system().wq.current())
    {
      mSources.at(i)->close(cSource::Failed);
    }
  }
  finishIfAllEnded();
}

void cWatch::sltMatch(cSource const& source, mstd::tArray<char> const& shown, piUInt64 iLength)
{
  mstd::cAsciiString line(source.name());
  line << ":" << source.scanner().lines() << ": " << cText::visible(shown.data(true), shown.length());
  if (iLength > shown.length())
  {
    line << " ... (" << iLength << " bytes)";
  }
  line << "\n";
  print(line);
}

void cWatch::sltRates()
{
  piUInt64 iLines = 0;
  piUInt64 iBytes = 0;
  unsigned int iOpen = 0;
  for (unsigned int i = 0; i < mSources.length(); i++)
  {
    iLines += mSources.at(i)->scanner().lines();
    iBytes += mSources.at(i)->scanner().bytes();
    iOpen += mSources.at(i)->state() == cSource::Open;
  }
  mstd::cTime const now;
  piUInt64 const iMSec = (now - mLastTime).toMSec();
  piUInt64 const iTenths = ((now - mStart).toMSec() + 50) / 100;
  mstd::cAsciiString line;
  line << iTenths / 10 << "." << iTenths % 10 << " s: " << iLines << " lines, " << cText::size(iBytes);
  if (iMSec != 0)
  {
    line << "; " << (iLines - miLastLines) * 1000 / iMSec << " lines/s, "
         << cText::size((iBytes - miLastBytes) * 1000 / iMSec) << "/s";
  }
  line << "; " << iOpen << " open\n";
  print(line);
  mLastTime = now;
  miLastLines = iLines;
  miLastBytes = iBytes;
}

void cWatch::printTotals() const
{
  piUInt64 iLines = 0;
  piUInt64 iBytes = 0;
  mstd::cAsciiString text;
  for (unsigned int i = 0; i < mSources.length(); i++)
  {
    cSource const& source = *mSources.at(i);
    cLineScanner const& scanner = source.scanner();
    iLines += scanner.lines();
    iBytes += scanner.bytes();
    text << source.name() << ": " << scanner.lines() << " lines, " << scanner.bytes() << " bytes, longest line "
         << scanner.longest() << " bytes, " << source.stateText() << "\n";
  }
  text << "total: " << iLines << " lines, " << iBytes << " bytes\n";
  for (unsigned int i = 0; i < mOptions.patterns().length(); i++)
  {
    piUInt64 iMatches = 0;
    for (unsigned int j = 0; j < mSources.length(); j++)
    {
      iMatches += mSources.at(j)->scanner().matches(i);
    }
    text << "lines with '" << mOptions.patterns().at(i) << "': " << iMatches << "\n";
  }
  const_cast<cWatch*>(this)->print(text);
}

void cWatch::writeGraph()
{
  if (mOptions.graph().empty())
  {
    return;
  }
  mstd::cAsciiString const dot = mpi::cWqDebug::dot();
  FILE* const file = fopen(mOptions.graph().c_str(), "w");
  bool const bWritten = file != nullptr && fwrite(dot.c_str(), 1, dot.length(), file) == dot.length();
  int const iError = errno;
  if ((file != nullptr && fclose(file) != 0) || !bWritten)
  {
    complain(cText::message(
        mstd::cOSErrorException("write", bWritten ? errno : iError, cText::decode(mOptions.graph().c_str()))));
    return;
  }
  mstd::cAsciiString svg(mOptions.graph());
  if (svg.length() > 4 && strcmp(svg.c_str() + svg.length() - 4, ".dot") == 0)
  {
    svg.truncate(svg.length() - 4);
  }
  svg += ".svg";
  char dotName[] = "dot";
  char format[] = "-Tsvg";
  char output[] = "-o";
  mstd::cAsciiString input(mOptions.graph());
  char* const arguments[] = {dotName, format, output, svg.data(), input.data(), nullptr};
  pid_t child = 0;
  int iStatus = 0;
  if (posix_spawnp(&child, dotName, nullptr, nullptr, arguments, environ) != 0 ||
      waitpid(child, &iStatus, 0) != child || iStatus != 0)
  {
    print(mstd::cAsciiString("no SVG of the graph: Graphviz is not there\n"));
  }
}

void cWatch::complain(mstd::cAsciiString const& text)
{
  mComplained = true;
  fflush(stdout);
  fprintf(stderr, "linewatch: %s\n", text.c_str());
}

void cWatch::print(mstd::cAsciiString const& text)
{
  if (mOutputLost)
  {
    return;
  }
  errno = 0;
  if (fwrite(text.c_str(), 1, text.length(), stdout) != text.length() || fflush(stdout) != 0)
  {
    mOutputLost = true;
    complain(cText::message(mstd::cOSErrorException("write", errno, mucs::cString("standard output"))));
    finish();
  }
}
