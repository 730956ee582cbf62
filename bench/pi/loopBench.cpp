#include "support/bench.h"

#include "pi/cFDAIOData.h"
#include "pi/cLocalEventProcessor.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall0.h"

#include <asio.hpp>
#include <event2/event.h>
#include <glib-unix.h>
#include <glib.h>
#include <poll.h>
#include <uv.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>
#include <vector>

namespace
{
int const Hour = 3600 * 1000;

struct cTarget : mrmi::cConnectable
{
  void sltRun() { benchmark::DoNotOptimize(++miRuns); }
  int miRuns = 0;
};

mrmi::cDirectLocalSlotCall0<cTarget, piVoid> callOf(cTarget& target)
{
  return mrmi::cDirectLocalSlotCall0<cTarget, piVoid>(target, &cTarget::sltRun);
}

/// A queue of its own with the system's event processor.
struct cQueue
{
  cQueue() { mpi::system(), queue.setEvents(mpi::cPlatform::createProcessEvents()); }
  mpi::cWorkQueue queue;
};

/// Pipes whose read ends are watched; write() makes one of them readable.
class cPipes
{
public:
  explicit cPipes(unsigned int iCount)
  {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    for (unsigned int i = 0; i < iCount; ++i)
    {
      int ends[2] = {-1, -1};
      if (pipe2(ends, O_NONBLOCK | O_CLOEXEC) != 0)
      {
        std::abort();
      }
      mReadEnds.push_back(ends[0]);
      mWriteEnds.push_back(ends[1]);
    }
  }
  cPipes(cPipes const&) = delete;
  cPipes& operator=(cPipes const&) = delete;
  ~cPipes()
  {
    for (unsigned int i = 0; i < mReadEnds.size(); ++i)
    {
      close(mReadEnds[i]);
      close(mWriteEnds[i]);
    }
  }
  std::vector<int> const& readEnds() const { return mReadEnds; }
  /// The writes go round, so that no contender profits from a fixed place.
  void write()
  {
    char const byte = 'x';
    benchmark::DoNotOptimize(::write(mWriteEnds[miNext], &byte, 1));
    miNext = (miNext + 1) % mWriteEnds.size();
  }

private:
  std::vector<int> mReadEnds;
  std::vector<int> mWriteEnds;
  size_t miNext = 0;
};

void drain(int iFd)
{
  char bytes[16];
  benchmark::DoNotOptimize(read(iFd, bytes, sizeof bytes));
}

QCoreApplication& qtApplication()
{
  static int argc = 1;
  static char name[] = "bench";
  static char* argv[] = {name, nullptr};
  static QCoreApplication application(argc, argv);
  return application;
}

void uvNothing(uv_timer_t* pTimer)
{
  benchmark::DoNotOptimize(pTimer);
}
void eventNothing(int, short, void* pData)
{
  benchmark::DoNotOptimize(pData);
}
gboolean glibNothing(gpointer pData)
{
  benchmark::DoNotOptimize(pData);
  return G_SOURCE_CONTINUE;
}
gboolean glibOnce(gpointer pData)
{
  benchmark::DoNotOptimize(++*static_cast<int*>(pData));
  return G_SOURCE_REMOVE;
}
} // namespace

// A standing single task becomes due again, and one turn runs it.

BENCH("loop", "restart a single task and run the turn", "mortise")
{
  cQueue q;
  cTarget target;
  mpi::cWork work;
  work.sigAction.connect(callOf(target));
  q.queue.addJob(work);
  for (auto _ : state)
  {
    work.start(0, mpi::cWork::SingleTask);
    q.queue.process();
  }
}

BENCH("loop", "restart a single task and run the turn", "libevent")
{
  event_base* const base = event_base_new();
  event* const timer = evtimer_new(base, eventNothing, nullptr);
  timeval const now = {0, 0};
  for (auto _ : state)
  {
    evtimer_add(timer, &now);
    event_base_loop(base, EVLOOP_NONBLOCK);
  }
  event_free(timer);
  event_base_free(base);
}

BENCH("loop", "restart a single task and run the turn", "libuv")
{
  uv_loop_t loop;
  uv_loop_init(&loop);
  uv_timer_t timer;
  uv_timer_init(&loop, &timer);
  for (auto _ : state)
  {
    uv_timer_start(&timer, uvNothing, 0, 0);
    uv_run(&loop, UV_RUN_NOWAIT);
  }
  uv_close(reinterpret_cast<uv_handle_t*>(&timer), nullptr);
  uv_run(&loop, UV_RUN_DEFAULT);
  uv_loop_close(&loop);
}

BENCH("loop", "restart a single task and run the turn", "Asio")
{
  asio::io_context context;
  asio::steady_timer timer(context);
  for (auto _ : state)
  {
    timer.expires_at(asio::steady_timer::clock_type::now());
    timer.async_wait([](std::error_code const& error) { benchmark::DoNotOptimize(&error); });
    context.poll();
    context.restart();
  }
}

BENCH("loop", "restart a single task and run the turn", "Qt")
{
  QCoreApplication& application = qtApplication();
  int runs = 0;
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, [&runs] { benchmark::DoNotOptimize(++runs); });
  for (auto _ : state)
  {
    timer.start(0);
    application.processEvents();
  }
}

// A job is made, scheduled, run and gone.

BENCH("loop", "create, schedule, run and remove a job", "mortise")
{
  cQueue q;
  cTarget target;
  for (auto _ : state)
  {
    mstd::tSharedObject<mpi::cWork> job = q.queue.createJob();
    job->sigAction.connect(callOf(target));
    job->start(0, mpi::cWork::SingleTask);
    q.queue.process();
  }
}

BENCH("loop", "create, schedule, run and remove a job", "Qt")
{
  QCoreApplication& application = qtApplication();
  int runs = 0;
  for (auto _ : state)
  {
    QTimer::singleShot(0, &application, [&runs] { benchmark::DoNotOptimize(++runs); });
    application.processEvents();
  }
}

BENCH("loop", "create, schedule, run and remove a job", "GLib")
{
  GMainContext* const context = g_main_context_new();
  int runs = 0;
  for (auto _ : state)
  {
    GSource* const source = g_idle_source_new();
    g_source_set_callback(source, glibOnce, &runs, nullptr);
    g_source_attach(source, context);
    g_source_unref(source);
    g_main_context_iteration(context, FALSE);
  }
  g_main_context_unref(context);
}

// A turn that only looks: its works are not due, one descriptor that is never readable makes the turn ask the system
// without waiting.

namespace
{
/// Asks for the time-out that a turn computes, but does not wait it out: what is measured is the turn, not the sleep.
class cImpatientEvents : public mpi::cAbstractProcessEvents
{
public:
  bool supportsAIO() const override { return true; }
  bool isAsynchronous() const override { return false; }
  void yield(unsigned int, mstd::tList<mstd::tSharedObject<mpi::cWork>>&, unsigned int) override
  {
    poll(nullptr, 0, 0);
    sigFinished();
  }
  void wakeUp() override {}

private:
  using mpi::cAbstractProcessEvents::poll;
  static void poll(pollfd* pFds, nfds_t iCount, int iTimeout)
  {
    benchmark::DoNotOptimize(::poll(pFds, iCount, iTimeout));
  }
};

void idleOurs(benchmark::State& state, unsigned int iCount)
{
  mpi::system();
  mpi::cWorkQueue queue;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cImpatientEvents));
  cTarget target;
  std::vector<std::unique_ptr<mpi::cWork>> works;
  for (unsigned int i = 0; i < iCount; ++i)
  {
    works.push_back(std::make_unique<mpi::cWork>());
    works.back()->sigAction.connect(callOf(target));
    queue.addJob(*works.back());
    works.back()->start(Hour, mpi::cWork::Periodic);
  }
  for (auto _ : state)
  {
    queue.process();
  }
}

void idleEvent(benchmark::State& state, unsigned int iCount)
{
  event_base* const base = event_base_new();
  std::vector<event*> timers;
  timeval const hour = {3600, 0};
  for (unsigned int i = 0; i < iCount; ++i)
  {
    timers.push_back(event_new(base, -1, EV_PERSIST, eventNothing, nullptr));
    event_add(timers.back(), &hour);
  }
  for (auto _ : state)
  {
    event_base_loop(base, EVLOOP_NONBLOCK);
  }
  for (event* timer : timers)
  {
    event_free(timer);
  }
  event_base_free(base);
}

void idleUv(benchmark::State& state, unsigned int iCount)
{
  uv_loop_t loop;
  uv_loop_init(&loop);
  std::vector<uv_timer_t> timers(iCount);
  for (uv_timer_t& timer : timers)
  {
    uv_timer_init(&loop, &timer);
    uv_timer_start(&timer, uvNothing, Hour, Hour);
  }
  for (auto _ : state)
  {
    uv_run(&loop, UV_RUN_NOWAIT);
  }
  for (uv_timer_t& timer : timers)
  {
    uv_close(reinterpret_cast<uv_handle_t*>(&timer), nullptr);
  }
  uv_run(&loop, UV_RUN_DEFAULT);
  uv_loop_close(&loop);
}

void idleGlib(benchmark::State& state, unsigned int iCount)
{
  GMainContext* const context = g_main_context_new();
  for (unsigned int i = 0; i < iCount; ++i)
  {
    GSource* const source = g_timeout_source_new(Hour);
    g_source_set_callback(source, glibNothing, nullptr, nullptr);
    g_source_attach(source, context);
    g_source_unref(source);
  }
  for (auto _ : state)
  {
    g_main_context_iteration(context, FALSE);
  }
  g_main_context_unref(context);
}

void idleQt(benchmark::State& state, unsigned int iCount)
{
  QCoreApplication& application = qtApplication();
  std::vector<std::unique_ptr<QTimer>> timers;
  for (unsigned int i = 0; i < iCount; ++i)
  {
    timers.push_back(std::make_unique<QTimer>());
    timers.back()->start(Hour);
  }
  for (auto _ : state)
  {
    application.processEvents();
  }
}
} // namespace

BENCH("loop", "idle turn, 1 periodic work", "mortise")
{
  idleOurs(state, 1);
}
BENCH("loop", "idle turn, 1 periodic work", "libevent")
{
  idleEvent(state, 1);
}
BENCH("loop", "idle turn, 1 periodic work", "libuv")
{
  idleUv(state, 1);
}
BENCH("loop", "idle turn, 1 periodic work", "GLib")
{
  idleGlib(state, 1);
}
BENCH("loop", "idle turn, 1 periodic work", "Qt")
{
  idleQt(state, 1);
}
BENCH("loop", "idle turn, 100 periodic works", "mortise")
{
  idleOurs(state, 100);
}
BENCH("loop", "idle turn, 100 periodic works", "libevent")
{
  idleEvent(state, 100);
}
BENCH("loop", "idle turn, 100 periodic works", "GLib")
{
  idleGlib(state, 100);
}
BENCH("loop", "idle turn, 10,000 periodic works", "mortise")
{
  idleOurs(state, 10000);
}
BENCH("loop", "idle turn, 10,000 periodic works", "libevent")
{
  idleEvent(state, 10000);
}
BENCH("loop", "idle turn, 10,000 periodic works", "GLib")
{
  idleGlib(state, 10000);
}

// One of N watched pipes becomes readable; its handler reads the byte.

namespace
{
struct cReader : mrmi::cConnectable
{
  explicit cReader(int iFd) : miFd(iFd) {}
  void sltRead()
  {
    drain(miFd);
    miReads += 1;
  }
  int miFd;
  int miReads = 0;
};

void readableOurs(benchmark::State& state, unsigned int iCount)
{
  cPipes pipes(iCount);
  cQueue q;
  std::vector<std::unique_ptr<cReader>> readers;
  std::vector<std::unique_ptr<mpi::cWork>> works;
  for (int fd : pipes.readEnds())
  {
    readers.push_back(std::make_unique<cReader>(fd));
    works.push_back(std::make_unique<mpi::cWork>());
    mpi::cWork& work = *works.back();
    work.sigAction.connect(mrmi::cDirectLocalSlotCall0<cReader, piVoid>(*readers.back(), &cReader::sltRead));
    mpi::cFDAIOData* const data = new mpi::cFDAIOData;
    data->addFd(fd, 1);
    q.queue.addJob(work);
    work.setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(data));
  }
  for (auto _ : state)
  {
    pipes.write();
    q.queue.process(); // finds the event
    q.queue.process(); // runs the work; the poll of this turn finds nothing
  }
}

void readablePoll(benchmark::State& state, unsigned int iCount)
{
  cPipes pipes(iCount);
  std::vector<pollfd> fds;
  for (int fd : pipes.readEnds())
  {
    fds.push_back({fd, POLLIN, 0});
  }
  for (auto _ : state)
  {
    pipes.write();
    int ready = poll(fds.data(), fds.size(), 0);
    for (pollfd& fd : fds)
    {
      if (fd.revents != 0)
      {
        drain(fd.fd);
        if (--ready == 0)
        {
          break;
        }
      }
    }
    // The loop under test works in turns: the one that runs the handler polls again.
    benchmark::DoNotOptimize(poll(fds.data(), fds.size(), 0));
  }
}

void eventRead(int iFd, short, void*)
{
  drain(iFd);
}

void readableEvent(benchmark::State& state, unsigned int iCount)
{
  cPipes pipes(iCount);
  event_base* const base = event_base_new();
  std::vector<event*> events;
  for (int fd : pipes.readEnds())
  {
    events.push_back(event_new(base, fd, EV_READ | EV_PERSIST, eventRead, nullptr));
    event_add(events.back(), nullptr);
  }
  for (auto _ : state)
  {
    pipes.write();
    event_base_loop(base, EVLOOP_NONBLOCK);
  }
  for (event* e : events)
  {
    event_free(e);
  }
  event_base_free(base);
}

gboolean glibRead(gint iFd, GIOCondition, gpointer)
{
  drain(iFd);
  return G_SOURCE_CONTINUE;
}

void readableGlib(benchmark::State& state, unsigned int iCount)
{
  cPipes pipes(iCount);
  GMainContext* const context = g_main_context_new();
  for (int fd : pipes.readEnds())
  {
    GSource* const source = g_unix_fd_source_new(fd, G_IO_IN);
    g_source_set_callback(source, reinterpret_cast<GSourceFunc>(reinterpret_cast<void (*)()>(glibRead)), nullptr,
                          nullptr);
    g_source_attach(source, context);
    g_source_unref(source);
  }
  for (auto _ : state)
  {
    pipes.write();
    g_main_context_iteration(context, FALSE);
  }
  g_main_context_unref(context);
}
} // namespace

BENCH("loop", "1 readable of 1 pipe", "mortise")
{
  readableOurs(state, 1);
}
BENCH("loop", "1 readable of 1 pipe", "libevent")
{
  readableEvent(state, 1);
}
BENCH("loop", "1 readable of 1 pipe", "GLib")
{
  readableGlib(state, 1);
}
BENCH("loop", "1 readable of 1 pipe", "limit: bare poll")
{
  readablePoll(state, 1);
}
BENCH("loop", "1 readable of 100 pipes", "mortise")
{
  readableOurs(state, 100);
}
BENCH("loop", "1 readable of 100 pipes", "libevent")
{
  readableEvent(state, 100);
}
BENCH("loop", "1 readable of 100 pipes", "GLib")
{
  readableGlib(state, 100);
}
BENCH("loop", "1 readable of 100 pipes", "limit: bare poll")
{
  readablePoll(state, 100);
}
BENCH("loop", "1 readable of 1,000 pipes", "mortise")
{
  readableOurs(state, 1000);
}
BENCH("loop", "1 readable of 1,000 pipes", "libevent")
{
  readableEvent(state, 1000);
}
BENCH("loop", "1 readable of 1,000 pipes", "GLib")
{
  readableGlib(state, 1000);
}
BENCH("loop", "1 readable of 1,000 pipes", "limit: bare poll")
{
  readablePoll(state, 1000);
}

// 10,000 standing single tasks are started and run in one turn.

BENCH("loop", "10,000 due single tasks, each", "mortise")
{
  unsigned int const count = 10000;
  cQueue q;
  cTarget target;
  std::vector<std::unique_ptr<mpi::cWork>> works;
  for (unsigned int i = 0; i < count; ++i)
  {
    works.push_back(std::make_unique<mpi::cWork>());
    works.back()->sigAction.connect(callOf(target));
    q.queue.addJob(*works.back());
  }
  for (auto _ : state)
  {
    for (auto const& work : works)
    {
      work->start(0, mpi::cWork::SingleTask);
    }
    q.queue.process();
  }
  state.SetItemsProcessed(state.iterations() * count);
}

BENCH("loop", "10,000 due single tasks, each", "libevent")
{
  unsigned int const count = 10000;
  event_base* const base = event_base_new();
  std::vector<event*> timers;
  for (unsigned int i = 0; i < count; ++i)
  {
    timers.push_back(evtimer_new(base, eventNothing, nullptr));
  }
  timeval const now = {0, 0};
  for (auto _ : state)
  {
    for (event* timer : timers)
    {
      evtimer_add(timer, &now);
    }
    event_base_loop(base, EVLOOP_NONBLOCK);
  }
  state.SetItemsProcessed(state.iterations() * count);
  for (event* timer : timers)
  {
    event_free(timer);
  }
  event_base_free(base);
}

BENCH("loop", "10,000 due single tasks, each", "libuv")
{
  unsigned int const count = 10000;
  uv_loop_t loop;
  uv_loop_init(&loop);
  std::vector<uv_timer_t> timers(count);
  for (uv_timer_t& timer : timers)
  {
    uv_timer_init(&loop, &timer);
  }
  for (auto _ : state)
  {
    for (uv_timer_t& timer : timers)
    {
      uv_timer_start(&timer, uvNothing, 0, 0);
    }
    uv_run(&loop, UV_RUN_NOWAIT);
  }
  state.SetItemsProcessed(state.iterations() * count);
  for (uv_timer_t& timer : timers)
  {
    uv_close(reinterpret_cast<uv_handle_t*>(&timer), nullptr);
  }
  uv_run(&loop, UV_RUN_DEFAULT);
  uv_loop_close(&loop);
}

// The first call builds the whole root; cleanup() in between makes every call a first one.

BENCH("loop", "first mpi::system()", "mortise")
{
  for (auto _ : state)
  {
    state.PauseTiming();
    mpi::cSystem::cleanup();
    state.ResumeTiming();
    benchmark::DoNotOptimize(&mpi::system());
  }
}
