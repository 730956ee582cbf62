#include "pi/cWqDebug.h"

#include "pi/cFDAIOData.h"
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "support/cFakeProcessor.h"
#include "support/cSlotOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using mpi::cWork;
using support::cSlot;

namespace
{

typedef mstd::tSharedObject<cWork> tJob;

std::string idOf(cWork const& work)
{
  std::ostringstream out;
  out << '"' << std::hex << reinterpret_cast<piAddress>(&work) << '"';
  return out.str();
}

class cWqDebugTest : public ::testing::Test
{
protected:
  cWqDebugTest() { mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new support::cFakeProcessor)); }

  std::string dot() { return mpi::cWqDebug::dot(&mQueue).c_str(); }

  // The graph of a queue that holds `work` alone, without frame and id.
  std::string nodeOf(cWork const& work)
  {
    std::string const sStart = "digraph G {\n" + idOf(work);
    std::string const sEnd = "}\n";
    std::string const sAll = dot();
    EXPECT_EQ(sAll.substr(0, sStart.length()), sStart);
    EXPECT_EQ(sAll.substr(sAll.length() - sEnd.length()), sEnd);
    return sAll.substr(sStart.length(), sAll.length() - sStart.length() - sEnd.length());
  }

  support::cVirtualClock mClock;
  mpi::cWorkQueue mQueue;
};

} // namespace

TEST_F(cWqDebugTest, AnEmptyQueueIsAnEmptyGraph)
{
  EXPECT_EQ(dot(), "digraph G {\n}\n");
}

TEST_F(cWqDebugTest, AStoppedSingleTask)
{
  tJob job = mQueue.createJob();
  job->setName("name");
  EXPECT_EQ(nodeOf(*job), " [ label=\"Single task\\nname\\n(planned in 0ms)\",shape=\"ellipse\",style=\"filled\","
                          "color=\"lightgrey\" ];\n");
}

TEST_F(cWqDebugTest, AStartedSingleTaskTellsTheTimeThatIsLeft)
{
  tJob job = mQueue.createJob();
  job->setName("name");
  job->start(100, cWork::SingleTask);
  mClock.advanceMSec(40);
  EXPECT_EQ(nodeOf(*job), " [ label=\"Single task\\nname\\n(planned in 60ms, Active)\",shape=\"ellipse\","
                          "style=\"filled\",color=\"grey\" ];\n");
  mClock.advanceMSec(100);
  EXPECT_NE(dot().find("(planned in 0ms, Active)"), std::string::npos);
}

TEST_F(cWqDebugTest, APeriodicWorkHasAnOddBracket)
{
  tJob job = mQueue.createJob();
  job->setName("Tick");
  job->start(1000, cWork::Periodic);
  EXPECT_EQ(nodeOf(*job), " [ label=\"Periodic\\nTick\\n(1000ms interval), Active, Keep)\",shape=\"ellipse\","
                          "style=\"filled\",color=\"grey\" ];\n");
}

TEST_F(cWqDebugTest, AsynchronousWorkIsPapayaWhipWhateverItsState)
{
  tJob job = mQueue.createJob();
  job->setName("in");
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
  EXPECT_EQ(nodeOf(*job), " [ label=\"Asynchronous I/O\\nin\\n(Active, Keep)\",shape=\"ellipse\",style=\"filled\","
                          "color=\"PapayaWhip\" ];\n");
  job->stop();
  EXPECT_EQ(nodeOf(*job), " [ label=\"Asynchronous I/O\\nin\\n(Keep)\",shape=\"ellipse\",style=\"filled\","
                          "color=\"PapayaWhip\" ];\n");
}

TEST_F(cWqDebugTest, AmuckWorkIsRedAndNotActive)
{
  tJob job = mQueue.createJob();
  job->start(5, cWork::Periodic);
  cSlot slot([] { throw 1; });
  job->sigAction.connect(slot.call());
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_THROW(job->action(), int);
  }
  EXPECT_EQ(nodeOf(*job), " [ label=\"Periodic\\n\\n(5ms interval), AMUCK, Keep)\",shape=\"ellipse\",style=\"filled\","
                          "color=\"red\" ];\n");
}

TEST_F(cWqDebugTest, AForciblyKeptSingleTaskIsMarked)
{
  cWork work;
  mQueue.addJob(work);
  EXPECT_EQ(nodeOf(work), " [ label=\"Single task\\n\\n(planned in 0ms, Keep)\",shape=\"ellipse\",style=\"filled\","
                          "color=\"lightgrey\" ];\n");
}

TEST_F(cWqDebugTest, TheCurrentWorkStandsOut)
{
  tJob job = mQueue.createJob();
  job->setName("now");
  std::string sSeen;
  cSlot slot([&] { sSeen = nodeOf(*job); });
  job->sigAction.connect(slot.call());
  job->start(10, cWork::Periodic);
  mClock.advanceMSec(10);
  mQueue.process();
  EXPECT_EQ(sSeen, " [ label=\"Periodic\\nnow\\n(10ms interval), Active, Keep, Current)\",shape=\"doubleoctagon\","
                   "style=\"filled\",color=\"LightSteelBlue\" ];\n");
}

TEST_F(cWqDebugTest, CurrentAsynchronousWorkKeepsItsColour)
{
  tJob job = mQueue.createJob();
  std::string sSeen;
  cSlot slot([&] { sSeen = nodeOf(*job); });
  job->sigAction.connect(slot.call());
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
  job->aioData().setEvent(true);
  mQueue.process();
  EXPECT_EQ(sSeen, " [ label=\"Asynchronous I/O\\n\\n(Active, Keep, Current)\",shape=\"doubleoctagon\","
                   "style=\"filled\",color=\"PapayaWhip\" ];\n");
}

TEST_F(cWqDebugTest, NodesComeFirstAndEdgesLeadFromParentToChild)
{
  tJob parent = mQueue.createJob();
  tJob first = mQueue.createJob();
  tJob second = mQueue.createJob();
  cWork outside;
  first->reparent(parent.get());
  second->reparent(&outside);
  std::string const sNode = " [ label=\"Single task\\n\\n(planned in 0ms)\",shape=\"ellipse\",style=\"filled\","
                            "color=\"lightgrey\" ];\n";
  EXPECT_EQ(dot(), "digraph G {\n" + idOf(*parent) + sNode + idOf(*first) + sNode + idOf(*second) + sNode +
                       idOf(*parent) + " -> " + idOf(*first) + ";\n" + idOf(outside) + " -> " + idOf(*second) +
                       ";\n}\n");
}

TEST_F(cWqDebugTest, DeadEntriesAreLeftOut)
{
  tJob job = mQueue.createJob();
  mQueue.removeJob(*job);
  EXPECT_EQ(dot(), "digraph G {\n}\n");
}

TEST_F(cWqDebugTest, NoQueueMeansTheQueueOfTheSystem)
{
  mpi::system().wq.createJob()->setName("system work");
  EXPECT_NE(std::string(mpi::cWqDebug::dot().c_str()).find("system work"), std::string::npos);
  EXPECT_NE(std::string(mpi::cWqDebug::dot(nullptr).c_str()).find("system work"), std::string::npos);
  mpi::cSystem::cleanup();
}
