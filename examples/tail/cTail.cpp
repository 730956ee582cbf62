#include "cTail.h"

#include "cOptions.h"
#include "cText.h"
#include "pi/cFDAIOData.h"
#include "pi/cSystem.h"
#include "pi/schedule.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "std/cAsciiStringStream.h"
#include "std/cOSErrorException.h"
#include "std/tArray.h"
#include "ucs/cLIMessage.h"

#include <errno.h>
#include <signal.h>
#include <stdio.h>
#include <sys/signalfd.h>
#include <unistd.h>

cTail::cTail(cOptions const& options)
    : mOptions(options), mpShown(nullptr), miSignalDescriptor(-1), miSignal(0), mOutputLost(false)
{
}

cTail::~cTail()
{
  if (miSignalDescriptor >= 0)
  {
    close(miSignalDescriptor);
  }
}

int cTail::run()
{
  watchSignals();
  for (unsigned int i = 0; i < mOptions.files().length(); i++)
  {
    mstd::tAutoPtr<cFollowed> pFile(new cFollowed(mOptions.files().at(i), mOptions));
    pFile->sigText.connect(mrmi::cDirectLocalSlotCall2(*this, &cTail::sltText));
    pFile->sigTold.connect(mrmi::cDirectLocalSlotCall1(*this, &cTail::sltTold));
    pFile->sigFailed.connect(mrmi::cDirectLocalSlotCall1(*this, &cTail::sltFailed));
    mFiles.append(pFile.get());
    pFile.release()->start();
  }
  while (miSignal == 0 && !mOutputLost && isAnyFollowed())
  {
    mpi::cSystem::exec();
  }
  return miSignal != 0 ? 128 + miSignal : 1;
}

void cTail::watchSignals()
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
  mSignals.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cTail::sltSignal));
  mSignals.setAIOData(pData);
  mpi::schedule(mSignals);
}

bool cTail::isAnyFollowed() const
{
  for (unsigned int i = 0; i < mFiles.length(); i++)
  {
    if (mFiles.at(i)->isFollowed())
    {
      return true;
    }
  }
  return false;
}

void cTail::sltSignal()
{
  signalfd_siginfo info;
  if (read(miSignalDescriptor, &info, sizeof info) == static_cast<ssize_t>(sizeof info))
  {
    miSignal = static_cast<int>(info.ssi_signo);
  }
}

void cTail::sltText(cFollowed const* pFile, mstd::tArray<char> const* pText)
{
  if (pFile != mpShown && mOptions.files().length() > 1)
  {
    mstd::cAsciiString header(mpShown == nullptr ? "" : "\n");
    header << "==> " << cText::encode(pFile->path()) << " <==\n";
    print(header.c_str(), header.length());
  }
  mpShown = pFile;
  print(pText->data(), pText->length());
}

void cTail::sltTold(mucs::cLIMessage const* pMessage)
{
  complain(cText::message(*pMessage));
}

void cTail::sltFailed(mstd::cAbstractException const* pException)
{
  complain(cText::message(*pException));
}

void cTail::print(char const* pText, unsigned int iLength)
{
  if (mOutputLost)
  {
    return;
  }
  errno = 0;
  if (fwrite(pText, 1, iLength, stdout) != iLength || fflush(stdout) != 0)
  {
    mOutputLost = true;
    complain(cText::message(mstd::cOSErrorException("write", errno, mucs::cString("standard output"))));
  }
}

void cTail::complain(mstd::cAsciiString const& text)
{
  fflush(stdout);
  fprintf(stderr, "tail: %s\n", text.c_str());
}
