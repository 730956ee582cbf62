#ifndef MORTISE_EXAMPLES_TAIL_CTAIL_H
#define MORTISE_EXAMPLES_TAIL_CTAIL_H

#include "cFollowed.h"
#include "pi/cWork.h"
#include "rmi/cConnectable.h"
#include "std/tPtrVector.h"

class cOptions;

/// The program: follows all files until a signal comes, or until none is left.
class cTail : public mrmi::cConnectable
{
public:
  explicit cTail(cOptions const& options);
  cTail(cTail const&) = delete;
  cTail& operator=(cTail const&) = delete;
  ~cTail() override;

  /// Runs to the end and returns the exit code.
  int run();

private:
  void watchSignals();
  bool isAnyFollowed() const;
  void sltSignal();
  void sltText(cFollowed const* pFile, mstd::tArray<char> const* pText);
  void sltTold(mucs::cLIMessage const* pMessage);
  void sltFailed(mstd::cAbstractException const* pException);
  void print(char const* pText, unsigned int iLength);
  void complain(mstd::cAsciiString const& text);

  cOptions const& mOptions;
  mpi::cWork mSignals;
  mstd::tPtrVector<cFollowed> mFiles;
  cFollowed const* mpShown; // whose text was printed last
  int miSignalDescriptor;
  int miSignal; // that ended the run, or 0
  bool mOutputLost;
};

#endif
