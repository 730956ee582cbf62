// A module with what the build tells it to have.

#include "mcs/module.h"
#include "mcs/cAbstractComponent.h"

#if defined(WITH_UNIQUE_SYMBOL)
unsigned int countUses();
#elif defined(WITH_INLINE_STATIC)
inline unsigned int countUses()
{
  static unsigned int uses = 0;
  thread_local unsigned int usesOfThread = 0;
  return ++uses + ++usesOfThread;
}
#elif defined(WITH_MISSING_FUNCTION)
unsigned int countUses(); // nowhere
#elif defined(WITH_THREAD_LOCAL)
struct cCount
{
  ~cCount() { miUses = 0; }
  unsigned int volatile miUses = 0;
};
static unsigned int countUses()
{
  thread_local cCount count;
  return count.miUses = count.miUses + 1;
}
#else
static unsigned int countUses()
{
  return 0;
}
#endif

class cComponent : public mcs::cAbstractComponent
{
public:
  cComponent(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame) : cAbstractComponent(manager, frame)
  {
    setComponentID(countUses());
  }
};

#if defined(WITH_TWO_COMPONENTS)
MORTISE_MODULE(1, 0, cComponent, cComponent);
#elif defined(WITH_NO_MODULE_CLASS)
class cNoModule
{
};
MORTISE_MODULE(1, 0, cNoModule);
#elif !defined(WITHOUT_MACRO)
MORTISE_MODULE(1, 0, cComponent);
#endif
