#include "mcs/cInterfaceDep.h"
#include "mcs/cModuleMgr.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "std/cAbstractException.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

// Random components, requirements and dependencies live in a manager and, beside it, in a plain model of its pass.
// Every signal and callback is a line of a trace, on which both react in the same way: they add, remove, require,
// choose, throw, or remove all. Both traces must be the same.

using mcs::cComponentAddr;
using mcs::cComponentLocation;
using mcs::cInterfaceDep;

namespace
{
char const* const Names[] = {"", "x", "y"};
char const* const Hosts[] = {"", "near", "far"};

struct cComponentSpec
{
  int provides = 0; // index of Names
  int host = 0;     // index of Hosts; 0 is a local component
  int delays = 0;
  bool failing = false;
};

struct cDepSpec
{
  int wanted = 1;
  int host = 0; // of the only possible location, 0 is any
  bool explicitly = false;
};

struct cFailure
{
};

/// What can be done with components; they are told by the order of their making, from 0 on.
class cWorld
{
public:
  explicit cWorld(unsigned int iSeed, bool bCalm) : miSeed(iSeed), mCalm(bCalm) {}
  virtual ~cWorld() = default;

  virtual void add(cComponentSpec const& spec) = 0;
  virtual void addDep(int iOwner, cDepSpec const& spec) = 0; // owner -1: none
  virtual void removeLater(int i) = 0;
  virtual void require(int iFrom, int iTo) = 0;
  virtual void modify(int i) = 0;
  virtual void setExplicit(int iDep, int i) = 0;
  virtual void recalc(int iDep) = 0;
  virtual void removeAll() = 0;
  virtual bool isPending() const = 0;
  virtual void pass() = 0;
  virtual std::vector<int> listed() const = 0;
  virtual std::vector<int> deps() const = 0; // that live

  /// One of the deeds, chosen by `iRandom`.
  void act(unsigned int iRandom, bool bDeps)
  {
    std::mt19937 random(iRandom);
    std::vector<int> const components = listed();
    std::vector<int> const dependencies = deps();
    auto const one = [&](std::vector<int> const& of) { return of[random() % of.size()]; };
    switch (random() % (mCalm ? 10 : 12))
    {
    case 0:
    case 1:
      if (miAdded < 60)
      {
        ++miAdded;
        cComponentSpec spec;
        spec.provides = static_cast<int>(random() % 3);
        spec.host = random() % 3 == 0 ? static_cast<int>(random() % 3) : 0;
        spec.delays = random() % 4 == 0 ? static_cast<int>(random() % 4) : 0;
        spec.failing = random() % 12 == 0;
        add(spec);
      }
      break;
    case 2:
    case 3:
      if (bDeps && dependencies.size() < 40)
      {
        cDepSpec spec;
        spec.wanted = 1 + static_cast<int>(random() % 2);
        spec.host = random() % 4 == 0 ? 1 + static_cast<int>(random() % 2) : 0;
        spec.explicitly = random() % 5 == 0;
        addDep(components.empty() || random() % 4 == 0 ? -1 : one(components), spec);
      }
      break;
    case 4:
    case 5:
      if (components.size() > 1)
      {
        int const a = one(components);
        int const b = one(components);
        if (a != b) // from younger to older ones, so that there is no circle
        {
          require(std::max(a, b), std::min(a, b));
        }
      }
      break;
    case 6:
      if (!components.empty())
      {
        removeLater(one(components));
      }
      break;
    case 7:
      if (!components.empty())
      {
        modify(one(components));
      }
      break;
    case 8:
      if (!components.empty() && !dependencies.empty())
      {
        setExplicit(one(dependencies), one(components));
      }
      break;
    case 9:
      if (!dependencies.empty())
      {
        recalc(one(dependencies));
      }
      break;
    case 10:
      throw cFailure();
    case 11:
      if (random() % 3 == 0)
      {
        removeAll();
      }
      break;
    }
  }

  /// Something has happened; now and then something is done about it. Dependencies are not made inside of signals.
  void tell(std::string const& line, bool bDeps = false)
  {
    mLines.push_back(line);
    unsigned int const random = hash(static_cast<unsigned int>(mLines.size()));
    if (random % 4 == 0 && mDepth < 6)
    {
      struct cDeeper
      {
        int& depth;
        explicit cDeeper(int& rDepth) : depth(rDepth) { ++depth; }
        ~cDeeper() { --depth; }
      } const deeper(mDepth);
      act(hash(random), bDeps && mDepth == 1);
    }
  }
  void note(std::string const& line) { mLines.push_back(line); }

  std::vector<std::string> mLines;

private:
  unsigned int hash(unsigned int i) const
  {
    unsigned int h = (i + miSeed) * 2654435761u;
    h ^= h >> 15;
    h *= 2246822519u;
    return h ^ (h >> 13);
  }

  unsigned int miSeed;
  bool mCalm;
  unsigned int miAdded = 0;
  int mDepth = 0;
};

std::string number(int i)
{
  return std::to_string(i + 2); // as the manager counts
}

// --- the manager ---

class cRealWorld : public cWorld
{
public:
  class cDep : public cInterfaceDep
  {
  public:
    template <class Parent>
    cDep(cRealWorld& world, Parent& parent, int iIndex, cDepSpec const& spec)
        : cInterfaceDep(parent, support::wantedInterface(Names[spec.wanted]), &mInterface,
                        spec.explicitly ? saUseExcplicit : saUseFirstBest),
          mWorld(world), mName("dep " + std::to_string(iIndex)), mInterface("any")
    {
      if (spec.host != 0)
      {
        addPossibleLocation(cComponentLocation(cComponentAddr(), Hosts[spec.host], "", 0), true);
      }
      sigInterfaceAddress.connect(mrmi::cDirectLocalSlotCall1(*this, &cDep::sltAddress));
      sigInterfaceLost.connect(mrmi::cDirectLocalSlotCall0(*this, &cDep::sltLost));
      mInterface.mOnMatched = [this] { mWorld.tell(mName + " interface matched"); };
      mInterface.mOnUnmatched = [this] { mWorld.tell(mName + " interface unmatched"); };
    }
    void sltAddress(cComponentAddr const& address)
    {
      mWorld.tell(mName + " address " + std::to_string(address.moduleID()));
    }
    void sltLost() { mWorld.tell(mName + " lost"); }

    cRealWorld& mWorld;
    std::string mName;
    support::cTestInterface mInterface;
  };

  class cComponent : public support::cTestComponent
  {
  public:
    cComponent(cRealWorld& world, int iIndex) : cTestComponent(world.mManager), mWorld(world), miIndex(iIndex) {}
    ~cComponent() override
    {
      for (auto const& dep : mDeps)
      {
        mWorld.mDeps[dep.first] = nullptr;
      }
      mWorld.mComponents[miIndex] = nullptr;
      mWorld.note("destroyed " + number(miIndex));
    }

    // A component may require one that is gone, by its address: that may not come again in the same life.
    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void operator delete(void* pMemory) { sGone.push_back(pMemory); }
    static void release()
    {
      for (void* const memory : std::exchange(sGone, {}))
      {
        ::operator delete(memory);
      }
    }

    cRealWorld& mWorld;
    int miIndex;
    std::vector<std::pair<int, std::unique_ptr<cDep>>> mDeps;

  private:
    static inline std::vector<void*> sGone;
  };

  cRealWorld(unsigned int iSeed, bool bCalm) : cWorld(iSeed, bCalm)
  {
    mTrace.mOnLine = [this](std::string const& line, mcs::cAbstractComponent*) { tell(line); };
  }

  void add(cComponentSpec const& spec) override
  {
    int const index = static_cast<int>(mComponents.size());
    cComponent* const component = new cComponent(*this, index);
    mComponents.push_back(component);
    if (spec.provides != 0)
    {
      component->provide(Names[spec.provides]);
    }
    if (spec.host != 0)
    {
      component->mLocal = false;
      component->componentLocation() =
          cComponentLocation(cComponentAddr(1, static_cast<unsigned int>(index) + 2), Hosts[spec.host], "", 7);
    }
    component->mDelay = [delays = spec.delays]() mutable { return delays > 0 && delays-- > 0; };
    component->mOnRegistered = [this, index, spec] {
      tell("notified " + number(index), true);
      if (spec.failing)
      {
        throw cFailure();
      }
    };
    mManager.addComponent(mstd::tAutoPtr<mcs::cAbstractComponent>(component), cComponentAddr());
  }
  void addDep(int iOwner, cDepSpec const& spec) override
  {
    int const index = static_cast<int>(mDeps.size());
    mDeps.push_back(nullptr);
    if (iOwner < 0)
    {
      mFree.push_back(std::make_unique<cDep>(*this, mManager, index, spec));
      mDeps[index] = mFree.back().get();
      return;
    }
    cComponent& owner = *mComponents[iOwner];
    owner.mDeps.emplace_back(index, std::make_unique<cDep>(*this, owner, index, spec));
    mDeps[index] = owner.mDeps.back().second.get();
  }
  void removeLater(int i) override { mManager.removeComponent(mComponents[i]->address()); }
  void require(int iFrom, int iTo) override { mComponents[iFrom]->addLocalRequiredComponent(mComponents[iTo]); }
  void modify(int i) override { mComponents[i]->modifyInterfaceDep(); }
  void setExplicit(int iDep, int i) override
  {
    cComponentLocation const location = mComponents[i]->location();
    mDeps[iDep]->setExplicit(location);
  }
  void recalc(int iDep) override { mDeps[iDep]->recalc(); }
  void removeAll() override { mManager.removeAllComponentsNow(); }
  bool isPending() const override { return mPasses.isPending(); }
  void pass() override { mPasses.run(); }
  std::vector<int> listed() const override
  {
    std::vector<int> indexes;
    for (mcs::cManagedComponent* const managed : mManager.components())
    {
      indexes.push_back(static_cast<cComponent*>(managed->component())->miIndex);
    }
    return indexes;
  }
  std::vector<int> deps() const override
  {
    std::vector<int> indexes;
    for (std::size_t i = 0; i < mDeps.size(); ++i)
    {
      if (mDeps[i] != nullptr)
      {
        indexes.push_back(static_cast<int>(i));
      }
    }
    return indexes;
  }

  std::vector<cComponent*> mComponents;
  std::vector<cDep*> mDeps;
  mcs::cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
  support::cManagerTrace mTrace{mManager};
  std::vector<std::unique_ptr<cDep>> mFree;
};

// --- the model ---

class cModelWorld : public cWorld
{
public:
  struct cDep
  {
    cDepSpec spec;
    int owner;
    bool matched = false;
    bool valid = false;
    int provider = -1;
    bool alive = true;
  };
  struct cComponent
  {
    cComponentSpec spec;
    std::vector<int> required;
    std::vector<int> deps;
    bool toRemove = false;
    bool announced = false;
    bool depsModified = false;
    bool requirementsModified = false;
    bool marked = false;
  };
  struct cWalk
  {
    std::size_t at = 0;
    bool gone = false;
  };

  using cWorld::cWorld;

  void add(cComponentSpec const& spec) override
  {
    int const index = static_cast<int>(mComponents.size());
    mComponents.push_back(cComponent());
    mComponents.back().spec = spec;
    mList.push_back(index);
    mPending = true;
    cWalkScope const keep(*this);
    tell("added " + number(index));
  }
  void addDep(int iOwner, cDepSpec const& spec) override
  {
    int const index = static_cast<int>(mDeps.size());
    mDeps.push_back(cDep{spec, iOwner});
    if (iOwner >= 0)
    {
      mComponents[iOwner].deps.push_back(index);
      modify(iOwner);
    }
  }
  void removeLater(int i) override
  {
    mComponents[i].toRemove = true;
    mPending = true;
  }
  void require(int iFrom, int iTo) override
  {
    mComponents[iFrom].required.push_back(iTo);
    mComponents[iFrom].requirementsModified = true;
    mPending = true;
  }
  void modify(int i) override
  {
    mComponents[i].depsModified = true;
    mPending = true;
  }
  void setExplicit(int iDep, int i) override
  {
    invalidate(iDep);
    if (!mDeps[iDep].alive)
    {
      return;
    }
    mDeps[iDep].spec.explicitly = true;
    if (std::find(mList.begin(), mList.end(), i) == mList.end())
    {
      throw cFailure();
    }
    if (mComponents[i].spec.provides == mDeps[iDep].spec.wanted)
    {
      match(iDep, i);
    }
  }
  void recalc(int iDep) override
  {
    cWalkScope const scope(*this);
    for (; scope.walk().at < mList.size(); next(scope.walk()))
    {
      recalc(iDep, mList[scope.walk().at]);
    }
  }
  void removeAll() override
  {
    while (!mList.empty())
    {
      for (int const i : mList)
      {
        removeLater(i);
      }
      iterate(false);
    }
  }
  bool isPending() const override { return mPending; }
  void pass() override
  {
    mPending = false;
    iterate(true);
  }
  std::vector<int> listed() const override { return mList; }
  std::vector<int> deps() const override
  {
    std::vector<int> indexes;
    for (std::size_t i = 0; i < mDeps.size(); ++i)
    {
      if (mDeps[i].alive)
      {
        indexes.push_back(static_cast<int>(i));
      }
    }
    return indexes;
  }

private:
  /// A walk, or somebody who keeps the components alive.
  class cWalkScope
  {
  public:
    explicit cWalkScope(cModelWorld& world) : mWorld(world), miDepth(world.mWalks.size())
    {
      world.mWalks.push_back(cWalk());
    }
    ~cWalkScope()
    {
      mWorld.mWalks.pop_back();
      if (mWorld.mWalks.empty() && !mWorld.mGraves.empty())
      {
        mWorld.mPending = true;
        for (int const i : std::exchange(mWorld.mGraves, {}))
        {
          mWorld.destroy(i);
        }
      }
    }
    cWalk& walk() const { return mWorld.mWalks[miDepth]; }

  private:
    cModelWorld& mWorld;
    std::size_t miDepth;
  };

  static void next(cWalk& walk)
  {
    walk.at += walk.gone ? 0 : 1;
    walk.gone = false;
  }

  void iterate(bool bFull)
  {
    {
      cWalkScope const scope(*this);
      for (; scope.walk().at < mList.size(); next(scope.walk()))
      {
        int const i = mList[scope.walk().at];
        if (mComponents[i].marked)
        {
          continue;
        }
        if (mComponents[i].toRemove)
        {
          retire(i, scope, bFull);
        }
        else if (bFull)
        {
          announce(i, scope);
          update(i, scope);
        }
      }
    }
    sweep();
  }
  void retire(int i, cWalkScope const& scope, bool bFull)
  {
    bool isRequired = false;
    for (int const other : mList)
    {
      std::vector<int> const& required = mComponents[other].required;
      if (std::find(required.begin(), required.end(), i) != required.end())
      {
        isRequired = true;
        removeLater(other);
      }
    }
    if (isRequired)
    {
      return;
    }
    if (bFull)
    {
      tell("removed " + number(i));
      for (std::size_t d = 0; d < mDeps.size(); ++d)
      {
        if (mDeps[d].alive && mDeps[d].valid && mDeps[d].provider == i)
        {
          mDeps[d].valid = false;
          if (mDeps[d].owner >= 0)
          {
            modify(mDeps[d].owner);
          }
        }
      }
    }
    if (!scope.walk().gone)
    {
      mComponents[i].marked = true;
    }
  }
  void announce(int i, cWalkScope const& scope)
  {
    if (mComponents[i].announced)
    {
      return;
    }
    if (mComponents[i].spec.delays > 0)
    {
      --mComponents[i].spec.delays;
      mPending = true;
      return;
    }
    tell("registered " + number(i));
    for (std::size_t d = 0; d < mDeps.size(); ++d)
    {
      if (mDeps[d].alive)
      {
        recalc(static_cast<int>(d), i);
      }
    }
    if (scope.walk().gone)
    {
      return;
    }
    mComponents[i].announced = true;
    try
    {
      tell("notified " + number(i), true);
      if (mComponents[i].spec.failing)
      {
        throw cFailure();
      }
    }
    catch (...)
    {
      if (!scope.walk().gone)
      {
        removeLater(i);
      }
      throw;
    }
  }
  void update(int i, cWalkScope const& scope)
  {
    if (scope.walk().gone || !mComponents[i].announced)
    {
      return;
    }
    if (mComponents[i].depsModified)
    {
      for (std::size_t d = 0; d < mComponents[i].deps.size(); ++d)
      {
        recalc(mComponents[i].deps[d]);
      }
      if (scope.walk().gone)
      {
        return;
      }
      tell("dependencies " + number(i));
      if (scope.walk().gone)
      {
        return;
      }
      mComponents[i].depsModified = false;
    }
    if (mComponents[i].requirementsModified)
    {
      tell("requirements");
      if (scope.walk().gone)
      {
        return;
      }
      mComponents[i].requirementsModified = false;
    }
  }
  void recalc(int iDep, int i)
  {
    if (mDeps[iDep].matched && !mDeps[iDep].valid)
    {
      bool const wasExplicit = mDeps[iDep].spec.explicitly;
      invalidate(iDep);
      if (wasExplicit)
      {
        return;
      }
    }
    else if (mDeps[iDep].matched || mDeps[iDep].spec.explicitly)
    {
      return;
    }
    cDep const& dep = mDeps[iDep];
    cComponentSpec const& candidate = mComponents[i].spec;
    if (candidate.provides == dep.spec.wanted && (dep.spec.host == 0 || dep.spec.host == candidate.host))
    {
      match(iDep, i);
    }
  }
  void match(int iDep, int i)
  {
    cWalkScope const keep(*this);
    tell("dep " + std::to_string(iDep) + " interface matched");
    tell("dep " + std::to_string(iDep) + " address " + number(i));
    mDeps[iDep].valid = true;
    mDeps[iDep].provider = i;
    mDeps[iDep].matched = true;
  }
  void invalidate(int iDep)
  {
    mDeps[iDep].valid = false;
    tell("dep " + std::to_string(iDep) + " interface unmatched");
    if (mDeps[iDep].alive && mDeps[iDep].matched)
    {
      tell("dep " + std::to_string(iDep) + " lost");
    }
    mDeps[iDep].matched = false;
  }
  void sweep()
  {
    std::vector<int> stay;
    std::vector<int> go;
    for (std::size_t at = 0; at < mList.size(); ++at)
    {
      bool const isLeaving = mComponents[mList[at]].marked;
      (isLeaving ? go : stay).push_back(mList[at]);
    }
    for (cWalk& walk : mWalks)
    {
      auto const isMarked = [&](std::size_t at) { return mComponents[mList[at]].marked; };
      std::size_t before = 0;
      for (std::size_t at = 0; at < walk.at && at < mList.size(); ++at)
      {
        before += !isMarked(at);
      }
      walk.gone = walk.gone || (walk.at < mList.size() && isMarked(walk.at));
      walk.at = before;
    }
    mList = stay;
    bool const isInside = !mWalks.empty();
    for (int const i : go)
    {
      isInside ? mGraves.push_back(i) : destroy(i);
    }
  }
  void destroy(int i)
  {
    for (int const d : mComponents[i].deps)
    {
      mDeps[d].alive = false;
      mPending = true;
    }
    note("destroyed " + number(i));
  }

  std::vector<cComponent> mComponents;
  std::vector<cDep> mDeps;
  std::vector<int> mList;
  std::vector<cWalk> mWalks;
  std::vector<int> mGraves;
  bool mPending = false;
};

/// Does something to both worlds; whether it failed is a line of the trace.
template <class Action>
void both(cRealWorld& real, cModelWorld& model, Action const& action)
{
  for (cWorld* const world : {static_cast<cWorld*>(&real), static_cast<cWorld*>(&model)})
  {
    try
    {
      action(*world);
      world->note("done");
    }
    catch (cFailure const&)
    {
      world->note("failed");
    }
    catch (mstd::cAbstractException const&)
    {
      world->note("failed");
    }
  }
}

/// One life; returns the number of passes.
unsigned int live(unsigned int iSeed, bool bCalm, unsigned int& iLines)
{
  support::cCaptureOut mute;
  cRealWorld real(iSeed, bCalm);
  cModelWorld model(iSeed, bCalm);
  std::mt19937 random(iSeed);
  unsigned int passes = 0;
  auto const isSame = [&] {
    if (real.mLines == model.mLines && real.isPending() == model.isPending() && real.listed() == model.listed() &&
        real.deps() == model.deps())
    {
      return true;
    }
    auto const differing =
        std::mismatch(real.mLines.begin(), real.mLines.end(), model.mLines.begin(), model.mLines.end());
    std::string context;
    for (auto it = differing.first - std::min<std::ptrdiff_t>(15, differing.first - real.mLines.begin());
         it != differing.first; ++it)
    {
      context += *it + "\n";
    }
    ADD_FAILURE() << "seed " << iSeed << (bCalm ? " calm" : " wild") << "\n"
                  << context << "manager: " << (differing.first != real.mLines.end() ? *differing.first : "(end)")
                  << "\nmodel: " << (differing.second != model.mLines.end() ? *differing.second : "(end)");
    return false;
  };
  for (int step = 0; step < 120; ++step)
  {
    unsigned int const deed = static_cast<unsigned int>(random());
    both(real, model, [&](cWorld& world) { world.act(deed, true); });
    for (unsigned int i = random() % 3; i != 0 && real.isPending() && isSame(); --i)
    {
      ++passes;
      both(real, model, [](cWorld& world) { world.pass(); });
    }
    if (!isSame())
    {
      cRealWorld::cComponent::release();
      return passes;
    }
  }
  for (int i = 0; i < 200 && real.isPending() && isSame(); ++i)
  {
    ++passes;
    both(real, model, [](cWorld& world) { world.pass(); });
  }
  both(real, model, [](cWorld& world) { world.removeAll(); });
  isSame();
  cRealWorld::cComponent::release();
  iLines += static_cast<unsigned int>(real.mLines.size());
  return passes;
}
} // namespace

TEST(ModuleMgrModel, RandomLivesLeaveTheTraceOfThePlainModel)
{
  unsigned int const seed = std::random_device{}();
  unsigned int passes = 0;
  unsigned int lines = 0;
  for (unsigned int i = 0; i < 200 && !::testing::Test::HasFailure(); ++i)
  {
    passes += live(seed + i, i % 2 == 0, lines);
  }
  EXPECT_GT(passes, 5000u);
  EXPECT_GT(lines, 20000u);
  RecordProperty("passes", static_cast<int>(passes));
}

TEST(ModuleMgrModel, KnownLivesLeaveTheTraceOfThePlainModel)
{
  unsigned int lines = 0;
  for (unsigned int seed = 1; seed <= 100 && !::testing::Test::HasFailure(); ++seed)
  {
    live(seed, false, lines);
  }
}
