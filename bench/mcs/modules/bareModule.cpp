// What remains of a module without any framework.

#include "cAdder.h"

#include <string>
#include <vector>

namespace
{
class cModule : public cAdder
{
public:
  cModule() : mName("bare"), mSums(1) {}
  unsigned int add(unsigned int iValue) override { return mSums[0] += iValue; }

private:
  std::string mName;
  std::vector<unsigned int> mSums;
};
} // namespace

extern "C" __attribute__((visibility("default"))) cAdder* createAdder()
{
  return new cModule;
}
