#include "support/bench.h"

#include "rmi/cAbstractSlotCall2.h"
#include "rmi/cConnectable.h"
#include "rmi/cPublicSlot.h"
#include "rmi/qtPeer.h"
#include "sa/cReferenceFrame.h"
#include "std/cAsciiString.h"

#include <glib-object.h>

#include <QtCore/QMetaObject>

// A function that is known by its name only is called with two arguments, and returns nothing.

namespace
{

struct cCounter : mrmi::cConnectable
{
  void add(int iValue, int iFactor) { benchmark::DoNotOptimize(miCount += iValue * iFactor); }
  int miCount = 0;
};

class cAddCall : public mrmi::cAbstractSlotCall2<piVoid, int, int>
{
public:
  explicit cAddCall(cCounter& counter, mrmi::cAbstractSignal* pSignal = nullptr)
      : mrmi::cAbstractSlotCall2<piVoid, int, int>(counter, pSignal), mCounter(counter)
  {
  }
  using mrmi::cAbstractSlotCall2<piVoid, int, int>::call;
  void call(int iValue, int iFactor) const override { mCounter.add(iValue, iFactor); }
  void callRef(msa::cReferenceFrame& frame) const override
  {
    int const iValue = frame.readNext<int>();
    call(iValue, frame.readNext<int>());
  }
  mrmi::cAbstractSlotCall2<piVoid, int, int>* createConnectedInstance(mrmi::cAbstractSignal& signal) const override
  {
    return new cAddCall(mCounter, &signal);
  }

private:
  cCounter& mCounter;
};

void glibOnScale(GObject*, int iValue, int iFactor, gpointer pCount)
{
  benchmark::DoNotOptimize(*static_cast<int*>(pCount) += iValue * iFactor);
}

} // namespace

BENCH("streams", "call a slot by name with 2 arguments", "mortise")
{
  cCounter counter;
  counter.registerSlot("add", "piVoid", "piInt32, piInt32", "adds a product",
                       mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new cAddCall(counter)));
  mstd::cAsciiString const name("add");
  int iValue = 3;
  int iFactor = 4;
  piVoid none;
  for (auto _ : state)
  {
    msa::cReferenceFrame frame;
    frame.addRef(iValue, false, true).addRef(iFactor, false, true).addRef(none, true, false);
    counter.invokeIndirectSlot(name, frame);
  }
}

BENCH("streams", "call a slot by name with 2 arguments", "Qt")
{
  cQtReceiver receiver;
  for (auto _ : state)
  {
    QMetaObject::invokeMethod(&receiver, "onScale", Qt::DirectConnection, Q_ARG(int, 3), Q_ARG(int, 4));
  }
}

BENCH("streams", "call a slot by name with 2 arguments", "GLib")
{
  static unsigned int const id = g_signal_new("bench-scale", G_TYPE_OBJECT, G_SIGNAL_RUN_LAST, 0, nullptr, nullptr,
                                              nullptr, G_TYPE_NONE, 2, G_TYPE_INT, G_TYPE_INT);
  benchmark::DoNotOptimize(id);
  GObject* const object = G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr));
  int count = 0;
  g_signal_connect(object, "bench-scale", G_CALLBACK(glibOnScale), &count);
  for (auto _ : state)
  {
    GValue values[3] = {G_VALUE_INIT, G_VALUE_INIT, G_VALUE_INIT};
    g_value_init(&values[0], G_TYPE_OBJECT);
    g_value_set_object(&values[0], object);
    g_value_init(&values[1], G_TYPE_INT);
    g_value_set_int(&values[1], 3);
    g_value_init(&values[2], G_TYPE_INT);
    g_value_set_int(&values[2], 4);
    g_signal_emitv(values, g_signal_lookup("bench-scale", G_TYPE_OBJECT), 0, nullptr);
    g_value_unset(&values[0]);
  }
  g_object_unref(object);
}
