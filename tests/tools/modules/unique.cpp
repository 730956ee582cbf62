// A module with a unique symbol, which stays for ever.

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"

template <class T>
struct __attribute__((visibility("default"))) tCounter
{
  static unsigned int count()
  {
    static unsigned int iCount = 0;
    return ++iCount;
  }
};

namespace
{
class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame)
  {
    if (tCounter<int>::count() != 0)
    {
      moduleInfo().setName("unique");
    }
  }
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
