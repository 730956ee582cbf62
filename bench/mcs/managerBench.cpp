#include "support/bench.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cInterfaceDep.h"
#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgr.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"

#include <algorithm>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace
{
using mcs::cComponentAddr;

/// Takes the lines that passes write.
class cMute : public mpi::cAbstractOut
{
public:
  cMute() : mpFormer(mpi::system().out.linked()) { mpi::system().out.link(this); }
  ~cMute() override { mpi::system().out.link(mpFormer); }
  void printChar(char) override {}

private:
  mpi::cAbstractOut* mpFormer;
};

class cComponent : public mcs::cAbstractComponent
{
public:
  using cAbstractComponent::cAbstractComponent;
};

class cInterface : public mcs::cAbstractInterface
{
public:
  cInterface() : cAbstractInterface(mcs::cInterfaceDesc(mcs::cInterfaceDesc::Providing, "service", "", 1, "")) {}
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}
};

/// A manager whose passes run when they are asked for.
class cManager
{
public:
  cManager() : mpWork(nullptr)
  {
    for (mstd::tSharedObject<mpi::cWork> const& job : mpi::system().wq.jobs())
    {
      if (job.get() != nullptr && job->name() == mstd::cAsciiString("ComponentManagement"))
      {
        mpWork = job.get();
      }
    }
  }
  ~cManager()
  {
    // The entries of former managers leave the queue in a turn, which has something to do, so that it does not wait.
    manager.handleComponentIterationLater();
    mpi::system().wq.process();
  }

  cComponent& add()
  {
    cComponent* const component = new cComponent(manager);
    manager.addComponent(mstd::tAutoPtr<mcs::cAbstractComponent>(component), cComponentAddr());
    return *component;
  }
  /// Returns the last one.
  cComponent& fill(unsigned int iCount)
  {
    cComponent* last = nullptr;
    for (unsigned int i = 0; i < iCount; ++i)
    {
      last = &add();
      last->moduleInfo().setContext(std::to_string(i).c_str());
    }
    return *last;
  }
  void pass()
  {
    mpWork->stop();
    mpWork->action();
  }
  unsigned int settle()
  {
    unsigned int passes = 0;
    for (manager.handleComponentIterationLater(); mpWork->isStarted(); ++passes)
    {
      pass();
    }
    return passes;
  }

  cMute mute;
  mcs::cModuleMgr manager{mpi::system().extensions};

private:
  mpi::cWork* mpWork;
};

typedef std::vector<std::unique_ptr<mcs::cInterfaceDep>> tDependencies;

/// What is searched for is not there before the component with the interface is.
tDependencies makeDependencies(mcs::cAbstractComponent& owner, unsigned int iCount)
{
  tDependencies dependencies;
  for (unsigned int i = 0; i < iCount; ++i)
  {
    dependencies.push_back(std::make_unique<mcs::cInterfaceDep>(
        owner, mcs::cInterfaceDesc(mcs::cInterfaceDesc::Requiring, "service", "", 0, ""), nullptr,
        mcs::cInterfaceDep::saUseFirstBest));
  }
  return dependencies;
}

void announce(benchmark::State& state, unsigned int iDependencies)
{
  unsigned int const components = 100;
  for (auto _ : state)
  {
    state.PauseTiming();
    {
      cManager world;
      tDependencies const dependencies = makeDependencies(world.add(), iDependencies);
      world.settle();
      world.fill(components);
      state.ResumeTiming();
      world.pass();
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * components * iDependencies);
}

/// One of 100 components is the provider of all; then another search is made for each among the rest.
void removeProvider(benchmark::State& state, unsigned int iDependencies)
{
  unsigned int const components = 100;
  for (auto _ : state)
  {
    state.PauseTiming();
    {
      cManager world;
      tDependencies const dependencies = makeDependencies(world.add(), iDependencies);
      world.fill(components - 1);
      cComponent& provider = world.add();
      provider.addInterface(mstd::tAutoPtr<mcs::cAbstractInterface>(new cInterface));
      world.settle();
      if (!dependencies.back()->matched())
      {
        state.SkipWithError("there is no match to lose");
      }
      provider.removeLater();
      state.ResumeTiming();
      world.settle();
      state.PauseTiming();
      if (dependencies.back()->matched())
      {
        state.SkipWithError("the match was not lost");
      }
    }
    state.ResumeTiming();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * components * iDependencies);
}

/// Each requires the next one; in the best order it stands behind it in the manager, in the worst one in front of it.
void removeChain(benchmark::State& state, unsigned int iLength, bool bBest)
{
  unsigned int passes = 0;
  for (auto _ : state)
  {
    state.PauseTiming();
    {
      cManager world;
      std::vector<cComponent*> chain;
      for (unsigned int i = 0; i < iLength; ++i)
      {
        chain.push_back(&world.add());
      }
      if (bBest)
      {
        std::reverse(chain.begin(), chain.end());
      }
      for (unsigned int i = 0; i + 1 < iLength; ++i)
      {
        chain[i]->addLocalRequiredComponent(chain[i + 1]);
      }
      world.settle();
      chain.back()->removeLater();
      state.ResumeTiming();
      passes = world.settle();
      state.PauseTiming();
      if (!world.manager.components().empty())
      {
        state.SkipWithError("the chain is still there");
      }
    }
    state.ResumeTiming();
  }
  state.counters["passes"] = passes;
}

unsigned int const Many = 1000;

struct cPlain
{
  mcs::cComponentLocation location;
  mcs::cComponentAddr address;
  mstd::cAsciiString context;
  bool toRemove = false;
  bool announced = true;
  bool interfaceDepModified = false;
  bool componentDepModified = false;
};

std::list<std::unique_ptr<cPlain>> plainComponents()
{
  std::list<std::unique_ptr<cPlain>> components;
  for (unsigned int i = 0; i < Many; ++i)
  {
    components.push_back(std::make_unique<cPlain>());
    components.back()->address = cComponentAddr(1, i + 2);
    components.back()->location.setAddress(components.back()->address);
    components.back()->context = std::to_string(i).c_str();
  }
  return components;
}

template <class Key>
void lookUp(benchmark::State& state, Key (*key)(mcs::cAbstractComponent const&))
{
  cManager world;
  Key const wanted = key(world.fill(Many));
  for (auto _ : state)
  {
    benchmark::DoNotOptimize(world.manager.hasComponent(wanted));
  }
}

template <class Key>
void lookUpPlain(benchmark::State& state, Key cPlain::*pKey)
{
  std::list<std::unique_ptr<cPlain>> const components = plainComponents();
  Key const wanted = components.back().get()->*pKey;
  for (auto _ : state)
  {
    benchmark::DoNotOptimize(std::find_if(components.begin(), components.end(),
                                          [&](auto const& component) { return component.get()->*pKey == wanted; }));
  }
}
} // namespace

BENCH("components", "pass over 1,000 idle components", "mortise")
{
  cManager world;
  world.fill(Many);
  world.settle();
  for (auto _ : state)
  {
    world.pass();
  }
}
BENCH("components", "pass over 1,000 idle components", "limit: std::list")
{
  std::list<std::unique_ptr<cPlain>> const components = plainComponents();
  for (auto _ : state)
  {
    unsigned int busy = 0;
    for (std::unique_ptr<cPlain> const& component : components)
    {
      busy += component->toRemove || !component->announced || component->interfaceDepModified ||
              component->componentDepModified;
    }
    benchmark::DoNotOptimize(busy);
  }
}

BENCH("components", "announce 100 to 10 dependencies, each pair", "mortise")
{
  announce(state, 10);
}
BENCH("components", "announce 100 to 100 dependencies, each pair", "mortise")
{
  announce(state, 100);
}
BENCH("components", "announce 100 to 1,000 dependencies, each pair", "mortise")
{
  announce(state, 1000);
}

BENCH("components", "remove the provider of 10 among 100, each pair", "mortise")
{
  removeProvider(state, 10);
}
BENCH("components", "remove the provider of 100 among 100, each pair", "mortise")
{
  removeProvider(state, 100);
}
BENCH("components", "remove the provider of 1,000 among 100, each pair", "mortise")
{
  removeProvider(state, 1000);
}

BENCH("components", "remove a chain of 25, best order", "mortise")
{
  removeChain(state, 25, true);
}
BENCH("components", "remove a chain of 50, best order", "mortise")
{
  removeChain(state, 50, true);
}
BENCH("components", "remove a chain of 100, best order", "mortise")
{
  removeChain(state, 100, true);
}
BENCH("components", "remove a chain of 200, best order", "mortise")
{
  removeChain(state, 200, true);
}
BENCH("components", "remove a chain of 25, worst order", "mortise")
{
  removeChain(state, 25, false);
}
BENCH("components", "remove a chain of 50, worst order", "mortise")
{
  removeChain(state, 50, false);
}
BENCH("components", "remove a chain of 100, worst order", "mortise")
{
  removeChain(state, 100, false);
}
BENCH("components", "remove a chain of 200, worst order", "mortise")
{
  removeChain(state, 200, false);
}

BENCH("components", "find the last of 1,000 by address", "mortise")
{
  lookUp<cComponentAddr>(state, [](mcs::cAbstractComponent const& c) { return c.address(); });
}
BENCH("components", "find the last of 1,000 by address", "std::list")
{
  lookUpPlain(state, &cPlain::address);
}
BENCH("components", "find the last of 1,000 by location", "mortise")
{
  lookUp<mcs::cComponentLocation>(state, [](mcs::cAbstractComponent const& c) { return c.location(); });
}
BENCH("components", "find the last of 1,000 by location", "std::list")
{
  lookUpPlain(state, &cPlain::location);
}
BENCH("components", "find the last of 1,000 by context", "mortise")
{
  lookUp<mstd::cAsciiString>(state, [](mcs::cAbstractComponent const& c) { return c.info().context(); });
}
BENCH("components", "find the last of 1,000 by context", "std::list")
{
  lookUpPlain(state, &cPlain::context);
}
