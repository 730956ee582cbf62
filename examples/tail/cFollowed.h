#ifndef MORTISE_EXAMPLES_TAIL_CFOLLOWED_H
#define MORTISE_EXAMPLES_TAIL_CFOLLOWED_H

#include "io/cFile.h"
#include "io/cFileWatch.h"
#include "pi/cWork.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal1.h"
#include "rmi/localSignal2.h"
#include "std/cAsciiString.h"
#include "std/tAutoPtr.h"
#include "ucs/cString.h"

#include <sys/types.h>

namespace mucs
{
class cLIMessage;
}

class cOptions;

/// A path, and the file that stands there.
///
/// A watch tells of changes of the file. The path is looked at less often, whether the same file is there still; this
/// also finds what was appended in a second that the watch has seen already.
class cFollowed : public mrmi::cConnectable
{
public:
  cFollowed(mstd::cAsciiString const& path, cOptions const& options);

  /// Shows the last lines, and begins to follow.
  void start();

  mucs::cString const& path() const { return mPath; }
  /// False after an error: nothing comes any more.
  bool isFollowed() const { return mFollowed; }

  /// Bytes of the file in their order, with this.
  mrmi::localSignal2<piVoid, cFollowed const*, mstd::tArray<char> const*> sigText;
  /// Something to be told to people.
  mrmi::localSignal1<piVoid, mucs::cLIMessage const*> sigTold;
  /// It ends with this error.
  mrmi::localSignal1<piVoid, mstd::cAbstractException const*> sigFailed;

private:
  struct cIdentity
  {
    dev_t device = 0;
    ino_t number = 0;
    bool exists = false;
    bool operator==(cIdentity const& other) const
    {
      return exists == other.exists && device == other.device && number == other.number;
    }
  };

  void sltChanged();
  void sltCheck();
  cIdentity identity() const;
  void open();
  void close();
  void check();
  void seekToLastLines();
  void readOn();
  void tell(char const* key);
  template <class tAction>
  void guarded(tAction const& action);

  cOptions const& mOptions;
  mstd::cAsciiString mName; // as it came in
  mucs::cString mPath;
  mstd::tAutoPtr<mio::cFile> mpFile; // null while nothing stands at the path
  mstd::tAutoPtr<mio::cFileWatch> mpWatch;
  cIdentity mIdentity; // of the open file
  mpi::cWork mCheck;
  bool mFollowed;
};

#endif
