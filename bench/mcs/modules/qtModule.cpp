#include "qtAdder.h"

#include <QtCore/QObject>

class cQtModule : public QObject, public cAdder
{
  Q_OBJECT
  Q_PLUGIN_METADATA(IID MORTISE_BENCH_ADDER)
  Q_INTERFACES(cAdder)

public:
  unsigned int add(unsigned int iValue) override { return miSum += iValue; }

private:
  unsigned int miSum = 0;
};

#include "qtModule.moc"
