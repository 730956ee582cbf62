#include "mcs/findRequirementCycle.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgr.h"
#include "mcs/componentName.h"
#include "std/cSTDExceptions.h"

#include <stdlib.h>

namespace mcs
{
namespace
{
enum
{
  Absent = 0xffffffffu
};

struct cPlace
{
  cAbstractComponent const* mpComponent;
  unsigned int miIndex;
};

int compare(void const* pLeft, void const* pRight)
{
  cPlace const& left = *static_cast<cPlace const*>(pLeft);
  cPlace const& right = *static_cast<cPlace const*>(pRight);
  return left.mpComponent < right.mpComponent   ? -1
         : right.mpComponent < left.mpComponent ? 1
         : left.miIndex < right.miIndex         ? -1
                                                : left.miIndex > right.miIndex;
}

template <class T>
T* allocate(unsigned int iLength)
{
  return new T[iLength]();
}

/// An array for the time of a query; `iLength` may be 0.
template <class T>
class cTable
{
public:
  explicit cTable(unsigned int iLength) : mpData(allocate<T>(iLength), mstd::tAutoPtrType::Array) {}
  T& operator[](unsigned int i) const { return mpData.get()[i]; }
  T* data() const { return mpData.get(); }

private:
  mstd::tAutoPtr<T> mpData;
};

/// What the components of a manager require of each other, by their places in its list.
class cRequirementGraph
{
public:
  enum Direction
  {
    ToRequired,
    ToRequiring
  };

  cRequirementGraph(cModuleMgr const& manager, Direction eDirection)
      : miSize(manager.components().length()), mComponents(miSize), mPlaces(miSize), mFirstEdge(miSize + 1),
        mEdges(edgeCount(manager)), mState(miSize), mNextEdge(miSize), mPath(miSize), miPathLength(0)
  {
    unsigned int size = 0;
    for (cManagedComponent* const managed : manager.components())
    {
      mComponents[size] = managed->component();
      mPlaces[size].mpComponent = mComponents[size];
      mPlaces[size].miIndex = size;
      ++size;
    }
    qsort(mPlaces.data(), miSize, sizeof(cPlace), &compare);
    addEdges(eDirection);
  }

  /// The place of the component, or Absent.
  unsigned int find(cAbstractComponent const* pComponent) const
  {
    unsigned int low = 0;
    for (unsigned int high = miSize; low < high;)
    {
      unsigned int const middle = low + (high - low) / 2;
      if (mPlaces[middle].mpComponent < pComponent)
      {
        low = middle + 1;
      }
      else
      {
        high = middle;
      }
    }
    // The first of its places, if it was added several times.
    return low < miSize && mPlaces[low].mpComponent == pComponent ? mPlaces[low].miIndex : Absent;
  }

  bool findCycle(mstd::tList<cAbstractComponent*>& cycle)
  {
    for (unsigned int i = 0; i < miSize; ++i)
    {
      if (findCycleFrom(i, cycle))
      {
        return true;
      }
    }
    return false;
  }

  /// Follows the edges from a component in depth. A component that is met again on the path closes a circle.
  bool findCycleFrom(unsigned int iStart, mstd::tList<cAbstractComponent*>& cycle)
  {
    enter(iStart);
    while (miPathLength != 0)
    {
      unsigned int const current = mPath[miPathLength - 1];
      if (mNextEdge[current] == mFirstEdge[current + 1])
      {
        mState[current] = Done;
        --miPathLength;
        continue;
      }
      unsigned int const target = mEdges[mNextEdge[current]++];
      if (mState[target] == OnPath)
      {
        collect(target, cycle);
        return true;
      }
      enter(target);
    }
    return false;
  }

private:
  enum State : unsigned char
  {
    New = 0,
    OnPath,
    Done
  };

  static unsigned int edgeCount(cModuleMgr const& manager)
  {
    unsigned int count = 0;
    for (cManagedComponent* const managed : manager.components())
    {
      count += managed->component()->localRequiredComponents().length();
    }
    return count;
  }

  /// Calls `visit(from, to)` for every requirement between components of the manager.
  template <class Visit>
  void forEachEdge(Direction eDirection, Visit const& visit) const
  {
    for (unsigned int i = 0; i < miSize; ++i)
    {
      for (cAbstractComponent const* const required : mComponents[i]->localRequiredComponents())
      {
        unsigned int const target = find(required);
        if (target != Absent)
        {
          eDirection == ToRequired ? visit(find(mComponents[i]), target) : visit(target, find(mComponents[i]));
        }
      }
    }
  }

  void addEdges(Direction eDirection)
  {
    forEachEdge(eDirection, [this](unsigned int iFrom, unsigned int) { ++mFirstEdge[iFrom + 1]; });
    for (unsigned int i = 0; i < miSize; ++i)
    {
      mFirstEdge[i + 1] += mFirstEdge[i];
      mNextEdge[i] = mFirstEdge[i];
    }
    forEachEdge(eDirection, [this](unsigned int iFrom, unsigned int iTo) { mEdges[mNextEdge[iFrom]++] = iTo; });
    for (unsigned int i = 0; i < miSize; ++i)
    {
      mNextEdge[i] = mFirstEdge[i];
    }
  }

  void enter(unsigned int iIndex)
  {
    if (mState[iIndex] == New)
    {
      mState[iIndex] = OnPath;
      mPath[miPathLength++] = iIndex;
    }
  }

  /// The path from `iTarget` to its end, with the member in front that stands first in the manager.
  void collect(unsigned int iTarget, mstd::tList<cAbstractComponent*>& cycle) const
  {
    unsigned int begin = miPathLength - 1;
    while (mPath[begin] != iTarget)
    {
      --begin;
    }
    unsigned int first = begin;
    for (unsigned int i = begin; i < miPathLength; ++i)
    {
      if (mPath[i] < mPath[first])
      {
        first = i;
      }
    }
    for (unsigned int i = first; i < miPathLength; ++i)
    {
      cycle.append(mComponents[mPath[i]]);
    }
    for (unsigned int i = begin; i < first; ++i)
    {
      cycle.append(mComponents[mPath[i]]);
    }
  }

  unsigned int miSize;
  cTable<cAbstractComponent*> mComponents;
  cTable<cPlace> mPlaces; // sorted by address
  cTable<unsigned int> mFirstEdge;
  cTable<unsigned int> mEdges;
  cTable<State> mState;
  cTable<unsigned int> mNextEdge;
  cTable<unsigned int> mPath;
  unsigned int miPathLength;
};

} // namespace

bool findRequirementCycle(cModuleMgr const& manager, mstd::tList<cAbstractComponent*>& cycle)
{
  mstd::tList<cAbstractComponent*> found;
  cRequirementGraph graph(manager, cRequirementGraph::ToRequired);
  graph.findCycle(found);
  cycle.swap(found);
  return !cycle.empty();
}

bool findRequirementCycle(cModuleMgr const& manager, cAbstractComponent const& component,
                          mstd::tList<cAbstractComponent*>& cycle)
{
  mstd::tList<cAbstractComponent*> against;
  cRequirementGraph graph(manager, cRequirementGraph::ToRequiring);
  unsigned int const start = graph.find(&component);
  mstd::tList<cAbstractComponent*> found;
  if (start != Absent && graph.findCycleFrom(start, against))
  {
    found.append(against.first());
    for (mstd::tList<cAbstractComponent*>::iterator it = --against.end(); it != against.begin(); --it)
    {
      found.append(*it);
    }
  }
  cycle.swap(found);
  return !cycle.empty();
}

mucs::cLIMessage requirementCycleMessage(mstd::tList<cAbstractComponent*> const& cycle)
{
  mucs::cLIMessage message;
  if (cycle.empty())
  {
    return message << "$MTR$No component requires itself.";
  }
  mstd::tList<cAbstractComponent*> closed(cycle);
  closed.append(cycle.first());
  return message << "$MTR$Components require each other in a circle: %components%." << componentNames(closed, " -> ");
}

} // namespace mcs
