#include "cAdder.h"

#include <boost/config.hpp>
#include <boost/dll/alias.hpp>
#include <boost/shared_ptr.hpp>

#include <memory>

namespace
{
class cModule : public cAdder
{
public:
  unsigned int add(unsigned int iValue) override { return miSum += iValue; }
  static std::shared_ptr<cAdder> create() { return std::make_shared<cModule>(); }

private:
  unsigned int miSum = 0;
};
} // namespace

BOOST_DLL_ALIAS(cModule::create, createAdder)
