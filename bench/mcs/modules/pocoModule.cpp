#include "cAdder.h"

#include <Poco/ClassLibrary.h>

class cPocoModule : public cAdder
{
public:
  unsigned int add(unsigned int iValue) override { return miSum += iValue; }

private:
  unsigned int miSum = 0;
};

POCO_BEGIN_MANIFEST(cAdder)
POCO_EXPORT_CLASS(cPocoModule)
POCO_END_MANIFEST
