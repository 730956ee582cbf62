#include "cChildProcess.h"

#include <algorithm>
#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

namespace
{
size_t const MostTold = 16u << 20;
size_t const MostPrinted = 64u << 10;

long long milliseconds()
{
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1000LL + now.tv_nsec / 1000000;
}

// Reads what is there, and keeps it up to the limit. As read() tells.
ssize_t drain(int iDescriptor, std::string& text, size_t most)
{
  char bytes[65536];
  ssize_t const got = read(iDescriptor, bytes, sizeof bytes);
  if (got > 0)
  {
    text.append(bytes, std::min(static_cast<size_t>(got), most - std::min(most, text.size())));
  }
  return got;
}

bool isAtEnd(ssize_t got)
{
  return got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR);
}

// The last message of a function that has returned: nothing else knows it.
std::string token()
{
  unsigned char bytes[16] = {};
  int const descriptor = open("/dev/urandom", O_RDONLY | O_CLOEXEC);
  if (descriptor >= 0)
  {
    (void)!read(descriptor, bytes, sizeof bytes);
    close(descriptor);
  }
  return std::string(reinterpret_cast<char*>(bytes), sizeof bytes);
}
} // namespace

void cChildProcess::cTeller::tell(tMessage const& message) const
{
  std::string bytes(sizeof(uint32_t), '\0');
  for (std::string const& text : message)
  {
    uint32_t const length = static_cast<uint32_t>(text.size());
    bytes.append(reinterpret_cast<char const*>(&length), sizeof length);
    bytes += text;
  }
  uint32_t const size = static_cast<uint32_t>(bytes.size() - sizeof(uint32_t));
  memcpy(&bytes[0], &size, sizeof size);
  for (size_t done = 0; done < bytes.size();)
  {
    ssize_t const written = write(miDescriptor, bytes.data() + done, bytes.size() - done);
    if (written < 0 && errno != EINTR)
    {
      return; // nobody listens any more
    }
    done += written < 0 ? 0 : static_cast<size_t>(written);
  }
}

void cChildProcess::work(std::function<void(cTeller const&)> const& function, int iTold, int iPrinted,
                         unsigned int iSeconds, pid_t parent) const
{
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent)
  {
    _exit(1); // it went before it could take this process along
  }
  int const nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
  dup2(nothing, STDIN_FILENO);
  dup2(iPrinted, STDOUT_FILENO);
  dup2(iPrinted, STDERR_FILENO);
  rlimit const noCore = {0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  rlimit const time = {iSeconds + 1, iSeconds + 2};
  setrlimit(RLIMIT_CPU, &time);
  signal(SIGPIPE, SIG_DFL);
  function(cTeller(iTold));
  fflush(nullptr);
  _exit(0);
}

// A hostile writer may have written anything.
void cChildProcess::split(std::string const& told)
{
  size_t pos = 0;
  uint32_t size = 0;
  while (told.size() - pos >= sizeof size)
  {
    memcpy(&size, told.data() + pos, sizeof size);
    pos += sizeof size;
    if (size > told.size() - pos)
    {
      return;
    }
    size_t const end = pos + size;
    tMessage message;
    while (end - pos >= sizeof size)
    {
      memcpy(&size, told.data() + pos, sizeof size);
      pos += sizeof size;
      if (size > end - pos)
      {
        return;
      }
      message.push_back(told.substr(pos, size));
      pos += size;
    }
    if (pos != end)
    {
      return;
    }
    mMessages.push_back(message);
  }
}

cChildProcess::End cChildProcess::run(std::function<void(cTeller const&)> const& function, unsigned int iSeconds)
{
  mMessages.clear();
  mPrinted.clear();
  mExplanation.clear();
  int told[2] = {-1, -1};
  int printed[2] = {-1, -1};
  fflush(nullptr); // else both processes would write it
  std::string const done = token();
  pid_t const parent = getpid();
  pid_t child = -1;
  if (pipe2(told, O_CLOEXEC) == 0 && pipe2(printed, O_CLOEXEC) == 0)
  {
    child = fork();
  }
  if (child == 0)
  {
    close(told[0]);
    close(printed[0]);
    work(
        [&function, &done](cTeller const& teller) {
          function(teller);
          teller.tell({done});
        },
        told[1], printed[1], iSeconds, parent);
  }
  int const error = errno;
  close(told[1]);
  close(printed[1]);
  if (child < 0)
  {
    close(told[0]);
    close(printed[0]);
    mExplanation = std::string("could not be looked at: ") + strerror(error);
    return NotStarted;
  }
  setpgid(child, child); // whoever is first
  fcntl(told[0], F_SETFL, O_NONBLOCK);
  fcntl(printed[0], F_SETFL, O_NONBLOCK);

  std::string bytes;
  End eEnd = Ended;
  int status = 0;
  bool bGone = false;
  bool bTold = true;
  bool bPrinted = true;
  long long const deadline = milliseconds() + iSeconds * 1000LL;
  while (!bGone)
  {
    pollfd descriptors[2] = {{bTold ? told[0] : -1, POLLIN, 0}, {bPrinted ? printed[0] : -1, POLLIN, 0}};
    // Something that it left behind may hold the pipes open, so that its end is asked for now and then.
    poll(descriptors, 2, bTold || bPrinted ? 20 : 2);
    bTold = bTold && !isAtEnd(drain(told[0], bytes, MostTold));
    bPrinted = bPrinted && !isAtEnd(drain(printed[0], mPrinted, MostPrinted));
    bGone = waitpid(child, &status, WNOHANG) == child;
    bool const bFlooding = bytes.size() >= MostTold;
    if (!bGone && (bFlooding || milliseconds() >= deadline))
    {
      eEnd = bFlooding ? Flooding : TimedOut;
      break;
    }
  }
  kill(-child, SIGKILL);
  if (!bGone)
  {
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
    {
    }
  }
  // What pipes hold at most; who got away from its group may go on writing.
  for (unsigned int i = 0; i < 64 && drain(told[0], bytes, MostTold) > 0; ++i)
  {
  }
  for (unsigned int i = 0; i < 64 && drain(printed[0], mPrinted, MostPrinted) > 0; ++i)
  {
  }
  close(told[0]);
  close(printed[0]);
  split(bytes);
  bool const bReturned = !mMessages.empty() && mMessages.back() == tMessage{done};
  if (bReturned)
  {
    mMessages.pop_back();
  }
  if (eEnd == TimedOut)
  {
    mExplanation = "is not done after " + std::to_string(iSeconds) + " s";
  }
  else if (eEnd == Flooding)
  {
    mExplanation = "tells more than " + std::to_string(MostTold >> 20) + " MiB";
  }
  else if (WIFSIGNALED(status))
  {
    char const* const pName = strsignal(WTERMSIG(status));
    mExplanation = "crashes (" + std::string(pName != nullptr ? pName : "a signal") + ")";
    eEnd = Killed;
  }
  else if (!bReturned)
  {
    mExplanation = "ends the process (exit code " + std::to_string(WEXITSTATUS(status)) + ")";
    eEnd = Exited;
  }
  return eEnd;
}
