#include "support/bench.h"

#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"
#include "rmi/qtPeer.h"

#include <boost/signals2.hpp>
#include <glib-object.h>
#include <sigc++/sigc++.h>

#include <memory>
#include <vector>

namespace
{
struct cReceiver : mrmi::cConnectable
{
  void sltCount() { benchmark::DoNotOptimize(++miCount); }
  void sltAdd(int iValue) { benchmark::DoNotOptimize(miCount += iValue); }
  int miCount = 0;
};

struct cTrackable : sigc::trackable
{
  void count() { benchmark::DoNotOptimize(++miCount); }
  void add(int iValue) { benchmark::DoNotOptimize(miCount += iValue); }
  int miCount = 0;
};

struct cAbstractTarget
{
  virtual ~cAbstractTarget() = default;
  virtual void count() = 0;
  virtual void add(int iValue) = 0;
};

struct cTarget : cAbstractTarget
{
  void count() override { benchmark::DoNotOptimize(++miCount); }
  void add(int iValue) override { benchmark::DoNotOptimize(miCount += iValue); }
  int miCount = 0;
};

/// Out of line and of two possible classes, so that the call can't be resolved beforehand.
struct cOtherTarget : cAbstractTarget
{
  void count() override {}
  void add(int) override {}
};

__attribute__((noipa)) std::unique_ptr<cAbstractTarget> makeTarget(bool other = false)
{
  if (other)
  {
    return std::make_unique<cOtherTarget>();
  }
  return std::make_unique<cTarget>();
}

using tBoostSignal =
    boost::signals2::signal_type<void(), boost::signals2::keywords::mutex_type<boost::signals2::dummy_mutex>>::type;
using tBoostIntSignal =
    boost::signals2::signal_type<void(int), boost::signals2::keywords::mutex_type<boost::signals2::dummy_mutex>>::type;

unsigned int makeGlibSignal(char const* name, bool withArgument)
{
  return withArgument
             ? g_signal_new(name, G_TYPE_OBJECT, G_SIGNAL_RUN_LAST, 0, nullptr, nullptr, nullptr, G_TYPE_NONE, 1,
                            G_TYPE_INT)
             : g_signal_new(name, G_TYPE_OBJECT, G_SIGNAL_RUN_LAST, 0, nullptr, nullptr, nullptr, G_TYPE_NONE, 0);
}

unsigned int glibCount()
{
  static unsigned int const id = makeGlibSignal("bench-count", false);
  return id;
}

unsigned int glibAdd()
{
  static unsigned int const id = makeGlibSignal("bench-add", true);
  return id;
}

void glibOnCount(GObject*, gpointer pTarget)
{
  benchmark::DoNotOptimize(++*static_cast<int*>(pTarget));
}
void glibOnAdd(GObject*, int iValue, gpointer pTarget)
{
  benchmark::DoNotOptimize(*static_cast<int*>(pTarget) += iValue);
}

template <unsigned int N>
void emitOurs(benchmark::State& state)
{
  mrmi::localSignal0<piVoid> signal;
  cReceiver receivers[N];
  for (cReceiver& r : receivers)
  {
    signal.connect(mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(r, &cReceiver::sltCount));
  }
  for (auto _ : state)
  {
    signal();
  }
}

template <unsigned int N>
void emitSigc(benchmark::State& state)
{
  sigc::signal<void()> signal;
  cTrackable receivers[N];
  for (cTrackable& r : receivers)
  {
    signal.connect(sigc::mem_fun(r, &cTrackable::count));
  }
  for (auto _ : state)
  {
    signal();
  }
}

template <unsigned int N>
void emitBoost(benchmark::State& state)
{
  tBoostSignal signal;
  cTarget receivers[N];
  for (cTarget& r : receivers)
  {
    signal.connect([&r] { r.count(); });
  }
  for (auto _ : state)
  {
    signal();
  }
}

template <unsigned int N>
void emitQt(benchmark::State& state)
{
  cQtSender sender;
  cQtReceiver receivers[N];
  for (cQtReceiver& r : receivers)
  {
    QObject::connect(&sender, &cQtSender::count, &r, &cQtReceiver::onCount);
  }
  for (auto _ : state)
  {
    Q_EMIT sender.count();
  }
}

template <unsigned int N>
void emitGlib(benchmark::State& state)
{
  unsigned int const id = glibCount();
  GObject* const object = G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr));
  int counts[N] = {};
  for (int& count : counts)
  {
    g_signal_connect(object, "bench-count", G_CALLBACK(glibOnCount), &count);
  }
  for (auto _ : state)
  {
    g_signal_emit(object, id, 0);
  }
  g_object_unref(object);
}

template <unsigned int N>
void callVirtually(benchmark::State& state)
{
  std::vector<std::unique_ptr<cAbstractTarget>> targets;
  for (unsigned int i = 0; i < N; ++i)
  {
    targets.push_back(makeTarget());
  }
  for (auto _ : state)
  {
    for (auto const& target : targets)
    {
      target->count();
    }
  }
}
} // namespace

BENCH("signals", "emit 0 arguments to 1 slot", "mortise")
{
  emitOurs<1>(state);
}
BENCH("signals", "emit 0 arguments to 1 slot", "sigc++")
{
  emitSigc<1>(state);
}
BENCH("signals", "emit 0 arguments to 1 slot", "Boost.Signals2")
{
  emitBoost<1>(state);
}
BENCH("signals", "emit 0 arguments to 1 slot", "Qt")
{
  emitQt<1>(state);
}
BENCH("signals", "emit 0 arguments to 1 slot", "GLib")
{
  emitGlib<1>(state);
}
BENCH("signals", "emit 0 arguments to 1 slot", "limit: virtual call")
{
  callVirtually<1>(state);
}

BENCH("signals", "emit to 10 slots", "mortise")
{
  emitOurs<10>(state);
}
BENCH("signals", "emit to 10 slots", "sigc++")
{
  emitSigc<10>(state);
}
BENCH("signals", "emit to 10 slots", "Boost.Signals2")
{
  emitBoost<10>(state);
}
BENCH("signals", "emit to 10 slots", "Qt")
{
  emitQt<10>(state);
}
BENCH("signals", "emit to 10 slots", "GLib")
{
  emitGlib<10>(state);
}
BENCH("signals", "emit to 10 slots", "limit: virtual call")
{
  callVirtually<10>(state);
}

BENCH("signals", "emit 1 argument to 1 slot", "mortise")
{
  mrmi::localSignal1<piVoid, int> signal;
  cReceiver receiver;
  signal.connect(mrmi::cDirectLocalSlotCall1<cReceiver, piVoid, int>(receiver, &cReceiver::sltAdd));
  for (auto _ : state)
  {
    signal(1);
  }
}

BENCH("signals", "emit 1 argument to 1 slot", "sigc++")
{
  sigc::signal<void(int)> signal;
  cTrackable receiver;
  signal.connect(sigc::mem_fun(receiver, &cTrackable::add));
  for (auto _ : state)
  {
    signal(1);
  }
}

BENCH("signals", "emit 1 argument to 1 slot", "Boost.Signals2")
{
  tBoostIntSignal signal;
  cTarget receiver;
  signal.connect([&receiver](int iValue) { receiver.add(iValue); });
  for (auto _ : state)
  {
    signal(1);
  }
}

BENCH("signals", "emit 1 argument to 1 slot", "Qt")
{
  cQtSender sender;
  cQtReceiver receiver;
  QObject::connect(&sender, &cQtSender::add, &receiver, &cQtReceiver::onAdd);
  for (auto _ : state)
  {
    Q_EMIT sender.add(1);
  }
}

BENCH("signals", "emit 1 argument to 1 slot", "GLib")
{
  unsigned int const id = glibAdd();
  GObject* const object = G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr));
  int count = 0;
  g_signal_connect(object, "bench-add", G_CALLBACK(glibOnAdd), &count);
  for (auto _ : state)
  {
    g_signal_emit(object, id, 0, 1);
  }
  g_object_unref(object);
}

BENCH("signals", "emit 1 argument to 1 slot", "limit: virtual call")
{
  std::unique_ptr<cAbstractTarget> const target = makeTarget();
  for (auto _ : state)
  {
    target->add(1);
  }
}

BENCH("signals", "connect and disconnect", "mortise")
{
  mrmi::localSignal0<piVoid> signal;
  cReceiver receiver;
  for (auto _ : state)
  {
    signal.connect(mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(receiver, &cReceiver::sltCount));
    signal.disconnect(receiver);
  }
}

BENCH("signals", "connect and disconnect", "sigc++")
{
  sigc::signal<void()> signal;
  cTrackable receiver;
  for (auto _ : state)
  {
    signal.connect(sigc::mem_fun(receiver, &cTrackable::count)).disconnect();
  }
}

BENCH("signals", "connect and disconnect", "Boost.Signals2")
{
  tBoostSignal signal;
  cTarget receiver;
  for (auto _ : state)
  {
    signal.connect([&receiver] { receiver.count(); }).disconnect();
  }
}

BENCH("signals", "connect and disconnect", "Qt")
{
  cQtSender sender;
  cQtReceiver receiver;
  for (auto _ : state)
  {
    QObject::disconnect(QObject::connect(&sender, &cQtSender::count, &receiver, &cQtReceiver::onCount));
  }
}

BENCH("signals", "connect and disconnect", "GLib")
{
  glibCount();
  GObject* const object = G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr));
  int count = 0;
  for (auto _ : state)
  {
    g_signal_handler_disconnect(object, g_signal_connect(object, "bench-count", G_CALLBACK(glibOnCount), &count));
  }
  g_object_unref(object);
}

BENCH("signals", "destroy a receiver with 1,000 connections", "mortise")
{
  std::vector<mrmi::localSignal0<piVoid>> signals(1000);
  for (auto _ : state)
  {
    state.PauseTiming();
    auto receiver = std::make_unique<cReceiver>();
    for (auto& signal : signals)
    {
      signal.connect(mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(*receiver, &cReceiver::sltCount));
    }
    state.ResumeTiming();
    receiver.reset();
  }
}

BENCH("signals", "destroy a receiver with 1,000 connections", "sigc++")
{
  std::vector<sigc::signal<void()>> signals(1000);
  for (auto _ : state)
  {
    state.PauseTiming();
    auto receiver = std::make_unique<cTrackable>();
    for (auto& signal : signals)
    {
      signal.connect(sigc::mem_fun(*receiver, &cTrackable::count));
    }
    state.ResumeTiming();
    receiver.reset();
  }
}

BENCH("signals", "destroy a receiver with 1,000 connections", "Boost.Signals2")
{
  std::vector<std::unique_ptr<tBoostSignal>> signals;
  for (unsigned int i = 0; i < 1000; ++i)
  {
    signals.push_back(std::make_unique<tBoostSignal>());
  }
  for (auto _ : state)
  {
    state.PauseTiming();
    cTarget receiver;
    std::vector<boost::signals2::scoped_connection> connections;
    connections.reserve(signals.size());
    for (auto& signal : signals)
    {
      connections.emplace_back(signal->connect([&receiver] { receiver.count(); }));
    }
    state.ResumeTiming();
    connections.clear();
  }
}

BENCH("signals", "destroy a receiver with 1,000 connections", "Qt")
{
  std::vector<std::unique_ptr<cQtSender>> senders;
  for (unsigned int i = 0; i < 1000; ++i)
  {
    senders.push_back(std::make_unique<cQtSender>());
  }
  for (auto _ : state)
  {
    state.PauseTiming();
    auto receiver = std::make_unique<cQtReceiver>();
    for (auto& sender : senders)
    {
      QObject::connect(sender.get(), &cQtSender::count, receiver.get(), &cQtReceiver::onCount);
    }
    state.ResumeTiming();
    receiver.reset();
  }
}
