#ifndef MORTISE_TOOLS_CCHILDPROCESS_H
#define MORTISE_TOOLS_CCHILDPROCESS_H

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

/// Does something that may go wrong in every way in a process of its own: it may crash, end the process, hang, or print
/// without end, and this process only learns of it.
///
/// The process has no core dumps and no standard input. It goes, with all that it started in its group, when its time
/// is over, and with this process.
class cChildProcess
{
public:
  enum End
  {
    Ended,    ///< the function returned
    Exited,   ///< something in it ended the process
    Killed,   ///< by a signal
    TimedOut, ///< not done in its time
    Flooding, ///< told more than anybody wants to know
    NotStarted
  };

  /// What the function tells is a row of messages; each is a row of texts.
  typedef std::vector<std::string> tMessage;

  /// By which the function in the child tells something.
  class cTeller
  {
  public:
    explicit cTeller(int iDescriptor) : miDescriptor(iDescriptor) {}
    void tell(tMessage const& message) const;

  private:
    int miDescriptor;
  };

  /// Runs the function, and waits for its end.
  End run(std::function<void(cTeller const&)> const& function, unsigned int iSeconds);

  /// All that was told, whole messages only.
  std::vector<tMessage> const& messages() const { return mMessages; }
  /// What was printed, standard output and standard error alike; no more than the first 64 KiB.
  std::string const& printed() const { return mPrinted; }
  /// How it ended, as the end of a sentence, like "crashes (Segmentation fault)".
  std::string const& explanation() const { return mExplanation; }

private:
  void work(std::function<void(cTeller const&)> const& function, int iTold, int iPrinted, unsigned int iSeconds,
            pid_t parent) const __attribute__((noreturn));
  void split(std::string const& told);

  std::vector<tMessage> mMessages;
  std::string mPrinted;
  std::string mExplanation;
};

#endif
