// Random scripts on a work queue, and on a plain model of it that keeps to the same rules with nothing but vectors and
// integers. Both write down everything that can be seen; the two traces must be the same, and, for the seeds of the
// reference file, the same on every processor.

#include "pi/cFDAIOData.h"
#include "pi/cLocalEventLoop.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "std/cAbstractException.h"
#include "std/cBugException.h"
#include "support/cCaptureOut.h"
#include "support/cFakeProcessor.h"
#include "support/cSlotOf.h"
#include "support/messageOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <stdint.h>
#include <stdlib.h>

#include <chrono>
#include <deque>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace
{

unsigned int const SingleTask = 0;
unsigned int const Periodic = 1;
unsigned int const AIO = 2;
int const Nobody = -1;

class cRandom
{
public:
  explicit cRandom(uint64_t seed) : mState(mixed(seed)) {}
  unsigned int below(unsigned int iLimit)
  {
    mState += 0x9E3779B97F4A7C15ULL;
    return static_cast<unsigned int>(mixed(mState) % iLimit);
  }
  bool oneIn(unsigned int n) { return below(n) == 0; }

private:
  static uint64_t mixed(uint64_t z)
  {
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
  }

  uint64_t mState;
};

/// The lines of a run. The second run compares as it goes, and stops its script at the first difference.
class cTrace
{
public:
  explicit cTrace(std::vector<std::string> const* pExpected = nullptr) : mpExpected(pExpected) {}

  void add(std::string const& sLine)
  {
    size_t const index = mLines.size();
    mLines.push_back(sLine);
    if (mpExpected != nullptr && !mDiffers && (index >= mpExpected->size() || (*mpExpected)[index] != sLine))
    {
      mDiffers = true;
      mFirstDifference = index;
    }
  }
  std::vector<std::string> const& lines() const { return mLines; }
  bool differs() const { return mDiffers; }
  size_t firstDifference() const { return mFirstDifference; }

  uint64_t hash() const
  {
    uint64_t h = 14695981039346656037ULL;
    for (std::string const& sLine : mLines)
    {
      for (char c : sLine + "\n")
      {
        h = (h ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
      }
    }
    return h;
  }

private:
  std::vector<std::string> mLines;
  std::vector<std::string> const* mpExpected;
  bool mDiffers = false;
  size_t mFirstDifference = 0;
};

enum tHandlerMode
{
  NoHandler,
  TakingHandler,
  ThrowingHandler
};

enum tHolding
{
  HeldByQueue,  // by the queue alone
  HeldByScript, // a share of it
  OwnedByScript // the queue has it by reference
};

std::string text(long long i)
{
  return std::to_string(i);
}

/// What the script asks of a world; events come back through the three functions.
class cWorld
{
public:
  virtual ~cWorld() = default;

  virtual int create() = 0;
  virtual int addShared() = 0;
  virtual int addReference() = 0;
  /// Takes a share of work that the queue holds.
  virtual void takeShare(int id) = 0;
  virtual void addAgain(int id, bool bByReference) = 0;
  virtual void start(int id, unsigned int iDelay, unsigned int iType) = 0;
  virtual void startAsIs(int id) = 0;
  virtual void stop(int id) = 0;
  virtual void setData(int id, bool bData) = 0;
  virtual void setEvent(int id) = 0;
  virtual void reparent(int id, int parent) = 0;
  virtual void setForceKeep(int id, bool bKeep) = 0;
  virtual void setDelegate(int id, bool bDelegate) = 0;
  virtual void setHandler(int id, tHandlerMode mode) = 0;
  virtual void remove(int id) = 0;
  virtual void letGo(int id) = 0;
  virtual void clear() = 0;
  virtual unsigned int process() = 0;
  virtual unsigned int processEvents(bool bRun) = 0;
  virtual void beginLoop() = 0;
  virtual void endLoop() = 0;
  virtual void advance(long long iUSec) = 0;

  virtual bool isAlive(int id) const = 0;
  virtual bool isInQueue(int id) const = 0;
  virtual int parentOf(int id) const = 0;
  virtual std::string stateOf(int id) const = 0;
  virtual std::string state() const = 0;
  /// Runs `body`, writes down which kind of exception came out of it, and says if one did.
  virtual bool guarded(std::string const& sWhat, std::function<void()> const& body) = 0;
  virtual void raise(bool bForeign) = 0;

  std::function<void(int)> onAction;
  std::function<void(int, bool)> onError;
  std::function<void(unsigned int, unsigned int)> onYield;
  std::function<void(int)> onDestroyed;
};

// ---------------------------------------------------------------------------------------------------------------------

/// The model: the rules of the loop in plain values.
class cModel : public cWorld
{
public:
  explicit cModel(bool bAIO) : mAIO(bAIO) {}

  int create() override
  {
    int const id = newWork();
    w(id).mHolders = 1; // the entry
    ++w(id).mChangedSlots;
    setParent(id, mCurrent);
    mEntries.push_back(cEntry{id, true, false});
    changed();
    return id;
  }
  int addShared() override
  {
    int const id = newWork();
    w(id).mHolders = 1;
    addNewShared(id);
    return id;
  }
  int addReference() override
  {
    int const id = newWork();
    w(id).mHolders = 1; // the script
    addNewReference(id);
    return id;
  }
  void takeShare(int id) override { ++w(id).mHolders; }
  void addAgain(int id, bool bByReference) override
  {
    if (isInQueue(id))
    {
      if (bByReference)
      {
        changed();
      }
      return;
    }
    if (bByReference)
    {
      addNewReference(id);
    }
    else
    {
      ++w(id).mHolders;
      addNewShared(id);
    }
  }
  void start(int id, unsigned int iDelay, unsigned int iType) override { restart(id, iDelay, iType != SingleTask); }
  void startAsIs(int id) override { restart(id); }
  void stop(int id) override
  {
    w(id).mStarted = false;
    tellChange(id);
  }
  void setData(int id, bool bData) override
  {
    cItem& item = w(id);
    bool const bHad = item.mData;
    item.mType = AIO;
    item.mData = bData;
    item.mEvent = false;
    if (bData)
    {
      item.mStarted = true;
    }
    else if (bHad)
    {
      item.mStarted = false;
    }
    tellChange(id);
  }
  void setEvent(int id) override
  {
    if (w(id).mData)
    {
      w(id).mEvent = true;
    }
  }
  void reparent(int id, int parent) override { setParent(id, parent); }
  void setForceKeep(int id, bool bKeep) override { w(id).mForceKeep = bKeep; }
  void setDelegate(int id, bool bDelegate) override { w(id).mDelegate = bDelegate; }
  void setHandler(int id, tHandlerMode mode) override { w(id).mHandler = mode; }
  void remove(int id) override
  {
    if (mCurrent == id)
    {
      mCurrent = Nobody;
    }
    for (size_t i = 0; i < mEntries.size(); ++i)
    {
      if (mEntries[i].mId == id)
      {
        drop(i);
      }
    }
  }
  void letGo(int id) override { release(id); }
  void clear() override
  {
    ++mClearing;
    for (size_t i = 0; i < mEntries.size(); ++i)
    {
      drop(i);
    }
    changed();
    --mClearing;
  }
  unsigned int process() override { return processEvents(true); }
  unsigned int processEvents(bool bRun) override
  {
    unsigned int iDelay = 0;
    if (updateTimer(bRun, iDelay))
    {
      onYield(mLevel, iDelay);
    }
    return mTimed + mAsync;
  }
  void beginLoop() override { ++mLoops; }
  void endLoop() override { --mLoops; }
  void advance(long long iUSec) override { mNow += iUSec; }

  bool isAlive(int id) const override { return w(id).mAlive; }
  bool isInQueue(int id) const override
  {
    for (cEntry const& entry : mEntries)
    {
      if (entry.mId == id)
      {
        return true;
      }
    }
    return false;
  }
  int parentOf(int id) const override { return w(id).mParent; }
  std::string stateOf(int id) const override
  {
    cItem const& item = w(id);
    return text(item.mStarted) + "t" + text(item.mType) + "i" + text(item.mInterval) + "s" + text(item.mScheduled) +
           "p" + text(item.mPlanned) + "k" + text(item.mForceKeep || item.mType != SingleTask) + "a" +
           text(item.mErrors > 2) + "d" + text(item.mData) + "e" + text(item.mData && item.mEvent) + "n" +
           text(item.mNumStarted) + "/" + text(item.mNumTriggered) + "^" + text(item.mParent);
  }
  std::string state() const override
  {
    std::string s =
        "now" + text(mNow) + " level" + text(mLevel) + " current" + text(mCurrent) + " wakes" + text(mWakes) + " [";
    for (cEntry const& entry : mEntries)
    {
      s += " " + text(entry.mId) + (entry.mMarked ? "x" : "");
    }
    return s + " ]";
  }
  bool guarded(std::string const& sWhat, std::function<void()> const& body) override
  {
    try
    {
      body();
      return false;
    }
    catch (cRaised const& raised)
    {
      mpTrace->add(sWhat + " raised " + raised.mText);
      return true;
    }
  }
  void raise(bool bForeign) override { throw cRaised{bForeign ? "foreign" : "scripted"}; }

  cTrace* mpTrace = nullptr;

private:
  struct cRaised
  {
    std::string mText;
  };
  struct cItem
  {
    bool mAlive = true;
    int mHolders = 0;
    bool mStarted = false;
    unsigned int mType = SingleTask;
    unsigned int mInterval = 0;
    long long mScheduled = 0;
    long long mPlanned = 0;
    bool mForceKeep = false;
    bool mData = false;
    bool mEvent = false;
    unsigned int mErrors = 0;
    bool mDelegate = true;
    tHandlerMode mHandler = NoHandler;
    unsigned int mNumStarted = 0;
    unsigned int mNumTriggered = 0;
    int mParent = Nobody;
    unsigned int mChangedSlots = 0;
    unsigned int mDestroyedSlots = 0;
  };
  struct cEntry
  {
    int mId;
    bool mOwned;
    bool mMarked;
  };

  cItem& w(int id) { return mItems[static_cast<size_t>(id)]; }
  cItem const& w(int id) const { return mItems[static_cast<size_t>(id)]; }

  int newWork()
  {
    mItems.emplace_back();
    return static_cast<int>(mItems.size()) - 1;
  }
  long long readClock() { return mNow++; }
  void setParent(int id, int parent)
  {
    if (parent != id)
    {
      w(id).mParent = parent;
    }
  }
  void addNewShared(int id)
  {
    setParent(id, mCurrent);
    mEntries.push_back(cEntry{id, true, false});
    ++w(id).mChangedSlots;
    changed();
  }
  void addNewReference(int id)
  {
    ++w(id).mDestroyedSlots;
    ++w(id).mChangedSlots;
    w(id).mForceKeep = true;
    setParent(id, mCurrent);
    mEntries.push_back(cEntry{id, false, false});
    changed();
  }
  void changed()
  {
    if (mClearing != 0)
    {
      return;
    }
    mChanged = true;
    if (mLoops >= mLevel)
    {
      ++mWakes;
    }
  }
  void tellChange(int id)
  {
    for (unsigned int i = 0; i < w(id).mChangedSlots; ++i)
    {
      changed();
    }
  }
  void plan(int id, unsigned int iDelay)
  {
    cItem& item = w(id);
    item.mScheduled = readClock();
    item.mPlanned = item.mScheduled + iDelay * 1000LL;
    item.mStarted = true;
    item.mErrors = 0;
  }
  void restart(int id)
  {
    ++w(id).mNumStarted;
    plan(id, w(id).mInterval);
    tellChange(id);
  }
  void restart(int id, unsigned int iInterval, bool bPeriodic)
  {
    ++w(id).mNumStarted;
    w(id).mInterval = bPeriodic ? iInterval : 0;
    plan(id, iInterval);
    w(id).mType = bPeriodic ? Periodic : SingleTask;
    tellChange(id);
  }
  void release(int id)
  {
    if (--w(id).mHolders == 0)
    {
      destroy(id);
    }
  }
  void destroy(int id)
  {
    for (cItem& item : mItems)
    {
      if (item.mParent == id)
      {
        item.mParent = w(id).mParent;
      }
    }
    w(id).mParent = Nobody;
    w(id).mData = false;
    w(id).mStarted = false;
    tellChange(id);
    w(id).mAlive = false;
    onDestroyed(id);
    for (unsigned int i = 0; i < w(id).mDestroyedSlots; ++i)
    {
      remove(id);
    }
  }
  void drop(size_t index)
  {
    cEntry& entry = mEntries[index];
    entry.mMarked = true;
    int const id = entry.mId;
    bool const bOwned = entry.mOwned;
    entry.mId = Nobody;
    if (id != Nobody && bOwned)
    {
      release(id);
    }
  }
  bool updateTimer(bool bRun, unsigned int& iDelay)
  {
    struct cDown
    {
      unsigned int& mLevel;
      ~cDown() { --mLevel; }
    };
    ++mLevel;
    cDown const down{mLevel};
    bool bRan = false;
    unsigned int iSleep = 0;
    do
    {
      mChanged = false;
      unsigned int iNumRun = 0;
      iSleep = walk(bRun, iNumRun);
      if (iNumRun != 0)
      {
        bRan = true;
      }
      bRun = false;
    } while (mChanged);
    if (bRan)
    {
      iSleep = 0;
    }
    iDelay = iSleep;
    return (mTimed != 0 && iSleep != 0) || mAsync != 0;
  }
  unsigned int& countOf(int id) { return w(id).mType == AIO ? mAsync : mTimed; }
  unsigned int walk(bool bRun, unsigned int& iNumRun)
  {
    mTimed = 0;
    mAsync = 0;
    long long const now = readClock();
    std::optional<uint32_t> minimum;
    bool bErase = false;
    for (size_t i = 0; i < mEntries.size(); ++i)
    {
      int const id = mEntries[i].mId;
      if (id == Nobody)
      {
        mEntries[i].mMarked = true;
        bErase = true;
        continue;
      }
      if (!w(id).mStarted)
      {
        continue;
      }
      long long wait = w(id).mPlanned > now ? (w(id).mPlanned - now) / 1000 : 0;
      bool bAIO = w(id).mType == AIO;
      bool bDue = wait <= 0;
      if (bAIO)
      {
        bDue = w(id).mData && w(id).mEvent;
        if (!mAIO)
        {
          restart(id, w(id).mInterval, true);
          bAIO = false;
          bDue = true;
        }
      }
      ++countOf(id);
      if (bRun && bDue)
      {
        if (w(id).mType == SingleTask)
        {
          w(id).mStarted = false;
        }
        else if (w(id).mType == Periodic)
        {
          w(id).mStarted = false;
          restart(id);
          long long const planned = w(id).mPlanned;
          wait = (planned > now ? planned - now : now - planned) / 1000;
        }
        if (w(id).mErrors > 2)
        {
          stop(id);
          throw cRaised{"amuck"};
        }
        runAction(id);
        ++iNumRun;
        w(id).mEvent = false;
        if (!w(id).mStarted && !(w(id).mForceKeep || w(id).mType != SingleTask))
        {
          mEntries[i].mMarked = true;
          --countOf(id);
          bErase = true;
        }
      }
      if (!bAIO && (!minimum || wait < static_cast<int32_t>(*minimum)))
      {
        minimum = static_cast<uint32_t>(wait);
      }
    }
    if (mLevel == 1 && bErase)
    {
      for (size_t i = 0; i < mEntries.size();)
      {
        if (!mEntries[i].mMarked)
        {
          ++i;
          continue;
        }
        cEntry const entry = mEntries[i];
        mEntries.erase(mEntries.begin() + static_cast<std::ptrdiff_t>(i));
        if (entry.mId != Nobody && entry.mOwned)
        {
          release(entry.mId);
        }
      }
    }
    if (mTimed == 0 && mAsync != 0)
    {
      return 10000;
    }
    return minimum.value_or(0);
  }
  void runAction(int id)
  {
    int const former = mCurrent;
    mCurrent = id;
    try
    {
      ++w(id).mNumTriggered;
      try
      {
        onAction(id);
        w(id).mErrors = 0;
      }
      catch (cRaised const&)
      {
        if (!isTaken(id))
        {
          throw;
        }
      }
    }
    catch (cRaised const&)
    {
      mCurrent = former;
      throw;
    }
    mCurrent = former;
  }
  bool isTaken(int id)
  {
    if (!w(id).mDelegate)
    {
      return false;
    }
    ++w(id).mErrors;
    for (int handler = id; handler != Nobody; handler = w(handler).mParent)
    {
      if (w(handler).mHandler == NoHandler)
      {
        continue;
      }
      onError(handler, handler != id);
      if (w(handler).mHandler == TakingHandler)
      {
        return true;
      }
    }
    return false;
  }

  bool const mAIO;
  std::deque<cItem> mItems; // references stay valid while works are made
  std::vector<cEntry> mEntries;
  long long mNow = 1000000000000000LL;
  unsigned int mLevel = 0;
  bool mChanged = false;
  unsigned int mLoops = 0;
  unsigned int mClearing = 0;
  unsigned int mTimed = 0;
  unsigned int mAsync = 0;
  unsigned int mWakes = 0;
  int mCurrent = Nobody;
};

// ---------------------------------------------------------------------------------------------------------------------

/// The queue itself.
class cReal : public cWorld
{
public:
  explicit cReal(bool bAIO) : mpProcessor(new cProcessor(*this, bAIO)), mpQueue(new mpi::cWorkQueue)
  {
    mClock.setTick(1);
    mpQueue->setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(mpProcessor));
  }

  int create() override
  {
    int const id = newHook();
    tJob job = mpQueue->createJob();
    hook(id).attach(*job);
    return id;
  }
  int addShared() override
  {
    int const id = newHook();
    tJob job(new mpi::cWork);
    hook(id).attach(*job);
    mpQueue->addJob(job);
    return id;
  }
  int addReference() override
  {
    int const id = newHook();
    hook(id).mpOwned.reset(new mpi::cWork);
    hook(id).attach(*hook(id).mpOwned);
    mpQueue->addJob(*hook(id).mpOwned);
    return id;
  }
  void takeShare(int id) override
  {
    for (tJob const& job : mpQueue->jobs())
    {
      if (job.get() != nullptr && job.get() == hook(id).mpWork)
      {
        hook(id).mShare = job;
      }
    }
  }
  void addAgain(int id, bool bByReference) override
  {
    if (bByReference)
    {
      mpQueue->addJob(*hook(id).mpWork);
    }
    else
    {
      mpQueue->addJob(hook(id).mShare);
    }
  }
  void start(int id, unsigned int iDelay, unsigned int iType) override
  {
    work(id).start(iDelay, static_cast<mpi::cWork::Type>(iType));
  }
  void startAsIs(int id) override { work(id).start(); }
  void stop(int id) override { work(id).stop(); }
  void setData(int id, bool bData) override
  {
    std::unique_ptr<mpi::cAbstractAIOData> const pFormer(work(id).hasAIOData());
    work(id).setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(bData ? new mpi::cFDAIOData : nullptr));
  }
  void setEvent(int id) override
  {
    if (work(id).hasAIOData() != nullptr)
    {
      work(id).aioData().setEvent(true);
    }
  }
  void reparent(int id, int parent) override { work(id).reparent(parent == Nobody ? nullptr : &work(parent)); }
  void setForceKeep(int id, bool bKeep) override { work(id).setForceKeep(bKeep); }
  void setDelegate(int id, bool bDelegate) override { work(id).setDelegateExceptions(bDelegate); }
  void setHandler(int id, tHandlerMode mode) override
  {
    cHook& h = hook(id);
    if (h.mMode == NoHandler && mode != NoHandler)
    {
      work(id).sigActionError().connect(mrmi::cDirectLocalSlotCall2(h.mErrorSlot, &cErrorSlot::slt));
    }
    else if (mode == NoHandler)
    {
      work(id).sigActionError().disconnect(h.mErrorSlot);
    }
    h.mMode = mode;
  }
  void remove(int id) override { mpQueue->removeJob(work(id)); }
  void letGo(int id) override
  {
    hook(id).mpOwned.reset();
    hook(id).mShare.reset();
  }
  void clear() override { mpQueue->clear(); }
  unsigned int process() override
  {
    if (mLoops.empty())
    {
      return mpQueue->process();
    }
    return mLoops.back()->process();
  }
  unsigned int processEvents(bool bRun) override { return mpQueue->processEvents(bRun); }
  void beginLoop() override { mLoops.push_back(std::make_unique<mpi::cLocalEventLoop>(mpQueue.get())); }
  void endLoop() override { mLoops.pop_back(); }
  void advance(long long iUSec) override { mClock.set(mClock.now() + iUSec); }

  bool isAlive(int id) const override { return hook(id).mpWork != nullptr; }
  bool isInQueue(int id) const override
  {
    for (tJob const& job : mpQueue->jobs())
    {
      if (job.get() != nullptr && job.get() == hook(id).mpWork)
      {
        return true;
      }
    }
    return false;
  }
  int parentOf(int id) const override { return idOf(work(id).parent()); }
  std::string stateOf(int id) const override
  {
    mpi::cWork const& item = work(id);
    bool const bData = item.hasAIOData() != nullptr;
    return text(item.isStarted()) + "t" + text(item.type()) + "i" + text(item.interval()) + "s" +
           text(static_cast<long long>(item.scheduledTime().get())) + "p" +
           text(static_cast<long long>(item.plannedTime().get())) + "k" + text(item.isKeep()) + "a" +
           text(item.isAmuck()) + "d" + text(bData) + "e" + text(bData && item.aioData().isEvent()) + "n" +
           text(item.statistic().numStarted()) + "/" + text(item.statistic().numTriggered()) + "^" + text(parentOf(id));
  }
  std::string state() const override
  {
    std::string s = "now" + text(mClock.now()) + " level" + text(mpQueue->level()) + " current" +
                    text(idOf(mpQueue->current())) + " wakes" + text(mpProcessor->miWakeUps) + " [";
    mpi::cWorkQueue::tJobs const& jobs = mpQueue->jobs();
    for (mpi::cWorkQueue::tJobs::const_iterator it = jobs.begin(); it != jobs.end(); ++it)
    {
      s += " " + text(idOf(it->get())) + (it.isMarked() ? "x" : "");
    }
    return s + " ]";
  }
  bool guarded(std::string const& sWhat, std::function<void()> const& body) override
  {
    try
    {
      body();
      return false;
    }
    catch (mstd::cBugException const& e)
    {
      std::string const sMessage = support::messageOf(e);
      mpTrace->add(sWhat + " raised " + (sMessage == "Stopping amuck work \"\"!" ? "amuck" : "scripted"));
    }
    catch (cForeign const&)
    {
      mpTrace->add(sWhat + " raised foreign");
    }
    return true;
  }
  void raise(bool bForeign) override
  {
    if (bForeign)
    {
      throw cForeign();
    }
    cSTDExceptions::throwCoreBug("scripted", "file", 1);
  }

  cTrace* mpTrace = nullptr;

private:
  typedef mstd::tSharedObject<mpi::cWork> tJob;

  struct cForeign
  {
  };
  class cProcessor : public support::cFakeProcessor
  {
  public:
    cProcessor(cReal& real, bool bAIO) : support::cFakeProcessor(bAIO), mReal(real) {}
    void yield(unsigned int iLevel, mstd::tList<tJob>&, unsigned int iDelay) override
    {
      mReal.onYield(iLevel, iDelay);
      sigFinished();
    }

  private:
    cReal& mReal;
  };
  struct cHook;
  struct cErrorSlot : mrmi::cConnectable
  {
    explicit cErrorSlot(cHook& owner) : mOwner(owner) {}
    void slt(mstd::cAbstractException const&, bool bFromChild)
    {
      mOwner.mReal.onError(mOwner.mId, bFromChild);
      if (mOwner.mMode == ThrowingHandler)
      {
        throw cForeign();
      }
    }
    cHook& mOwner;
  };
  struct cHook : mrmi::cConnectable
  {
    cHook(cReal& real, int id) : mReal(real), mId(id), mErrorSlot(*this) {}
    void attach(mpi::cWork& work)
    {
      mpWork = &work;
      work.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cHook::sltAction));
      work.sigDestroyed().connect(mrmi::cDirectLocalSlotCall1(*this, &cHook::sltDestroyed));
    }
    void sltAction() { mReal.onAction(mId); }
    void sltDestroyed(mpi::cWork const&)
    {
      mpWork = nullptr;
      mReal.onDestroyed(mId);
    }
    cReal& mReal;
    int mId;
    mpi::cWork* mpWork = nullptr;
    std::unique_ptr<mpi::cWork> mpOwned;
    tJob mShare;
    tHandlerMode mMode = NoHandler;
    cErrorSlot mErrorSlot;
  };

  int newHook()
  {
    int const id = static_cast<int>(mHooks.size());
    mHooks.push_back(std::make_unique<cHook>(*this, id));
    return id;
  }
  cHook& hook(int id) const { return *mHooks[static_cast<size_t>(id)]; }
  mpi::cWork& work(int id) const { return *hook(id).mpWork; }
  int idOf(mpi::cWork const* pWork) const
  {
    for (auto const& pHook : mHooks)
    {
      if (pWork != nullptr && pHook->mpWork == pWork)
      {
        return pHook->mId;
      }
    }
    return Nobody;
  }

  support::cVirtualClock mClock;
  std::vector<std::unique_ptr<cHook>> mHooks;
  cProcessor* mpProcessor; // owned by the queue
  std::unique_ptr<mpi::cWorkQueue> mpQueue;
  std::vector<std::unique_ptr<mpi::cLocalEventLoop>> mLoops;
};

// ---------------------------------------------------------------------------------------------------------------------

/// One random run. Whatever it decides depends on the seed and on what can be seen of the world alone.
class cScript
{
public:
  cScript(cWorld& world, cTrace& trace, uint64_t seed)
      : mWorld(world), mTrace(trace), mRandom(seed), miFailOneIn(2 + mRandom.below(8))
  {
    mWorld.onAction = [this](int id) { action(id); };
    mWorld.onError = [this](int id, bool bFromChild) {
      mTrace.add("error at " + text(id) + (bFromChild ? " from child" : ""));
    };
    mWorld.onYield = [this](unsigned int iLevel, unsigned int iDelay) { yield(iLevel, iDelay); };
    mWorld.onDestroyed = [this](int id) { mTrace.add("destroyed " + text(id)); };
  }

  void run()
  {
    unsigned int const iSteps = 20 + mRandom.below(60);
    for (unsigned int i = 0; i < iSteps && !mTrace.differs(); ++i)
    {
      mWorld.guarded("step", [this] { step(); });
      mTrace.add(mWorld.state());
      for (int id = 0; id < static_cast<int>(mHolding.size()); ++id)
      {
        if (mWorld.isAlive(id))
        {
          mTrace.add(text(id) + ": " + mWorld.stateOf(id));
        }
      }
    }
    while (mOpenLoops != 0)
    {
      mWorld.endLoop();
      --mOpenLoops;
    }
  }

private:
  static unsigned int const MaxWorks = 40;
  static unsigned int const MaxDepth = 3;
  static unsigned int const MaxActions = 400;

  int anyWork()
  {
    std::vector<int> alive;
    for (int id = 0; id < static_cast<int>(mHolding.size()); ++id)
    {
      if (mWorld.isAlive(id))
      {
        alive.push_back(id);
      }
    }
    return alive.empty() ? Nobody : alive[mRandom.below(static_cast<unsigned int>(alive.size()))];
  }
  bool isRunning(int id) const
  {
    for (int running : mRunning)
    {
      if (running == id)
      {
        return true;
      }
    }
    return false;
  }
  bool isBelow(int id, int ancestor) const
  {
    for (; id != Nobody; id = mWorld.parentOf(id))
    {
      if (id == ancestor)
      {
        return true;
      }
    }
    return false;
  }
  unsigned int anyDelay()
  {
    static unsigned int const delays[] = {0, 0, 0, 1, 2, 5, 20, 1000, 3000000000u};
    return delays[mRandom.below(9)];
  }

  // Random numbers are drawn one by one: compilers evaluate arguments in different orders.
  void start(int id)
  {
    unsigned int const iDelay = anyDelay();
    unsigned int const iType = mRandom.below(3);
    mWorld.start(id, iDelay, iType);
  }

  // Ids are given out in the order of making, so the script knows the next one before the world makes it: an
  // asynchronous change may run the script inside.
  int note(tHolding holding)
  {
    mHolding.push_back(holding);
    return static_cast<int>(mHolding.size()) - 1;
  }

  void makeWork()
  {
    if (mHolding.size() >= MaxWorks)
    {
      return;
    }
    unsigned int const iKind = mRandom.below(3);
    bool const bKeepShare = mRandom.oneIn(3);
    tHolding const holding = iKind == 2 ? OwnedByScript : bKeepShare ? HeldByScript : HeldByQueue;
    int id = note(holding);
    int const made = iKind == 0 ? mWorld.create() : iKind == 1 ? mWorld.addShared() : mWorld.addReference();
    mTrace.add("made " + text(made) + " kind " + text(iKind));
    if (holding == HeldByScript)
    {
      mWorld.takeShare(id);
    }
    if (!mRandom.oneIn(4))
    {
      start(id);
    }
    if (mRandom.oneIn(4))
    {
      mWorld.setData(id, true);
    }
  }

  void step()
  {
    unsigned int const iOp = mRandom.below(24);
    if (iOp < 4)
    {
      makeWork();
      return;
    }
    if (iOp < 9)
    {
      turn();
      return;
    }
    if (iOp == 9)
    {
      static long long const times[] = {0, 1, 500, 1000, 2000, 7000, 1000000, 4000000000LL};
      mWorld.advance(times[mRandom.below(8)]);
      return;
    }
    if (iOp == 10)
    {
      mTrace.add("pass " + text(mWorld.processEvents(mRandom.oneIn(2))));
      return;
    }
    if (iOp == 11)
    {
      loops();
      return;
    }
    change(iOp);
  }

  void turn()
  {
    mTrace.add("turn");
    unsigned int const iActive = mWorld.process();
    mTrace.add("active " + text(iActive));
  }

  void loops()
  {
    if (mOpenLoops != 0 && mRandom.oneIn(2))
    {
      mWorld.endLoop();
      --mOpenLoops;
    }
    else if (mOpenLoops < 3)
    {
      mWorld.beginLoop();
      ++mOpenLoops;
    }
  }

  void change(unsigned int iOp)
  {
    int const id = anyWork();
    if (id == Nobody)
    {
      return;
    }
    mTrace.add("op " + text(iOp) + " on " + text(id));
    switch (iOp)
    {
    case 12:
    case 13:
      start(id);
      break;
    case 14:
      mWorld.startAsIs(id);
      break;
    case 15:
      mWorld.stop(id);
      break;
    case 16:
      mWorld.setData(id, !mRandom.oneIn(4));
      break;
    case 17:
      mWorld.setEvent(id);
      break;
    case 18: {
      int const parent = mRandom.oneIn(3) ? Nobody : anyWork();
      if (parent == Nobody || parent == id || !isBelow(parent, id))
      {
        mWorld.reparent(id, parent);
      }
      break;
    }
    case 19:
      mWorld.setForceKeep(id, mRandom.oneIn(2));
      break;
    case 20:
      mWorld.setDelegate(id, !mRandom.oneIn(3));
      break;
    case 21:
      mWorld.setHandler(id, static_cast<tHandlerMode>(mRandom.below(3)));
      break;
    case 22:
      removeOrAdd(id);
      break;
    default:
      letGo(id);
      break;
    }
  }

  void removeOrAdd(int id)
  {
    tHolding const holding = mHolding[static_cast<size_t>(id)];
    if (mWorld.isInQueue(id) && mRandom.oneIn(2))
    {
      if (holding != HeldByQueue || !isRunning(id))
      {
        mWorld.remove(id);
      }
      return;
    }
    bool const bByReference = holding != HeldByScript || mRandom.oneIn(2);
    if (mWorld.isInQueue(id) || mRunning.empty() || !isBelow(mRunning.back(), id))
    {
      mWorld.addAgain(id, bByReference);
    }
  }

  void letGo(int id)
  {
    if (!isRunning(id) && mHolding[static_cast<size_t>(id)] != HeldByQueue)
    {
      if (mHolding[static_cast<size_t>(id)] == HeldByScript)
      {
        mHolding[static_cast<size_t>(id)] = HeldByQueue;
      }
      mWorld.letGo(id);
    }
    else if (mRunning.empty() && mRandom.oneIn(20))
    {
      mWorld.clear();
    }
  }

  void action(int id)
  {
    mTrace.add("run " + text(id) + " " + mWorld.state());
    if (mTrace.differs() || ++miActions > MaxActions)
    {
      return;
    }
    mRunning.push_back(id);
    struct cPop
    {
      std::vector<int>& mRunning;
      ~cPop() { mRunning.pop_back(); }
    };
    cPop const pop{mRunning};
    for (unsigned int i = mRandom.below(4); i != 0 && !mTrace.differs(); --i)
    {
      unsigned int const iOp = mRandom.below(24);
      if (iOp < 3)
      {
        makeWork();
      }
      else if (iOp < 6)
      {
        nestedTurns();
      }
      else if (iOp < 9)
      {
        mWorld.advance(mRandom.below(3000));
      }
      else if (iOp < 12)
      {
        mWorld.setEvent(id);
      }
      else
      {
        change(iOp);
      }
    }
    if (mRandom.oneIn(miFailOneIn))
    {
      mWorld.raise(mRandom.oneIn(2));
    }
  }

  void nestedTurns()
  {
    if (mRunning.size() > MaxDepth)
    {
      return;
    }
    bool const bLoop = mRandom.oneIn(2);
    if (bLoop)
    {
      mWorld.beginLoop();
    }
    bool const bGuarded = mRandom.oneIn(2);
    auto const turns = [this] {
      for (unsigned int i = 1 + mRandom.below(2); i != 0; --i)
      {
        turn();
      }
    };
    try
    {
      if (bGuarded)
      {
        mWorld.guarded("nested", turns);
      }
      else
      {
        turns();
      }
    }
    catch (...)
    {
      if (bLoop)
      {
        mWorld.endLoop();
      }
      throw;
    }
    if (bLoop)
    {
      mWorld.endLoop();
    }
  }

  void yield(unsigned int iLevel, unsigned int iDelay)
  {
    mTrace.add("yield level " + text(iLevel) + " delay " + text(iDelay));
    if (mTrace.differs())
    {
      return;
    }
    for (unsigned int i = mRandom.below(3); i != 0; --i)
    {
      int const id = anyWork();
      if (id != Nobody)
      {
        mWorld.setEvent(id);
      }
    }
    mWorld.advance(iDelay * 1000LL);
  }

  cWorld& mWorld;
  cTrace& mTrace;
  cRandom mRandom;
  std::vector<tHolding> mHolding;
  std::vector<int> mRunning;
  unsigned int mOpenLoops = 0;
  unsigned int miActions = 0;
  unsigned int miFailOneIn;
};

/// Runs the script of `seed` on both worlds. Returns the hash of the trace.
uint64_t compare(uint64_t seed)
{
  bool const bAIO = seed % 4 != 0;
  cTrace expected;
  {
    cModel model(bAIO);
    model.mpTrace = &expected;
    cScript(model, expected, seed).run();
  }
  cTrace actual(&expected.lines());
  {
    cReal real(bAIO);
    real.mpTrace = &actual;
    cScript script(real, actual, seed);
    script.run();
    real.onDestroyed = [](int) {};
  }
  if (actual.differs() || actual.lines().size() != expected.lines().size())
  {
    size_t const index = actual.differs() ? actual.firstDifference() : actual.lines().size();
    std::string sContext;
    for (size_t i = index > 12 ? index - 12 : 0; i < index; ++i)
    {
      sContext += expected.lines()[i] + "\n";
    }
    ADD_FAILURE() << "seed " << seed << ", line " << index << "\n"
                  << sContext << "model: " << (index < expected.lines().size() ? expected.lines()[index] : "(end)")
                  << "\nqueue: " << (index < actual.lines().size() ? actual.lines()[index] : "(end)");
  }
  return actual.hash();
}

unsigned int const NumReferenceSeeds = 500;

std::string referenceFile()
{
  return std::string(MORTISE_TEST_DATA_DIR) + "/queueModelTraces.txt";
}

} // namespace

TEST(QueueModel, TracesAreThoseOfTheModelAndOfTheReferenceFile)
{
  support::cCaptureOut capture; // handlers that throw write graphs
  std::map<uint64_t, std::string> reference;
  std::ifstream in(referenceFile());
  uint64_t seed = 0;
  std::string sHash;
  while (in >> seed >> sHash)
  {
    reference[seed] = sHash;
  }
  std::map<uint64_t, std::string> hashes;
  for (seed = 1; seed <= NumReferenceSeeds && !HasNonfatalFailure(); ++seed)
  {
    char hash[17];
    snprintf(hash, sizeof hash, "%016llx", static_cast<unsigned long long>(compare(seed)));
    hashes[seed] = hash;
    capture.clear();
  }
  // After a change of the scripts, not of the queue, the file is made anew.
  if (char const* const pWrite = getenv("MORTISE_WRITE_REFERENCE"))
  {
    std::ofstream out(pWrite);
    for (auto const& hash : hashes)
    {
      out << hash.first << " " << hash.second << "\n";
    }
  }
  EXPECT_EQ(hashes, reference);
}

TEST(QueueModel, RandomScriptsAgreeWithTheModel)
{
  support::cCaptureOut capture;
  uint64_t const first =
      static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) % 1000000000 + 1000000;
  printf("seeds from %llu\n", static_cast<unsigned long long>(first));
  for (uint64_t seed = first; seed < first + 1000 && !HasNonfatalFailure(); ++seed)
  {
    compare(seed);
    capture.clear();
  }
}
